// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Writer.h"

#include <algorithm>
#include <stdexcept>

namespace testkit::agentx {
namespace {

constexpr std::size_t kMaxSubids = 255;  // counted in one byte

// The sub-identifier behind 1.3.6.1, if it is one that has a place of its own
// in an object identifier's first four bytes; else 0.
std::uint8_t PrefixOf(const Oid& oid) {
  static const Oid kInternet{1, 3, 6, 1};
  const bool shortened =
      oid.size() > kInternet.size() &&
      std::equal(kInternet.begin(), kInternet.end(), oid.begin()) &&
      oid[kInternet.size()] <= 255;
  return shortened ? static_cast<std::uint8_t>(oid[kInternet.size()]) : 0;
}

}  // namespace

void Writer::ObjectId(const Oid& oid) { ObjectId(oid, false); }

void Writer::ObjectId(const Oid& oid, bool include) {
  const std::uint8_t prefix = PrefixOf(oid);
  const std::size_t written = prefix == 0 ? 0 : 5;
  if (oid.size() - written > kMaxSubids) {
    throw std::length_error("object identifier of more than 255 parts");
  }
  U8(static_cast<std::uint8_t>(oid.size() - written));
  U8(prefix);
  U8(include ? 1 : 0);
  Reserved(1);
  for (std::size_t i = written; i < oid.size(); ++i) U32(oid[i]);
}

void Writer::OctetString(const std::string& text) {
  U32(static_cast<std::uint32_t>(text.size()));
  bytes_.insert(bytes_.end(), text.begin(), text.end());
  Reserved((4 - text.size() % 4) % 4);
}

void Writer::CompleteHeader() {
  Writer size(bigEndian_);
  size.U32(static_cast<std::uint32_t>(bytes_.size() - kHeaderSize));
  std::copy(size.bytes_.begin(), size.bytes_.end(),
            bytes_.begin() + kHeaderSize - 4);
}

}  // namespace testkit::agentx
