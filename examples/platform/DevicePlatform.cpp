// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The platform library of a device: its log and its loopback address. A real
// one writes to the device's log and queries the system.
#include <LogXMessage.h>
#include <NetworkInterfaces.h>

#include <iostream>

// Called on any thread, also one that holds the lock of NetSNMPAgentGuard: it
// must not wait for a thread that takes that lock. One write per line keeps
// lines whole.
void LogXMessage(unsigned int level, const std::string& text) {
  std::cout << "device<" + std::to_string(level) + "> " + text + "\n"
            << std::flush;
}

std::string NetworkInterfaces::loopbackIPv4() { return "127.0.0.1"; }

// The subagent replaces a loopback address by "localhost".
bool NetworkInterfaces::isLoopbackIPv4(const std::string& address) {
  return address.rfind("127.", 0) == 0;
}
