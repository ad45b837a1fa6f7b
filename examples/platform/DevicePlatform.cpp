// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A device's own platform library: its log, and what it knows of its network
// interfaces. A real one writes to the device's log and asks the system.
#include <LogXMessage.h>
#include <NetworkInterfaces.h>

#include <iostream>

// Called on any thread, also under the lock of NetSNMPAgentGuard: it must not
// wait for a thread that takes one. One write for the line keeps lines whole.
void LogXMessage(unsigned int level, const std::string& text) {
  std::cout << "device<" + std::to_string(level) + "> " + text + "\n"
            << std::flush;
}

std::string NetworkInterfaces::loopbackIPv4() { return "127.0.0.1"; }

// What it takes for the device itself is written as "localhost".
bool NetworkInterfaces::isLoopbackIPv4(const std::string& address) {
  return address.rfind("127.", 0) == 0;
}
