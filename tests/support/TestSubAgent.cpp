// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/TestSubAgent.h"

#include "NetSNMPAgentGuard.h"
#include "NetSNMPNode.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

using testkit::Deadlines;
using testkit::WaitFor;

namespace support {
namespace {

constexpr char kName[] = "test-subagent";

}  // namespace

TestSubAgent::TestSubAgent(int masterPort, const std::string& configuration)
    : SNMPSubAgent(kName, "127.0.0.1", masterPort),
      settings_(kName, configuration) {}

TestSubAgent::~TestSubAgent() { Stop(); }

void TestSubAgent::OnSubAgentConnected() {
  NetSNMPNode::RegisterMibs();
  sessionThread_ = std::this_thread::get_id();
  ++connections_;
}

bool TestSubAgent::StartAndInitialize() {
  if (Start() != 1) return false;
  return WaitFor(
      [this] {
        const NetSNMPAgentGuard guard;
        return NetSNMPNode::snmpSubAgent_ == this;
      },
      Deadlines::Pass());
}

bool TestSubAgent::StartAndConnect() {
  return StartAndInitialize() && WaitForConnections(1);
}

bool TestSubAgent::WaitForConnections(int count) const {
  return WaitFor([&] { return connections_ >= count; }, Deadlines::Session());
}

}  // namespace support
