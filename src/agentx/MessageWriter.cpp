// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/MessageWriter.h"

#include "agentx/ByteOrder.h"

namespace snmpsubagent::agentx {
namespace {

constexpr std::uint8_t kVersion = 1;
constexpr std::uint8_t kOrderFlag = kThisIsBigEndian ? kNetworkByteOrder : 0;

// What stands before the payload, as it lies in memory.
struct WireHeader {
  std::uint8_t version;
  std::uint8_t type;
  std::uint8_t flags;
  std::uint8_t reserved;
  std::uint32_t sessionId;
  std::uint32_t transactionId;
  std::uint32_t packetId;
  std::uint32_t payloadLength;
};
static_assert(sizeof(WireHeader) == kHeaderSize);

constexpr std::size_t kLengthOffset = 16;

std::uint8_t FlagsFor(std::string_view context) {
  return context.empty() ? kOrderFlag : kOrderFlag | kNonDefaultContext;
}

}  // namespace

MessageWriter::MessageWriter(std::vector<std::uint8_t>& out,
                             const Header& header, std::string_view context)
    : payload_(out), start_(out.size()) {
  payload_.Number(WireHeader{kVersion, static_cast<std::uint8_t>(header.type),
                             FlagsFor(context), 0, header.sessionId,
                             header.transactionId, header.packetId, 0});
  if (!context.empty()) payload_.OctetString(context);
}

MessageWriter::~MessageWriter() {
  if (!finished_) payload_.Rewind(start_);
}

void MessageWriter::Finish() {
  const std::size_t length = payload_.Size() - start_ - kHeaderSize;
  payload_.NumberAt(start_ + kLengthOffset, static_cast<std::uint32_t>(length));
  finished_ = true;
}

}  // namespace snmpsubagent::agentx
