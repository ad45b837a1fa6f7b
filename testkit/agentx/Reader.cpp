// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Reader.h"

namespace testkit::agentx {
namespace {

// The longest object identifier (RFC 2578, section 3.5).
constexpr std::size_t kMaxSubids = 128;

}  // namespace

void Reader::ObjectId(Oid& oid) {
  bool include = false;
  ObjectId(oid, include);
}

void Reader::ObjectId(Oid& oid, bool& include) {
  std::uint8_t count = 0;
  std::uint8_t prefix = 0;
  std::uint8_t included = 0;
  U8(count);
  U8(prefix);
  U8(included);
  Reserved(1);
  include = included != 0;
  oid.clear();
  if (prefix != 0) oid = {1, 3, 6, 1, prefix};
  if (oid.size() + count > kMaxSubids) {
    throw Malformed("object identifier of more than 128 parts");
  }
  for (std::size_t i = 0; i < count; ++i) U32(oid.emplace_back());
}

void Reader::OctetString(std::string& text) {
  std::uint32_t size = 0;
  U32(size);
  const std::uint8_t* const bytes = Take(size);
  text.assign(bytes, bytes + size);
  Reserved((4 - size % 4) % 4);
}

const std::uint8_t* Reader::Take(std::size_t size) {
  if (size > left_) throw Malformed("message ends inside an element");
  const std::uint8_t* const taken = data_;
  data_ += size;
  left_ -= size;
  return taken;
}

}  // namespace testkit::agentx
