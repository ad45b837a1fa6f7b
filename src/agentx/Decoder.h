// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_DECODER_H_
#define SNMPSUBAGENT_AGENTX_DECODER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "agentx/ElementReader.h"
#include "agentx/Message.h"

namespace snmpsubagent::agentx {

// A message of a master agent's is at most so long: 4 MiB. An SNMP message has
// up to 64 KiB, in which a varbind takes 7 octets at least; of it a request
// makes a search range of which start and end take up to 516 octets each,
// though the long ends stand for long starts. 64 times leaves room for that.
inline constexpr std::size_t kMaxPayload = 64 * 64 * 1024;

// What a master agent answered.
struct Response {
  std::uint32_t sysUpTime = 0;  // hundredths of a second
  Error error = Error::None;
  std::uint16_t index = 0;
};

// The header in the kHeaderSize bytes at `bytes`; nothing if it can't be
// trusted: another version of AgentX, or a length that no message has. Where
// the next message begins is unknown then.
std::optional<Header> DecodeHeader(const std::uint8_t* bytes);

// Reads what a master agent sends, in either byte order. What it returns is its
// own and views the payload, until the next call. It keeps its memory, so that
// in the long run decoding allocates nothing.
//
// `payload` has the header's payloadLength bytes. Each returns nothing if they
// are no such message (RFC 2741, 7.2.2: the message cannot be parsed).
class Decoder {
 public:
  // Get, GetNext, GetBulk, TestSet, CommitSet, UndoSet, CleanupSet; nothing for
  // any other type, too.
  const Request* DecodeRequest(const Header& header,
                               const std::uint8_t* payload);
  std::optional<Response> DecodeResponse(const Header& header,
                                         const std::uint8_t* payload);
  std::optional<CloseReason> DecodeClose(const Header& header,
                                         const std::uint8_t* payload);

 private:
  ElementReader ReaderOf(const Header& header, const std::uint8_t* payload);
  void TakeContext(ElementReader& reader);
  void TakeRanges(ElementReader& reader);
  void TakeVarbinds(ElementReader& reader);
  void TakeBody(ElementReader& reader);

  std::vector<SubIdentifier> ids_;  // of all OIDs of the message
  std::vector<SearchRange> ranges_;
  std::vector<Varbind> varbinds_;
  Request request_;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_DECODER_H_
