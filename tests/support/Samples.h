// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SAMPLES_H_
#define SNMPSUBAGENT_TESTS_SAMPLES_H_

#include <vector>

#include "testkit/agentx/Pdu.h"

namespace testkit::agentx {

// One varbind of every type.
inline std::vector<Varbind> SampleVarbinds() {
  const Oid name{1, 3, 6, 1, 4, 1, 32473, 1, 4294967295};
  return {{name, {Type::kInteger, std::int32_t{-2}}},
          {name, {Type::kOctetString, std::string("text\0more", 9)}},
          {name, {Type::kNull, {}}},
          {name, {Type::kObjectId, Oid{1, 3, 6, 1, 4, 1, 32473}}},
          {name, {Type::kIpAddress, std::string("\x7f\0\0\1", 4)}},
          {name, {Type::kCounter32, std::uint32_t{4294967295}}},
          {name, {Type::kGauge32, std::uint32_t{1}}},
          {name, {Type::kTimeTicks, std::uint32_t{256}}},
          {name, {Type::kOpaque, std::string("\x9f\x78\4", 3)}},
          {name, {Type::kCounter64, std::uint64_t{0x0102030405060708}}},
          {name, {Type::kNoSuchObject, {}}},
          {name, {Type::kNoSuchInstance, {}}},
          {name, {Type::kEndOfMibView, {}}}};
}

// One message of every type, in the order of the type codes.
inline std::vector<Body> Samples() {
  const Oid oid{1, 3, 6, 1, 4, 1, 32473};
  const std::vector<SearchRange> ranges{{oid, true, {1, 3, 6, 1, 5}},
                                        {{2, 5}, false, {}}};
  return {Open{15, oid, "a subagent"},
          Close{5},
          Register{5, 100, 7, oid, 32475},
          Unregister{100, 0, oid, 0},
          Get{ranges},
          GetNext{ranges},
          GetBulk{1, 10, ranges},
          TestSet{SampleVarbinds()},
          CommitSet{},
          UndoSet{},
          CleanupSet{},
          Notify{SampleVarbinds()},
          Ping{},
          IndexAllocate{SampleVarbinds()},
          IndexDeallocate{SampleVarbinds()},
          AddAgentCaps{oid, "capabilities"},
          RemoveAgentCaps{oid},
          Response{4711, 5, 1, SampleVarbinds()}};
}

}  // namespace testkit::agentx

#endif  // SNMPSUBAGENT_TESTS_SAMPLES_H_
