// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_AGENTX_FIELDS_H_
#define SNMPSUBAGENT_TESTKIT_AGENTX_FIELDS_H_

#include <string>
#include <vector>

#include "testkit/agentx/Pdu.h"
#include "testkit/agentx/Reader.h"
#include "testkit/agentx/Writer.h"

// What each message consists of, described once for both directions: Fields()
// with a Writer writes a message, with a Reader it fills it.
namespace testkit::agentx {

// Works on the content of a value as on a `T`, which a reader makes it first.
template <typename T>
T& ContentAs(Writer&, Value::Content& content) {
  return std::get<T>(content);
}
template <typename T>
T& ContentAs(Reader&, Value::Content& content) {
  return content.emplace<T>();
}

inline void Integer(Writer& archive, Value::Content& content) {
  archive.U32(static_cast<std::uint32_t>(std::get<std::int32_t>(content)));
}
inline void Integer(Reader& archive, Value::Content& content) {
  std::uint32_t number = 0;
  archive.U32(number);
  content = static_cast<std::int32_t>(number);
}

template <typename Archive>
void Content(Archive& archive, Value& value) {
  switch (value.type) {
    case Type::kInteger:
      return Integer(archive, value.content);
    case Type::kCounter32:
    case Type::kGauge32:
    case Type::kTimeTicks:
      return archive.U32(ContentAs<std::uint32_t>(archive, value.content));
    case Type::kCounter64:
      return archive.U64(ContentAs<std::uint64_t>(archive, value.content));
    case Type::kOctetString:
    case Type::kIpAddress:
    case Type::kOpaque:
      return archive.OctetString(
          ContentAs<std::string>(archive, value.content));
    case Type::kObjectId:
      return archive.ObjectId(ContentAs<Oid>(archive, value.content));
    case Type::kNull:
    case Type::kNoSuchObject:
    case Type::kNoSuchInstance:
    case Type::kEndOfMibView:
      return;
  }
  throw Malformed("varbind of an unknown type");
}

template <typename Archive>
void Field(Archive& archive, Varbind& varbind) {
  auto type = static_cast<std::uint16_t>(varbind.value.type);
  archive.U16(type);
  varbind.value.type = static_cast<Type>(type);
  archive.Reserved(2);
  archive.ObjectId(varbind.name);
  Content(archive, varbind.value);
}

template <typename Archive>
void Field(Archive& archive, SearchRange& range) {
  bool endIncluded = false;
  archive.ObjectId(range.start, range.include);
  archive.ObjectId(range.end, endIncluded);
}

template <typename Archive, typename Element>
void List(Archive& archive, std::vector<Element>& list) {
  archive.List(list, [](Archive& a, Element& element) { Field(a, element); });
}

template <typename Archive>
void Fields(Archive& archive, Open& open) {
  archive.U8(open.timeout);
  archive.Reserved(3);
  archive.ObjectId(open.id);
  archive.OctetString(open.description);
}

template <typename Archive>
void Fields(Archive& archive, Close& close) {
  archive.U8(close.reason);
  archive.Reserved(3);
}

template <typename Archive, typename Region>
void RegionFields(Archive& archive, Region& region) {
  archive.U8(region.priority);
  archive.U8(region.rangeSubid);
  archive.Reserved(1);
  archive.ObjectId(region.subtree);
  if (region.rangeSubid != 0) archive.U32(region.upperBound);
}

template <typename Archive>
void Fields(Archive& archive, Register& registration) {
  archive.U8(registration.timeout);
  RegionFields(archive, registration);
}

template <typename Archive>
void Fields(Archive& archive, Unregister& withdrawal) {
  archive.Reserved(1);
  RegionFields(archive, withdrawal);
}

template <typename Archive>
void Fields(Archive& archive, Get& get) {
  List(archive, get.ranges);
}

template <typename Archive>
void Fields(Archive& archive, GetNext& getNext) {
  List(archive, getNext.ranges);
}

template <typename Archive>
void Fields(Archive& archive, GetBulk& getBulk) {
  archive.U16(getBulk.nonRepeaters);
  archive.U16(getBulk.maxRepetitions);
  List(archive, getBulk.ranges);
}

template <typename Archive>
void Fields(Archive& archive, TestSet& testSet) {
  List(archive, testSet.varbinds);
}

template <typename Archive>
void Fields(Archive&, CommitSet&) {}
template <typename Archive>
void Fields(Archive&, UndoSet&) {}
template <typename Archive>
void Fields(Archive&, CleanupSet&) {}
template <typename Archive>
void Fields(Archive&, Ping&) {}

template <typename Archive>
void Fields(Archive& archive, Notify& notify) {
  List(archive, notify.varbinds);
}

template <typename Archive>
void Fields(Archive& archive, IndexAllocate& allocate) {
  List(archive, allocate.varbinds);
}

template <typename Archive>
void Fields(Archive& archive, IndexDeallocate& deallocate) {
  List(archive, deallocate.varbinds);
}

template <typename Archive>
void Fields(Archive& archive, AddAgentCaps& caps) {
  archive.ObjectId(caps.id);
  archive.OctetString(caps.description);
}

template <typename Archive>
void Fields(Archive& archive, RemoveAgentCaps& caps) {
  archive.ObjectId(caps.id);
}

template <typename Archive>
void Fields(Archive& archive, Response& response) {
  archive.U32(response.sysUpTime);
  archive.U16(response.error);
  archive.U16(response.index);
  List(archive, response.varbinds);
}

template <typename Archive>
void Fields(Archive& archive, Header& header, std::uint8_t& type) {
  archive.U8(header.version);
  archive.U8(type);
  archive.U8(header.flags);
  archive.Reserved(1);
  archive.U32(header.sessionId);
  archive.U32(header.transactionId);
  archive.U32(header.packetId);
}

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTKIT_AGENTX_FIELDS_H_
