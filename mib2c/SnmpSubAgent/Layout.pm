# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Layout;

# Lines of C++ that are no longer than 80 columns.
use strict;
use warnings;
use Exporter 'import';
our @EXPORT_OK = qw(comment sentence flat statement declaration);

my $width = 80;

# A comment of these words.
sub comment {
  my ($indent, $text) = @_;
  my $head = (' ' x $indent) . '//';
  my ($lines, $line) = ('', $head);
  foreach my $word (split ' ', $text) {
    if ($line ne $head && length("$line $word") > $width) {
      $lines .= "$line\n";
      $line = $head;
    }
    $line .= " $word";
  }
  $lines .= "$line\n";
  # One at the end of a line would join the next one to the comment.
  $lines =~ s/\\+$//mg;
  return $lines;
}

# The first sentence of a DESCRIPTION.
sub sentence {
  my ($text) = @_;
  $text =~ s/\r//g;
  $text =~ s/^\s+//;
  $text =~ s/\n\s*\n.*//s;
  $text =~ s/\s+/ /g;
  $text =~ s/[^\x20-\x7e]+/?/g;
  $text =~ s/\?\?+/?/g;
  $text =~ s/\\(["'])/$1/g;
  $text =~ s{^(.*?(?<!\be\.g)(?<!\bi\.e)(?<!\bcf)(?<!\betc)(?<!\bvs)\.)
             \s+["(]?[A-Z].*}{$1}x;
  if (length $text > 320) {
    $text = substr $text, 0, 320;
    $text =~ s/\s+\S*$/ .../;
  }
  $text =~ s/\s+$//;
  return '' if $text !~ /\w/;
  return $text =~ /[.!?:]$/ || $text eq '' ? $text : "$text.";
}

# An expression is a string; {head, args} for head(args), with other brackets
# as {head, args, brackets}; or {chain}, expressions without anything between.
sub flat {
  my ($expression) = @_;
  return $expression if !ref $expression;
  return join '', map { flat($_) } @{$expression->{chain}}
    if $expression->{chain};
  my ($open, $close) = split //, $expression->{brackets} || '()';
  return $expression->{head} . $open
    . join(', ', map { flat($_) } @{$expression->{args}}) . $close;
}

sub _end {
  my ($column, $text) = @_;
  return $text =~ /\n([^\n]*)\z/ ? length $1 : $column + length $text;
}

sub _isTooWide {
  my ($column, $text, $tail) = @_;
  my @lines = split /\n/, (' ' x $column) . $text . ('x' x $tail);
  return grep { length > $width } @lines;
}

# The text of an expression that begins at `$column` of a line with that
# indent, with room for `$tail` more columns behind it.
sub _render {
  my ($expression, $column, $indent, $tail) = @_;
  my $flat = flat($expression);
  return $flat if !_isTooWide($column, $flat, $tail);
  return _broken($flat, $indent) if !ref $expression;
  return _renderChain(@_) if $expression->{chain};
  my $start = $column + length($expression->{head}) + 1;
  my $aligned = _renderCall($expression, $start, $start, $tail, '');
  return $aligned if !_isTooWide($column, $aligned, $tail);
  my $inner = $indent + 4;
  return _renderCall($expression, $inner, $inner, $tail, "\n" . ' ' x $inner);
}

# On two lines: a type and a name, a scope and a name, an object and a member.
sub _broken {
  my ($text, $indent) = @_;
  return $text if $text =~ /"/;
  my $inner = ' ' x ($indent + 4);
  return $text if $text =~ s/^(.*\S) (\S+)$/$1\n$inner$2/;
  return $text if $text =~ s/^(.*::)(?=\w)/$1\n$inner/;
  return $text =~ s/(?=\.)/\n$inner/r;
}

sub _renderCall {
  my ($call, $column, $inner, $tail, $break) = @_;
  my ($open, $close) = split //, $call->{brackets} || '()';
  my $text = '';
  my @args = @{$call->{args}};
  foreach my $i (0 .. $#args) {
    my $behind = $i < $#args ? 1 : 1 + $tail;
    if ($i > 0) {
      my $isFitting = $column + 2 + length(flat($args[$i])) + $behind <= $width;
      $text .= $isFitting ? ', ' : ",\n" . ' ' x $inner;
      $column = $isFitting ? $column + 2 : $inner;
    }
    my $arg = _render($args[$i], $column, $inner, $behind);
    $text .= $arg;
    $column = _end($column, $arg);
  }
  return $call->{head} . $open . $break . $text . $close;
}

sub _renderChain {
  my ($expression, $column, $indent, $tail) = @_;
  my $text = '';
  my @links = @{$expression->{chain}};
  my $link = '';
  foreach my $i (0 .. $#links) {
    my $behind = $i < $#links ? 0 : $tail;
    my $isWide = $column + length(flat($links[$i])) + $behind > $width;
    if ($i > 0 && ($isWide || $link =~ /\n/)) {
      $text .= "\n" . ' ' x ($indent + 4);
      $column = $indent + 4;
    }
    $link = _render($links[$i], $column, $indent, $behind);
    $text .= $link;
    $column = _end($column, $link);
  }
  return $text;
}

# The expression on lines of its own, with `$tail` behind.
sub statement {
  my ($indent, $expression, $tail) = @_;
  my $text = _render($expression, $indent, $indent, length $tail);
  # A function whose type is long has its name on the next line.
  if (_isTooWide($indent, $text, 0) && ref $expression && $expression->{head}
      && $expression->{head} =~ /^(\S+) (\S+)$/) {
    return ' ' x $indent . "$1\n"
      . statement($indent, {%$expression, head => $2}, $tail);
  }
  return ' ' x $indent . "$text$tail\n";
}

# A variable of that type, with a first value if `$value` is not empty: an
# expression, or a list of them for braces.
sub declaration {
  my ($indent, $type, $name, $value) = @_;
  $value //= '';
  my $hasBraces = ref $value eq 'ARRAY';
  my $flat = $hasBraces ? "$name\{" . join(', ', @$value) . '};'
    : $name . ($value eq '' ? ';' : " = $value;");
  my ($first, $inner) = (' ' x $indent, ' ' x ($indent + 4));
  return "$first$type $flat\n" if $indent + length("$type $flat") <= $width;
  return "$first$type $name =\n$inner$value;\n"
    if !$hasBraces && $value ne ''
    && $indent + length("$type $name =") <= $width;
  return statement($indent, {head => "$type $name", args => $value, brackets => '{}'},
    ';') if $hasBraces && $indent + length("$type $name\{") <= $width;
  return "$first$type\n$inner$flat\n" if $indent + 4 + length($flat) <= $width;
  return "$first$type\n" . statement($indent + 4, {head => $name, args => $value,
    brackets => '{}'}, ';') if $hasBraces;
  return "$first$type\n$inner$name =\n$inner    $value;\n";
}

1;
