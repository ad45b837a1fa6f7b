// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_MESSAGE_H_
#define SNMPSUBAGENT_AGENTX_MESSAGE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "snmpsubagent/Oid.h"
#include "snmpsubagent/ValueView.h"

// The messages of AgentX version 1 that a subagent sends and receives (RFC
// 2741, section 6), with the names of the RFC.
namespace snmpsubagent::agentx {

enum class PduType : std::uint8_t {
  Open = 1,
  Close,
  Register,
  Unregister,
  Get,
  GetNext,
  GetBulk,
  TestSet,
  CommitSet,
  UndoSet,
  CleanupSet,
  Notify,
  Ping,
  IndexAllocate,
  IndexDeallocate,
  AddAgentCaps,
  RemoveAgentCaps,
  Response
};

// The error field of a Response (RFC 2741, 6.2.16). Up to 18 they are those of
// SNMP (RFC 3416, section 3).
enum class Error : std::uint16_t {
  None = 0,
  TooBig = 1,
  GenErr = 5,
  NoAccess = 6,
  WrongType = 7,
  WrongLength = 8,
  WrongEncoding = 9,
  WrongValue = 10,
  NoCreation = 11,
  InconsistentValue = 12,
  ResourceUnavailable = 13,
  CommitFailed = 14,
  UndoFailed = 15,
  NotWritable = 17,
  InconsistentName = 18,
  OpenFailed = 256,
  NotOpen = 257,
  IndexWrongType = 258,
  IndexAlreadyAllocated = 259,
  IndexNoneAvailable = 260,
  IndexNotAllocated = 261,
  UnsupportedContext = 262,
  DuplicateRegistration = 263,
  UnknownRegistration = 264,
  UnknownAgentCaps = 265,
  ParseError = 266,
  RequestDenied = 267,
  ProcessingError = 268
};

// Why a session is closed (RFC 2741, 6.2.2).
enum class CloseReason : std::uint8_t {
  Other = 1,
  ParseError,
  ProtocolError,
  Timeouts,
  Shutdown,
  ByManager
};

// The RFC's names: "duplicateRegistration", "reasonShutdown". A number that the
// RFC does not know is told as such.
std::string ToString(Error error);
std::string ToString(CloseReason reason);

// The size of every message's header, in octets.
inline constexpr std::size_t kHeaderSize = 20;

// The bits of a header's flags that a subagent has a use for.
inline constexpr std::uint8_t kNonDefaultContext = 0x08;
inline constexpr std::uint8_t kNetworkByteOrder = 0x10;

struct Header {
  PduType type = PduType::Response;
  std::uint8_t flags = 0;
  std::uint32_t sessionId = 0;
  std::uint32_t transactionId = 0;
  std::uint32_t packetId = 0;
  std::uint32_t payloadLength = 0;  // in octets, without the header
  // Not part of the message: which of a Session's sessions it came in, since a
  // master agent that starts anew may give a sessionId again.
  std::uint32_t generation = 0;
};

// Names from `start`, itself only with `include`, up to but without `end`; a
// null `end` leaves the range open. Of a Get only `start` counts.
struct SearchRange {
  OidView start;
  bool include = false;
  OidView end;
};

struct Varbind {
  OidView name;
  ValueView value;
};

// A request of the master agent's. What it views is the decoder's, until the
// next message is decoded.
struct Request {
  Header header;
  std::string_view context;  // empty for the default context
  // Of a GetBulk.
  std::uint16_t nonRepeaters = 0;
  std::uint16_t maxRepetitions = 0;
  // Of a Get, GetNext or GetBulk.
  const std::vector<SearchRange>* ranges = nullptr;
  // Of a TestSet.
  const std::vector<Varbind>* varbinds = nullptr;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_MESSAGE_H_
