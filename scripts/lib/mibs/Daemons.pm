# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package Daemons;

# A private snmpd and snmptrapd on free ports of the loopback interface, and
# programs beside them, all of which end with the object.
use strict;
use warnings;
use IO::Select;
use IO::Socket::INET;
use Time::HiRes qw(sleep time);

my $deadline = 60;

sub _freePort {
  my ($protocol) = @_;
  my $socket = IO::Socket::INET->new(LocalAddr => '127.0.0.1', LocalPort => 0,
    Proto => $protocol, ($protocol eq 'tcp' ? (Listen => 1) : ()))
    or die "no free port: $!\n";
  return $socket->sockport;
}

sub start {
  my ($class) = @_;
  my ($snmp, $agentX, $traps) = (_freePort('udp'), _freePort('tcp'), _freePort('udp'));
  my $self = bless {
    address => "127.0.0.1:$snmp", agentX => "tcp:127.0.0.1:$agentX", children => [],
  }, $class;
  $self->_daemon('snmptrapd', "snmpTrapdAddr udp:127.0.0.1:$traps\n"
    . "disableAuthorization yes\ndoNotFork yes\n", '-On', '-OQ');
  $self->_daemon('snmpd', "agentAddress udp:127.0.0.1:$snmp\n"
    . "rwcommunity public 127.0.0.1\nmaster agentx\nagentXSocket tcp:127.0.0.1:$agentX\n"
    . "dontLogTCPWrappersConnects yes\nauthtrapenable 1\ntrap2sink 127.0.0.1:$traps public\n",
    '-I', 'vacm_conf');
  return $self;
}

# Starts a daemon and waits until it serves.
sub _daemon {
  my ($self, $name, $configuration, @arguments) = @_;
  open my $out, '>', "$name.conf" or die "$name.conf: $!\n";
  print $out $configuration;
  close $out;
  my $child = fork // die "fork: $!\n";
  if ($child == 0) {
    $ENV{MIBS} = '';
    open STDOUT, '>', "$name.log" or die "$name.log: $!\n";
    open STDERR, '>&', \*STDOUT;
    exec $name, '-f', '-C', '-c', "$name.conf", '-Lo', @arguments or die "$name: $!\n";
  }
  push @{$self->{children}}, $child;
  _until(sub { _text("$name.log") =~ /NET-SNMP version/ }) or die "$name does not serve\n";
}

sub _text {
  my ($file) = @_;
  open my $in, '<', $file or return '';
  local $/;
  return <$in> // '';
}

sub _until {
  my ($isDone) = @_;
  for (my $end = time + $deadline; time < $end; sleep 0.02) {
    return 1 if $isDone->();
  }
  return 0;
}

# A program whose lines are waited for, and which is given lines.
sub run {
  my ($self, @command) = @_;
  pipe my $inRead, my $inWrite or die "pipe: $!\n";
  pipe my $outRead, my $outWrite or die "pipe: $!\n";
  my $child = fork // die "fork: $!\n";
  if ($child == 0) {
    close $_ foreach $inWrite, $outRead;
    open STDIN, '<&', $inRead;
    open STDOUT, '>&', $outWrite;
    open STDERR, '>', 'program.log';
    exec @command or die "$command[0]: $!\n";
  }
  close $_ foreach $inRead, $outWrite;
  push @{$self->{children}}, $child;
  return {
    input => sub { syswrite $inWrite, $_[0] },
    line => sub {
      return IO::Select->new($outRead)->can_read($deadline)
        && (readline($outRead) // '') eq "$_[0]\n";
    },
  };
}

# How much of the notifications has come, snmpd's own among them.
sub received {
  return length _text('snmptrapd.log');
}

# The notifications behind that, each with the names of its objects; waits for
# all of these. snmpd adds snmpTrapEnterprise to generic ones (RFC 3584).
sub notificationsAfter {
  my ($self, $length, @oids) = @_;
  my %received;
  _until(sub {
    foreach my $line (split /\n/, substr _text('snmptrapd.log'), $length) {
      next if $line !~ /\.1\.3\.6\.1\.6\.3\.1\.1\.4\.1\.0 = (\.[\d.]+)(.*)/;
      my ($oid, $rest) = ($1, $2);
      $received{$oid} = [grep { $_ ne '.1.3.6.1.6.3.1.1.4.3.0' }
        $rest =~ /\t(\.[\d.]+) = /g];
    }
    return !grep { !$received{$_} } @oids;
  });
  return \%received;
}

sub DESTROY {
  my ($self) = @_;
  local $?;
  kill 'TERM', $_ foreach @{$self->{children}};
  foreach my $child (@{$self->{children}}) {
    my $end = time + 5;
    while (waitpid($child, 1) == 0) {
      kill 'KILL', $child if time > $end;
      sleep 0.01;
    }
  }
}

1;
