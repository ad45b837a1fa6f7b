// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_FUZZEDPDU_H_
#define SNMPSUBAGENT_TESTS_FUZZ_FUZZEDPDU_H_

#include <vector>

#include "Input.h"
#include "testkit/agentx/Codec.h"
#include "testkit/agentx/Pdu.h"

// Messages as an input decides: of every type and mostly proper ones.
class FuzzedPdu {
 public:
  // Names are mostly some of `known`, which is borrowed.
  explicit FuzzedPdu(const std::vector<testkit::agentx::Oid>& known)
      : known_(known) {}

  // The bytes of the next message. `packetId` is its number.
  testkit::agentx::Bytes Next(Input& input, std::uint32_t packetId) const;

  // `bytes` with a part changed, taken away or put in.
  static testkit::agentx::Bytes Damaged(Input& input,
                                        testkit::agentx::Bytes bytes);

 private:
  testkit::agentx::Body Body(Input& input) const;
  testkit::agentx::Oid Name(Input& input) const;
  testkit::agentx::Value Value(Input& input) const;
  std::vector<testkit::agentx::SearchRange> Ranges(Input& input) const;
  std::vector<testkit::agentx::Varbind> Varbinds(Input& input) const;

  const std::vector<testkit::agentx::Oid>& known_;
};

#endif  // SNMPSUBAGENT_TESTS_FUZZ_FUZZEDPDU_H_
