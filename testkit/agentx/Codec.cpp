// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Codec.h"

#include <utility>

#include "testkit/agentx/Fields.h"

namespace testkit::agentx {
namespace {

bool IsBigEndian(std::uint8_t flags) {
  return (flags & kNetworkByteOrder) != 0;
}

bool HasContext(const Body& body) {
  return !std::holds_alternative<Open>(body) &&
         !std::holds_alternative<Close>(body) &&
         !std::holds_alternative<CommitSet>(body) &&
         !std::holds_alternative<UndoSet>(body) &&
         !std::holds_alternative<CleanupSet>(body) &&
         !std::holds_alternative<Response>(body);
}

template <std::size_t... Index>
Body EmptyBody(std::size_t index, std::index_sequence<Index...>) {
  Body body;
  (void)((Index == index && (body.emplace<Index>(), true)) || ...);
  return body;
}

// An empty message of the type.
Body EmptyBody(std::uint8_t type) {
  constexpr std::size_t kTypes = std::variant_size_v<Body>;
  if (type < 1 || type > kTypes) throw Malformed("unknown type of message");
  return EmptyBody(type - 1U, std::make_index_sequence<kTypes>());
}

constexpr std::size_t kFlagsOffset = 2;
constexpr std::size_t kSizeOffset = 16;

}  // namespace

Bytes Encode(Pdu pdu) {
  const bool withContext = pdu.context && HasContext(pdu.body);
  pdu.header.flags &= static_cast<std::uint8_t>(~kNonDefaultContext);
  if (withContext) pdu.header.flags |= kNonDefaultContext;
  auto type = static_cast<std::uint8_t>(pdu.body.index() + 1);

  Writer writer(IsBigEndian(pdu.header.flags));
  Fields(writer, pdu.header, type);
  writer.U32(0);
  if (withContext) writer.OctetString(*pdu.context);
  std::visit([&](auto& body) { Fields(writer, body); }, pdu.body);
  writer.CompleteHeader();
  return writer.TakeBytes();
}

std::size_t MessageSize(const std::uint8_t* header) {
  Reader reader(header + kSizeOffset, kHeaderSize - kSizeOffset,
                IsBigEndian(header[kFlagsOffset]));
  std::uint32_t size = 0;
  reader.U32(size);
  return kHeaderSize + size;
}

Pdu Decode(const std::uint8_t* data, std::size_t size) {
  if (size < kHeaderSize) throw Malformed("message ends inside its header");
  if (MessageSize(data) != size) throw Malformed("wrong size in the header");
  if (size % 4 != 0) throw Malformed("size is not a multiple of 4");

  Pdu pdu;
  std::uint8_t type = 0;
  std::uint32_t payloadSize = 0;
  Reader reader(data, size, IsBigEndian(data[kFlagsOffset]));
  Fields(reader, pdu.header, type);
  reader.U32(payloadSize);
  if (pdu.header.version != 1) throw Malformed("unknown version");
  pdu.body = EmptyBody(type);
  if ((pdu.header.flags & kNonDefaultContext) != 0 && HasContext(pdu.body)) {
    reader.OctetString(pdu.context.emplace());
  }
  std::visit([&](auto& body) { Fields(reader, body); }, pdu.body);
  if (!reader.AtEnd()) throw Malformed("bytes behind the end of the message");
  return pdu;
}

bool operator==(const Value& a, const Value& b) {
  return a.type == b.type && a.content == b.content;
}

bool operator==(const Varbind& a, const Varbind& b) {
  return a.name == b.name && a.value == b.value;
}

}  // namespace testkit::agentx
