// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Dataset tables that are deleted while a SET uses their rows.
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "WithdrawalTest.h"
#include "support/Tables.h"
#include "support/Values.h"

namespace agentx = testkit::agentx;

using testkit::agentx::CleanupSet;
using testkit::agentx::CommitSet;
using testkit::agentx::TestSet;
using testkit::agentx::Type;
using testkit::agentx::UndoSet;

namespace {

// The agent library keeps the addresses of a dataset's rows during a SET.
class ADataSetInUse : public WithdrawalTest {
 protected:
  ADataSetInUse() {
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

TEST_F(ADataSetInUse, LosesItsRowsAfterASetThatIsCommitted) {
  DeleteDuring(TestSet{{Integer(Cell(1), 8), Integer(Cell(2), 9)}},
               {CommitSet{}, CleanupSet{}});
  ExpectNoRows();
}

TEST_F(ADataSetInUse, LosesItsRowsAfterASetThatIsUndone) {
  DeleteDuring(TestSet{{Integer(Cell(1), 8), Integer(Cell(2), 9)}},
               {CommitSet{}, UndoSet{}});
  ExpectNoRows();
}

TEST_F(ADataSetInUse, LosesItsRowsAfterASetThatIsNotCommitted) {
  DeleteDuring(TestSet{{Integer(Cell(1), 8)}}, {CleanupSet{}});
  ExpectNoRows();
}

TEST_F(ADataSetInUse, LosesItsRowsAfterASetThatIsRefused) {
  DeleteDuring(
      TestSet{{Integer(Cell(1), 8), {Cell(1), {Type::kOctetString, "8"}}}},
      {CleanupSet{}});
  ExpectNoRows();
}

// The agent library gives this SET to none of its handlers for datasets.
TEST_F(ADataSetInUse, LosesItsRowsAfterASetOfWhatIsNoCell) {
  DeleteDuring(TestSet{{Integer(Table(), 8)}}, {CleanupSet{}});
  ExpectNoRows();
}

TEST_F(ADataSetInUse, LosesItsRowsWithTheConnectionOfASetThatNeverEnds) {
  session_->Ask(TestSet{{Integer(Cell(1), 8)}}, kSet);
  AsApplication(0, [] { delete Node("dataset"); });
  session_.reset();
  session_ = master_.AcceptServing(RegisteredAtFirst() + 1);
  ExpectNoRows();
}

TEST_F(ADataSetInUse, MayBeDeletedByACallbackOfItsSet) {
  OnUse([] { delete Node("dataset"); });
  EXPECT_EQ(session_->Set({Integer(Scalar(2), 8), Integer(Cell(1), 9)}).error,
            kNoError);
  EXPECT_EQ(written, 8);
  ExpectNoRows();
}

TEST_F(ADataSetInUse, LosesItsRowsAtOnceWhenNoSetWorksOnThem) {
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

}  // namespace
