// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DEVICE_H_
#define SNMPSUBAGENT_TESTS_DEVICE_H_

#include <vector>

#include "support/ConnectionReceiver.h"
#include "support/NodeRegistry.h"
#include "support/TestSubAgent.h"
#include "testkit/agentx/Pdu.h"

// A subagent with a node of every kind: a writable scalar, an iterator table, a
// dataset table and a notification.
class Device {
 public:
  // The subtrees that it registers, in this order.
  static std::vector<testkit::agentx::Oid> Subtrees();
  static testkit::agentx::Oid Scalar();
  static testkit::agentx::Oid Notification();

  // `configuration` is the agent library's.
  Device(int masterPort, const std::string& configuration);

  // Stops the subagent and deletes the nodes. Requires: it is started, and is
  // or will be disconnected.
  ~Device();

  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  // Begins to look for the master agent.
  void Start() { subAgent_.Start(); }

  // The objects that it serves now, in the order of Subtrees().
  std::vector<testkit::agentx::Varbind> Objects() const;

  // Has the notification sent, with the scalar.
  void Notify();

  bool IsConnected() const { return subAgent_.Connected(); }
  support::TestSubAgent& SubAgent() { return subAgent_; }
  const support::ConnectionReceiver& Receiver() const { return receiver_; }

 private:
  // Fills the dataset table as soon as that can be done.
  class Application : public support::TestSubAgent {
   public:
    using TestSubAgent::TestSubAgent;
    void OnSubAgentConnected() override;
  };

  support::ConnectionReceiver receiver_;
  Application subAgent_;
  support::NodeRegistry registry_;
  int level_ = 7;
};

#endif  // SNMPSUBAGENT_TESTS_DEVICE_H_
