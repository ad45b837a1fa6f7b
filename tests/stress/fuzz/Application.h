// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_APPLICATION_H_
#define SNMPSUBAGENT_TESTS_FUZZ_APPLICATION_H_

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "Input.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTrapNode.h"
#include "support/NodeRegistry.h"
#include "support/TestSubAgent.h"
#include "testkit/agentx/Pdu.h"

// An application with objects of every kind, which serves them on the thread
// that it is called on. There can be one in a process.
class Application {
 public:
  explicit Application(int masterPort);

  // One pass of the event loop.
  void Pass() { subAgent_.process(); }

  // Passes until nothing is left that has arrived.
  void Settle();

  bool Connected() const { return subAgent_.Connected(); }

  // Something that the application does while it is managed.
  void Act(Input& input);

  // Puts back what managers and Act() have changed. Requires: connected.
  void Restore();

  // The objects that are always there, and what a manager reads of them after
  // Restore(), in the same order.
  const std::vector<testkit::agentx::Oid>& Names() const { return names_; }
  const std::vector<testkit::agentx::Value>& Values() const { return values_; }

 private:
  // Nodes that come and go.
  static constexpr unsigned int kPassing = 4;

  void Assign();
  void AddScalar(const std::string& name, const NetSNMPNodeData& value,
                 const testkit::agentx::Value& read);
  void AddRow(int number);
  void BuildTable();

  // Far longer than any text in an input.
  std::array<char, 16384> label_{};
  std::array<char, 16> shortLabel_{};
  std::array<unsigned char, 6> address_{};
  int number_ = 0;
  unsigned int count_ = 0;
  bool truth_ = false;
  std::string text_;

  support::TestSubAgent subAgent_;
  support::NodeRegistry registry_;
  NetSNMPTrapNode* trap_;         // the registry's
  NetSNMPTableEntryNode* store_;  // the registry's
  std::array<NetSNMPDataNode*, kPassing> passing_{};
  std::vector<testkit::agentx::Oid> names_;
  std::vector<testkit::agentx::Value> values_;
};

#endif  // SNMPSUBAGENT_TESTS_FUZZ_APPLICATION_H_
