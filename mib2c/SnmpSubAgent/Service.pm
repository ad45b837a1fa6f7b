# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Service;

# The files that are the user's, with what they begin with.
use strict;
use warnings;
use SnmpSubAgent::Layout qw(statement);
use SnmpSubAgent::Types;

# By name. Those of a program only with `$main`.
sub files {
  my ($mib, $main) = @_;
  my $name = $mib->{name};
  return (
    "${name}Service.h" => _header($mib),
    "${name}Service.cpp" => _source($mib),
    $main ? ('main.cpp' => _main($mib), 'CMakeLists.txt' => _cmake($mib)) : (),
  );
}

sub _header {
  my ($mib) = @_;
  my $guard = uc($mib->{name}) . '_SERVICE_H_';
  return <<"END";
// The service behind the objects of $mib->{title}.
//
// This file is yours: mib2c does not write it again.
#ifndef $guard
#define $guard

#include "$mib->{name}.h"

namespace $mib->{namespace} {

class Service {
 public:
  explicit Service(snmp::Agent& agent);

 private:
  Objects objects_;
};

}  // namespace $mib->{namespace}

#endif  // $guard
END
}

# Comments on the first object of each kind, to begin with.
sub _hints {
  my ($mib) = @_;
  my ($read) = grep { !SnmpSubAgent::Types::isWritable($_) } @{$mib->{scalars}};
  my ($written) = grep { SnmpSubAgent::Types::isWritable($_) } @{$mib->{scalars}};
  my ($table) = @{$mib->{tables}};
  my ($notification) = @{$mib->{notifications}};
  return join '',
    $read ? _hint('Asked for when a manager reads it:', "$read->{name}.From",
      "[] { return $read->{cpp}(); }") : (),
    $written ? _hint('What follows when a manager has written it:',
      "$written->{name}.Apply", "[](const $written->{cpp}& value) { ... }") : (),
    $table ? _hint('A row:', "$table->{name}.Insert", "$table->{key}{cpp}()",
      "$table->{row}()") : (),
    $notification ? _hint('A notification:', $notification->{send},
      map { $_->{name} } @{$notification->{parameters}}) : ();
}

sub _hint {
  my ($text, $call, @args) = @_;
  my $code = statement(7, {head => "objects_.$call", args => \@args}, ';');
  return "  // $text\n" . $code =~ s/^ {7}/  \/\/   /mgr;
}

sub _source {
  my ($mib) = @_;
  my $hints = _hints($mib);
  return <<"END";
// The service behind the objects of $mib->{title}.
//
// This file is yours: mib2c does not write it again.
#include "$mib->{name}Service.h"

namespace $mib->{namespace} {

Service::Service(snmp::Agent& agent) : objects_(agent) {
$hints}

}  // namespace $mib->{namespace}
END
}

sub _main {
  my ($mib) = @_;
  return <<"END";
// Runs the service until it is told to stop. The argument, if there is one,
// says where the master agent listens: "unix:/path" or "tcp:host:port".
//
// This file is yours: mib2c does not write it again.
#include "$mib->{name}Service.h"

int main(int argc, char* argv[]) {
  snmpsubagent::AgentOptions options;
  if (argc > 1) options.master = argv[1];
  snmpsubagent::Agent agent("$mib->{name}", options);
  const $mib->{namespace}::Service service(agent);
  agent.Run();
}
END
}

sub _cmake {
  my ($mib) = @_;
  my $name = $mib->{name};
  return <<"END";
# This file is yours: mib2c does not write it again.
cmake_minimum_required(VERSION 3.22)
project($name LANGUAGES CXX)

find_package(SnmpSubAgent REQUIRED COMPONENTS Objects)

add_executable($name main.cpp $name.cpp ${name}Service.cpp)
target_link_libraries($name PRIVATE SnmpSubAgent::Objects)
END
}

1;
