// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_ELEMENTREADER_H_
#define SNMPSUBAGENT_AGENTX_ELEMENTREADER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "agentx/ByteOrder.h"
#include "snmpsubagent/Oid.h"

namespace snmpsubagent::agentx {

// Takes the elements of a message (RFC 2741, section 5) from its bytes, one
// after the other. Once they end too early or an element is wrong, it has
// failed for good: whatever is taken then is 0 or empty, and AtEnd().
class ElementReader {
 public:
  // The bytes are borrowed; octets that are taken are views of them. OIDs that
  // are taken are put at `room`, which has to have RoomFor() sub-identifiers.
  ElementReader(const std::uint8_t* bytes, std::size_t size, bool bigEndian,
                SubIdentifier* room)
      : next_(bytes),
        left_(size),
        swap_(bigEndian != kThisIsBigEndian),
        room_(room) {}

  // The most sub-identifiers that so many bytes can hold.
  static constexpr std::size_t RoomFor(std::size_t size) {
    return size / 4 * 5;  // the shortest OID: four octets that mean 1.3.6.1.x
  }

  bool AtEnd() const { return left_ == 0; }
  bool Failed() const { return failed_; }
  void Fail();

  std::uint8_t Octet() {
    const std::uint8_t* const octet = Take(1);
    return octet ? *octet : std::uint8_t{0};
  }

  // An unsigned number of 16, 32 or 64 bits.
  template <typename T>
  T Number() {
    T number = 0;
    const std::uint8_t* const bytes = Take(sizeof number);
    if (bytes) std::memcpy(&number, bytes, sizeof number);
    return swap_ ? Swapped(number) : number;
  }

  void Skip(std::size_t size) { Take(size); }
  OidView ObjectIdentifier(bool& include);
  OidView ObjectIdentifier();
  std::string_view OctetString();

 private:
  // Moves on by `size` bytes; returns where they begin, or null.
  const std::uint8_t* Take(std::size_t size) {
    if (size > left_) {
      Fail();
      return nullptr;
    }
    const std::uint8_t* const taken = next_;
    next_ += size;
    left_ -= size;
    return taken;
  }

  const std::uint8_t* next_;
  std::size_t left_;
  bool swap_;
  bool failed_ = false;
  SubIdentifier* room_;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_ELEMENTREADER_H_
