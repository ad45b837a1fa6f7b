// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "WithdrawalTest.h"

#include <algorithm>
#include <future>
#include <utility>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "support/EventfulValue.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace agentx = testkit::agentx;

using testkit::agentx::Type;

std::atomic<bool> WithdrawalTest::stillKnown;
std::atomic<int> WithdrawalTest::written;
std::atomic<int> WithdrawalTest::writes;
int WithdrawalTest::level = 0;
std::mutex WithdrawalTest::mutex_;
std::function<void()> WithdrawalTest::onUse_;

WithdrawalTest::WithdrawalTest() {
  stillKnown = true;
  Connect();
  AsApplication(1, [] {
    support::AddScalar(
        2, "called", NetSNMPIntNodeData(&level, eNodeAccessReadWrite), OnWrite);
  });
}

std::size_t WithdrawalTest::RegisteredAtFirst() {
  return Device::Subtrees().size() + 1;
}

WithdrawalTest::Oid WithdrawalTest::Scalar(std::uint32_t number) {
  return {1, 3, 6, 1, 4, 1, 32473, 99, number, 0};
}

WithdrawalTest::Oid WithdrawalTest::Table() {
  return {1, 3, 6, 1, 4, 1, 32473, 98, 3};
}

WithdrawalTest::Oid WithdrawalTest::Cell(std::uint32_t index) {
  Oid cell = Table();
  cell.insert(cell.end(), {1, 2, index});
  return cell;
}

WithdrawalTest::Varbind WithdrawalTest::Integer(const Oid& name, int number) {
  return {name, {Type::kInteger, std::int32_t{number}}};
}

NetSNMPNode* WithdrawalTest::Node(const std::string& name) {
  return NetSNMPNode::nodeMap_->at(name);
}

bool WithdrawalTest::IsKnownToAgentLibrary(const Oid& oid) {
  const NetSNMPAgentGuard guard;
  const std::vector<unsigned long> name(oid.begin(), oid.end());
  const netsnmp_subtree* const subtree =
      netsnmp_subtree_find(name.data(), name.size(), nullptr, "");
  return subtree != nullptr &&
         netsnmp_oid_equals(subtree->name_a, subtree->namelen, name.data(),
                            name.size()) == 0;
}

void WithdrawalTest::Delete(const char* name) {
  const NetSNMPNode& node = *Node(name);
  const Oid oid(node.nodeOID_, node.nodeOID_ + node.nodeOIDLen_);
  const bool registered = node.registered_;
  delete &node;
  if (registered) stillKnown = stillKnown && IsKnownToAgentLibrary(oid);
}

void WithdrawalTest::OnUse(std::function<void()> action) {
  const std::lock_guard<std::mutex> lock(mutex_);
  onUse_ = std::move(action);
}

void WithdrawalTest::CallOnce() {
  std::unique_lock<std::mutex> lock(mutex_);
  const auto action = std::exchange(onUse_, nullptr);
  lock.unlock();
  if (action) action();
}

void WithdrawalTest::OnWrite(NetSNMPDataNode* node) {
  written = *static_cast<int*>(node->nodeData_->NodeDataValue());
  CallOnce();
}

void WithdrawalTest::AsApplication(std::size_t registrations,
                                   const std::function<void()>& action) {
  auto done = std::async(std::launch::async, action);
  while (registrations-- > 0) session_->Grant(session_->Next());
  done.get();
}

bool WithdrawalTest::IsRegistered(const Oid& oid) const {
  const auto& all = session_->Registered();
  return std::find(all.begin(), all.end(), oid) != all.end();
}

void WithdrawalTest::ExpectWithdrawnInTime(const Oid& oid) {
  EXPECT_TRUE(stillKnown);
  EXPECT_FALSE(IsRegistered(oid));
  EXPECT_FALSE(IsKnownToAgentLibrary(oid));
}

WithdrawalTest::Varbind WithdrawalTest::Get(const Oid& oid) {
  return session_->Ask(agentx::Get{{{oid, true, {}}}}).varbinds.front();
}

void WithdrawalTest::ExpectToBeServed(const Varbind& object) {
  EXPECT_TRUE(testkit::WaitFor([&] { return Get(object.name) == object; },
                               testkit::Deadlines::Session()));
}

void WithdrawalTest::ServeTable() {
  AsApplication(1, [] {
    const EventfulValue cell(
        7, [](const NetSNMPNodeData&) { CallOnce(); },
        [](const NetSNMPNodeData&) {
          ++writes;
          CallOnce();
        });
    const NetSNMPAgentGuard guard;
    auto* const store =
        support::AddStore(3, "row", 1, 2, support::AddTable(3, "table"));
    store->AddRow(Values(Index(Int(1)), cell));
    store->AddRow(Values(Index(Int(2)), cell));
  });
}
