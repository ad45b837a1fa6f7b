// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_SIGPIPEBLOCK_H_
#define SNMPSUBAGENT_ADAPTER_SIGPIPEBLOCK_H_

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

#endif  // SNMPSUBAGENT_ADAPTER_SIGPIPEBLOCK_H_
