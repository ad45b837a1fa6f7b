// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_SUBAGENT_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_SUBAGENT_H_

#include <deque>

#include "TablePair.h"
#include "support/TestSubAgent.h"

// A subagent that registers the plain tables too.
class SubAgent : public support::TestSubAgent {
 public:
  // `tables` is borrowed.
  SubAgent(int masterPort, std::deque<TablePair>& tables)
      : TestSubAgent(masterPort), tables_(tables) {}

  void OnSubAgentConnected() override {
    TestSubAgent::OnSubAgentConnected();
    for (TablePair& table : tables_) table.RegisterPlain();
  }

 private:
  std::deque<TablePair>& tables_;
};

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_SUBAGENT_H_
