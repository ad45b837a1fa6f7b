// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_UDPLISTENER_H_
#define SNMPSUBAGENT_TESTING_UDPLISTENER_H_

#include <functional>
#include <string>
#include <thread>

#include "testing/SnmpMessage.h"
#include "testing/UdpSocket.h"
#include "testkit/FileDescriptor.h"

namespace snmpsubagent::testing::internal {

// Takes SNMP messages that come to a port of its own, on a thread of its own.
// What is none is passed over.
class UdpListener {
 public:
  // Called on that thread for each message.
  using Function =
      std::function<void(const SnmpMessage& message, const sockaddr_in& from)>;

  explicit UdpListener(Function function);
  // Waits for the function to return.
  ~UdpListener();
  UdpListener(const UdpListener&) = delete;
  UdpListener& operator=(const UdpListener&) = delete;

  const UdpSocket& Socket() const { return socket_; }

 private:
  void Loop();

  Function function_;
  UdpSocket socket_;
  testkit::FileDescriptor end_;
  std::thread thread_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_UDPLISTENER_H_
