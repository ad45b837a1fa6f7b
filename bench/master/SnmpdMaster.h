// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_MASTER_SNMPDMASTER_H_
#define SNMPSUBAGENT_BENCH_MASTER_SNMPDMASTER_H_

#include <memory>

#include "integration/support/MasterAgent.h"
#include "master/Master.h"

struct snmp_session;

// A real master agent, asked by a manager over SNMP.
class SnmpdMaster : public Master {
 public:
  SnmpdMaster();
  ~SnmpdMaster() override;

  int Port() const override { return agent_.AgentXPort(); }
  void Connect(std::size_t subtrees, const agentx::Oid& object) override;
  agentx::Response Put(const agentx::Body& request) override;

 private:
  support::MasterAgent agent_;
  snmp_session* manager_;
};

#endif  // SNMPSUBAGENT_BENCH_MASTER_SNMPDMASTER_H_
