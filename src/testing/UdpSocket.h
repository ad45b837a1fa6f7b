// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_UDPSOCKET_H_
#define SNMPSUBAGENT_TESTING_UDPSOCKET_H_

#include <netinet/in.h>

#include <optional>
#include <string>

#include "testkit/FileDescriptor.h"

namespace snmpsubagent::testing::internal {

// A UDP socket at a free port of 127.0.0.1.
//
// Threads: any, one operation at a time.
class UdpSocket {
 public:
  struct Datagram {
    std::string bytes;
    sockaddr_in sender;
  };

  // Throws std::system_error.
  UdpSocket();

  int Descriptor() const { return socket_.Number(); }
  // As "127.0.0.1:" and the port.
  std::string Address() const;

  void Send(const std::string& bytes, int port) const;
  void Send(const std::string& bytes, const sockaddr_in& receiver) const;
  // The next one; nothing if none is there.
  std::optional<Datagram> Receive() const;

 private:
  testkit::FileDescriptor socket_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_UDPSOCKET_H_
