// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/AgentSetup.h"

#include <cstdlib>

#include "NetSNMP.h"
#include "adapter/Deferred.h"
#include "adapter/MasterExchange.h"

namespace {
void (*beforeShutdown)() = nullptr;
}  // namespace

void agent_setup::SetBeforeShutdown(void (*function)()) {
  beforeShutdown = function;
}

int NetSNMP::init_snmp_agent(const std::string& name) {
  const MasterExchange exchange;
  return init_agent(name.c_str());
}

int NetSNMP::init_snmp_snmp(const std::string& name) {
  const MasterExchange exchange;
  netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID,
                         NETSNMP_DS_LIB_ALARM_DONT_USE_SIG, 1);
  init_snmp(name.c_str());
  return 0;
}

int NetSNMP::shutdown_snmp(const std::string& name) {
  const MasterExchange exchange;
  snmp_shutdown(name.c_str());
  return 0;
}

int NetSNMP::shutdown_snmp_agent() {
  const MasterExchange exchange;
  if (beforeShutdown != nullptr) beforeShutdown();
  deferred::Drop();
  shutdown_agent();
  return 0;
}

int NetSNMP::register_snmp_callback(int major, int minor,
                                    int (*fn)(int, int, void*, void*),
                                    void* arg) {
  const NetSNMPAgentGuard guard;
  return snmp_register_callback(major, minor, fn, arg);
}

int NetSNMP::unregister_snmp_callback(int major, int minor,
                                      int (*fn)(int, int, void*, void*),
                                      void* arg, int matchArg) {
  const NetSNMPAgentGuard guard;
  return snmp_unregister_callback(major, minor, fn, arg, matchArg);
}

int NetSNMP::set_snmp_int(int storeId, int which, int value) {
  const NetSNMPAgentGuard guard;
  return netsnmp_ds_set_int(storeId, which, value);
}

int NetSNMP::set_snmp_boolean(int storeId, int which, int value) {
  const NetSNMPAgentGuard guard;
  return netsnmp_ds_set_boolean(storeId, which, value);
}

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
