// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs of several varbinds of one dataset table.
#include <ostream>
#include <vector>

#include "FakeMasterTest.h"
#include "NetSNMPAgentGuard.h"
#include "support/Tables.h"
#include "support/Values.h"

namespace agentx = testkit::agentx;

using testing::ElementsAre;
using testkit::agentx::CleanupSet;
using testkit::agentx::CommitSet;
using testkit::agentx::Oid;
using testkit::agentx::TestSet;
using testkit::agentx::Type;
using testkit::agentx::UndoSet;
using testkit::agentx::Varbind;

namespace {

// Errors of a response (RFC 2741, section 6.2.16).
constexpr int kNoError = 0;
constexpr int kWrongType = 7;
constexpr int kNoCreation = 11;
constexpr int kNotWritable = 17;

constexpr std::uint32_t kSet = 1000;  // the transaction of a SET

Varbind Integer(const Oid& name, int number) {
  return {name, {Type::kInteger, std::int32_t{number}}};
}

// The table 3, or what is below it.
Oid Table(std::initializer_list<std::uint32_t> subids = {}) {
  Oid oid{1, 3, 6, 1, 4, 1, 32473, 98, 3};
  oid.insert(oid.end(), subids);
  return oid;
}

Oid Cell(std::uint32_t index) { return Table({1, 2, index}); }
Oid SecondCell(std::uint32_t index) { return Table({1, 3, index}); }

// A table of two writable columns, with the rows 1 and 2.
class ASetOfADataSet : public FakeMasterTest {
 protected:
  ASetOfADataSet() {
    auto* const table = support::AddDataSetTable(
        3, "dataset",
        Values(Unsigned(0), Int(0, eNodeAccessReadWrite),
               Int(0, eNodeAccessReadWrite)));
    device_.Start();
    session_ = master_.AcceptServing(Device::Subtrees().size() + 1);
    const NetSNMPAgentGuard guard;
    for (const unsigned int index : {1, 2}) {
      table->AddRow(
          Values(Unsigned(index), Int(0),
                 Int(static_cast<int>(index) * 10, eNodeAccessReadWrite)));
    }
  }

  std::vector<Varbind> Walked() { return Walk(*session_, {Table()}); }

  int Set(const std::vector<Varbind>& varbinds) {
    return session_->Set(varbinds).error;
  }

  // Two cells of a new row, and a cell of each old one, one of them twice.
  static std::vector<Varbind> AllKinds() {
    return {Integer(Cell(3), 1), Integer(SecondCell(3), 2), Integer(Cell(1), 3),
            Integer(Cell(2), 4), Integer(Cell(1), 5)};
  }

  void ExpectRefusal(const std::vector<Varbind>& varbinds, int error,
                     int index) {
    const agentx::Response answer = session_->Ask(TestSet{varbinds}, kSet);
    EXPECT_EQ(answer.error, error);
    EXPECT_EQ(answer.index, index);
    session_->Ask(CleanupSet{}, kSet);
    ExpectToBeUnchanged();
    EXPECT_EQ(Set({Integer(Cell(1), 10)}), kNoError);
  }

  void ExpectToBeUnchanged() {
    EXPECT_THAT(Walked(),
                ElementsAre(Integer(Cell(1), 10), Integer(Cell(2), 20)));
  }
};

TEST_F(ASetOfADataSet, WritesEachRowItsOwnValue) {
  EXPECT_EQ(Set({Integer(Cell(2), 8), Integer(Cell(1), 9)}), kNoError);
  EXPECT_THAT(Walked(), ElementsAre(Integer(Cell(1), 9), Integer(Cell(2), 8)));
}

TEST_F(ASetOfADataSet, WritesTheLastValueOfACellThatItNamesTwice) {
  EXPECT_EQ(Set({Integer(Cell(1), 8), Integer(Cell(1), 9)}), kNoError);
  EXPECT_THAT(Walked(), ElementsAre(Integer(Cell(1), 9), Integer(Cell(2), 20)));
}

TEST_F(ASetOfADataSet, CreatesOneRowWithAllItsCells) {
  EXPECT_EQ(Set({Integer(SecondCell(0), 8), Integer(Cell(0), 9)}), kNoError);
  EXPECT_THAT(Walked(),
              ElementsAre(Integer(Cell(0), 9), Integer(Cell(1), 10),
                          Integer(Cell(2), 20), Integer(SecondCell(0), 8)));
}

TEST_F(ASetOfADataSet, ThatIsUndoneChangesNothing) {
  EXPECT_EQ(session_->Ask(TestSet{AllKinds()}, kSet).error, kNoError);
  EXPECT_EQ(session_->Ask(CommitSet{}, kSet).error, kNoError);
  EXPECT_EQ(session_->Ask(UndoSet{}, kSet).error, kNoError);
  ExpectToBeUnchanged();
}

TEST_F(ASetOfADataSet, ThatIsNotCommittedChangesNothing) {
  EXPECT_EQ(session_->Ask(TestSet{AllKinds()}, kSet).error, kNoError);
  session_->Ask(CleanupSet{}, kSet);
  ExpectToBeUnchanged();
}

TEST_F(ASetOfADataSet, IsRefusedByItsFirstError) {
  ExpectRefusal({{Cell(1), {Type::kOctetString, "8"}}, Integer(Table(), 8)},
                kWrongType, 1);
}

// They are no SET, but answered by the same chain of handlers.
TEST_F(ASetOfADataSet, IsReadInOneRequestForSeveralCells) {
  EXPECT_EQ(Set({Integer(Cell(2), 8), Integer(Cell(1), 9)}), kNoError);
  const std::vector<agentx::SearchRange> ranges{{Cell(2), true, {}},
                                                {Cell(1), true, {}}};
  EXPECT_THAT(session_->Ask(agentx::Get{ranges}).varbinds,
              ElementsAre(Integer(Cell(2), 8), Integer(Cell(1), 9)));
  const std::vector<agentx::SearchRange> nextOf{{Cell(1), false, {}},
                                                {Table(), false, {}}};
  EXPECT_THAT(session_->Ask(agentx::GetNext{nextOf}).varbinds,
              ElementsAre(Integer(Cell(2), 8), Integer(Cell(1), 9)));
}

// A name below the table that no cell has, and the error of its SET.
struct NoCell {
  Oid name;
  int error;
};

void PrintTo(const NoCell& noCell, std::ostream* out) {
  *out << testing::PrintToString(noCell.name);
}

class ASetOfNoCell : public ASetOfADataSet,
                     public testing::WithParamInterface<NoCell> {};

TEST_P(ASetOfNoCell, IsRefusedBeforeACell) {
  ExpectRefusal({Integer(GetParam().name, 8), Integer(Cell(1), 9)},
                GetParam().error, 1);
}

TEST_P(ASetOfNoCell, IsRefusedBehindACell) {
  ExpectRefusal({Integer(Cell(1), 9), Integer(GetParam().name, 8)},
                GetParam().error, 2);
}

INSTANTIATE_TEST_SUITE_P(, ASetOfNoCell,
                         testing::Values(NoCell{Table(), kNotWritable},
                                         NoCell{Table({1}), kNotWritable},
                                         NoCell{Table({2}), kNotWritable},
                                         NoCell{Table({2, 2, 1}), kNotWritable},
                                         NoCell{Table({1, 1, 1}), kNotWritable},
                                         NoCell{Table({1, 4, 1}), kNotWritable},
                                         NoCell{Table({1, 2}), kNoCreation},
                                         NoCell{Table({1, 2, 1, 1}),
                                                kNoCreation}));

}  // namespace
