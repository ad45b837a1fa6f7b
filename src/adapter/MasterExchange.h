// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_MASTEREXCHANGE_H_
#define SNMPSUBAGENT_ADAPTER_MASTEREXCHANGE_H_

#include "NetSNMPAgentGuard.h"
#include "adapter/SigpipeBlock.h"

// Created around every call that may write to the master agent's socket.
class MasterExchange {
 private:
  NetSNMPAgentGuard guard_;
  SigpipeBlock sigpipeBlock_;
};

#endif  // SNMPSUBAGENT_ADAPTER_MASTEREXCHANGE_H_
