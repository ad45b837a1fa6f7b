// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_BUSYNODES_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_BUSYNODES_H_

#include <string>

#include "BusyApplication.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTrapNode.h"
#include "support/NodeRegistry.h"
#include "support/TestSubAgent.h"
#include "testkit/MasterAgent.h"

// One on the node classes.
class BusyNodes : public BusyApplication {
 public:
  // `master` outlives it.
  explicit BusyNodes(const testkit::MasterAgent& master);
  ~BusyNodes() override { subAgent_.Stop(); }

  void Start() override;
  void AddApplication(Workers& workers) override;
  void AddManagers(Workers& workers) override;
  void MasterIsGone() override;
  void AwaitSession() override;
  // Nodes that are built and deleted are left out: one that is deleted while
  // the subagent is disconnected stays registered, and walks end before it.
  void RequireServed() override;

 private:
  void SetValues(const char* text);
  void AddRow(int unit, int slot);
  void RemoveRow(int unit, int slot);

  const testkit::MasterAgent& master_;
  support::TestSubAgent subAgent_;
  support::NodeRegistry registry_;
  int connections_ = 0;
  int number_ = 1;
  std::string text_ = "text";
  NetSNMPDataNode* fired_;        // the registry's
  NetSNMPTableEntryNode* store_;  // the registry's
  NetSNMPTrapNode* trap_;         // the registry's
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_BUSYNODES_H_
