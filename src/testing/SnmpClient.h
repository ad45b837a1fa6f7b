// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_SNMPCLIENT_H_
#define SNMPSUBAGENT_TESTING_SNMPCLIENT_H_

#include <cstdint>
#include <map>

#include "snmpsubagent/testing/Manager.h"
#include "testing/Monitor.h"
#include "testing/UdpListener.h"

namespace snmpsubagent::testing::internal {

// Asks an agent over the network, as managers do.
//
// Threads: any.
class SnmpClient {
 public:
  // The response of the agent at that port of 127.0.0.1. Each request is sent
  // once. Throws TimedOut.
  Response Ask(const Request& request, int port);

 private:
  void Keep(const SnmpMessage& message);

  Monitor monitor_;
  std::map<std::int32_t, SnmpMessage> responses_;
  std::int32_t lastId_ = 0;
  UdpListener listener_{[this](const SnmpMessage& message, const sockaddr_in&) {
    Keep(message);
  }};
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_SNMPCLIENT_H_
