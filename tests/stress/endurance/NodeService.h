// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_NODESERVICE_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_NODESERVICE_H_

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTrapNode.h"
#include "Service.h"
#include "support/ConnectionReceiver.h"
#include "support/NodeRegistry.h"
#include "support/Random.h"
#include "support/TestSubAgent.h"

// A service on the node classes. One per process.
class NodeService : public Service {
 public:
  // `masterPort` is where the master agent takes AgentX sessions.
  explicit NodeService(int masterPort);
  ~NodeService() override { subAgent_.Stop(); }

  void Start() override;
  void AwaitLoss() override;
  void AwaitSession() override;
  void Change() override;
  void Set(const testkit::Manager& manager) override;
  void Notify() override;
  bool KeepsNotifications() const override { return false; }
  void RequireServed(const testkit::Manager& manager) const override;
  void RequireNotified(const std::vector<std::string>& received) const override;
  Work Done() const override { return done_; }

 private:
  using Row = std::pair<unsigned long, unsigned long>;

  void AddRow(const Row& row);
  void RemoveRow(const Row& row);
  std::vector<std::string> Scalars() const;
  std::vector<std::string> Cells() const;

  support::ConnectionReceiver receiver_;
  support::TestSubAgent subAgent_;
  support::NodeRegistry registry_;
  std::vector<int> states_{1};  // that the receiver has got
  int sessions_ = 1;

  Random random_{1};
  // The application's variables.
  int number_ = 1;
  unsigned int count_ = 1;
  bool truth_ = true;
  std::string text_ = "text";
  std::array<char, 32> label_{"label"};
  int fired_ = 0;

  NetSNMPTrapNode* trap_;         // the registry's
  NetSNMPDataNode* firedNode_;    // the registry's
  NetSNMPTableEntryNode* store_;  // the registry's
  // The rows' numbers and texts, in the order of a walk.
  std::map<Row, std::pair<int, std::string>> rows_;
  Work done_;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_NODESERVICE_H_
