# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Generator;

# Writes the files of a MIB.
use strict;
use warnings;
use SnmpSubAgent::Header;
use SnmpSubAgent::Mib;
use SnmpSubAgent::Model;
use SnmpSubAgent::Names;
use SnmpSubAgent::News;
use SnmpSubAgent::Service;
use SnmpSubAgent::Source;

sub _read {
  my ($file) = @_;
  open my $in, '<', $file or return undef;
  local $/;
  return scalar <$in>;
}

sub _write {
  my ($file, $text, $say) = @_;
  open my $out, '>', $file or die "$file: $!\n";
  print $out $text or die "$file: $!\n";
  close $out or die "$file: $!\n";
  $say->("writing $file");
}

# The user's files are written where there are none.
sub _writeOnce {
  my ($file, $text, $say) = @_;
  return $say->("keeping $file") if -e $file;
  _write($file, $text, $say);
}

sub model {
  my (%options) = @_;
  my $mib = SnmpSubAgent::Model::build(
    SnmpSubAgent::Mib::read(@options{qw(node module)}));
  $mib->{name} = $options{name};
  $mib->{namespace} = SnmpSubAgent::Names::namespace($options{name});
  $mib->{title} = $options{module} // "$options{node} in "
    . $SNMP::MIB{$options{node}}{moduleID};
  return $mib;
}

# Options: node, name, module, main, quiet.
sub run {
  my (%options) = @_;
  my $say = sub { print STDERR "$_[0]\n" if !$options{quiet} };
  my $mib = model(%options);
  die "No scalar, table or notification at or below $options{node}.\n"
    if !@{$mib->{scalars}} && !@{$mib->{tables}} && !@{$mib->{notifications}};
  print STDERR "left out: $_\n" foreach @{$mib->{left}};
  my ($header, $source) = ("$mib->{name}.h", "$mib->{name}.cpp");
  my $before = _read($header);
  my %new = ($header => SnmpSubAgent::Header::text($mib),
             $source => SnmpSubAgent::Source::text($mib));
  my @news = defined $before ? SnmpSubAgent::News::between(
    [$before, _read($source) // ''], [@new{$header, $source}]) : ();
  _write($_, $new{$_}, $say) foreach $header, $source;
  my %once = SnmpSubAgent::Service::files($mib, $options{main});
  _writeOnce($_, $once{$_}, $say) foreach sort keys %once;
  print STDERR "$_\n" foreach @news;
}

1;
