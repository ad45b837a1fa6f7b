// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_ENCODER_H_
#define SNMPSUBAGENT_AGENTX_ENCODER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "snmpsubagent/Oid.h"

namespace snmpsubagent::agentx {

// Appends the elements of a message (RFC 2741, section 5) to `out`, in the byte
// order of this machine.
class Encoder {
 public:
  explicit Encoder(std::vector<std::uint8_t>& out) : out_(out) {}

  std::size_t Size() const { return out_.size(); }

  // A number of 8, 16, 32 or 64 bits.
  template <typename T>
  void Number(T number) {
    std::memcpy(Room(sizeof number), &number, sizeof number);
  }

  // Overwrites the number that begins at `place`.
  template <typename T>
  void NumberAt(std::size_t place, T number) {
    std::memcpy(&out_[place], &number, sizeof number);
  }

  // Octets of 0, as reserved fields and padding have them.
  void Reserved(std::size_t size) { out_.resize(out_.size() + size); }

  // Behind so many reserved octets. Requires: at most Oid::kMaxSize
  // sub-identifiers.
  void ObjectIdentifier(OidView oid, std::size_t reserved = 0);
  void OctetString(std::string_view octets);
  // Bytes that are encoded already.
  void Encoded(const std::vector<std::uint8_t>& bytes) {
    out_.insert(out_.end(), bytes.begin(), bytes.end());
  }

  // Removes all that was written from `place` on.
  void Rewind(std::size_t place) { out_.resize(place); }

 private:
  // Makes room for so many bytes at the end; returns where it begins.
  std::uint8_t* Room(std::size_t size) {
    out_.resize(out_.size() + size);
    return out_.data() + (out_.size() - size);
  }

  std::vector<std::uint8_t>& out_;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_ENCODER_H_
