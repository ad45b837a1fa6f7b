# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package Trial;

# What is done with one module: generate, compile, serve, check.
use strict;
use warnings;
use Daemons;
use JSON::PP;
use Program;
use Time::HiRes;

my @flags = qw(-std=c++17 -O0 -Wall -Wextra -Werror);

# Runs a command with its output in a file; whether it succeeded.
sub _command {
  my ($log, @command) = @_;
  my $child = fork // die "fork: $!\n";
  if ($child == 0) {
    open STDOUT, '>', $log or die "$log: $!\n";
    open STDERR, '>&', \*STDOUT or die "$log: $!\n";
    exec @command or die "$command[0]: $!\n";
  }
  waitpid $child, 0;
  return $? == 0;
}

sub _lastLines {
  my ($file) = @_;
  open my $in, '<', $file or return '';
  my @lines = <$in>;
  @lines = @lines[-5 .. -1] if @lines > 5;
  return join '', @lines;
}

# The headers are parsed once for all modules.
sub prepare {
  my (%options) = @_;
  my $folder = "$options{work}/headers";
  mkdir $folder;
  my $compiled = "$folder/snmpsubagent.h.gch";
  return if -e $compiled && !grep { -M $_ < -M $compiled }
    glob "$options{project}/include/snmpsubagent.h $options{project}/include/snmpsubagent/*.h $options{project}/include/snmpsubagent/detail/*.h";
  _command("$folder/log", 'c++', @flags, '-I', "$options{project}/include", '-x',
    'c++-header', '-o', $compiled, "$options{project}/include/snmpsubagent.h")
    or die _lastLines("$folder/log");
}

# The deepest node that has all that the text of the module defines below it; ''
# if there is nothing. The parser's tree can't be walked from its root, which
# may have a child twice.
sub _node {
  my ($module, $text) = @_;
  my @labels = $text =~ /^\s*([a-z][\w-]*)\s+(?:OBJECT|NOTIFICATION|TRAP)-TYPE\b/mg;
  my ($first, @others) = map { [split /\./, SnmpSubAgent::Mib::oidOf($_)] }
    grep { $_ } map { SnmpSubAgent::Mib::find($_, $module) } @labels;
  return '' if !$first;
  foreach my $oid (@others) {
    my $same = 0;
    ++$same while $same < @$first && $same < @$oid && $first->[$same] == $oid->[$same];
    $#$first = $same - 1;
  }
  return '.' . join '.', @$first;
}

sub _fail { return {state => 'failed', failure => "$_[0]: $_[1]"} }

sub run {
  my ($module, %options) = @_;
  my $folder = "$options{work}/$module";
  mkdir $folder;
  chdir $folder or die "$folder: $!\n";
  $ENV{MIBDIRS} = join ':', @{$options{folders}};
  $ENV{MIBS} = $module;
  $ENV{MIB2C_DIR} = "$options{project}/mib2c";
  $ENV{SNMPCONFPATH} = $ENV{SNMP_PERSISTENT_DIR} = $folder;
  my $result = eval { _run($module, %options) };
  return $result // _fail('failed', $@ =~ s/\s+$//r);
}

sub _loadParser {
  require SNMP;
  no warnings 'once';
  $SNMP::save_descriptions = $SNMP::use_long_names = $SNMP::use_enums = 1;
  SNMP::initMib();
  require SnmpSubAgent::Generator;
}

sub _run {
  my ($module, %options) = @_;
  open STDERR, '>', 'parser.log' or die "parser.log: $!\n";
  _loadParser();
  my $node = _node($module, $options{texts}{$module} // '')
    or return {state => 'empty'};
  my $name = $module =~ s/[^A-Za-z0-9]/_/gr;
  _command('mib2c.log', 'mib2c', '-q', '-s', '-c', 'mib2c.snmpsubagent.conf', '-S',
    "module=$module", '-f', $name, $node)
    && -e "$name.cpp" or return _fail('not generated', _lastLines('mib2c.log'));
  my $mib = SnmpSubAgent::Generator::model(name => $name, node => $node,
    module => $module);
  open my $program, '>', 'program.cpp' or die "program.cpp: $!\n";
  print $program Program::text($mib);
  close $program;
  _compile($name, %options) or return _fail('not compiled', _lastLines('c++.log'));
  return {state => 'compiled', totals => {}, findings => $mib->{left}}
    if $options{'compile-only'};
  return _serve($module, $mib, %options);
}

sub _compile {
  my ($name, %options) = @_;
  my $libraries = "$options{build}/src/objects";
  my @include = ('-I', "$options{work}/headers", '-I', "$options{project}/include");
  foreach my $source ($name, 'program', "${name}Service") {
    _command('c++.log', 'c++', @flags, @include, '-c', "$source.cpp", '-o', "$source.o")
      or return 0;
  }
  return _command('c++.log', 'c++', '-o', 'program', "$name.o", 'program.o',
    "-L$libraries", "-Wl,-rpath,$libraries", '-lsnmpsubagent-objects');
}

sub _serve {
  my ($module, $mib, %options) = @_;
  my $daemons = Daemons->start;
  my $program = $daemons->run('./program', $daemons->{agentX});
  $program->{line}->('ready') or return _fail('not served', "it ended\n");
  _command('check.json', "$options{build}/tools/check/snmpsubagent-check", 'mib', '-M',
    $ENV{MIBDIRS}, '--set', '--obsolete', '--json', $module, $daemons->{address});
  open my $in, '<', 'check.json' or die "check.json: $!\n";
  my $report = decode_json(do { local $/; <$in> });
  my @findings = map { "$_->{fault} $_->{object} $_->{oid}: $_->{text}" }
    @{$report->{findings}};
  my ($sent, @lost) = _notifications($mib, $daemons, $program);
  $report->{totals}{notifications} = $sent;
  return {state => 'served', totals => $report->{totals},
    findings => [@{$mib->{left}}, @findings, @lost]};
}

# Has the program send each notification; which of them came with all objects.
sub _notifications {
  my ($mib, $daemons, $program) = @_;
  my %expected = map {
    (".$_->{oid}" => [map { ".$_->{object}{oid}" } grep { $_->{object} } @{$_->{objects}}])
  } @{$mib->{notifications}};
  my $total = {expected => scalar keys %expected, right => 0};
  return $total if !%expected;
  my $before = $daemons->received;
  $program->{input}->("send\n");
  $program->{line}->('sent') or return ($total, 'it ended when it was to send');
  my $received = $daemons->notificationsAfter($before, sort keys %expected);
  my @lost;
  foreach my $oid (sort keys %expected) {
    my @objects = @{$received->{$oid} || ['nothing']};
    my $isRight = @objects == @{$expected{$oid}}
      && !grep { index("$objects[$_].", "$expected{$oid}[$_].") != 0 } 0 .. $#objects;
    ++$total->{right} if $isRight;
    push @lost, "notification $oid: @objects came with it" if !$isRight;
  }
  return ($total, @lost);
}

1;
