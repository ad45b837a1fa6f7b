// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FAKESUBAGENT_H_
#define SNMPSUBAGENT_TESTS_FAKESUBAGENT_H_

#include <string>

#include "ISNMPSubAgent.h"
#include "NetSNMPNode.h"

// A subagent that is connected when a test says so, and that all nodes ask as
// long as it lives.
class FakeSubAgent final : public ISNMPSubAgent {
 public:
  explicit FakeSubAgent(bool connected) : connected_(connected) {
    NetSNMPNode::snmpSubAgent_ = this;
  }
  ~FakeSubAgent() {
    if (NetSNMPNode::snmpSubAgent_ == this) {
      NetSNMPNode::snmpSubAgent_ = nullptr;
    }
  }

  void SetConnected(bool connected) { connected_ = connected; }

  bool Connected() const override { return connected_; }
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override {}
  void RegisterSubAgentCallback(const std::string&,
                                ISNMPSubAgentCallback*) override {}
  void UnregisterSubAgentCallback(const std::string&) override {}
  void NotifySubAgentCallbacks(int) override {}

 private:
  bool connected_;
};

#endif  // SNMPSUBAGENT_TESTS_FAKESUBAGENT_H_
