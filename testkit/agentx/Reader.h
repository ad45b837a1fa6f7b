// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_READER_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_READER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "testkit/agentx/Codec.h"
#include "testkit/agentx/Pdu.h"

namespace testkit::agentx {

// Takes the elements of a message (RFC 2741, section 5) from its bytes, one
// after the other. Every operation throws Malformed when the bytes end too
// early. Has the operations of Writer.
class Reader {
 public:
  // `data` is borrowed.
  Reader(const std::uint8_t* data, std::size_t size, bool bigEndian)
      : data_(data), left_(size), bigEndian_(bigEndian) {}

  void U8(std::uint8_t& number) { Number(number); }
  void U16(std::uint16_t& number) { Number(number); }
  void U32(std::uint32_t& number) { Number(number); }
  void U64(std::uint64_t& number) { Number(number); }
  void Reserved(std::size_t size) { Take(size); }
  void ObjectId(Oid& oid);
  void ObjectId(Oid& oid, bool& include);
  void OctetString(std::string& text);

  // Elements up to the end of the bytes.
  template <typename Element, typename Field>
  void List(std::vector<Element>& list, const Field& field) {
    while (left_ > 0) field(*this, list.emplace_back());
  }

  bool AtEnd() const { return left_ == 0; }

 private:
  // Moves on by `size` bytes; returns where they begin.
  const std::uint8_t* Take(std::size_t size);

  template <typename T>
  void Number(T& number) {
    const std::uint8_t* const bytes = Take(sizeof number);
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i < sizeof number; ++i) {
      sum = sum << 8 | bytes[bigEndian_ ? i : sizeof number - 1 - i];
    }
    number = static_cast<T>(sum);
  }

  const std::uint8_t* data_;
  std::size_t left_;
  bool bigEndian_;
};

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_READER_H_
