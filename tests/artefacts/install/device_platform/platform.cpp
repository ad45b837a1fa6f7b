// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A platform library as a device may have it: it keeps no log, and tells itself
// from the host's by its loopback address.

#include "LogXMessage.h"
#include "NetworkInterfaces.h"

void LogXMessage(unsigned int, const std::string&) {}

std::string NetworkInterfaces::loopbackIPv4() { return "127.0.0.2"; }

bool NetworkInterfaces::isLoopbackIPv4(const std::string& address) {
  return address == loopbackIPv4();
}
