// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_FIRSTMESSAGE_H_
#define SNMPSUBAGENT_TESTING_FIRSTMESSAGE_H_

#include <future>
#include <memory>

namespace snmpsubagent::testing::internal {

// Tells another thread that the first message of a request is on its way, which
// the thread of this object sends.
class FirstMessage {
 public:
  explicit FirstMessage(std::shared_ptr<std::promise<void>> sent);
  // Tells that there is none, if none was sent.
  ~FirstMessage();
  FirstMessage(const FirstMessage&) = delete;
  FirstMessage& operator=(const FirstMessage&) = delete;

  // To be called after each message, by whoever sends for the calling thread.
  static void Sent();
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_FIRSTMESSAGE_H_
