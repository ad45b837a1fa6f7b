# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package Values;

# Values that a MIB allows, as expressions of C++ for generated code. There are
# several of each kind: `$nth` is 0, 1 and so on.
use strict;
use warnings;

sub _named {
  my ($object, $nth) = @_;
  my $names = $object->{names};
  my @labels = grep { $names->{$_} >= 0 }
    sort { $names->{$a} <=> $names->{$b} } keys %$names;
  @labels = sort { $names->{$a} <=> $names->{$b} } keys %$names if !@labels;
  return $labels[$nth % @labels];
}

sub _number {
  my ($object, $nth) = @_;
  my @bounds = @{$object->{bounds}};
  # A range of one number is often a special case: "none", "any".
  my ($bounds) = grep { $_->[1] > $_->[0] && $_->[1] > 0 } @bounds;
  $bounds ||= $bounds[0] || [0, 1000];
  my ($low, $high) = @$bounds;
  $low = 1 if $low < 1 && $high > $nth + 1;
  my $number = $low + $nth > $high ? $high : $low + $nth;
  return $number == -2**31 ? '-2147483647 - 1' : $number > 2**31 - 1
    ? "${number}u" : $number;
}

sub _literal {
  return 'std::string("' . join('', map { sprintf '\\%03o', $_ } @_) . '", '
    . @_ . ')';
}

sub _octets {
  my ($object, $nth) = @_;
  my @bounds = @{$object->{bounds}};
  my $syntax = $object->{syntax};
  return _literal(7, 234, 1, 1 + $nth, 12, 0, 0, 0) if $syntax eq 'DateAndTime';
  my $allows = sub {
    my ($size) = @_;
    return !@bounds || grep { $_->[0] <= $size && $size <= $_->[1] } @bounds;
  };
  return _literal(192, 0, 2, 1 + $nth) if $syntax =~ /^InetAddress/ && $allows->(4);
  my ($size) = grep { $allows->($_) } 4, 6, 8, 1 .. 64, map { $_->[0] } @bounds;
  return _literal((97) x ($size - 1), 97 + $nth) if $size;
  return 'std::string()';
}

# A value of the object, for an index or not.
sub value {
  my ($object, $nth, $cpp) = @_;
  $cpp //= $object->{cpp};
  my $value = _value($object, $nth, $cpp);
  return $value;
}

sub _value {
  my ($object, $nth, $cpp) = @_;
  return "snmp::InetAddressType::Ipv4" if $cpp eq 'snmp::InetAddressType'
    && exists $object->{names}{ipv4};
  return _named($object, $nth) eq 'true' ? 'true' : 'false' if $cpp eq 'bool';
  return "${cpp}::" . ucfirst _named($object, $nth)
    if $cpp eq 'snmp::InetAddressType';
  return "${cpp}::Active" if $cpp eq 'snmp::RowStatus';
  return "${cpp}::NonVolatile" if $cpp eq 'snmp::StorageType';
  return "$cpp\{$object->{enum}{name}::"
    . $object->{enum}{names}{_named($object, $nth)} . '}' if $cpp =~ /^snmp::Bits/;
  return "${cpp}::" . $object->{enum}{names}{_named($object, $nth)}
    if $object->{enum};
  return "$cpp(" . _number($object, $nth) . ')' if $cpp =~ /^std::u?int/;
  return _octets($object, $nth) if $cpp eq 'std::string';
  return "$cpp\{" . join(', ', (1) x ($1 - 1), $nth + 1) . '}'
    if $cpp =~ /^std::array<.*, (\d+)>$/;
  return "$cpp\{" . ($nth + 1) . '}' if $cpp =~ /Counter|TimeTicks|TestAndIncr/;
  return "$cpp(" . join(', ', 192, 0, 2, $nth + 1) . ')' if $cpp eq 'snmp::IpAddress';
  return 'snmp::NetworkAddress(snmp::IpAddress(192, 0, 2, ' . ($nth + 1) . '))'
    if $cpp eq 'snmp::NetworkAddress';
  return "$cpp(\"1.3.6.1.4.1.32473." . ($nth + 1) . '")' if $cpp eq 'snmp::Oid';
  return 'snmp::TimeStamp::Now()' if $cpp eq 'snmp::TimeStamp';
  return 'std::chrono::system_clock::now()' if $cpp =~ /time_point/;
  return "$cpp\{" . _literal(0x9f, 0x78, 4, 0x3f, 0x80, 0, $nth) . '}'
    if $cpp eq 'snmp::Opaque';
  return "$cpp(1.5)" if $cpp =~ /^(?:float|double)$/;
  die "no value of $cpp for $object->{label}\n";
}

# A key of a table.
sub key {
  my ($key, $nth) = @_;
  my @parts = map { _part($_, $nth) } @{$key->{parts}};
  return @parts > 1 ? "$key->{cpp}(" . join(', ', @parts) . ')' : $parts[0];
}

sub _part {
  my ($part, $nth) = @_;
  my $cpp = $part->{cpp};
  my ($column) = @{$part->{columns}};
  return "snmp::InetAddress(\"192.0.2." . ($nth + 1) . '")'
    if $cpp eq 'snmp::InetAddress';
  return "$cpp(snmp::Oid(\"1.3." . ($nth + 1) . '"))' if !$column;
  return "$cpp(" . value($column, $nth, $1) . ')' if $cpp =~ /^snmp::Implied<(.*)>$/;
  return value($column, $nth, $cpp);
}

# Statements that fill a row named `row`.
sub row {
  my ($table, $nth) = @_;
  return map { "row.$_->{name} = " . value($_, $nth) . ';' } @{$table->{fields} || []};
}

1;
