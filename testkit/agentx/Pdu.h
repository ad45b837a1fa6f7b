// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_PDU_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_PDU_H_

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// The messages of AgentX version 1 (RFC 2741, section 6) as plain structures.
// Names and fields follow the RFC.
namespace testkit::agentx {

// Sub-identifiers; empty for the null object identifier.
using Oid = std::vector<std::uint32_t>;

// The types of a varbind (RFC 2741, section 5.4).
enum class Type : std::uint16_t {
  kInteger = 2,
  kOctetString = 4,
  kNull = 5,
  kObjectId = 6,
  kIpAddress = 64,
  kCounter32 = 65,
  kGauge32 = 66,
  kTimeTicks = 67,
  kOpaque = 68,
  kCounter64 = 70,
  kNoSuchObject = 128,
  kNoSuchInstance = 129,
  kEndOfMibView = 130
};

// A type and what it carries: an int32_t for kInteger; a uint32_t for
// kCounter32, kGauge32 and kTimeTicks; a uint64_t for kCounter64; a string for
// kOctetString, kIpAddress and kOpaque; an Oid for kObjectId; nothing for the
// others.
struct Value {
  using Content = std::variant<std::monostate, std::int32_t, std::uint32_t,
                               std::uint64_t, std::string, Oid>;
  Type type = Type::kNull;
  Content content;
};

struct Varbind {
  Oid name;
  Value value;
};

// Names from `start`, itself only with `include`, up to but without `end`; a
// null `end` leaves the range open.
struct SearchRange {
  Oid start;
  bool include = false;
  Oid end;
};

struct Open {
  std::uint8_t timeout = 0;  // seconds
  Oid id;
  std::string description;
};

struct Close {
  std::uint8_t reason = 0;
};

// `rangeSubid` counts from 1 the sub-identifier of `subtree` that runs up to
// `upperBound`; 0 means none does.
struct Register {
  std::uint8_t timeout = 0;  // seconds
  std::uint8_t priority = 127;
  std::uint8_t rangeSubid = 0;
  Oid subtree;
  std::uint32_t upperBound = 0;
};

struct Unregister {
  std::uint8_t priority = 127;
  std::uint8_t rangeSubid = 0;
  Oid subtree;
  std::uint32_t upperBound = 0;
};

struct Get {
  std::vector<SearchRange> ranges;
};

struct GetNext {
  std::vector<SearchRange> ranges;
};

struct GetBulk {
  std::uint16_t nonRepeaters = 0;
  std::uint16_t maxRepetitions = 0;
  std::vector<SearchRange> ranges;
};

struct TestSet {
  std::vector<Varbind> varbinds;
};

struct CommitSet {};
struct UndoSet {};
struct CleanupSet {};

struct Notify {
  std::vector<Varbind> varbinds;
};

struct Ping {};

struct IndexAllocate {
  std::vector<Varbind> varbinds;
};

struct IndexDeallocate {
  std::vector<Varbind> varbinds;
};

struct AddAgentCaps {
  Oid id;
  std::string description;
};

struct RemoveAgentCaps {
  Oid id;
};

struct Response {
  std::uint32_t sysUpTime = 0;  // hundredths of a second
  std::uint16_t error = 0;
  std::uint16_t index = 0;
  std::vector<Varbind> varbinds;
};

// In the order of the type codes, which count from 1.
using Body = std::variant<Open, Close, Register, Unregister, Get, GetNext,
                          GetBulk, TestSet, CommitSet, UndoSet, CleanupSet,
                          Notify, Ping, IndexAllocate, IndexDeallocate,
                          AddAgentCaps, RemoveAgentCaps, Response>;

// The bits of a header's flags.
inline constexpr std::uint8_t kInstanceRegistration = 0x01;
inline constexpr std::uint8_t kNewIndex = 0x02;
inline constexpr std::uint8_t kAnyIndex = 0x04;
inline constexpr std::uint8_t kNonDefaultContext = 0x08;
inline constexpr std::uint8_t kNetworkByteOrder = 0x10;

// Without kNetworkByteOrder a message is little-endian.
struct Header {
  std::uint8_t version = 1;
  std::uint8_t flags = kNetworkByteOrder;
  std::uint32_t sessionId = 0;
  std::uint32_t transactionId = 0;
  std::uint32_t packetId = 0;
};

// One message. The flag kNonDefaultContext follows `context`; messages that
// have no context on the wire ignore both.
struct Pdu {
  Header header;
  std::optional<std::string> context;
  Body body;
};

bool operator==(const Value& a, const Value& b);
bool operator==(const Varbind& a, const Varbind& b);

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_PDU_H_
