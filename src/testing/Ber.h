// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_BER_H_
#define SNMPSUBAGENT_TESTING_BER_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "snmpsubagent/testing/Value.h"

// The encoding of SNMP: BER as RFC 3417, section 8, has it. An element is a
// tag, a length and a content. The tags of values are the numbers of ValueType.
namespace snmpsubagent::testing::internal {

inline constexpr std::uint8_t kIntegerTag = 0x02;
inline constexpr std::uint8_t kOctetsTag = 0x04;
inline constexpr std::uint8_t kOidTag = 0x06;
inline constexpr std::uint8_t kSequenceTag = 0x30;

std::string BerElement(std::uint8_t tag, std::string_view content);
std::string BerInteger(std::int64_t number);
std::string BerOid(OidView oid);
std::string BerValue(const Value& value);

// Takes elements from the front of bytes, which it borrows. Everything throws
// std::runtime_error for bytes that are none.
class BerReader {
 public:
  explicit BerReader(std::string_view bytes) : bytes_(bytes) {}

  bool AtEnd() const { return bytes_.empty(); }
  // The tag of the next element.
  std::uint8_t Tag() const;
  // The content of the next element.
  std::string_view Take(std::uint8_t tag);

  std::int64_t Integer();
  Oid ObjectIdentifier();
  // A value of any type.
  class Value Value();

 private:
  std::uint8_t Byte();
  std::size_t Length();

  std::string_view bytes_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_BER_H_
