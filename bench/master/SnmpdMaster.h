// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_MASTER_SNMPDMASTER_H_
#define SNMPSUBAGENT_BENCH_MASTER_SNMPDMASTER_H_

#include <memory>
#include <string>

#include "master/Master.h"
#include "testkit/MasterAgent.h"

struct snmp_session;

// A real master agent, which gets its requests from a manager over SNMP.
class SnmpdMaster : public Master {
 public:
  SnmpdMaster();
  ~SnmpdMaster() override;

  std::string Address() const override {
    return "tcp:127.0.0.1:" + std::to_string(agent_.AgentXPort());
  }
  void Connect(const Expected& expected) override;
  testkit::agentx::Response Put(const testkit::agentx::Body& request) override;

 private:
  testkit::MasterAgent agent_;
  snmp_session* manager_;
};

#endif  // SNMPSUBAGENT_BENCH_MASTER_SNMPDMASTER_H_
