// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Syntax.h"

#include <cstring>

namespace snmpsubagent::detail {
namespace {

// The tag of an Opaque's content, and those of the numbers in it, by which
// managers know them (they come from an Internet draft that never became an
// RFC).
constexpr char kOpaqueTag = '\x9f';
constexpr char kFloatTag = '\x78';
constexpr char kDoubleTag = '\x79';

template <typename Bits, typename Number>
std::string WriteNumber(Number value, char tag) {
  static_assert(sizeof(Bits) == sizeof(Number));
  Bits bits;
  std::memcpy(&bits, &value, sizeof bits);
  std::string octets{kOpaqueTag, tag, static_cast<char>(sizeof bits)};
  for (std::size_t i = sizeof bits; i-- > 0;) {
    octets.push_back(static_cast<char>((bits >> (8 * i)) & 0xff));
  }
  return octets;
}

template <typename Bits, typename Number>
SetError ReadNumber(std::string_view octets, char tag, Number& value) {
  const std::string head{kOpaqueTag, tag, static_cast<char>(sizeof(Bits))};
  if (octets.size() != head.size() + sizeof(Bits)) return SetError::WrongLength;
  if (octets.substr(0, head.size()) != head) return SetError::WrongEncoding;
  Bits bits = 0;
  for (const char octet : octets.substr(head.size())) {
    bits = static_cast<Bits>(bits << 8 | static_cast<unsigned char>(octet));
  }
  std::memcpy(&value, &bits, sizeof bits);
  return SetError::None;
}

}  // namespace

std::string WriteOpaqueFloat(float value) {
  return WriteNumber<std::uint32_t>(value, kFloatTag);
}
std::string WriteOpaqueDouble(double value) {
  return WriteNumber<std::uint64_t>(value, kDoubleTag);
}
SetError ReadOpaqueFloat(std::string_view octets, float& value) {
  return ReadNumber<std::uint32_t>(octets, kFloatTag, value);
}
SetError ReadOpaqueDouble(std::string_view octets, double& value) {
  return ReadNumber<std::uint64_t>(octets, kDoubleTag, value);
}

}  // namespace snmpsubagent::detail
