// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_SIGPIPEBLOCK_H_
#define SNMPSUBAGENT_ADAPTER_SIGPIPEBLOCK_H_

// Keeps SIGPIPE from the calling thread while it lives. The agent library
// writes to the master's socket without asking the kernel to spare it the
// signal, which would end an application that has no handler.
//
// One on the stack of a thread that is ours costs nothing to those nested in
// it; on an application's thread each outermost one costs system calls.
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
