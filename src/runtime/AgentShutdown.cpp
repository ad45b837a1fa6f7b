// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/AgentShutdown.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPNode.h"
#include "SNMPSubAgent.h"
#include "adapter/LateWithdrawals.h"
#include "runtime/LivingSubAgents.h"

namespace {

int OnShutdown(int /*majorID*/, int /*minorID*/, void* /*serverArg*/,
               void* /*clientArg*/) {
  PartWithAgentLibrary();
  return 0;
}

}  // namespace

void PartWithAgentLibrary() {
  const NetSNMPAgentGuard guard;
  for (const int event :
       {SNMPD_CALLBACK_INDEX_START, SNMPD_CALLBACK_INDEX_STOP}) {
    snmp_unregister_callback(SNMP_CALLBACK_APPLICATION, event,
                             SNMPSubAgent::snmp_subagent_callback, nullptr, 0);
  }
  late_withdrawals::DropNoted();
  if (!LivingSubAgents::Contains(NetSNMPNode::snmpSubAgent_)) return;
  auto* const subAgent =
      dynamic_cast<SNMPSubAgent*>(NetSNMPNode::snmpSubAgent_);
  if (subAgent != nullptr) {
    __atomic_store_n(&subAgent->connected_, false, __ATOMIC_RELEASE);
  }
}

void PartOnShutdown() {
  snmp_register_callback(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_SHUTDOWN,
                         OnShutdown, nullptr);
}
