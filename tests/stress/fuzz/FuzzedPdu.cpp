// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "FuzzedPdu.h"

#include <array>

#include "FuzzedMaster.h"

namespace agentx = testkit::agentx;

namespace {

constexpr unsigned int kMostElements = 6;
// Sub-identifiers that RFC 2741 allows in a name.
constexpr std::size_t kLongestName = 128;

agentx::Header Header(Input& input, std::uint32_t packetId) {
  agentx::Header header;
  const unsigned int unlike = input.U8();
  header.sessionId = unlike % 16 == 1 ? input.U32() : FuzzedMaster::kSessionId;
  header.transactionId = unlike % 16 == 2 ? input.U32() : unlike % 3;
  header.packetId = unlike % 16 == 3 ? input.U32() : packetId;
  if (unlike % 16 == 4) header.version = input.U8();
  if (unlike % 8 == 5) header.flags = input.U8();
  return header;
}

}  // namespace

agentx::Bytes FuzzedPdu::Next(Input& input, std::uint32_t packetId) const {
  agentx::Pdu pdu{Header(input, packetId), {}, Body(input)};
  const unsigned int unlike = input.U8();
  if (unlike % 16 == 1) pdu.context = input.Bytes(40);
  const agentx::Bytes bytes = agentx::Encode(pdu);
  return unlike % 4 == 2 ? Damaged(input, bytes) : bytes;
}

agentx::Bytes FuzzedPdu::Damaged(Input& input, agentx::Bytes bytes) {
  const std::size_t place = bytes.empty() ? 0 : input.U16() % bytes.size();
  const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(place);
  switch (input.Below(5)) {
    case 0:
      bytes.erase(at, bytes.end());
      break;
    case 1:
      bytes.erase(bytes.begin(), at);
      break;
    case 2: {
      const std::string more = input.Bytes(600);
      bytes.insert(at, more.begin(), more.end());
      break;
    }
    default:
      if (!bytes.empty()) *at = input.U8();
  }
  return bytes;
}

agentx::Body FuzzedPdu::Body(Input& input) const {
  switch (input.Below(20)) {
    case 0:
    case 1:
      return agentx::Get{Ranges(input)};
    case 2:
    case 3:
      return agentx::GetNext{Ranges(input)};
    case 4:
      return agentx::GetBulk{input.U8(), input.U8(), Ranges(input)};
    case 5:
    case 6:
    case 7:
    case 8:
      return agentx::TestSet{Varbinds(input)};
    case 9:
    case 10:
      return agentx::CommitSet{};
    case 11:
      return agentx::UndoSet{};
    case 12:
    case 13:
      return agentx::CleanupSet{};
    case 14:
      return agentx::Response{input.U32(), input.U8(), input.U8(),
                              Varbinds(input)};
    case 15:
      return agentx::Open{input.U8(), Name(input), input.Bytes(100)};
    case 16:
      return agentx::Close{input.U8()};
    case 17:
      return agentx::Register{input.U8(), input.U8(), input.U8(), Name(input),
                              input.U32()};
    case 18:
      return agentx::Notify{Varbinds(input)};
    default:
      return agentx::Ping{};
  }
}

agentx::Oid FuzzedPdu::Name(Input& input) const {
  const unsigned int choice = input.U8();
  agentx::Oid name = known_[choice % known_.size()];
  switch (input.Below(8)) {
    case 0:
      name.resize(input.Below(static_cast<unsigned int>(name.size()) + 1));
      break;
    case 1:
      for (unsigned int i = input.Below(kLongestName); i > 0; --i) {
        if (name.size() < kLongestName) name.push_back(input.U32());
      }
      break;
    case 2:
      name[choice % name.size()] = input.U32();
      break;
    case 3:
      name.back() = input.Below(16);
      break;
    default:
      break;
  }
  return name;
}

agentx::Value FuzzedPdu::Value(Input& input) const {
  using testkit::agentx::Type;
  constexpr std::array<Type, 16> kTypes{
      Type::kInteger,     Type::kInteger,      Type::kInteger,
      Type::kOctetString, Type::kOctetString,  Type::kNull,
      Type::kObjectId,    Type::kIpAddress,    Type::kCounter32,
      Type::kGauge32,     Type::kTimeTicks,    Type::kOpaque,
      Type::kCounter64,   Type::kNoSuchObject, Type::kNoSuchInstance,
      Type::kEndOfMibView};
  const Type type = kTypes[input.Below(kTypes.size())];
  switch (type) {
    case Type::kInteger:
      return {type, static_cast<std::int32_t>(
                        input.Below(2) == 0 ? input.Below(4) : input.U32())};
    case Type::kCounter32:
    case Type::kGauge32:
    case Type::kTimeTicks:
      return {type, input.U32()};
    case Type::kCounter64:
      return {type, input.U64()};
    case Type::kObjectId:
      return {type, Name(input)};
    case Type::kOctetString:
    case Type::kIpAddress:
    case Type::kOpaque:
      return {type, input.Bytes(1000)};
    default:
      return {type, {}};
  }
}

std::vector<agentx::SearchRange> FuzzedPdu::Ranges(Input& input) const {
  std::vector<agentx::SearchRange> ranges;
  for (unsigned int i = input.Below(kMostElements); i > 0; --i) {
    const bool include = input.Below(4) == 0;
    ranges.push_back({Name(input), include, {}});
    if (input.Below(2) == 0) ranges.back().end = Name(input);
  }
  return ranges;
}

std::vector<agentx::Varbind> FuzzedPdu::Varbinds(Input& input) const {
  std::vector<agentx::Varbind> varbinds;
  for (unsigned int i = input.Below(kMostElements); i > 0; --i) {
    const agentx::Oid name = Name(input);
    varbinds.push_back({name, Value(input)});
  }
  return varbinds;
}
