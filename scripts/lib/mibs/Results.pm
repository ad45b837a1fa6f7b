# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package Results;

# What came of each module: kept in files, printed as a table.
use strict;
use warnings;
use JSON::PP;

# What is counted, each with how many the MIB wants.
my @kinds = qw(scalars tables columns notifications goodSets refusedSets rows);

sub _file { return "$_[0]/$_[1]/result.json" }

sub has { return -e _file(@_) }

sub store {
  my ($work, $name, $result) = @_;
  open my $out, '>', _file($work, $name) . '.new' or die "$work/$name: $!\n";
  print $out JSON::PP->new->canonical->pretty->encode($result);
  close $out or die "$work/$name: $!\n";
  rename _file($work, $name) . '.new', _file($work, $name) or die "$name: $!\n";
}

sub _load {
  my ($work, $name) = @_;
  open my $in, '<', _file($work, $name)
    or return {state => 'failed', failure => 'was cut short'};
  local $/;
  return decode_json(<$in>);
}

sub _figures {
  my ($totals) = @_;
  return join '  ', map {
    my $total = $totals->{$_};
    $total && $total->{expected} ? "$_ $total->{right}/$total->{expected}" : ();
  } @kinds;
}

sub line {
  my ($name, $result) = @_;
  my $text = sprintf "%-32s %s\n", $name, $result->{failure} // (
    $result->{state} eq 'empty' ? 'has no objects' : _figures($result->{totals} || {}));
  $text .= "    $_\n" foreach @{$result->{findings} || []};
  return $text;
}

# Prints all of it; whether all is right.
sub report {
  my ($work, @names) = @_;
  my (%states, %sum);
  my $isRight = 1;
  print "\n";
  foreach my $name (@names) {
    my $result = _load($work, $name);
    print line($name, $result);
    ++$states{$result->{state}};
    $isRight = 0 if $result->{failure} || @{$result->{findings} || []};
    foreach my $kind (@kinds) {
      my $total = $result->{totals}{$kind} || {};
      $sum{$kind}{$_} += $total->{$_} // 0 foreach qw(expected right);
    }
  }
  print "\n", scalar @names, ' modules: ',
    join(', ', map { "$states{$_} $_" } sort keys %states), "\n", _figures(\%sum), "\n";
  return $isRight;
}

1;
