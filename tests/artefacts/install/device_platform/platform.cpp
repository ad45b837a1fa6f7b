// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A device's platform library, without a log. Its loopback address differs from
// the host's.

#include "LogXMessage.h"
#include "NetworkInterfaces.h"

void LogXMessage(unsigned int, const std::string&) {}

std::string NetworkInterfaces::loopbackIPv4() { return "127.0.0.2"; }

bool NetworkInterfaces::isLoopbackIPv4(const std::string& address) {
  return address == loopbackIPv4();
}
