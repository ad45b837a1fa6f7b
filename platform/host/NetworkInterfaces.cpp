// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetworkInterfaces.h"

#include <arpa/inet.h>

std::string NetworkInterfaces::loopbackIPv4() { return "127.0.0.1"; }

bool NetworkInterfaces::isLoopbackIPv4(const std::string& address) {
  if (address.find('\0') != std::string::npos) return false;
  in_addr parsed{};
  if (inet_pton(AF_INET, address.c_str(), &parsed) != 1) return false;
  return ntohl(parsed.s_addr) >> 24 == IN_LOOPBACKNET;
}
