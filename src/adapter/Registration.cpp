// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "adapter/MasterExchange.h"

namespace {

// Keeps the size of the agent library's look-up cache, which stays 0 when a
// registration is to be withdrawn that is not there.
class LookupCacheSize {
 public:
  LookupCacheSize() : size_(netsnmp_get_lookup_cache_size()) {}
  ~LookupCacheSize() { netsnmp_set_lookup_cache_size(size_); }
  LookupCacheSize(const LookupCacheSize&) = delete;
  LookupCacheSize& operator=(const LookupCacheSize&) = delete;

 private:
  const int size_;
};

}  // namespace

int NetSNMP::create_snmp_handler_registration(
    netsnmp_handler_registration** reg, const char* name,
    int (*handler)(netsnmp_mib_handler*, netsnmp_handler_registration*,
                   netsnmp_agent_request_info*, netsnmp_request_info*),
    unsigned long* oid, unsigned int oidLen, int modes) {
  const NetSNMPAgentGuard guard;
  // The agent library keeps the length in 8 bits: 256 would wrap to 0 and hide
  // everything else that the master agent serves.
  *reg = oidLen > MAX_OID_LEN ? nullptr
                              : netsnmp_create_handler_registration(
                                    name, handler, oid, oidLen, modes);
  return *reg == nullptr ? SNMP_ERR_BADVALUE : SNMP_ERR_NOERROR;
}

int NetSNMP::register_snmp_handler(netsnmp_handler_registration* reg) {
  const MasterExchange exchange;
  return netsnmp_register_instance(reg);
}

int NetSNMP::unregister_snmp_handler(netsnmp_handler_registration* reg) {
  const MasterExchange exchange;
  const LookupCacheSize cacheSize;
  return netsnmp_unregister_handler(reg);
}

int NetSNMP::free_register_snmp_handler(netsnmp_handler_registration* reg) {
  const NetSNMPAgentGuard guard;
  if (reg != nullptr) netsnmp_handler_registration_free(reg);
  return 0;
}

int NetSNMP::unregister_snmp_mib(unsigned long* oid, unsigned int oidLen) {
  const MasterExchange exchange;
  const LookupCacheSize cacheSize;
  return unregister_mib(oid, oidLen);
}

int NetSNMP::set_snmp_request_error(netsnmp_agent_request_info* reqinfo,
                                    netsnmp_request_info* request, int error) {
  if (error > 0) netsnmp_set_request_error(reqinfo, request, error);
  return error;
}

int NetSNMP::send_trap(variable_list* vars) {
  const MasterExchange exchange;
  send_v2trap(vars);
  return 0;
}
