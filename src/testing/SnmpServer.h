// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_SNMPSERVER_H_
#define SNMPSUBAGENT_TESTING_SNMPSERVER_H_

#include <functional>
#include <string>

#include "snmpsubagent/testing/Manager.h"
#include "testing/UdpListener.h"

namespace snmpsubagent::testing::internal {

// Answers managers that ask over the network, one after the other.
class SnmpServer {
 public:
  using Function = std::function<Response(const Request&)>;

  // `answer` is called on a thread of the server's.
  explicit SnmpServer(Function answer);

  std::string Address() const { return listener_.Socket().Address(); }

 private:
  void Serve(const SnmpMessage& message, const sockaddr_in& manager);

  Function answer_;
  UdpListener listener_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_SNMPSERVER_H_
