// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Value.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <utility>

namespace snmpsubagent::check {
namespace {

// As much of a long value as a reader has a use for.
constexpr std::size_t kMostOctetsShown = 32;

template <typename T>
std::string BytesOf(const T& object) {
  return {reinterpret_cast<const char*>(&object), sizeof object};
}

template <typename T>
T As(const std::string& bytes) {
  T object{};
  std::memcpy(&object, bytes.data(), std::min(sizeof object, bytes.size()));
  return object;
}

std::string OctetsText(const std::string& octets) {
  const bool cut = octets.size() > kMostOctetsShown;
  const std::string shown = octets.substr(0, kMostOctetsShown);
  const std::string dots = cut ? "..." : "";
  const bool printable = std::all_of(
      shown.begin(), shown.end(),
      [](unsigned char octet) { return octet < 0x80 && std::isprint(octet); });
  if (printable) return "\"" + shown + "\"" + dots;
  std::string text;
  for (const unsigned char octet : shown) {
    std::array<char, 4> hex;
    std::snprintf(hex.data(), hex.size(), "%s%02x", text.empty() ? "" : " ",
                  octet);
    text += hex.data();
  }
  return text + dots;
}

std::string AddressText(const std::string& octets) {
  std::string text;
  for (const unsigned char octet : octets) {
    text += (text.empty() ? "" : ".") + std::to_string(octet);
  }
  return text;
}

}  // namespace

Value::Value(const netsnmp_variable_list& variable)
    : type_(variable.type),
      bytes_(reinterpret_cast<const char*>(variable.val.string),
             variable.val.string ? variable.val_len : 0) {}

Value Value::OfNumber(u_char type, std::int64_t number) {
  return {type, BytesOf(static_cast<long>(number))};
}

Value Value::OfOctets(u_char type, std::string octets) {
  return {type, std::move(octets)};
}

Value Value::OfOid(const Oid& id) {
  return {ASN_OBJECT_ID,
          {reinterpret_cast<const char*>(id.data()), id.size() * sizeof(oid)}};
}

bool Value::IsException() const {
  return type_ == SNMP_NOSUCHOBJECT || type_ == SNMP_NOSUCHINSTANCE ||
         type_ == SNMP_ENDOFMIBVIEW;
}

std::int64_t Value::Number() const {
  return type_ == ASN_INTEGER ? std::int64_t{As<long>(bytes_)}
                              : static_cast<std::int64_t>(As<u_long>(bytes_));
}

Oid Value::ObjectId() const {
  Oid id(bytes_.size() / sizeof(oid));
  if (!id.empty()) std::memcpy(id.data(), bytes_.data(), bytes_.size());
  return id;
}

std::string TypeName(u_char type) {
  static constexpr std::pair<u_char, const char*> kNames[] = {
      {ASN_INTEGER, "INTEGER"},
      {ASN_OCTET_STR, "OCTET STRING"},
      {ASN_OBJECT_ID, "OBJECT IDENTIFIER"},
      {ASN_IPADDRESS, "IpAddress"},
      {ASN_COUNTER, "Counter32"},
      {ASN_GAUGE, "Unsigned32"},
      {ASN_TIMETICKS, "TimeTicks"},
      {ASN_OPAQUE, "Opaque"},
      {ASN_OPAQUE_FLOAT, "Opaque"},
      {ASN_OPAQUE_DOUBLE, "Opaque"},
      {ASN_OPAQUE_COUNTER64, "Opaque"},
      {ASN_OPAQUE_U64, "Opaque"},
      {ASN_OPAQUE_I64, "Opaque"},
      {ASN_COUNTER64, "Counter64"},
      {ASN_NULL, "NULL"},
      {SNMP_NOSUCHOBJECT, "noSuchObject"},
      {SNMP_NOSUCHINSTANCE, "noSuchInstance"},
      {SNMP_ENDOFMIBVIEW, "endOfMibView"},
  };
  for (const auto& [known, name] : kNames) {
    if (known == type) return name;
  }
  std::array<char, 16> text;
  std::snprintf(text.data(), text.size(), "type 0x%02x", type);
  return text.data();
}

std::string ToText(const Value& value) {
  const std::string type = TypeName(value.Type());
  switch (value.Type()) {
    case ASN_INTEGER:
    case ASN_COUNTER:
    case ASN_GAUGE:
    case ASN_TIMETICKS:
      return type + " " + std::to_string(value.Number());
    case ASN_IPADDRESS:
      return type + " " + AddressText(value.Bytes());
    case ASN_OBJECT_ID:
      return type + " " + ToText(value.ObjectId());
    case ASN_OCTET_STR:
    case ASN_OPAQUE:
      return type + " " + OctetsText(value.Bytes());
    default:
      return type;
  }
}

}  // namespace snmpsubagent::check
