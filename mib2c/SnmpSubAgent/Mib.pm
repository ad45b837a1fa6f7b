# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Mib;

# What a MIB says of the objects at or below a node, as plain hashes, from what
# Net-SNMP's parser has read. Knows nothing of C++.
use strict;
use warnings;

# An entry has a table above it, and its columns below.
sub _isEntry {
  my ($node) = @_;
  return 0 if $node->{type} || !$node->{parent};
  return 1 if $node->{augments} || @{$node->{indexes} || []};
  # One without an INDEX clause, as the oldest modules have them.
  return ($node->{access} || '') eq 'NoAccess'
    && ($node->{parent}{access} || '') eq 'NoAccess'
    && !$node->{parent}{type};
}

# The node with that label, rather the one that `$module` means by it; none if
# no module is loaded that defines it.
sub find {
  my ($label, $module) = @_;
  foreach my $name (defined $module ? "${module}::$label" : (), $label) {
    my $node = $SNMP::MIB{$name};
    return $node if $node && $node->{objectID};
  }
  return undef;
}

sub oidOf {
  my ($node) = @_;
  return $node->{objectID} =~ s/^\.//r;
}

# For sorting in the order of OIDs.
sub oidKey {
  my ($oid) = @_;
  return pack 'N*', split /\./, $oid;
}

# The parser keeps bounds in 32 bits with a sign.
sub _bounds {
  my ($node) = @_;
  my $isSigned = $node->{type} =~ /^INTEGER/;
  my @bounds;
  foreach my $range (@{$node->{ranges} || []}) {
    my ($low, $high) = ($range->{low}, $range->{high});
    $low += 2**32 if $low < 0 && !$isSigned;
    $high += 2**32 if $high < $low || ($high < 0 && !$isSigned);
    push @bounds, [$low, $high];
  }
  return [sort { $a->[0] <=> $b->[0] } @bounds];
}

my %accessWords = (
  ReadOnly => 'read-only',
  ReadWrite => 'read-write',
  WriteOnly => 'write-only',
  Create => 'read-create',
  NoAccess => 'not-accessible',
  Notify => 'accessible-for-notify',
);

# An object whose SYNTAX no module that is loaded defines: it has an access, and
# no type.
sub _lacksType {
  my ($node) = @_;
  return !$node->{type} && ($node->{access} || 'NoAccess') ne 'NoAccess';
}

# An object that has values: a scalar or a column; `type` is empty if no module
# that is loaded has it.
sub object {
  my ($node) = @_;
  return {
    label => $node->{label},
    oid => oidOf($node),
    number => $node->{subID},
    module => $node->{moduleID},
    type => $node->{type} || '',
    syntax => $node->{syntax} || $node->{type} || 'a SYNTAX that no module defines',
    access => $accessWords{$node->{access} || ''} || 'not-accessible',
    bounds => _bounds($node),
    names => {%{$node->{enums} || {}}},
    units => $node->{units},
    hint => $node->{hint} || '',
    default => $node->{defaultValue},
    description => $node->{description} || '',
  };
}

# The entry whose rows a row of this one belongs to: itself, or the one that it
# augments.
sub baseOf {
  my ($entry) = @_;
  for (my $steps = 0; $entry->{augments} && $steps < 8; ++$steps) {
    my $base = find($entry->{augments}, $entry->{moduleID}) or last;
    $entry = $base;
  }
  return $entry;
}

# The indexes of an entry, as objects; undefined if one of them is in no module
# that is loaded.
sub indexes {
  my ($entry) = @_;
  my $base = baseOf($entry);
  my @indexes = map { find($_, $base->{moduleID}) } @{$base->{indexes} || []};
  return undef if grep { !defined $_ || !$_->{type} } @indexes;
  return [map { object($_) } @indexes];
}

sub _table {
  my ($entry) = @_;
  my $table = $entry->{parent};
  my $base = baseOf($entry);
  return {
    label => $table->{label},
    oid => oidOf($table),
    module => $entry->{moduleID},
    description => $table->{description} || '',
    entry => $entry->{label},
    entryOid => oidOf($entry),
    entryNumber => $entry->{subID},
    base => oidOf($base),
    indexes => indexes($entry),
    implied => $base->{implied} ? 1 : 0,
    columns => [
      map { object($_) }
      sort { $a->{subID} <=> $b->{subID} }
      grep { $_->{type} || _lacksType($_) } @{$entry->{children} || []}
    ],
  };
}

# What a notification carries: objects, each with the table that it is a column
# of, if any; undefined for a label that nothing has.
sub _sent {
  my ($label, $module) = @_;
  my $node = find($label, $module);
  return undef if !$node || !$node->{type};
  my $sent = object($node);
  $sent->{table} = _table($node->{parent}) if _isEntry($node->{parent});
  return $sent;
}

sub _notification {
  my ($node) = @_;
  my $oid = oidOf($node);
  # The traps of RFC 1215 have notifications in their places (RFC 3584, 3.1).
  $oid = '1.3.6.1.6.3.1.1.5.' . ($node->{subID} + 1)
    if $node->{type} ne 'NOTIF' && $oid =~ /^1\.3\.6\.1\.2\.1\.11\.0\.\d+$/;
  return {
    label => $node->{label},
    oid => $oid,
    module => $node->{moduleID},
    description => $node->{description} || '',
    objects => [
      map { {label => $_, object => _sent($_, $node->{moduleID})} }
        @{$node->{varbinds} || []}
    ],
  };
}

# The parser says of the 0 above a TRAP-TYPE that it is one.
sub _isNotification {
  my ($node) = @_;
  my $type = $node->{type} || '';
  return $type eq 'NOTIF' || ($type eq 'TRAP' && !@{$node->{children} || []})
    || ($type eq '' && $node->{parent} && ($node->{parent}{type} || '') eq 'TRAP');
}

# Nodes of these types have no values.
my $notValues =
  qr/^(?:TRAP|OBJIDENTITY|MODID|OBJGROUP|NOTIFGROUP|AGENTCAP|MODCOMP|OBJECT)$/;

sub _walk {
  my ($node, $mib, $wants) = @_;
  my $type = $node->{type} || '';
  if (_isEntry($node) && @{$node->{children} || []}) {
    push @{$mib->{tables}}, _table($node) if $wants->($node);
    return;
  }
  if (_isNotification($node)) {
    push @{$mib->{notifications}}, _notification($node) if $wants->($node);
  } elsif (_lacksType($node)
           || ($type && $type !~ $notValues && $node->{access})) {
    push @{$mib->{scalars}}, object($node) if $wants->($node);
  }
  _walk($_, $mib, $wants) foreach @{$node->{children} || []};
}

# The highest node above an object that is its module's, but not above `$top`.
sub _topOf {
  my ($oid, $module, $top) = @_;
  while ($oid ne $top) {
    my $above = $oid =~ s/\.\d+$//r;
    my $node = $SNMP::MIB{".$above"};
    last if ($node->{moduleID} || '') ne $module;
    $oid = $above;
  }
  return $oid;
}

# The least subtrees in which the modules have their objects: what an agent
# registers.
sub _subtrees {
  my ($mib, $top) = @_;
  my %tops;
  $tops{_topOf($_->{oid}, $_->{module}, $top)} = 1
    foreach @{$mib->{scalars}}, @{$mib->{tables}};
  my @subtrees;
  foreach my $oid (sort { oidKey($a) cmp oidKey($b) } keys %tops) {
    push @subtrees, $oid if !grep { index("$oid.", "$_.") == 0 } @subtrees;
  }
  return @subtrees ? \@subtrees : [$top];
}

# All at or below the node with that name; only what `$module` defines, if that
# is given.
sub read {
  my ($name, $module) = @_;
  my $top = $SNMP::MIB{$name};
  my $mib = {scalars => [], tables => [], notifications => []};
  my $wants = sub { !defined $module || $_[0]{moduleID} eq $module };
  # A node within a table stands for the table.
  $top = $top->{parent} while $top->{parent} && _isEntry($top->{parent});
  _walk($top, $mib, $wants);
  foreach my $list (@$mib{qw(scalars tables notifications)}) {
    @$list = sort { oidKey($a->{oid}) cmp oidKey($b->{oid}) } @$list;
  }
  $mib->{subtrees} = _subtrees($mib, oidOf($top));
  return $mib;
}

1;
