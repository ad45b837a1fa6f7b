// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/MessageStream.h"

#include <algorithm>

#include "agentx/Decoder.h"

namespace snmpsubagent::agentx {
namespace {

// Memory for longer messages, which are rare, is given back.
constexpr std::size_t kKeptCapacity = 64 * 1024;

}  // namespace

void MessageStream::Add(const std::uint8_t* bytes, std::size_t size) {
  next_ = bytes;
  left_ = size;
}

std::optional<Message> MessageStream::Next() {
  if (partIsWhole_) {
    part_.clear();
    if (part_.capacity() > kKeptCapacity)
      std::vector<std::uint8_t>().swap(part_);
    partIsWhole_ = false;
  }
  if (broken_) return {};
  if (!part_.empty()) return NextInParts();
  if (left_ < kHeaderSize) {
    Keep();
    return {};
  }
  const std::optional<Header> header = HeaderAt(next_);
  if (!header) return {};
  const std::size_t size = kHeaderSize + header->payloadLength;
  if (left_ < size) {
    Keep();
    return {};
  }
  return Message{*header, TakeBytes(size) + kHeaderSize};
}

// The message begun in part_, if its last bytes are there now.
std::optional<Message> MessageStream::NextInParts() {
  if (!FillTo(kHeaderSize)) return {};
  const std::optional<Header> header = HeaderAt(part_.data());
  if (!header || !FillTo(kHeaderSize + header->payloadLength)) return {};
  partIsWhole_ = true;
  return Message{*header, part_.data() + kHeaderSize};
}

bool MessageStream::FillTo(std::size_t size) {
  if (part_.size() >= size) return true;
  const std::size_t count = std::min(size - part_.size(), left_);
  const std::uint8_t* const bytes = TakeBytes(count);
  part_.insert(part_.end(), bytes, bytes + count);
  return part_.size() == size;
}

void MessageStream::Keep() {
  const std::size_t size = left_;
  const std::uint8_t* const bytes = TakeBytes(size);
  part_.assign(bytes, bytes + size);
}

std::optional<Header> MessageStream::HeaderAt(const std::uint8_t* bytes) {
  std::optional<Header> header = DecodeHeader(bytes);
  broken_ = !header;
  return header;
}

const std::uint8_t* MessageStream::TakeBytes(std::size_t size) {
  const std::uint8_t* const taken = next_;
  next_ += size;
  left_ -= size;
  return taken;
}

void MessageStream::Reset() {
  part_.clear();
  left_ = 0;
  partIsWhole_ = false;
  broken_ = false;
}

}  // namespace snmpsubagent::agentx
