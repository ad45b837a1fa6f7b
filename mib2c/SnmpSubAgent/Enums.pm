# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Enums;

# The enumerations of a MIB: one for each textual convention, and one for each
# object that has values or bits of its own.
use strict;
use warnings;
use SnmpSubAgent::Names;

sub new {
  my ($class, $names) = @_;
  return bless {names => $names, list => [], byKey => {}}, $class;
}

# In the order in which they were asked for.
sub all { return @{$_[0]{list}} }

sub _agree {
  my ($some, $others) = @_;
  my %labelOf = reverse %$others;
  foreach my $label (keys %$some) {
    my $value = $some->{$label};
    return 0 if exists $others->{$label} && $others->{$label} != $value;
    return 0 if exists $labelOf{$value} && $labelOf{$value} ne $label;
  }
  return 1;
}

# The enumeration for the values of an object: {name, values, names}, names
# being those in C++ by label.
sub of {
  my ($self, $object) = @_;
  my $isInline = $object->{syntax} eq $object->{type};
  my $kind = $object->{type} eq 'BITS' ? 'bits' : 'values';
  my $key = $isInline ? "$object->{oid}" : "$kind $object->{syntax}";
  my $enum = $self->{byKey}{$key};
  if ($enum && !_agree($object->{names}, $enum->{values})) {
    # Another module's convention of the same name.
    $key = $object->{oid};
    $enum = $self->{byKey}{$key};
  }
  if (!$enum) {
    my $name = $key eq $object->{oid} ? $object->{label} : $object->{syntax};
    $enum = {
      name => $self->{names}->take(SnmpSubAgent::Names::type($name)),
      label => $name, values => {}, names => {}, isBits => $kind eq 'bits',
      scope => SnmpSubAgent::Names->new,
    };
    push @{$self->{list}}, $enum;
    $self->{byKey}{$key} = $enum;
  }
  $self->_add($enum, $object->{names});
  return $enum;
}

# An object may have but some of its convention's values.
sub _add {
  my ($self, $enum, $values) = @_;
  foreach my $label (sort { $values->{$a} <=> $values->{$b} || $a cmp $b }
                     keys %$values) {
    next if exists $enum->{names}{$label};
    $enum->{values}{$label} = $values->{$label};
    $enum->{names}{$label} =
      $enum->{scope}->take(SnmpSubAgent::Names::type($label));
  }
}

1;
