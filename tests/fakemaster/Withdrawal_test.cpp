// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Nodes that are deleted while a request names them.
#include <algorithm>
#include <array>
#include <functional>
#include <future>
#include <string>
#include <utility>
#include <vector>

#include "FakeMasterTest.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "integration/support/Deadlines.h"
#include "integration/support/Scalars.h"
#include "integration/support/Tables.h"
#include "integration/support/WaitFor.h"
#include "support/Values.h"
#include "tables/EventfulValue.h"

using agentx::CleanupSet;
using agentx::CommitSet;
using agentx::Oid;
using agentx::TestSet;
using agentx::Type;
using agentx::Varbind;
using support::AddIntScalar;
using support::AddScalar;

namespace {

constexpr int kNoError = 0;
constexpr std::uint32_t kSet = 1000;

// The subtrees of the device and the scalar under test.
const std::size_t kRegistered = Device::Subtrees().size() + 1;

Oid Scalar(std::uint32_t number) {
  return {1, 3, 6, 1, 4, 1, 32473, 99, number, 0};
}

Oid Table() { return {1, 3, 6, 1, 4, 1, 32473, 98, 3}; }

Oid Cell(std::uint32_t index) {
  Oid cell = Table();
  cell.insert(cell.end(), {1, 2, index});
  return cell;
}

Varbind Integer(const Oid& name, int number) {
  return {name, {Type::kInteger, std::int32_t{number}}};
}

NetSNMPNode* Node(const std::string& name) {
  return NetSNMPNode::nodeMap_->at(name);
}

// Whether the agent library has a registration at `oid`.
bool IsHeld(const Oid& oid) {
  const NetSNMPAgentGuard guard;
  const std::vector<unsigned long> name(oid.begin(), oid.end());
  const netsnmp_subtree* const subtree =
      netsnmp_subtree_find(name.data(), name.size(), nullptr, "");
  return subtree != nullptr &&
         netsnmp_oid_equals(subtree->name_a, subtree->namelen, name.data(),
                            name.size()) == 0;
}

// Whether the agent library still had the registrations of all nodes that
// Delete() deleted.
bool held;

void Delete(const char* name) {
  const NetSNMPNode& node = *Node(name);
  const Oid oid(node.nodeOID_, node.nodeOID_ + node.nodeOIDLen_);
  const bool registered = node.registered_;
  delete &node;
  if (registered) held = held && IsHeld(oid);
}

// What the application does when the node under test is used, once. Guarded by
// the lock, as is all that callbacks touch.
std::function<void()> onUse;

void OnUse(std::function<void()> action) {
  const NetSNMPAgentGuard guard;
  onUse = std::move(action);
}

// A variable that callbacks touch.
template <typename T>
T Seen(const T& variable) {
  const NetSNMPAgentGuard guard;
  return variable;
}

void CallOnce(NetSNMPDataNode*) {
  if (const auto action = std::exchange(onUse, nullptr)) action();
}

class ANode : public FakeMasterTest {
 protected:
  ANode() {
    held = true;
    Connect();
    AsApplication(1, [] {
      AddScalar(2, "called", NetSNMPIntNodeData(&written, eNodeAccessReadWrite),
                CallOnce);
    });
  }
  ~ANode() override { OnUse(nullptr); }

  // Has the application do something on a thread of its own, and grants what it
  // asks: so many registrations.
  void AsApplication(std::size_t registrations,
                     const std::function<void()>& action) {
    auto done = std::async(std::launch::async, action);
    while (registrations-- > 0) session_->Grant(session_->Next());
    done.get();
  }

  bool IsRegistered(const Oid& oid) const {
    const auto& all = session_->Registered();
    return std::find(all.begin(), all.end(), oid) != all.end();
  }

  // Withdrawals that were put off are made before the last answer leaves.
  void ExpectWithdrawnInTime(const Oid& oid) {
    EXPECT_TRUE(Seen(held));
    EXPECT_FALSE(IsRegistered(oid));
    EXPECT_FALSE(IsHeld(oid));
  }

  Varbind Get(const Oid& oid) {
    return session_->Ask(agentx::Get{{{oid, true, {}}}}).varbinds.front();
  }

  // Waits until `object` is served with its value.
  void ExpectToBeServed(const Varbind& object) {
    EXPECT_TRUE(support::WaitFor([&] { return Get(object.name) == object; },
                                 support::Deadlines::Session()));
  }

  // A table with two cells whose use is noticed.
  void ServeTable() {
    AsApplication(1, [] {
      const EventfulValue cell(
          7, [](const NetSNMPNodeData&) { CallOnce(nullptr); },
          [](const NetSNMPNodeData&) {
            ++writes;
            CallOnce(nullptr);
          });
      auto* const store =
          support::AddStore(3, "row", 1, 2, support::AddTable(3, "table"));
      store->AddRow(Values(Index(Int(1)), cell));
      store->AddRow(Values(Index(Int(2)), cell));
    });
  }

  static int written;
  static int writes;
  int other_ = 0;
};

int ANode::written = 0;
int ANode::writes = 0;

TEST_F(ANode, MayBeDeletedByItsOwnCallback) {
  OnUse([] { Delete("called"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  EXPECT_EQ(Seen(written), 8);
  ExpectWithdrawnInTime(Scalar(2));
  EXPECT_EQ(Get(Scalar(2)).value.type, Type::kNoSuchObject);
}

TEST_F(ANode, MayBeDeletedByTheCallbackOfAnotherOfItsSet) {
  AsApplication(1, [this] {
    AddScalar(3, "other", NetSNMPIntNodeData(&other_, eNodeAccessReadWrite));
  });
  OnUse([] { Delete("other"); });
  session_->Set({Integer(Scalar(2), 8), Integer(Scalar(3), 9)});
  EXPECT_EQ(Seen(written), 8);
  EXPECT_EQ(Seen(other_), 0);
  ExpectWithdrawnInTime(Scalar(3));
  EXPECT_EQ(Get(Scalar(2)), Integer(Scalar(2), 8));
}

TEST_F(ANode, IsWithdrawnAtOnceWhenNoRequestNamesIt) {
  AsApplication(1, [] { AddIntScalar(3, "other", 1); });
  OnUse([] { Delete("other"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  EXPECT_FALSE(Seen(held));
  EXPECT_FALSE(IsRegistered(Scalar(3)));
}

TEST_F(ANode, MayBeReplacedByItsOwnCallback) {
  for (const char* name : {"called", "another"}) {
    OnUse([name] {
      if (name != std::string("called")) Delete("called");
      AddScalar(2, name, NetSNMPIntNodeData(&written, eNodeAccessReadWrite),
                CallOnce);
      written = 77;
    });
    EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
    EXPECT_TRUE(Seen(held));
    ExpectToBeServed(Integer(Scalar(2), 77));
  }
}

TEST_F(ANode, MayBeReplacedByATable) {
  OnUse([] {
    Delete("called");
    std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 99, 2, 0};
    auto* const table = new NetSNMPTableNode(
        oid.data(), oid.size(), "table",
        NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadOnly, nullptr, nullptr),
        nullptr, "");
    support::AddStore(3, "row", 1, 2, table)
        ->AddRow(Values(Index(Int(1)), Int(5)));
  });
  session_->Set({Integer(Scalar(2), 8)});
  Oid cell = Scalar(2);
  cell.insert(cell.end(), {1, 2, 1});
  ExpectToBeServed(Integer(cell, 5));
}

TEST_F(ANode, MayBeReplacedByADataSet) {
  ServeTable();
  OnUse([] {
    Delete("table");
    support::AddDataSetTable(3, "dataset", Values(Unsigned(0), Int(0)));
  });
  session_->Set({Integer(Cell(1), 8)});
  EXPECT_TRUE(Seen(held));
  session_->ServeUntil([&] { return IsRegistered(Table()); });
}

TEST_F(ANode, MayBeRegisteredAnewByItsOwnCallback) {
  OnUse(NetSNMPNode::ReregisterMibs);
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  ExpectToBeServed(Integer(Scalar(2), 8));
}

TEST_F(ANode, MayBeDeletedBetweenThePhasesOfItsSet) {
  session_->Ask(TestSet{{Integer(Scalar(2), 8)}}, kSet);
  AsApplication(0, [] { Delete("called"); });
  session_->Ask(CommitSet{}, kSet);
  session_->Ask(CleanupSet{}, kSet);
  EXPECT_EQ(Seen(written), 0);
  ExpectWithdrawnInTime(Scalar(2));
}

TEST_F(ANode, WithoutSuccessorLeavesItsOidFree) {
  OnUse([] {
    Delete("called");
    delete AddIntScalar(2, "successor", 1);
  });
  session_->Set({Integer(Scalar(2), 8)});
  ExpectWithdrawnInTime(Scalar(2));
  AsApplication(1, [] { AddIntScalar(2, "later", 5); });
  EXPECT_EQ(Get(Scalar(2)), Integer(Scalar(2), 5));
}

TEST_F(ANode, DeletedInASetThatNeverEndsGoesWithItsConnection) {
  session_->Ask(TestSet{{Integer(Scalar(2), 8)}}, kSet);
  AsApplication(0, [] { Delete("called"); });
  EXPECT_TRUE(Seen(held));
  session_.reset();
  session_ = master_.AcceptServing(kRegistered - 1);
  EXPECT_FALSE(IsRegistered(Scalar(2)));
  AsApplication(1, [] { AddIntScalar(2, "successor", 5); });
  EXPECT_EQ(Get(Scalar(2)), Integer(Scalar(2), 5));
}

TEST_F(ANode, MayBeTheTableOfACellThatIsWritten) {
  ServeTable();
  OnUse([] {
    Delete("table");
    Delete("row");
  });
  session_->Set({Integer(Cell(1), 8), Integer(Cell(2), 9)});
  EXPECT_EQ(Seen(writes), 1);
  ExpectWithdrawnInTime(Table());
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchObject);
}

TEST_F(ANode, MayBeATableBetweenThePhasesOfASetOfItsCells) {
  ServeTable();
  session_->Ask(TestSet{{Integer(Cell(1), 8), Integer(Cell(2), 9)}}, kSet);
  AsApplication(0, [] { Delete("table"); });
  session_->Ask(CommitSet{}, kSet);
  session_->Ask(CleanupSet{}, kSet);
  EXPECT_EQ(Seen(writes), 0);
  ExpectWithdrawnInTime(Table());
}

TEST_F(ANode, MayBeTheTableOfACellThatIsRead) {
  const agentx::Body reads[] = {
      agentx::Get{{{Cell(1), true, {}}, {Cell(2), true, {}}}},
      agentx::GetNext{{{Table(), false, {}}, {Cell(1), false, {}}}}};
  for (const agentx::Body& read : reads) {
    ServeTable();
    OnUse([] {
      Delete("table");
      Delete("row");
    });
    session_->Ask(read);
    ExpectWithdrawnInTime(Table());
  }
}

}  // namespace
