// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
#define SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_

#include <chrono>
#include <memory>
#include <vector>

#include "agentx/Listener.h"
#include "agentx/MasterSession.h"
#include "master/Master.h"

// A master agent that does nothing but put requests: what is measured behind it
// is the subagent alone.
class DirectMaster : public Master {
 public:
  // An answer, and how long it took to come.
  struct Timed {
    agentx::Response response;
    std::chrono::duration<double, std::milli> latency;
  };

  int Port() const override { return listener_.Port(); }
  void Connect(std::size_t subtrees, const agentx::Oid& object) override;
  agentx::Response Put(const agentx::Body& request) override;

  // Puts requests, up to `outstanding` of them unanswered at a time. Returns
  // the answers in the order of the requests.
  std::vector<Timed> PutAll(const std::vector<agentx::Body>& requests,
                            std::size_t outstanding);

 private:
  agentx::Listener listener_;
  std::unique_ptr<agentx::MasterSession> session_;
};

#endif  // SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
