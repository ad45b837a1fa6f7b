// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_MASTEREXCHANGE_H_
#define SNMPSUBAGENT_ADAPTER_MASTEREXCHANGE_H_

#include "NetSNMPAgentGuard.h"

// Blocks SIGPIPE in the calling thread while it exists. The agent library
// writes to the master agent's socket without MSG_NOSIGNAL, and the signal
// would end an application that has no handler.
//
// A nested one costs nothing; each outermost one costs system calls.
class SigpipeBlock {
 public:
  SigpipeBlock();
  ~SigpipeBlock();
  SigpipeBlock(const SigpipeBlock&) = delete;
  SigpipeBlock& operator=(const SigpipeBlock&) = delete;

 private:
  bool outermost_;
  bool blockedBefore_ = false;
  bool pendingBefore_ = false;
};

// Created around every call that may write to the master agent's socket.
class MasterExchange {
 private:
  NetSNMPAgentGuard guard_;
  SigpipeBlock sigpipeBlock_;
};

#endif  // SNMPSUBAGENT_ADAPTER_MASTEREXCHANGE_H_
