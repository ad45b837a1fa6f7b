// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Nodes that are deleted while a request addresses them.
#include <array>
#include <string>
#include <vector>

#include "WithdrawalTest.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"

namespace agentx = testkit::agentx;

using support::AddIntScalar;
using support::AddScalar;
using testkit::agentx::CleanupSet;
using testkit::agentx::CommitSet;
using testkit::agentx::TestSet;
using testkit::agentx::Type;
using testkit::agentx::UndoSet;

namespace {

class ADeletedNode : public WithdrawalTest {
 protected:
  // In the last phase of such a SET the agent library passes the table's
  // handlers by, from its own on.
  static std::vector<Varbind> BadWrites() {
    return {{Table(), {Type::kInteger, std::int32_t{8}}},
            {Cell(1), {Type::kOctetString, "8"}}};
  }
};

TEST_F(ADeletedNode, MayBeDeletedByItsOwnCallback) {
  OnUse([] { Delete("called"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  EXPECT_EQ(written, 8);
  ExpectWithdrawnInTime(Scalar(2));
  EXPECT_EQ(Get(Scalar(2)).value.type, Type::kNoSuchObject);
}

TEST_F(ADeletedNode, MayBeDeletedByTheCallbackOfAnotherOfItsSet) {
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

TEST_F(ADeletedNode, IsWithdrawnAtOnceWhenNoRequestAddressesIt) {
  AsApplication(1, [] { AddIntScalar(3, "other", 1); });
  OnUse([] { Delete("other"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  EXPECT_FALSE(stillKnown);
  EXPECT_FALSE(IsRegistered(Scalar(3)));
}

TEST_F(ADeletedNode, MayBeReplacedByItsOwnCallback) {
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

TEST_F(ADeletedNode, MayBeReplacedByATable) {
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

TEST_F(ADeletedNode, MayBeReplacedByADataSet) {
  ServeTable();
  OnUse([] {
    Delete("table");
    support::AddDataSetTable(3, "dataset", Values(Unsigned(0), Int(0)));
  });
  session_->Set({Integer(Cell(1), 8)});
  EXPECT_TRUE(stillKnown);
  session_->ServeUntil([&] { return IsRegistered(Table()); });
}

TEST_F(ADeletedNode, MayBeRegisteredAnewByItsOwnCallback) {
  OnUse(NetSNMPNode::ReregisterMibs);
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8)}).error, kNoError);
  ExpectToBeServed(Integer(Scalar(2), 8));
}

TEST_F(ADeletedNode, MayBeDeletedBetweenThePhasesOfItsSet) {
  session_->Ask(TestSet{{Integer(Scalar(2), 8)}}, kSet);
  AsApplication(0, [] { Delete("called"); });
  session_->Ask(CommitSet{}, kSet);
  session_->Ask(CleanupSet{}, kSet);
  EXPECT_EQ(written, 0);
  ExpectWithdrawnInTime(Scalar(2));
}

TEST_F(ADeletedNode, WithoutSuccessorLeavesItsOidFree) {
  OnUse([] {
    Delete("called");
    delete AddIntScalar(2, "successor", 1);
  });
  session_->Set({Integer(Scalar(2), 8)});
  ExpectWithdrawnInTime(Scalar(2));
  AsApplication(1, [] { AddIntScalar(2, "later", 5); });
  EXPECT_EQ(Get(Scalar(2)), Integer(Scalar(2), 5));
}

TEST_F(ADeletedNode, DeletedInASetThatNeverEndsGoesWithItsConnection) {
  session_->Ask(TestSet{{Integer(Scalar(2), 8)}}, kSet);
  AsApplication(0, [] { Delete("called"); });
  EXPECT_TRUE(stillKnown);
  session_.reset();
  session_ = master_.AcceptServing(RegisteredAtFirst() - 1);
  EXPECT_FALSE(IsRegistered(Scalar(2)));
  AsApplication(1, [] { AddIntScalar(2, "successor", 5); });
  EXPECT_EQ(Get(Scalar(2)), Integer(Scalar(2), 5));
}

TEST_F(ADeletedNode, MayBeTheTableOfACellThatIsWritten) {
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

TEST_F(ADeletedNode, MayBeATableBetweenThePhasesOfASetOfItsCells) {
  ServeTable();
  session_->Ask(TestSet{{Integer(Cell(1), 8), Integer(Cell(2), 9)}}, kSet);
  AsApplication(0, [] { Delete("table"); });
  session_->Ask(CommitSet{}, kSet);
  session_->Ask(CleanupSet{}, kSet);
  EXPECT_EQ(writes, 0);
  ExpectWithdrawnInTime(Table());
}

TEST_F(ADeletedNode, MayBeATableBetweenThePhasesOfASetThatFails) {
  for (const Varbind& first : BadWrites()) {
    ServeTable();
    session_->Ask(TestSet{{first, Integer(Cell(2), 9)}}, kSet);
    AsApplication(0, [] { Delete("table"); });
    session_->Ask(CleanupSet{}, kSet);
    ExpectWithdrawnInTime(Table());
    AsApplication(0, [] { Delete("row"); });
  }
}

TEST_F(ADeletedNode, IsNoLongerUsedByASetThatFailed) {
  for (const Varbind& first : BadWrites()) {
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

TEST_F(ADeletedNode, IsNoLongerUsedByASetThatIsUndone) {
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

TEST_F(ADeletedNode, MayBeTheTableOfACellThatIsRead) {
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
