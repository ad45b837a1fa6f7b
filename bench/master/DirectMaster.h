// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
#define SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_

#include <chrono>
#include <memory>
#include <vector>

#include "master/Master.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"

// A master agent that does nothing but put requests: what is measured behind it
// is the subagent alone.
class DirectMaster : public Master {
 public:
  // An answer, and how long it took to come.
  struct Timed {
    testkit::agentx::Response response;
    std::chrono::duration<double, std::milli> latency;
  };

  int Port() const override { return listener_.Port(); }
  void Connect(std::size_t subtrees,
               const testkit::agentx::Oid& object) override;
  testkit::agentx::Response Put(const testkit::agentx::Body& request) override;

  // Puts requests, up to `outstanding` of them unanswered at a time. Returns
  // the answers in the order of the requests.
  std::vector<Timed> PutAll(const std::vector<testkit::agentx::Body>& requests,
                            std::size_t outstanding);

 private:
  testkit::agentx::Listener listener_;
  std::unique_ptr<testkit::agentx::MasterSession> session_;
};

#endif  // SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
