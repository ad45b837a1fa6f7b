// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/UdpListener.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <exception>
#include <utility>

namespace snmpsubagent::testing::internal {

UdpListener::UdpListener(Function function)
    : function_(std::move(function)),
      end_(eventfd(0, EFD_CLOEXEC)),
      thread_([this] { Loop(); }) {}

UdpListener::~UdpListener() {
  eventfd_write(end_.Number(), 1);
  thread_.join();
}

void UdpListener::Loop() {
  std::array<pollfd, 2> polled{
      {{end_.Number(), POLLIN, 0}, {socket_.Descriptor(), POLLIN, 0}}};
  while (poll(polled.data(), polled.size(), -1) < 0 || polled[0].revents == 0) {
    const auto datagram = socket_.Receive();
    if (!datagram) continue;
    try {
      function_(DecodeSnmp(datagram->bytes), datagram->sender);
    } catch (const std::exception&) {
      // Who waits for a response is told that none has come.
    }
  }
}

}  // namespace snmpsubagent::testing::internal
