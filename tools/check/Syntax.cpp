// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Syntax.h"

#include <algorithm>
#include <limits>

namespace snmpsubagent::check {
namespace {

constexpr std::int64_t kMostOctets = 65535;

Base BaseOf(int type) {
  switch (type) {
    case TYPE_INTEGER:
    case TYPE_INTEGER32:
      return Base::Integer;
    case TYPE_GAUGE:
    case TYPE_UNSIGNED32:
    case TYPE_UINTEGER:
      return Base::Unsigned;
    case TYPE_COUNTER:
      return Base::Counter32;
    case TYPE_COUNTER64:
      return Base::Counter64;
    case TYPE_TIMETICKS:
      return Base::TimeTicks;
    case TYPE_OCTETSTR:
    case TYPE_NSAPADDRESS:
      return Base::OctetString;
    case TYPE_BITSTRING:
      return Base::Bits;
    case TYPE_OBJID:
      return Base::ObjectIdentifier;
    case TYPE_IPADDR:
    case TYPE_NETADDR:
      return Base::IpAddress;
    case TYPE_OPAQUE:
      return Base::Opaque;
    default:
      return Base::Unknown;
  }
}

// The parser keeps 4294967295 as -1.
Range RangeOf(const range_list& range, Base base) {
  if (base == Base::Integer) return {range.low, range.high};
  return {static_cast<std::uint32_t>(range.low),
          static_cast<std::uint32_t>(range.high)};
}

std::string RangesText(const std::vector<Range>& ranges) {
  std::string text;
  for (const Range& range : ranges) {
    if (!text.empty()) text += " | ";
    text += std::to_string(range.low);
    if (range.low != range.high) text += ".." + std::to_string(range.high);
  }
  return text;
}

bool IsIn(const std::vector<Range>& ranges, std::int64_t number) {
  return std::any_of(ranges.begin(), ranges.end(),
                     [number](const Range& range) {
                       return number >= range.low && number <= range.high;
                     });
}

// The first bit that is set and has no name.
std::optional<int> UnnamedBit(const std::string& octets,
                              const std::vector<NamedNumber>& names) {
  for (int bit = 0; bit < static_cast<int>(octets.size() * 8); ++bit) {
    if (!(static_cast<unsigned char>(octets[bit / 8]) & (0x80 >> bit % 8))) {
      continue;
    }
    const bool named = std::any_of(
        names.begin(), names.end(),
        [bit](const NamedNumber& name) { return name.number == bit; });
    if (!named) return bit;
  }
  return std::nullopt;
}

}  // namespace

bool Syntax::IsNumber() const {
  return base == Base::Integer || base == Base::Unsigned ||
         base == Base::Counter32 || base == Base::TimeTicks;
}

bool Syntax::IsOctets() const {
  return base == Base::OctetString || base == Base::Bits ||
         base == Base::Opaque;
}

std::optional<std::size_t> Syntax::FixedLength() const {
  if (base != Base::OctetString || ranges.size() != 1 ||
      ranges[0].low != ranges[0].high) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(ranges[0].low);
}

std::vector<Range> Syntax::Allowed() const {
  if (!ranges.empty()) return ranges;
  if (IsOctets()) return {{0, kMostOctets}};
  if (base != Base::Integer) return {{0, 0xffffffff}};
  return {{std::numeric_limits<std::int32_t>::min(),
           std::numeric_limits<std::int32_t>::max()}};
}

u_char Syntax::AsnType() const {
  switch (base) {
    case Base::Integer:
      return ASN_INTEGER;
    case Base::Unsigned:
      return ASN_GAUGE;
    case Base::Counter32:
      return ASN_COUNTER;
    case Base::Counter64:
      return ASN_COUNTER64;
    case Base::TimeTicks:
      return ASN_TIMETICKS;
    case Base::ObjectIdentifier:
      return ASN_OBJECT_ID;
    case Base::IpAddress:
      return ASN_IPADDRESS;
    case Base::Opaque:
      return ASN_OPAQUE;
    default:
      return ASN_OCTET_STR;
  }
}

std::optional<Mismatch> Syntax::Check(const Value& value) const {
  if (base == Base::Unknown) return std::nullopt;
  const std::string wanted = TypeName(AsnType());
  if (TypeName(value.Type()) != wanted) {
    return Mismatch{Fault::Type,
                    TypeName(value.Type()) + " instead of " + wanted};
  }
  if (IsNumber()) return CheckNumber(value.Number());
  if (value.Type() == ASN_OCTET_STR) return CheckOctets(value.Bytes());
  if (base == Base::IpAddress && value.Bytes().size() != 4) {
    return Mismatch{Fault::Length, std::to_string(value.Bytes().size()) +
                                       " octets instead of 4"};
  }
  return std::nullopt;
}

std::optional<Mismatch> Syntax::CheckNumber(std::int64_t number) const {
  if (!names.empty()) {
    const bool named = std::any_of(
        names.begin(), names.end(),
        [number](const NamedNumber& name) { return name.number == number; });
    if (named) return std::nullopt;
    return Mismatch{Fault::Enumeration,
                    std::to_string(number) + " is not enumerated"};
  }
  const std::vector<Range> allowed = Allowed();
  if (IsIn(allowed, number)) return std::nullopt;
  return Mismatch{Fault::Range, std::to_string(number) + " is not in (" +
                                    RangesText(allowed) + ")"};
}

std::optional<Mismatch> Syntax::CheckOctets(const std::string& octets) const {
  if (base == Base::Bits) {
    if (names.empty()) return std::nullopt;
    const std::optional<int> bit = UnnamedBit(octets, names);
    if (!bit) return std::nullopt;
    return Mismatch{Fault::Enumeration,
                    "bit " + std::to_string(*bit) + " has no name"};
  }
  const std::vector<Range> allowed = Allowed();
  if (IsIn(allowed, static_cast<std::int64_t>(octets.size()))) {
    return std::nullopt;
  }
  return Mismatch{Fault::Length, std::to_string(octets.size()) +
                                     " octets are not in SIZE (" +
                                     RangesText(allowed) + ")"};
}

Syntax SyntaxOf(const struct tree& node) {
  Syntax syntax;
  syntax.base = BaseOf(node.type);
  syntax.hasKind = node.type == TYPE_NETADDR;
  if (node.tc_index >= 0) {
    const char* const convention = get_tc_descriptor(node.tc_index);
    if (convention) syntax.convention = convention;
  }
  for (const range_list* range = node.ranges; range; range = range->next) {
    syntax.ranges.push_back(RangeOf(*range, syntax.base));
  }
  for (const enum_list* name = node.enums; name; name = name->next) {
    syntax.names.push_back({name->value, name->label});
  }
  std::sort(syntax.names.begin(), syntax.names.end(),
            [](const NamedNumber& a, const NamedNumber& b) {
              return a.number < b.number;
            });
  return syntax;
}

}  // namespace snmpsubagent::check
