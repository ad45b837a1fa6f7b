// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/Registration.h"

#include "NetSNMP.h"
#include "adapter/MasterExchange.h"

namespace {

// Restores the size of the look-up cache: Net-SNMP leaves it at 0 after an
// attempt to unregister an unknown OID.
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

bool registration::IsRegistered(
    const netsnmp_handler_registration* registration, const unsigned long* oid,
    unsigned int oidLen) {
  if (registration == nullptr) return false;
  const NetSNMPAgentGuard guard;
  const netsnmp_subtree* subtree =
      netsnmp_subtree_find(oid, oidLen, netsnmp_subtree_find_first(""), "");
  for (; subtree != nullptr; subtree = subtree->children) {
    if (subtree->reginfo == registration) return true;
  }
  return false;
}

int NetSNMP::create_snmp_handler_registration(
    netsnmp_handler_registration** reg, const char* name,
    int (*handler)(netsnmp_mib_handler*, netsnmp_handler_registration*,
                   netsnmp_agent_request_info*, netsnmp_request_info*),
    unsigned long* oid, unsigned int oidLen, int modes) {
  const NetSNMPAgentGuard guard;
  // The agent library stores the length in 8 bits: 256 would wrap to 0 and
  // cover everything that the master agent serves.
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
