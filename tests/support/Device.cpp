// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/Device.h"

#include <array>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPTrapNode.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace agentx = testkit::agentx;

namespace {

// Registered in the order of their names.
constexpr char kScalar[] = "a level";
constexpr char kFans[] = "fans";
constexpr char kEvents[] = "events";
constexpr char kAlarm[] = "alarm";

agentx::Oid Arc(std::initializer_list<std::uint32_t> subids) {
  agentx::Oid oid{1, 3, 6, 1, 4, 1, 32473};
  oid.insert(oid.end(), subids);
  return oid;
}

agentx::Varbind Integer(const agentx::Oid& name, int number) {
  return {name, {agentx::Type::kInteger, std::int32_t{number}}};
}

template <typename Node>
Node* Find(const char* name) {
  return static_cast<Node*>(NetSNMPNode::nodeMap_->at(name));
}

void BuildAlarm() {
  std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 98, 0, 1};
  new NetSNMPTrapNode(oid.data(), oid.size(), kAlarm);
}

}  // namespace

std::vector<agentx::Oid> Device::Subtrees() {
  return {Scalar(), Arc({98, 2}), Arc({98, 1})};
}

agentx::Oid Device::Scalar() { return Arc({99, 1, 0}); }

agentx::Oid Device::Notification() { return Arc({98, 0, 1}); }

Device::Device(int masterPort, const std::string& configuration)
    : subAgent_(masterPort, configuration) {
  support::AddScalar(1, kScalar,
                     NetSNMPIntNodeData(&level_, eNodeAccessReadWrite));
  NetSNMPTableEntryNode* const fans =
      support::AddStore(1, "fan", 1, 2, support::AddTable(1, kFans));
  fans->AddRow(Values(Index(Int(1)), Int(10)));
  fans->AddRow(Values(Index(Int(2)), Int(20)));
  support::AddDataSetTable(2, kEvents, Values(Unsigned(0), Int(0)));
  BuildAlarm();
  subAgent_.RegisterSubAgentCallback("device", &receiver_);
}

Device::~Device() {
  testkit::WaitFor([this] { return !subAgent_.Connected(); },
                   testkit::Deadlines::Session());
  subAgent_.Stop();
}

void Device::Application::OnSubAgentConnected() {
  TestSubAgent::OnSubAgentConnected();
  Find<NetSNMPDataSetTableNode>(kEvents)->AddRow(Values(Unsigned(1), Int(30)));
}

std::vector<agentx::Varbind> Device::Objects() const {
  const NetSNMPAgentGuard guard;
  return {Integer(Scalar(), level_), Integer(Arc({98, 2, 1, 2, 1}), 30),
          Integer(Arc({98, 1, 1, 2, 1}), 10),
          Integer(Arc({98, 1, 1, 2, 2}), 20)};
}

void Device::Notify() {
  const NetSNMPAgentGuard guard;
  Find<NetSNMPTrapNode>(kAlarm)->TriggerV2Trap(Find<NetSNMPDataNode>(kScalar));
}
