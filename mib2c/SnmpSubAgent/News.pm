# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::News;

# What is new in a MIB since its code was generated last.
use strict;
use warnings;

# What header and source say of each object, value and member of a row, by its
# name: all but comments.
sub _facts {
  my ($header, $source) = @_;
  my %facts;
  s{^\s*//.*\n}{}mg foreach $header, $source;
  while ($header =~ /^(?:struct|(enum) class|class) (\w+) \{\n(.*?)^\};/msg) {
    my ($isEnum, $scope, $body) = ($1, $2, $3);
    foreach my $statement (split $isEnum ? qr/,\n/ : qr/;\n/, $body) {
      $statement =~ s/\s+/ /g;
      $statement =~ s/\{ | (?=\})|(?<=::) //g;
      # Not the functions of the class.
      next if $statement =~ /^ (?:explicit|void) |public:/;
      next if $statement !~ /^(.*?)(\w+)(?: = .*|\{.*\})?\s*$/;
      $facts{$scope eq 'Objects' ? $2 : "${scope}::$2"} = $statement;
    }
  }
  _addSource(\%facts, $source);
  return \%facts;
}

# Where it is and what managers may do with it.
sub _addSource {
  my ($facts, $source) = @_;
  while ($source =~ /^(\w+)\s+Make\w+\(.*?^\}/msg) {
    my $function = $&;
    my ($row) = $function =~ /using Row = (\w+);/;
    next if !$row;
    while ($function =~ /(\.\w+\(\d+,\s*)&Row::(\w+)(.*?)(?=;\n|\n      \.)/sg) {
      $facts->{"${row}::$2"} .= "$1$3" =~ s/\s+//gr if $facts->{"${row}::$2"};
    }
  }
  return if $source !~ /^Objects::Objects\(.*?^\}/ms;
  my $constructor = $&;
  while ($constructor =~ /^(?:    : |      )(\w+)\((.*?)\)(?:,\n| \{)/msg) {
    my ($name, $rest) = ($1, $2);
    $facts->{$name} .= $rest =~ s/\s+//gr if $facts->{$name};
  }
}

# Each line names an object that is new, changed or gone.
sub between {
  my ($before, $after) = @_;
  my ($old, $new) = (_facts(@$before), _facts(@$after));
  return (
    (map { "new: $_" } grep { !exists $old->{$_} } sort keys %$new),
    (map { "changed: $_" }
      grep { exists $old->{$_} && $old->{$_} ne $new->{$_} } sort keys %$new),
    (map { "gone: $_" } grep { !exists $new->{$_} } sort keys %$old),
  );
}

1;
