# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
package SnmpSubAgent::Names;

# Names of a MIB as identifiers of C++, each once in its scope.
use strict;
use warnings;

# The keywords of C++, also of the versions to come, and what the C library
# and compilers define as macros in lower case.
my %reserved = map { $_ => 1 } qw(
  alignas alignof and and_eq asm auto bitand bitor bool break case catch char
  char8_t char16_t char32_t class co_await co_return co_yield compl concept
  const const_cast consteval constexpr constinit continue decltype default
  delete do double dynamic_cast else enum explicit export extern false float
  for friend goto if inline int long mutable namespace new noexcept not not_eq
  nullptr operator or or_eq private protected public register
  reinterpret_cast requires return short signed sizeof static static_assert
  static_cast struct switch template this thread_local throw true try typedef
  typeid typename typeof union unsigned using virtual void volatile wchar_t
  while xor xor_eq
  assert errno i386 isset linux major makedev minor offsetof setbit clrbit
  sparc stderr stdin stdout unix vax
);

# Those in upper case that labels of enumerations have been seen to hit.
$reserved{$_} = 1 foreach qw(
  BIG_ENDIAN BUFSIZ BYTE_ORDER DOMAIN EOF EXIT_FAILURE EXIT_SUCCESS FALSE
  HUGE HUGE_VAL INFINITY LITTLE_ENDIAN NAN NULL OVERFLOW PDP_ENDIAN PLOSS
  RAND_MAX SEEK_CUR SEEK_END SEEK_SET SING TLOSS TRUE UNDERFLOW
);

# A scope, in which some names are reserved.
sub new {
  my ($class, @reserved) = @_;
  return bless {map { $_ => 'reserved' } @reserved}, $class;
}

# `$name` as an identifier that this scope does not have yet.
sub take {
  my ($self, $name) = @_;
  $name = "_$name" if $name =~ /^[0-9]/;
  # E and a capital begin the macros of <cerrno>, SIG those of <csignal>.
  $name .= '_' if $reserved{$name} || ($self->{$name} // '') eq 'reserved' || $name =~ /^(?:E|SIG)[A-Z0-9]+$/;
  my $unique = $name;
  for (my $count = 2; $self->{$unique}; ++$count) {
    $unique = $name . ($name =~ /[0-9]$/ ? '_' : '') . $count;
  }
  $self->{$unique} = 'taken';
  return $unique;
}

sub _joined {
  my ($first, @words) = grep { $_ ne '' } split /[^A-Za-z0-9]+/, $_[0];
  return join '', $first // '_', map { ucfirst } @words;
}

# "ifAdminStatus", "ipv4z-dns" as "ifAdminStatus", "ipv4zDns".
sub member { return lcfirst _joined($_[0]) }

# As "IfAdminStatus", "Ipv4zDns".
sub type { return ucfirst _joined($_[0]) }

# "upsMIB" as "ups_mib": a namespace, which no function of the C library has.
sub namespace {
  my ($name) = @_;
  $name =~ s/[^A-Za-z0-9]+/_/g;
  $name =~ s/([a-z0-9])([A-Z])/$1_$2/g;
  $name =~ s/([A-Z])([A-Z][a-z])/$1_$2/g;
  $name = lc $name;
  $name =~ s/^_+|_+$//g;
  $name = "mib_$name" if $name =~ /^[0-9]/;
  $name .= '_mib' if $name !~ /_mib/;
  return $name;
}

1;
