# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Types;

# The C++ type, first value and constraints of an object, from its SYNTAX,
# DEFVAL and MAX-ACCESS.
use strict;
use warnings;
use SnmpSubAgent::Mib;

# By type of the parser: the C++ type and its first value.
my %types = (
  INTEGER => ['std::int32_t', '0'],
  INTEGER32 => ['std::int32_t', '0'],
  UNSIGNED32 => ['std::uint32_t', '0'],
  UINTEGER => ['std::uint32_t', '0'],
  GAUGE => ['std::uint32_t', '0'],
  COUNTER => ['snmp::Counter32', ''],
  COUNTER64 => ['snmp::Counter64', ''],
  TICKS => ['snmp::TimeTicks', ''],
  IPADDR => ['snmp::IpAddress', ''],
  NETADDR => ['snmp::NetworkAddress', ''],
  OBJECTID => ['snmp::Oid', '"0.0"'],
  OPAQUE => ['snmp::Opaque', ''],
  OCTETSTR => ['std::string', ''],
  BITS => ['std::string', ''],
);

# By textual convention; undefined keeps what the type says.
my %conventions = (
  TruthValue => ['bool', 'false'],
  TestAndIncr => ['snmp::TestAndIncr', ''],
  TimeStamp => ['snmp::TimeStamp', ''],
  DateAndTime => ['std::chrono::system_clock::time_point', ''],
  RowStatus => ['snmp::RowStatus', 'snmp::RowStatus::Active'],
  StorageType => ['snmp::StorageType', 'snmp::StorageType::NonVolatile'],
  InetAddressType => ['snmp::InetAddressType', 'snmp::InetAddressType::Unknown'],
  Float => ['float', '0'],
  Double => ['double', '0'],
);

# What the conventions are conventions of, and the names of the values of those
# that the library has an enumeration for.
my %conventionOf = (
  TruthValue => 'INTEGER', TestAndIncr => 'INTEGER', TimeStamp => 'TICKS',
  DateAndTime => 'OCTETSTR', RowStatus => 'INTEGER', StorageType => 'INTEGER',
  InetAddressType => 'INTEGER', Float => 'OPAQUE', Double => 'OPAQUE',
);
my %valuesOf = (
  TruthValue => {true => 1, false => 2},
  RowStatus => {active => 1, notInService => 2, notReady => 3, createAndGo => 4,
    createAndWait => 5, destroy => 6},
  StorageType => {other => 1, volatile => 2, nonVolatile => 3, permanent => 4,
    readOnly => 5},
  InetAddressType => {unknown => 0, ipv4 => 1, ipv6 => 2, ipv4z => 3,
    ipv6z => 4, dns => 16},
);

sub isWritable { return $_[0]{access} =~ /^(?:read-write|write-only|read-create)$/ }
sub isReadable { return $_[0]{access} =~ /^read/ || $_[0]{access} eq 'write-only' }

sub _isSubset {
  my ($some, $all) = @_;
  return !grep { !defined $all->{$_} || $all->{$_} != $some->{$_} } keys %$some;
}

# The convention that the library knows for this object, if any.
sub convention {
  my ($object) = @_;
  my $name = $object->{syntax};
  return '' if ($conventionOf{$name} || '') ne $object->{type} =~ s/32$//r;
  return '' if $valuesOf{$name} && !_isSubset($object->{names}, $valuesOf{$name});
  return $name;
}

# How many octets its values have, if all have as many.
sub fixedSize {
  my ($object) = @_;
  my @bounds = @{$object->{bounds}};
  return $object->{type} eq 'OCTETSTR' && @bounds == 1
    && $bounds[0][0] == $bounds[0][1] && $bounds[0][0] > 0 ? $bounds[0][0] : 0;
}

sub isEnumeration {
  my ($object) = @_;
  return $object->{type} =~ /^INTEGER(?:32)?$/ && %{$object->{names}}
    && !convention($object);
}
sub isBits { return $_[0]{type} eq 'BITS' && %{$_[0]{names}} }

# Sets cpp, its C++ type, and initial, an expression of its first value or ''.
sub resolve {
  my ($object, $enums) = @_;
  my $convention = convention($object);
  # What a manager writes is kept to the octet.
  $convention = '' if $convention eq 'DateAndTime' && isWritable($object);
  # A TimeStamp is of this agent's making.
  $convention = '' if $convention eq 'TimeStamp' && isWritable($object);
  if (my $known = $conventions{$convention}) {
    @$object{qw(cpp initial)} = @$known;
    $object->{initial} = "snmp::${convention}::" . ucfirst _first($object)
      if $convention =~ /^(?:InetAddressType)$/ && %{$object->{names}};
  } elsif (isEnumeration($object)) {
    $object->{enum} = $enums->of($object);
    $object->{cpp} = $object->{enum}{name};
    $object->{initial} = "$object->{cpp}::" . $object->{enum}{names}{_first($object)};
  } elsif (isBits($object)) {
    $object->{enum} = $enums->of($object);
    $object->{cpp} = "snmp::Bits<$object->{enum}{name}>";
    $object->{initial} = '';
  } elsif (fixedSize($object) && !_isText($object)) {
    $object->{cpp} = 'std::array<std::uint8_t, ' . fixedSize($object) . '>';
    $object->{initial} = '';
  } elsif (my $plain = $types{$object->{type}}) {
    @$object{qw(cpp initial)} = @$plain;
    $object->{initial} = _number($object, $object->{bounds}[0][0])
      if $object->{initial} eq '0' && @{$object->{bounds}}
      && !_isWithin($object, 0);
  } else {
    @$object{qw(cpp initial)} = ('', '');
  }
  my $default = _default($object);
  $object->{hasDefault} = defined $object->{default};
  $object->{initial} = $default if defined $default;
  return $object;
}

# DISPLAY-HINTs of text: "255a", "1x:" is none.
sub _isText { return $_[0]{hint} =~ /^\*?\d*[at]$/ }

# The name with the least value from 0, or the least of all.
sub _first {
  my ($object) = @_;
  my $names = $object->{names};
  my @sorted = sort { $names->{$a} <=> $names->{$b} } keys %$names;
  return (grep { $names->{$_} >= 0 } @sorted)[0] // $sorted[0];
}

sub _isWithin {
  my ($object, $number) = @_;
  return grep { $_->[0] <= $number && $number <= $_->[1] } @{$object->{bounds}};
}

sub _number {
  my ($object, $number) = @_;
  return $number > 2**31 - 1 ? "${number}u" : $number == -2**31
    ? "-2147483647 - 1" : "$number";
}

# DEFVAL in C++; undefined if there is none that can be told.
sub _default {
  my ($object) = @_;
  my $text = $object->{default};
  return undef if !defined $text;
  $text =~ s/^\s+|\s+$//g;
  my ($cpp, $type) = @$object{qw(cpp type)};
  my $names = $object->{names};
  if ($cpp eq 'bool') {
    return {true => 'true', 1 => 'true', false => 'false', 2 => 'false'}->{$text};
  } elsif ($cpp =~ /^snmp::(?:RowStatus|StorageType|InetAddressType)$/) {
    my ($name) = grep { $_ eq $text || $names->{$_} eq $text } keys %$names;
    return defined $name ? "${cpp}::" . ucfirst $name : undef;
  } elsif ($type eq 'BITS' && $object->{enum}) {
    my @bits = grep { defined } map { $object->{enum}{names}{$_} }
      $text =~ /[A-Za-z][\w-]*/g;
    return @bits ? '{' . join(', ', map { "$object->{enum}{name}::$_" } @bits) . '}'
      : '';
  } elsif ($object->{enum}) {
    my ($name) = grep { $_ eq $text || $names->{$_} eq $text } keys %$names;
    return defined $name ? "${cpp}::" . $object->{enum}{names}{$name} : undef;
  } elsif ($cpp =~ /^std::u?int32_t$/) {
    return $text =~ /^-?\d+$/ ? _number($object, $text) : undef;
  } elsif ($cpp eq 'snmp::TimeTicks' || $cpp eq 'snmp::TestAndIncr') {
    return $text =~ /^\d+$/ ? "${cpp}{$text}" : undef;
  } elsif ($cpp eq 'snmp::Oid') {
    return _defaultOid($text, $object->{module});
  } elsif ($cpp eq 'snmp::IpAddress') {
    return undef if $text !~ /^\d+$/;
    return $text == 0 ? '' : "$cpp(" . join(', ', unpack 'C4', pack 'N', $text) . ')';
  } elsif ($type eq 'OCTETSTR' && $text =~ /^\\?"(.*?)\\?"$/s) {
    return $cpp eq 'std::string' ? _quoted($1) : $cpp =~ /array/
      ? _octets($object, map { ord } split //, $1) : undef;
  } elsif ($type eq 'OCTETSTR' && $text =~ /^\d+$/) {
    return _defaultOctets($object, $text);
  }
  return undef;
}

sub _defaultOid {
  my ($text, $module) = @_;
  return "\"$1\"" if $text =~ /^\{?\s*(\d+(?:[.\s]+\d+)+)\s*\}?$/
    && ($text = join '.', split /[.\s]+/, $1) && $text =~ /^([\d.]+)$/;
  return '"0.0"' if $text eq 'zeroDotZero';
  my $node = SnmpSubAgent::Mib::find($text, $module);
  return $node ? '"' . SnmpSubAgent::Mib::oidOf($node) . '"' : undef;
}

# The parser has made a number of '0a00'H.
sub _defaultOctets {
  my ($object, $number) = @_;
  return undef if $number >= 2**63 || $object->{cpp} !~ /string|array/;
  my $least = @{$object->{bounds}} ? $object->{bounds}[0][0] : 0;
  my @octets;
  for (; $number > 0; $number = int($number / 256)) {
    unshift @octets, $number % 256;
  }
  unshift @octets, 0 while @octets < $least;
  return _octets($object, @octets);
}

sub _octets {
  my ($object, @octets) = @_;
  return '' if !grep { $_ != 0 } @octets and $object->{cpp} =~ /array/;
  return '{' . join(', ', @octets) . '}' if $object->{cpp} =~ /array/;
  return '' if !@octets;
  my $text = '"' . join('', map { sprintf '\\%03o', $_ } @octets) . '"';
  return (grep { $_ == 0 } @octets) ? "std::string($text, " . @octets . ')' : $text;
}

sub _quoted {
  my ($text) = @_;
  return '' if $text eq '';
  $text =~ s/([\\"])/\\$1/g;
  $text =~ s/([^\x20-\x7e])/sprintf '\\%03o', ord $1/ge;
  return "\"$text\"";
}

# The constraints of an object that managers write, as calls:
# (".Range(0, 90)").
sub rules {
  my ($object) = @_;
  my $cpp = $object->{cpp};
  return _valueRules($object) if $object->{enum} && $object->{type} ne 'BITS';
  return _bitRules($object) if $object->{enum};
  return _conventionRules($object) if $cpp =~ /^snmp::(?:RowStatus|StorageType|InetAddressType)$/;
  return map { $_->[0] == $_->[1] && $cpp eq 'std::string' ? ".Size($_->[0])"
    : ".Size($_->[0], $_->[1])" } @{$object->{bounds}}
    if $cpp eq 'std::string' || $cpp eq 'snmp::Opaque';
  return map { ".Range($_->[0], $_->[1])" } grep { !_isAll($object, $_) }
    @{$object->{bounds}} if $cpp =~ /^std::u?int32_t$/;
  return ();
}

sub _isAll {
  my ($object, $bounds) = @_;
  my ($low, $high) = @$bounds;
  return $object->{cpp} eq 'std::int32_t' ? $low <= -2**31 && $high >= 2**31 - 1
    : $low == 0 && $high >= 2**32 - 1;
}

# Runs of numbers that follow each other.
sub _runs {
  my @runs;
  foreach my $number (sort { $a <=> $b } @_) {
    if (@runs && $number <= $runs[-1][1] + 1) {
      $runs[-1][1] = $number;
    } else {
      push @runs, [$number, $number];
    }
  }
  return @runs;
}

# A few values by their names, many as ranges.
sub _valueRules {
  my ($object) = @_;
  my $names = $object->{names};
  my @labels = sort { $names->{$a} <=> $names->{$b} } keys %$names;
  return '.Values(' . join(', ',
    map { "$object->{enum}{name}::$object->{enum}{names}{$_}" } @labels) . ')'
    if @labels <= 6;
  return map { ".Range($_->[0], $_->[1])" } _runs(values %$names);
}

sub _bitRules {
  my ($object) = @_;
  my $names = $object->{names};
  my @labels = sort { $names->{$a} <=> $names->{$b} } keys %$names;
  return '.NamedBits(' . join(', ',
    map { "$object->{enum}{name}::$object->{enum}{names}{$_}" } @labels) . ')';
}

sub _conventionRules {
  my ($object) = @_;
  my $names = $object->{names};
  my @labels = sort { $names->{$a} <=> $names->{$b} } keys %$names;
  return '.Values(' . join(', ', map { "$object->{cpp}::" . ucfirst } @labels) . ')';
}

# The type of an object that is an index.
sub indexType {
  my ($object) = @_;
  my $cpp = $object->{cpp};
  return 'std::string' if $cpp =~ /time_point/;
  return 'snmp::TimeTicks' if $cpp eq 'snmp::TimeStamp';
  return 'std::int32_t' if $cpp eq 'snmp::TestAndIncr';
  return $cpp;
}

# "DisplayString (0..32), seconds, read-write"
my %syntaxes = (
  INTEGER => 'INTEGER', INTEGER32 => 'Integer32', UNSIGNED32 => 'Unsigned32',
  GAUGE => 'Gauge32', COUNTER => 'Counter32', COUNTER64 => 'Counter64',
  TICKS => 'TimeTicks', OCTETSTR => 'OCTET STRING', IPADDR => 'IpAddress',
  OBJECTID => 'OBJECT IDENTIFIER', OPAQUE => 'Opaque',
  NETADDR => 'NetworkAddress',
);
sub note {
  my ($object, $isIndex) = @_;
  my $text = $syntaxes{$object->{syntax}} || $object->{syntax};
  my @bounds = map { $_->[0] == $_->[1] ? $_->[0] : "$_->[0]..$_->[1]" }
    @{$object->{bounds}};
  $text .= ' (' . join(' | ', @bounds) . ')' if @bounds;
  return join ', ', grep { $_ } $text, $object->{units},
    $isIndex ? 'index' : $object->{access};
}

1;
