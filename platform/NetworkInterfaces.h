// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETWORKINTERFACES_H_
#define SNMPSUBAGENT_NETWORKINTERFACES_H_

#include <string>

#include "SnmpSubAgentExport.h"

// What the device knows of its network interfaces, as far as a subagent asks.
//
// Imported from the platform library. An application that defines both
// functions itself takes that one's place.
//
// Threads: any.
class SNMPSUBAGENT_EXPORT NetworkInterfaces {
 public:
  // The device's IPv4 loopback address in dotted decimal: where a subagent
  // looks for its master agent when it is given no address.
  static std::string loopbackIPv4();

  // Whether `address` is an IPv4 loopback address in dotted decimal. Any other
  // text, a host name for one, is not an error and gives false.
  static bool isLoopbackIPv4(const std::string& address);
};

#endif  // SNMPSUBAGENT_NETWORKINTERFACES_H_
