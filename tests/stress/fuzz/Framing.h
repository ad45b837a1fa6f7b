// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_FRAMING_H_
#define SNMPSUBAGENT_TESTS_FUZZ_FRAMING_H_

#include <vector>

#include "testkit/agentx/Codec.h"

// Follows where a receiver finds the messages in a stream of bytes.
class Framing {
 public:
  // `bytes`, the next of the stream, cut where a message ends.
  std::vector<testkit::agentx::Bytes> Split(
      const testkit::agentx::Bytes& bytes);

 private:
  testkit::agentx::Bytes message_;  // begun and not yet at its end
};

#endif  // SNMPSUBAGENT_TESTS_FUZZ_FRAMING_H_
