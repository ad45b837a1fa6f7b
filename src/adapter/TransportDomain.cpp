// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cstdlib>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"

int NetSNMP::init_snmp_tdomain(netsnmp_tdomain* domain,
                               const unsigned long* name,
                               unsigned int nameLen) {
  domain->name = name;
  domain->name_length = nameLen;
  // The second entry stays null and ends the list.
  auto** const prefix =
      static_cast<const char**>(std::calloc(2, sizeof(const char*)));
  if (prefix != nullptr) prefix[0] = "tcp";
  domain->prefix = prefix;
  return 0;
}

int NetSNMP::register_snmp_tdomain(netsnmp_tdomain* domain) {
  const NetSNMPAgentGuard guard;
  return netsnmp_tdomain_register(domain);
}

int NetSNMP::unregister_snmp_tdomain(netsnmp_tdomain* domain) {
  const NetSNMPAgentGuard guard;
  const int result = netsnmp_tdomain_unregister(domain);
  std::free(domain);
  return result;
}
