// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/HeldRegistration.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"

bool AgentHolds(const netsnmp_handler_registration_s* registration,
                const unsigned long* oid, unsigned int oidLen) {
  const NetSNMPAgentGuard guard;
  const netsnmp_subtree* subtree =
      netsnmp_subtree_find(oid, oidLen, netsnmp_subtree_find_first(""), "");
  for (; subtree != nullptr; subtree = subtree->children) {
    if (subtree->reginfo == registration) return true;
  }
  return false;
}
