// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETWORKINTERFACES_H_
#define SNMPSUBAGENT_NETWORKINTERFACES_H_

#include <string>

#include "SnmpSubAgentExport.h"

// The device's network interfaces, as far as a subagent needs them.
//
// Imported from the platform library. An application may define both functions
// instead.
//
// Threads: any.
class SNMPSUBAGENT_EXPORT NetworkInterfaces {
 public:
  // The device's IPv4 loopback address in dotted decimal: the default address
  // of the master agent.
  static std::string loopbackIPv4();

  // Whether `address` is an IPv4 loopback address in dotted decimal. Any other
  // text, a host name for one, is not an error and gives false.
  static bool isLoopbackIPv4(const std::string& address);
};

#endif  // SNMPSUBAGENT_NETWORKINTERFACES_H_
