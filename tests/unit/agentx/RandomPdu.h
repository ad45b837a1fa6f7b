// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_UNIT_AGENTX_RANDOMPDU_H_
#define SNMPSUBAGENT_TESTS_UNIT_AGENTX_RANDOMPDU_H_

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "support/AgentXReference.h"

namespace snmpsubagent::agentx {

// Messages at random, with the odd sizes and values more often than they would
// come by chance.
class RandomPdu {
 public:
  explicit RandomPdu(std::uint32_t seed) : random_(seed) {}

  std::uint32_t Below(std::uint32_t limit) { return random_() % limit; }

  std::uint32_t Number() {
    const std::uint32_t odd[] = {0,   1,          127,        128,       255,
                                 256, 0x7fffffff, 0x80000000, 0xffffffff};
    return Below(2) == 0 ? odd[Below(9)] : random_();
  }

  std::string Octets() {
    std::string octets(Below(8) == 0 ? Below(3000) : Below(10), '\0');
    for (char& octet : octets) octet = static_cast<char>(random_());
    return octets;
  }

  reference::Oid Oid() {
    reference::Oid oid;
    if (Below(4) != 0) oid = {1, 3, 6, 1};
    const std::size_t size = Below(8) == 0 ? Below(129) : Below(12);
    while (oid.size() < size) oid.push_back(Number());
    return oid;
  }

  reference::Value Value() {
    using Type = reference::Type;
    switch (Below(13)) {
      case 0:
        return {Type::kInteger, static_cast<std::int32_t>(Number())};
      case 1:
        return {Type::kOctetString, Octets()};
      case 2:
        return {Type::kNull, {}};
      case 3:
        return {Type::kObjectId, Oid()};
      case 4:
        return {Type::kIpAddress, Octets()};
      case 5:
        return {Type::kCounter32, Number()};
      case 6:
        return {Type::kGauge32, Number()};
      case 7:
        return {Type::kTimeTicks, Number()};
      case 8:
        return {Type::kOpaque, Octets()};
      case 9:
        return {Type::kCounter64, std::uint64_t{Number()} << 32 | Number()};
      case 10:
        return {Type::kNoSuchObject, {}};
      case 11:
        return {Type::kNoSuchInstance, {}};
      default:
        return {Type::kEndOfMibView, {}};
    }
  }

  std::vector<reference::Varbind> Varbinds() {
    std::vector<reference::Varbind> varbinds(Below(6));
    for (auto& varbind : varbinds) varbind = {Oid(), Value()};
    return varbinds;
  }

  std::vector<reference::SearchRange> Ranges() {
    std::vector<reference::SearchRange> ranges(Below(6));
    for (auto& range : ranges) range = {Oid(), Below(2) == 0, Oid()};
    return ranges;
  }

  // A request of a master agent's.
  reference::Body RequestBody() {
    switch (Below(7)) {
      case 0:
        return reference::Get{Ranges()};
      case 1:
        return reference::GetNext{Ranges()};
      case 2:
        return reference::GetBulk{static_cast<std::uint16_t>(Number()),
                                  static_cast<std::uint16_t>(Number()),
                                  Ranges()};
      case 3:
        return reference::TestSet{Varbinds()};
      case 4:
        return reference::CommitSet{};
      case 5:
        return reference::UndoSet{};
      default:
        return reference::CleanupSet{};
    }
  }

  reference::Pdu Pdu(reference::Body body) {
    reference::Pdu pdu;
    pdu.header.flags = Below(2) == 0 ? kNetworkByteOrder : std::uint8_t{0};
    pdu.header.sessionId = Number();
    pdu.header.transactionId = Number();
    pdu.header.packetId = Number();
    if (Below(3) == 0) pdu.context = Octets();
    pdu.body = std::move(body);
    return pdu;
  }

 private:
  std::mt19937 random_;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_TESTS_UNIT_AGENTX_RANDOMPDU_H_
