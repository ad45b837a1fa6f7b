// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Value.h"

#include <algorithm>
#include <string_view>

namespace snmpsubagent::testing {
namespace {

const char* NameOf(ValueType type) {
  switch (type) {
    case ValueType::Integer:
      return "INTEGER";
    case ValueType::OctetString:
      return "STRING";
    case ValueType::Null:
      return "NULL";
    case ValueType::ObjectIdentifier:
      return "OID";
    case ValueType::IpAddress:
      return "IpAddress";
    case ValueType::Counter32:
      return "Counter32";
    case ValueType::Gauge32:
      return "Gauge32";
    case ValueType::TimeTicks:
      return "TimeTicks";
    case ValueType::Opaque:
      return "Opaque";
    case ValueType::Counter64:
      return "Counter64";
    case ValueType::NoSuchObject:
      return "noSuchObject";
    case ValueType::NoSuchInstance:
      return "noSuchInstance";
    case ValueType::EndOfMibView:
      return "endOfMibView";
  }
  return "value of an unknown type";
}

std::string Hexadecimal(std::string_view octets) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const char octet : octets) {
    const auto byte = static_cast<unsigned char>(octet);
    if (!text.empty()) text += ' ';
    text += {kDigits[byte / 16], kDigits[byte % 16]};
  }
  return text;
}

std::string TextOf(std::string_view octets) {
  const bool isText = std::all_of(octets.begin(), octets.end(),
                                  [](char c) { return c >= ' ' && c <= '~'; });
  return isText ? '"' + std::string(octets) + '"' : Hexadecimal(octets);
}

std::string Dotted(std::string_view octets) {
  std::string text;
  for (const char octet : octets) {
    if (!text.empty()) text += '.';
    text += std::to_string(static_cast<unsigned char>(octet));
  }
  return text;
}

std::string ContentOf(const ValueView& value) {
  switch (value.type) {
    case ValueType::Integer:
      return " " + std::to_string(static_cast<std::int64_t>(value.number));
    case ValueType::Counter32:
    case ValueType::Gauge32:
    case ValueType::TimeTicks:
    case ValueType::Counter64:
      return " " + std::to_string(value.number);
    case ValueType::OctetString:
      return " " + TextOf(value.octets);
    case ValueType::Opaque:
      return " " + Hexadecimal(value.octets);
    case ValueType::IpAddress:
      return " " + Dotted(value.octets);
    case ValueType::ObjectIdentifier:
      return " " + snmpsubagent::ToString(value.oid);
    default:
      return {};
  }
}

}  // namespace

void Value::Expect(ValueType type) const {
  if (type_ == type) return;
  throw WrongType(ToString(*this) + " is no " + NameOf(type));
}

void Value::Misfit() const {
  throw WrongType(ToString(*this) + " does not fit the type asked for");
}

std::string ToString(const Value& value) {
  return NameOf(value.Type()) + ContentOf(value.View());
}

std::ostream& operator<<(std::ostream& stream, const Value& value) {
  return stream << ToString(value);
}

}  // namespace snmpsubagent::testing
