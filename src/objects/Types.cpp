// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Types.h"

#include <arpa/inet.h>

#include <stdexcept>
#include <string>

namespace snmpsubagent {

IpAddress::IpAddress(std::string_view text) {
  if (inet_pton(AF_INET, std::string(text).c_str(), octets.data()) != 1) {
    throw std::invalid_argument("'" + std::string(text) +
                                "' is no IPv4 address");
  }
}

InetAddress::InetAddress(std::string_view text)
    : type(InetAddressType::Dns), octets(text) {
  char address[16];
  if (inet_pton(AF_INET, octets.c_str(), address) == 1) {
    type = InetAddressType::Ipv4;
    octets.assign(address, 4);
  } else if (inet_pton(AF_INET6, octets.c_str(), address) == 1) {
    type = InetAddressType::Ipv6;
    octets.assign(address, 16);
  }
}

}  // namespace snmpsubagent
