// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_WRITER_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "testkit/agentx/Codec.h"
#include "testkit/agentx/Pdu.h"

namespace testkit::agentx {

// Appends the elements of a message (RFC 2741, section 5) to its bytes. Has the
// operations of Reader, so that one description of a message serves both.
class Writer {
 public:
  explicit Writer(bool bigEndian) : bigEndian_(bigEndian) {}

  void U8(std::uint8_t number) { bytes_.push_back(number); }
  void U16(std::uint16_t number) { Number(number); }
  void U32(std::uint32_t number) { Number(number); }
  void U64(std::uint64_t number) { Number(number); }
  void Reserved(std::size_t size) { bytes_.resize(bytes_.size() + size); }
  void ObjectId(const Oid& oid);
  void ObjectId(const Oid& oid, bool include);
  void OctetString(const std::string& text);

  template <typename Element, typename Field>
  void List(std::vector<Element>& list, const Field& field) {
    for (Element& element : list) field(*this, element);
  }

  // Writes the size of what follows the header into the header.
  void CompleteHeader();

  Bytes TakeBytes() { return std::move(bytes_); }

 private:
  template <typename T>
  void Number(T number) {
    for (std::size_t i = 0; i < sizeof number; ++i) {
      const std::size_t place = bigEndian_ ? sizeof number - 1 - i : i;
      bytes_.push_back(static_cast<std::uint8_t>(number >> (8 * place)));
    }
  }

  bool bigEndian_;
  Bytes bytes_;
};

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_WRITER_H_
