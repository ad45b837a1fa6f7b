# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Model;

# A MIB as the C++ that stands for it: what has which name and type.
use strict;
use warnings;
use SnmpSubAgent::Enums;
use SnmpSubAgent::Mib;
use SnmpSubAgent::Names;
use SnmpSubAgent::Types;

# Adds to the hashes of SnmpSubAgent::Mib::read() the names and types of C++:
#
#   mib            types, the scope of its types; members, of the objects;
#                  enums; left, notes on what is left out
#   scalar         cpp, initial, name
#   table          row, key, alias (types), name, parts, members, shares (the
#                  table whose rows it has), status, storage (columns)
#   column         cpp, initial, name, kind (index, status, storage, member or
#                  hidden), part (which of the key)
#   notification   name, send; parameters {cpp, name, of} and values
sub build {
  my ($mib) = @_;
  $mib->{types} = SnmpSubAgent::Names->new(qw(Objects Service));
  $mib->{members} = SnmpSubAgent::Names->new(qw(module agent options snmp std));
  $mib->{enums} = SnmpSubAgent::Enums->new($mib->{types});
  $mib->{left} = [];
  $mib->{keys} = {};
  $mib->{keyList} = [];
  _nameTypes($_, $mib) foreach @{$mib->{tables}};
  _scalar($_, $mib) foreach @{$mib->{scalars}};
  _keep($mib, 'scalars', sub { $_[0]{cpp} ne '' });
  _rows($mib);
  _notification($_, $mib) foreach @{$mib->{notifications}};
  # What is only sent is served by nobody.
  _keep($mib, 'scalars', \&SnmpSubAgent::Types::isReadable);
  return $mib;
}

sub _keep {
  my ($mib, $list, $wanted) = @_;
  @{$mib->{$list}} = grep { $wanted->($_) } @{$mib->{$list}};
}

sub _leave {
  my ($mib, $label, $why) = @_;
  push @{$mib->{left}}, "$label: $why";
  return undef;
}

sub _scalar {
  my ($scalar, $mib) = @_;
  SnmpSubAgent::Types::resolve($scalar, $mib->{enums});
  return _leave($mib, $scalar->{label}, "no type for $scalar->{syntax}")
    if $scalar->{cpp} eq '';
  _noteCounter($scalar, $mib);
  # One that is only sent is no member.
  $scalar->{name} =
    $mib->{members}->take(SnmpSubAgent::Names::member($scalar->{label}))
    if SnmpSubAgent::Types::isReadable($scalar);
}

# SMIv2 has no counter that managers write.
sub _noteCounter {
  my ($object, $mib) = @_;
  _leave($mib, $object->{label}, 'write access to a counter')
    if SnmpSubAgent::Types::isWritable($object) && $object->{cpp} =~ /^snmp::Counter/;
}

sub _nameTypes {
  my ($table, $mib) = @_;
  my $scope = $mib->{types};
  $table->{row} = $scope->take(SnmpSubAgent::Names::type($table->{entry}));
  $table->{alias} = $scope->take(SnmpSubAgent::Names::type($table->{label}));
  $table->{name} =
    $mib->{members}->take(SnmpSubAgent::Names::member($table->{label}));
}

# The parts of a key: {cpp, columns}, the columns being those indexes that the
# part stands for; undefined if a type has no place in an index.
sub _parts {
  my ($table, $enums) = @_;
  my @indexes = @{$table->{indexes} || return undef};
  # The oldest tables do not say what their index is.
  return [{cpp => 'snmp::Implied<snmp::Oid>', columns => [], name => 'index'}]
    if !@indexes;
  SnmpSubAgent::Types::resolve($_, $enums) foreach @indexes;
  my @parts;
  while (my $index = shift @indexes) {
    my $cpp = SnmpSubAgent::Types::indexType($index);
    return undef if $cpp =~ /^$|Counter64|Opaque|^float|^double/;
    my @columns = ($index);
    if ($cpp eq 'snmp::InetAddressType' && @indexes
        && $indexes[0]{syntax} eq 'InetAddress'
        && $indexes[0]{cpp} eq 'std::string' && (@indexes > 1 || !$table->{implied})
        && !SnmpSubAgent::Types::fixedSize($indexes[0])) {
      $cpp = 'snmp::InetAddress';
      push @columns, shift @indexes;
    } elsif ($table->{implied} && !@indexes && $cpp =~ /^(?:std::string|snmp::Oid)$/) {
      $cpp = "snmp::Implied<$cpp>";
    }
    push @parts, {cpp => $cpp, columns => \@columns};
  }
  return \@parts;
}

# The key of a table, ours or another one: {cpp, parts, name}, cpp being the
# name of an alias if there are several parts.
sub _keyOf {
  my ($table, $mib) = @_;
  my $known = $mib->{keys}{$table->{base}};
  return $known if $known;
  my $parts = _parts($table, $mib->{enums}) or return undef;
  my $stem = $table->{entry} =~ s/Entry$//r;
  my $key = {
    parts => $parts,
    entry => $table->{entry},
    labels => [map { $_->{label} } map { @{$_->{columns}} } @$parts],
  };
  if (@$parts == 1) {
    $key->{cpp} = $parts->[0]{cpp};
    $key->{name} = $key->{labels}[-1] // "${stem}Index";
  } else {
    $key->{cpp} = $mib->{types}->take(SnmpSubAgent::Names::type("${stem}Key"));
    $key->{tuple} = 'std::tuple<' . join(', ', map { $_->{cpp} } @$parts) . '>';
    $key->{name} = "${stem}Key";
  }
  push @{$mib->{keyList}}, $key;
  return $mib->{keys}{$table->{base}} = $key;
}

# Which part of the key a column is: {part, of}, `of` being 0 for the type of
# an InetAddress and 1 for the address.
sub _partOf {
  my ($column, $key) = @_;
  foreach my $part (0 .. $#{$key->{parts}}) {
    my @columns = @{$key->{parts}[$part]{columns}};
    foreach my $place (0 .. $#columns) {
      return {part => $part, of => @columns > 1 ? $place : undef}
        if $columns[$place]{oid} eq $column->{oid};
    }
  }
  return undef;
}

sub _rows {
  my ($mib) = @_;
  my %byEntry = map { ("$_->{oid}.$_->{entryNumber}" => $_) } @{$mib->{tables}};
  foreach my $table (@{$mib->{tables}}) {
    my $base = $byEntry{$table->{base}};
    $table->{shares} = $base if $base && $base != $table;
  }
  # Those that others share are built first.
  @{$mib->{tables}} = ((grep { !$_->{shares} } @{$mib->{tables}}),
                       (grep { $_->{shares} } @{$mib->{tables}}));
  _table($_, $mib) foreach @{$mib->{tables}};
  _keep($mib, 'tables', sub { $_[0]{key} && !($_[0]{shares} && !$_[0]{shares}{key}) });
}

sub _table {
  my ($table, $mib) = @_;
  my $owner = $table->{shares} || $table;
  $table->{key} = _keyOf($table, $mib)
    or return _leave($mib, $table->{label}, 'its index is of no known type');
  return _leave($mib, $table->{label}, "its entry is the $table->{entryNumber} "
    . 'below it, not the 1'), $table->{key} = undef if $table->{entryNumber} != 1;
  $owner->{members} ||= SnmpSubAgent::Names->new;
  $table->{row} = $owner->{row};
  foreach my $column (@{$table->{columns}}) {
    SnmpSubAgent::Types::resolve($column, $mib->{enums});
    _noteCounter($column, $mib);
    _column($column, $table, $owner);
    _leave($mib, $column->{label}, "no type for $column->{syntax}")
      if $column->{cpp} eq '' && $column->{kind} eq 'hidden';
  }
}

sub _column {
  my ($column, $table, $owner) = @_;
  my $access = $column->{access};
  if (my $place = _partOf($column, $table->{key})) {
    @$column{qw(kind part of)} = ('index', @$place{qw(part of)});
  } elsif ($access eq 'not-accessible' || $column->{cpp} eq '') {
    $column->{kind} = 'hidden';
  } elsif ($column->{cpp} eq 'snmp::RowStatus' && !$owner->{status}
           && SnmpSubAgent::Types::isWritable($column)) {
    $column->{kind} = 'status';
    $owner->{status} = $column;
  } else {
    $column->{kind} = 'member';
    if ($column->{cpp} eq 'snmp::StorageType' && !$owner->{storage}
        && SnmpSubAgent::Types::isWritable($column)) {
      $column->{kind} = 'storage';
      $owner->{storage} = $column;
    }
    $column->{name} =
      $owner->{members}->take(SnmpSubAgent::Names::member($column->{label}));
    push @{$owner->{fields}}, $column;
  }
}

# Values are {kind, ...}: a scalar of ours is {scalar}; others are {oid, key,
# text}: where they are, the parameter that is the key of their row, and the
# expression that tells them.
sub _notification {
  my ($notification, $mib) = @_;
  my $label = $notification->{label};
  $notification->{name} =
    $mib->{members}->take(SnmpSubAgent::Names::member($label));
  $notification->{send} =
    $mib->{members}->take('Send' . SnmpSubAgent::Names::type($label));
  $notification->{scope} =
    SnmpSubAgent::Names->new(keys %{$mib->{members}});
  $notification->{parameters} = [];
  $notification->{values} = [];
  my %count;
  foreach my $sent (@{$notification->{objects}}) {
    my $value = _value($sent->{object}, ++$count{$sent->{label}}, $notification, $mib);
    if ($value) {
      push @{$notification->{values}}, $value;
    } else {
      _leave($mib, $label, "nothing that is loaded defines its $sent->{label}");
    }
  }
}

# The name of the parameter with that id: it is made when it is first asked for.
# `$of` is the object, key or table that it is a value of.
sub _parameter {
  my ($notification, $id, $cpp, $name, $of) = @_;
  my ($known) = grep { $_->{id} eq $id } @{$notification->{parameters}};
  if (!$known) {
    $known = {
      id => $id, cpp => $cpp, of => $of,
      name => $notification->{scope}->take(SnmpSubAgent::Names::member($name)),
    };
    push @{$notification->{parameters}}, $known;
  }
  return $known->{name};
}

sub _value {
  my ($object, $nth, $notification, $mib) = @_;
  return undef if !$object;
  return _cellValue($object, $nth, $notification, $mib) if $object->{table};
  my ($scalar) = grep { $_->{oid} eq $object->{oid} } @{$mib->{scalars}};
  return {scalar => $scalar}
    if $scalar && SnmpSubAgent::Types::isReadable($scalar);
  SnmpSubAgent::Types::resolve($object, $mib->{enums});
  return undef if $object->{cpp} eq '';
  my $text = _parameter($notification, "$object->{oid} $nth", $object->{cpp},
    $object->{label}, $object);
  return {oid => "$object->{oid}.0", text => $text};
}

# Of a table of ours, the row is given; of another one, the value. Rows with
# the same indexes are one row; the same object again is of another row.
sub _cellValue {
  my ($object, $nth, $notification, $mib) = @_;
  my ($table) = grep { $_->{entryOid} eq $object->{table}{entryOid} } @{$mib->{tables}};
  my $key = $table ? $table->{key} : _keyOf($object->{table}, $mib);
  return undef if !$key;
  my $id = join(' ', 'key', @{$key->{labels}}) . " $nth";
  my $keyName = _parameter($notification, $id, $key->{cpp}, $key->{name},
    $key);
  my $value = {oid => $object->{oid}, key => $keyName};
  if (my $place = _partOf($object, $key)) {
    $value->{text} = _partText($keyName, $key, $place);
    return $value;
  }
  my ($column) = $table ? grep { $_->{oid} eq $object->{oid} } @{$table->{columns}} : ();
  if ($column && $column->{kind} eq 'status') {
    $value->{text} = "$table->{name}.Status($keyName)";
  } elsif ($column && $column->{name}) {
    my $owner = $table->{shares} || $table;
    my $row = _parameter($notification, "row $owner->{row} $nth", $owner->{row},
      lcfirst $owner->{row}, $owner);
    $value->{text} = "$row.$column->{name}";
  } else {
    SnmpSubAgent::Types::resolve($object, $mib->{enums});
    return undef if $object->{cpp} eq '';
    $value->{text} = _parameter($notification, "$object->{oid} $nth", $object->{cpp},
      $object->{label}, $object);
  }
  return $value;
}

# An index, as an expression on the key.
sub _partText {
  my ($name, $key, $place) = @_;
  my $cpp = $key->{parts}[$place->{part}]{cpp};
  my $text = @{$key->{parts}} > 1 ? "std::get<$place->{part}>($name)" : $name;
  $text .= '.value' if $cpp =~ /Implied/;
  $text .= '.type' if defined $place->{of} && $place->{of} == 0;
  return $text;
}

1;
