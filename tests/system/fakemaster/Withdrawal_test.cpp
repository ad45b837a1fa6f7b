// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Nodes that are deleted while a request addresses them.
#include <algorithm>
#include <array>
#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "FakeMasterTest.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "support/EventfulValue.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace agentx = testkit::agentx;

using support::AddIntScalar;
using support::AddScalar;
using testkit::agentx::CleanupSet;
using testkit::agentx::CommitSet;
using testkit::agentx::Oid;
using testkit::agentx::TestSet;
using testkit::agentx::Type;
using testkit::agentx::UndoSet;
using testkit::agentx::Varbind;

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
bool IsKnownToAgentLibrary(const Oid& oid) {
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
std::atomic<bool> stillKnown;

void Delete(const char* name) {
  const NetSNMPNode& node = *Node(name);
  const Oid oid(node.nodeOID_, node.nodeOID_ + node.nodeOIDLen_);
  const bool registered = node.registered_;
  delete &node;
  if (registered) stillKnown = stillKnown && IsKnownToAgentLibrary(oid);
}

// Shared by callbacks and the test, which must not wait for the library's lock:
// the subagent may hold it and wait for its master agent.
std::atomic<int> written;  // by the last SET of the scalar under test
std::atomic<int> writes;   // to cells
std::mutex mutex;
std::function<void()> onUse;  // guarded by `mutex`

// Makes the application call `action` when the node under test is used, once.
void OnUse(std::function<void()> action) {
  const std::lock_guard<std::mutex> lock(mutex);
  onUse = std::move(action);
}

void CallOnce() {
  std::unique_lock<std::mutex> lock(mutex);
  const auto action = std::exchange(onUse, nullptr);
  lock.unlock();
  if (action) action();
}

void OnWrite(NetSNMPDataNode* node) {
  written = *static_cast<int*>(node->nodeData_->NodeDataValue());
  CallOnce();
}

class ANode : public FakeMasterTest {
 protected:
  ANode() {
    stillKnown = true;
    Connect();
    AsApplication(1, [] {
      AddScalar(2, "called", NetSNMPIntNodeData(&level, eNodeAccessReadWrite),
                OnWrite);
    });
  }
  ~ANode() override { OnUse(nullptr); }

  // Runs `action` on a thread of the application, and grants so many
  // registrations.
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

  // Deferred withdrawals are made before the last response is sent.
  void ExpectWithdrawnInTime(const Oid& oid) {
    EXPECT_TRUE(stillKnown);
    EXPECT_FALSE(IsRegistered(oid));
    EXPECT_FALSE(IsKnownToAgentLibrary(oid));
  }

  Varbind Get(const Oid& oid) {
    return session_->Ask(agentx::Get{{{oid, true, {}}}}).varbinds.front();
  }

  // Waits until `object` is served with its value.
  void ExpectToBeServed(const Varbind& object) {
    EXPECT_TRUE(testkit::WaitFor([&] { return Get(object.name) == object; },
                                 testkit::Deadlines::Session()));
  }

  // A table with two cells whose use is noticed.
  void ServeTable() {
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

  static int level;
  int other_ = 0;
};

int ANode::level = 0;

TEST_F(ANode, MayBeDeletedByItsOwnCallback) {
  OnUse([] { Delete("called"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  EXPECT_EQ(written, 8);
  ExpectWithdrawnInTime(Scalar(2));
  EXPECT_EQ(Get(Scalar(2)).value.type, Type::kNoSuchObject);
}

TEST_F(ANode, MayBeDeletedByTheCallbackOfAnotherOfItsSet) {
  AsApplication(1, [this] {
    AddScalar(3, "other", NetSNMPIntNodeData(&other_, eNodeAccessReadWrite));
  });
  OnUse([] { Delete("other"); });
  session_->Set({Integer(Scalar(2), 8), Integer(Scalar(3), 9)});
  EXPECT_EQ(written, 8);
  EXPECT_EQ(other_, 0);
  ExpectWithdrawnInTime(Scalar(3));
  EXPECT_EQ(Get(Scalar(2)), Integer(Scalar(2), 8));
}

TEST_F(ANode, IsWithdrawnAtOnceWhenNoRequestAddressesIt) {
  AsApplication(1, [] { AddIntScalar(3, "other", 1); });
  OnUse([] { Delete("other"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  EXPECT_FALSE(stillKnown);
  EXPECT_FALSE(IsRegistered(Scalar(3)));
}

TEST_F(ANode, MayBeReplacedByItsOwnCallback) {
  for (const char* name : {"called", "another"}) {
    OnUse([name] {
      if (name != std::string("called")) Delete("called");
      AddScalar(2, name, NetSNMPIntNodeData(&level, eNodeAccessReadWrite),
                OnWrite);
      level = 77;
    });
    EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
    EXPECT_TRUE(stillKnown);
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
  EXPECT_TRUE(stillKnown);
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
  EXPECT_EQ(written, 0);
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
  EXPECT_TRUE(stillKnown);
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
  EXPECT_EQ(writes, 1);
  ExpectWithdrawnInTime(Table());
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchObject);
}

TEST_F(ANode, MayBeATableBetweenThePhasesOfASetOfItsCells) {
  ServeTable();
  session_->Ask(TestSet{{Integer(Cell(1), 8), Integer(Cell(2), 9)}}, kSet);
  AsApplication(0, [] { Delete("table"); });
  session_->Ask(CommitSet{}, kSet);
  session_->Ask(CleanupSet{}, kSet);
  EXPECT_EQ(writes, 0);
  ExpectWithdrawnInTime(Table());
}

// In the last phase of such a SET the agent library passes the table's handlers
// by, from its own on.
const Varbind kBadWrites[] = {{Table(), {Type::kInteger, std::int32_t{8}}},
                              {Cell(1), {Type::kOctetString, "8"}}};

TEST_F(ANode, MayBeATableBetweenThePhasesOfASetThatFails) {
  for (const Varbind& first : kBadWrites) {
    ServeTable();
    session_->Ask(TestSet{{first, Integer(Cell(2), 9)}}, kSet);
    AsApplication(0, [] { Delete("table"); });
    session_->Ask(CleanupSet{}, kSet);
    ExpectWithdrawnInTime(Table());
    AsApplication(0, [] { Delete("row"); });
  }
}

TEST_F(ANode, IsNoLongerUsedByASetThatFailed) {
  for (const Varbind& first : kBadWrites) {
    ServeTable();
    session_->Ask(TestSet{{first, Integer(Cell(2), 9)}}, kSet);
    session_->Ask(CleanupSet{}, kSet);
    OnUse([] {
      Delete("table");
      Delete("row");
    });
    EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
    EXPECT_FALSE(stillKnown);
    stillKnown = true;
  }
}

TEST_F(ANode, IsNoLongerUsedByASetThatIsUndone) {
  AsApplication(1, [this] {
    AddScalar(3, "other", NetSNMPIntNodeData(&other_, eNodeAccessReadWrite));
  });
  session_->Ask(TestSet{{Integer(Scalar(3), 9)}}, kSet);
  session_->Ask(CommitSet{}, kSet);
  session_->Ask(UndoSet{}, kSet);
  OnUse([] { Delete("other"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  EXPECT_FALSE(stillKnown);
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

// The agent library keeps the addresses of a dataset's rows during a SET.
class ADataSet : public ANode {
 protected:
  ADataSet() {
    AsApplication(1, [] {
      const NetSNMPAgentGuard guard;
      support::AddDataSetTable(3, "dataset", Values(Unsigned(0), Int(0)))
          ->AddRow(Values(Unsigned(1), Int(7, eNodeAccessReadWrite)));
    });
  }

  // Deletes the node after the first phase of a SET, and ends the SET.
  void DeleteDuring(const TestSet& set, const std::vector<agentx::Body>& rest) {
    session_->Ask(set, kSet);
    AsApplication(0, [] { delete Node("dataset"); });
    EXPECT_EQ(Get(Cell(1)), Integer(Cell(1), 7));
    for (const agentx::Body& phase : rest) session_->Ask(phase, kSet);
  }

  void ExpectNoRows() {
    for (const std::uint32_t index : {1, 2}) {
      EXPECT_EQ(Get(Cell(index)).value.type, Type::kNoSuchInstance);
    }
  }
};

TEST_F(ADataSet, LosesItsRowsAfterASetThatIsCommitted) {
  DeleteDuring(TestSet{{Integer(Cell(1), 8), Integer(Cell(2), 9)}},
               {CommitSet{}, CleanupSet{}});
  ExpectNoRows();
}

TEST_F(ADataSet, LosesItsRowsAfterASetThatIsUndone) {
  DeleteDuring(TestSet{{Integer(Cell(1), 8), Integer(Cell(2), 9)}},
               {CommitSet{}, UndoSet{}});
  ExpectNoRows();
}

TEST_F(ADataSet, LosesItsRowsAfterASetThatIsNotCommitted) {
  DeleteDuring(TestSet{{Integer(Cell(1), 8)}}, {CleanupSet{}});
  ExpectNoRows();
}

TEST_F(ADataSet, LosesItsRowsAfterASetThatIsRefused) {
  DeleteDuring(
      TestSet{{Integer(Cell(1), 8), {Cell(1), {Type::kOctetString, "8"}}}},
      {CleanupSet{}});
  ExpectNoRows();
}

// The agent library gives this SET to none of its handlers for datasets.
TEST_F(ADataSet, LosesItsRowsAfterASetOfWhatIsNoCell) {
  DeleteDuring(TestSet{{Integer(Table(), 8)}}, {CleanupSet{}});
  ExpectNoRows();
}

TEST_F(ADataSet, LosesItsRowsWithTheConnectionOfASetThatNeverEnds) {
  session_->Ask(TestSet{{Integer(Cell(1), 8)}}, kSet);
  AsApplication(0, [] { delete Node("dataset"); });
  session_.reset();
  session_ = master_.AcceptServing(kRegistered + 1);
  ExpectNoRows();
}

TEST_F(ADataSet, MayBeDeletedByACallbackOfItsSet) {
  OnUse([] { delete Node("dataset"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8), Integer(Cell(1), 9)}).error,
            kNoError);
  EXPECT_EQ(written, 8);
  ExpectNoRows();
}

TEST_F(ADataSet, LosesItsRowsAtOnceWhenNoSetWorksOnThem) {
  EXPECT_EQ(session_->Set({Integer(Cell(1), 8)}).error, kNoError);
  EXPECT_EQ(Get(Cell(1)), Integer(Cell(1), 8));
  AsApplication(0, [] {
    const NetSNMPAgentGuard guard;
    netsnmp_table_data_set* const set =
        dynamic_cast<NetSNMPDataSetTableNode*>(Node("dataset"))->dataset_;
    delete Node("dataset");
    EXPECT_EQ(set->table->first_row, nullptr);
  });
}

// The agent library serves requests while a node waits for the master agent.
class ANodeThatWaits : public ANode {
 protected:
  ANodeThatWaits() {
    AsApplication(2, [] {
      AddIntScalar(3, "other", 1);
      AddTableAndStore("table", "row");
    });
  }

  static void AddTableAndStore(const char* name, const char* rows) {
    support::AddStore(3, rows, 1, 2, support::AddTable(3, name));
  }

  // Runs `action`, which waits for the master agent, and `meanwhile` in a
  // callback during that wait.
  void Do(const std::function<void()>& action,
          const std::function<void()>& meanwhile) {
    auto done = std::async(std::launch::async, action);
    DoBeforeAnswer(session_->Next(), meanwhile);
    done.get();
    // Deferred work is done after the next response.
    Get(Scalar(2));
  }

  void DoBeforeAnswer(const agentx::Pdu& asked,
                      const std::function<void()>& action) {
    OnUse(action);
    EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
    session_->Grant(asked);
  }

  void ExpectToBeWithdrawn(const Oid& oid) {
    EXPECT_TRUE(stillKnown);
    session_->ServeUntil([&] { return !IsRegistered(oid); });
    EXPECT_EQ(Get(oid).value.type, Type::kNoSuchObject);
    EXPECT_FALSE(IsKnownToAgentLibrary(oid));
  }
};

TEST_F(ANodeThatWaits, MayBeDeletedWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 1); }, [] { Delete("late"); });
  ExpectToBeWithdrawn(Scalar(4));
}

TEST_F(ANodeThatWaits, MayBeReplacedWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 1); }, [] { AddIntScalar(4, "late", 5); });
  ExpectToBeServed(Integer(Scalar(4), 5));
}

TEST_F(ANodeThatWaits, MayBeRegisteredAnewWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 5); }, NetSNMPNode::ReregisterMibs);
  ExpectToBeServed(Integer(Scalar(4), 5));
  ExpectToBeServed(Integer(Scalar(2), 8));
}

TEST_F(ANodeThatWaits, MayBeRegisteredTwiceWhileItIsRegistered) {
  Do([] { AddIntScalar(4, "late", 5); }, NetSNMPNode::RegisterMibs);
  ExpectToBeServed(Integer(Scalar(4), 5));
  EXPECT_EQ(std::count(session_->Registered().begin(),
                       session_->Registered().end(), Scalar(4)),
            1);
}

TEST_F(ANodeThatWaits, MayBeATableThatIsDeletedWhileItIsRegistered) {
  AsApplication(1, [] { delete Node("table"); });
  Do([] { AddTableAndStore("late", "row"); }, [] { Delete("late"); });
  ExpectToBeWithdrawn(Table());
}

TEST_F(ANodeThatWaits, MayBeADataSetThatIsDeletedWhileItIsRegistered) {
  AsApplication(1, [] { delete Node("table"); });
  Do([] { support::AddDataSetTable(3, "late", Values(Unsigned(0), Int(0))); },
     [] { Delete("late"); });
  EXPECT_TRUE(stillKnown);
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchInstance);
}

TEST_F(ANodeThatWaits, MayBeReplacedWhileItIsDeleted) {
  Do([] { Delete("other"); }, [] { AddIntScalar(3, "other", 5); });
  ExpectToBeServed(Integer(Scalar(3), 5));
}

TEST_F(ANodeThatWaits, MayBeATableThatIsReplacedWhileItIsDeleted) {
  Do([] { Delete("table"); }, [] { AddTableAndStore("table", "others"); });
  EXPECT_TRUE(IsRegistered(Table()));
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchInstance);
}

TEST_F(ANodeThatWaits, MayBeDeletedWhileItIsUnregistered) {
  for (const char* name : {"other", "table"}) {
    Do([name] { Node(name)->UnregisterNode(); }, [name] { Delete(name); });
  }
  EXPECT_EQ(Get(Scalar(3)).value.type, Type::kNoSuchObject);
  EXPECT_EQ(Get(Cell(1)).value.type, Type::kNoSuchObject);
}

TEST_F(ANodeThatWaits, MayBeDeletedWhileItIsRegisteredAfterALoss) {
  session_.reset();
  session_ = master_.Accept();
  agentx::Pdu asked = session_->Next();
  const auto isOthers = [&] {
    const auto* const registration = std::get_if<agentx::Register>(&asked.body);
    return registration != nullptr && registration->subtree == Scalar(3);
  };
  for (; !isOthers(); asked = session_->Next()) session_->Grant(asked);
  DoBeforeAnswer(asked, [] { Delete("other"); });
  ExpectToBeWithdrawn(Scalar(3));
}

}  // namespace
