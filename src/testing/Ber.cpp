// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Ber.h"

#include <stdexcept>
#include <vector>

namespace snmpsubagent::testing::internal {
namespace {

[[noreturn]] void Fail(const char* what) {
  throw std::runtime_error(std::string("no SNMP message: ") + what);
}

std::uint8_t OctetOf(char octet) { return static_cast<std::uint8_t>(octet); }

// In two's complement, as few octets as it takes.
std::string Octets(std::int64_t number) {
  std::string octets;
  std::int64_t rest = number;
  do {
    octets.insert(octets.begin(), static_cast<char>(rest & 0xff));
    rest >>= 8;
  } while (rest != (OctetOf(octets.front()) >= 0x80 ? -1 : 0));
  return octets;
}

std::string UnsignedOctets(std::uint64_t number) {
  std::string octets;
  do {
    octets.insert(octets.begin(), static_cast<char>(number & 0xff));
    number >>= 8;
  } while (number != 0);
  if (OctetOf(octets.front()) >= 0x80) octets.insert(octets.begin(), '\0');
  return octets;
}

std::uint64_t NumberOf(std::string_view octets) {
  if (octets.empty() || octets.size() > 9) Fail("a number of no such size");
  std::uint64_t number = OctetOf(octets.front()) >= 0x80 ? ~0ULL : 0;
  for (const char octet : octets) number = number << 8 | OctetOf(octet);
  return number;
}

void AppendSubIdentifier(std::string& octets, std::uint64_t subIdentifier) {
  std::string reversed(1, static_cast<char>(subIdentifier & 0x7f));
  while ((subIdentifier >>= 7) != 0) {
    reversed += static_cast<char>((subIdentifier & 0x7f) | 0x80);
  }
  octets.append(reversed.rbegin(), reversed.rend());
}

// The first octets say the first two sub-identifiers.
std::string OidOctets(OidView oid) {
  std::string octets;
  const std::uint64_t first = oid.empty() ? 0 : oid[0];
  const std::uint64_t second = oid.size() < 2 ? 0 : oid[1];
  AppendSubIdentifier(octets, first * 40 + second);
  for (const SubIdentifier id : oid.After(2)) AppendSubIdentifier(octets, id);
  return octets;
}

Oid OidOf(std::string_view octets) {
  std::vector<SubIdentifier> ids;
  std::uint64_t number = 0;
  for (const char octet : octets) {
    number = number << 7 | (OctetOf(octet) & 0x7f);
    if (OctetOf(octet) >= 0x80) continue;
    if (ids.empty()) {
      const std::uint64_t first = number < 80 ? number / 40 : 2;
      ids.push_back(static_cast<SubIdentifier>(first));
      number -= first * 40;
    }
    ids.push_back(static_cast<SubIdentifier>(number));
    number = 0;
  }
  return Oid(OidView(ids.data(), ids.size()));
}

std::string ContentOf(const ValueView& value) {
  switch (value.type) {
    case ValueType::Integer:
      return Octets(static_cast<std::int64_t>(value.number));
    case ValueType::Counter32:
    case ValueType::Gauge32:
    case ValueType::TimeTicks:
    case ValueType::Counter64:
      return UnsignedOctets(value.number);
    case ValueType::ObjectIdentifier:
      return OidOctets(value.oid);
    default:
      return std::string(value.octets);
  }
}

}  // namespace

std::string BerElement(std::uint8_t tag, std::string_view content) {
  std::string element(1, static_cast<char>(tag));
  if (content.size() < 0x80) {
    element += static_cast<char>(content.size());
  } else {
    std::string length = UnsignedOctets(content.size());
    if (length.front() == '\0') length.erase(0, 1);
    element += static_cast<char>(0x80 | length.size());
    element += length;
  }
  return element.append(content);
}

std::string BerInteger(std::int64_t number) {
  return BerElement(kIntegerTag, Octets(number));
}

std::string BerOid(OidView oid) { return BerElement(kOidTag, OidOctets(oid)); }

std::string BerValue(const Value& value) {
  return BerElement(static_cast<std::uint8_t>(value.Type()),
                    ContentOf(value.View()));
}

std::uint8_t BerReader::Tag() const {
  if (bytes_.empty()) Fail("it ends too early");
  return OctetOf(bytes_.front());
}

std::string_view BerReader::Take(std::uint8_t tag) {
  if (Byte() != tag) Fail("something else was to come");
  const std::size_t size = Length();
  if (size > bytes_.size()) Fail("it ends too early");
  const std::string_view content = bytes_.substr(0, size);
  bytes_.remove_prefix(size);
  return content;
}

std::int64_t BerReader::Integer() {
  return static_cast<std::int64_t>(NumberOf(Take(kIntegerTag)));
}

Oid BerReader::ObjectIdentifier() { return OidOf(Take(kOidTag)); }

Value BerReader::Value() {
  const std::uint8_t tag = Tag();
  const std::string_view content = Take(tag);
  ValueView view;
  view.type = static_cast<ValueType>(tag);
  Oid oid;
  switch (view.type) {
    case ValueType::Integer:
    case ValueType::Counter32:
    case ValueType::Gauge32:
    case ValueType::TimeTicks:
    case ValueType::Counter64:
      view.number = NumberOf(content);
      break;
    case ValueType::ObjectIdentifier:
      oid = OidOf(content);
      view.oid = oid;
      break;
    default:
      view.octets = content;
  }
  return testing::Value(view);
}

std::uint8_t BerReader::Byte() {
  const std::uint8_t byte = Tag();
  bytes_.remove_prefix(1);
  return byte;
}

std::size_t BerReader::Length() {
  const std::uint8_t first = Byte();
  if (first < 0x80) return first;
  if (first > 0x84) Fail("it is too long");
  std::size_t length = 0;
  for (int i = first & 0x7f; i > 0; --i) length = length << 8 | Byte();
  return length;
}

}  // namespace snmpsubagent::testing::internal
