// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <cstring>

#include "DataSetTest.h"
#include "NetSNMPByteNodeData.h"
#include "adapter/Deferred.h"
#include "support/CellRequest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The rows that the agent library keeps of a dataset table.
class DataSetRows : public DataSetTest {
 protected:
  static std::vector<netsnmp_table_row*> RowsOf(
      const NetSNMPDataSetTableNode& table) {
    std::vector<netsnmp_table_row*> rows;
    for (auto* row = table.dataset_->table->first_row; row != nullptr;
         row = row->next) {
      rows.push_back(row);
    }
    return rows;
  }

  // Their index OIDs.
  static std::vector<Oid> IndexesOf(const NetSNMPDataSetTableNode& table) {
    std::vector<Oid> indexes;
    for (const auto* row : RowsOf(table)) {
      indexes.emplace_back(row->index_oid, row->index_oid + row->index_oid_len);
    }
    return indexes;
  }

  static netsnmp_table_data_set_storage* CellOf(const netsnmp_table_row* row,
                                                unsigned int column) {
    return netsnmp_table_data_set_find_column(
        static_cast<netsnmp_table_data_set_storage*>(row->data), column);
  }

  static int NumberIn(const netsnmp_table_data_set_storage& cell) {
    int number = 0;
    EXPECT_EQ(cell.data_len, sizeof number);
    std::memcpy(&number, cell.data.voidp, sizeof number);
    return number;
  }

  static std::string BytesOf(const netsnmp_table_data_set_storage& cell) {
    return {reinterpret_cast<const char*>(cell.data.string), cell.data_len};
  }

  // The index OID of a row that is added with `index`, to a table of its own.
  static Oid IndexOfRowWith(const NetSNMPNodeData& index) {
    static unsigned long tables = 10;
    auto* const table = BuildTable(Values(index, Int(0)), TestOid({++tables}));
    EXPECT_TRUE(table->AddRow(Values(index, Int(1))));
    return IndexesOf(*table).front();
  }

  netsnmp_handler_registration* Registration() const {
    return LocalAgent::RegistrationAt(kEventTableOid);
  }
};

TEST_F(DataSetRows, ShowTheirLastValueInColumnTwo) {
  auto* const table = BuildEventTable();
  EXPECT_TRUE(table->AddRow(Event(5, "a", 7)));
  EXPECT_THAT(IndexesOf(*table), ElementsAre(Oid{5}));
  const auto* const row = RowsOf(*table).front();
  const auto* const cell = CellOf(row, 2);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->type, ASN_INTEGER);
  const int seven = 7;
  EXPECT_EQ(BytesOf(*cell),
            std::string(reinterpret_cast<const char*>(&seven), sizeof seven));
  EXPECT_EQ(cell->writable, 1);
  EXPECT_EQ(CellOf(row, 1), nullptr);
  EXPECT_EQ(CellOf(row, 3), nullptr);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataSetRows, TakeTypeAndAccessFromTheLastValue) {
  auto* const table = BuildTable(Values(Unsigned(0), Int(0), Text("")));
  ASSERT_TRUE(table->AddRow(
      Values(Unsigned(1), Int(7, eNodeAccessReadWrite), Text("last"))));
  const auto* const cell = CellOf(RowsOf(*table).front(), 2);
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(cell->type, ASN_OCTET_STR);
  EXPECT_EQ(BytesOf(*cell), "last");
  EXPECT_EQ(cell->writable, 0);
}

TEST_F(DataSetRows, OfAnIndexAloneHaveNoCells) {
  auto* const table = BuildTable(Values(Unsigned(0)));
  EXPECT_TRUE(table->AddRow(Values(Unsigned(1))));
  EXPECT_THAT(RowsOf(*table), SizeIs(1));
  EXPECT_EQ(RowsOf(*table).front()->data, nullptr);
}

TEST_F(DataSetRows, AreFiledUnderTheValueOfTheirIndex) {
  EXPECT_EQ(IndexOfRowWith(Int(3)), (Oid{3}));
  EXPECT_EQ(IndexOfRowWith(Unsigned(4294967295)), (Oid{4294967295}));
  EXPECT_EQ(IndexOfRowWith(Bool(true)), (Oid{1}));
  EXPECT_EQ(IndexOfRowWith(Bool(false)), (Oid{2}));
  EXPECT_EQ(IndexOfRowWith(Text("ab")), (Oid{2, 'a', 'b'}));
  EXPECT_EQ(
      IndexOfRowWith(Text("a text longer than a string holds inline")),
      (Oid{40,  'a', ' ', 't', 'e', 'x', 't', ' ', 'l', 'o', 'n', 'g', 'e', 'r',
           ' ', 't', 'h', 'a', 'n', ' ', 'a', ' ', 's', 't', 'r', 'i', 'n', 'g',
           ' ', 'h', 'o', 'l', 'd', 's', ' ', 'i', 'n', 'l', 'i', 'n', 'e'}));
  unsigned char bytes[] = {0, 255};
  EXPECT_EQ(
      IndexOfRowWith(NetSNMPByteNodeData(bytes, 2, eNodeAccessReadOnly, true)),
      (Oid{2, 0, 255}));
}

TEST_F(DataSetRows, AreKeptInTheOrderOfTheirIndexes) {
  auto* const table = BuildEventTable();
  for (const unsigned int number : {10, 2, 33, 1}) {
    ASSERT_TRUE(table->AddRow(Event(number, "a", 7)));
  }
  EXPECT_THAT(IndexesOf(*table), ElementsAre(Oid{1}, Oid{2}, Oid{10}, Oid{33}));
}

TEST_F(DataSetRows, OfAnIndexThatIsThereAreReleased) {
  auto* const table = BuildEventTable();
  for (const int severity : {7, 8, 9}) {
    EXPECT_TRUE(table->AddRow(Event(5, "a", severity)));
    EXPECT_TRUE(table->AddRow(Event(6, "a", severity)));
  }
  EXPECT_THAT(IndexesOf(*table), ElementsAre(Oid{5}, Oid{6}));
  EXPECT_EQ(NumberIn(*CellOf(RowsOf(*table).front(), 2)), 7);
}

TEST_F(DataSetRows, AreRefusedIfTheyDoNotMatchTheColumns) {
  auto* const table = BuildEventTable();
  const auto refused = [table](const Values& row) {
    return !table->ValidateRow(row) && !table->AddRow(row);
  };
  EXPECT_TRUE(refused(Values(Unsigned(5), Text("a"))));
  EXPECT_TRUE(refused(Values(Unsigned(5), Text("a"), Int(7), Int(8))));
  EXPECT_TRUE(refused(Values(Unsigned(5), Text("a"), Text("7"))));
  EXPECT_TRUE(refused(Values(Int(5), Text("a"), Int(7))));
  EXPECT_TRUE(refused(Values()));
  EXPECT_TRUE(table->ValidateRow(Event(5, "a", 7)));
  EXPECT_TRUE(table->ValidateRow(
      Values(Index(Unsigned(5)), Text("a", eNodeAccessWriteOnly), Int(7))));
  EXPECT_THAT(RowsOf(*table), IsEmpty());
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataSetRows, WithANullValueAreRefused) {
  auto* const table = BuildEventTable();
  EXPECT_FALSE(table->AddRow({nullptr, nullptr, nullptr}));
}

class StrictTable : public NetSNMPDataSetTableNode {
 public:
  using NetSNMPDataSetTableNode::NetSNMPDataSetTableNode;
  bool ValidateRow(const std::vector<NetSNMPNodeData*>&) const override {
    return false;
  }
};

TEST_F(DataSetRows, AreRefusedByAnOverrideOfTheCheck) {
  Oid oid = kEventTableOid;
  StrictTable table(oid.data(), Length(oid), "strict", Int(0),
                    Values(Unsigned(0), Int(0)));
  EXPECT_FALSE(table.AddRow(Values(Unsigned(1), Int(1))));
}

TEST_F(DataSetRows, AreCopiesOfTheCallersValues) {
  auto* const table = BuildTable(Values(Unsigned(0), Text("")));
  std::string text = "before";
  ASSERT_TRUE(table->AddRow(
      Values(Unsigned(1), NetSNMPStringNodeData(&text, eNodeAccessReadOnly))));
  text = "after";
  EXPECT_EQ(BytesOf(*CellOf(RowsOf(*table).front(), 2)), "before");
}

TEST_F(DataSetRows, AreServedByTheAgentLibrary) {
  auto* const table = BuildEventTable();
  ASSERT_TRUE(table->AddRow(Event(5, "a", 7)));
  CellRequest get(TestOid({3, 1, 2, 5}));
  get.Serve(Registration(), MODE_GET);
  EXPECT_EQ(get.Integer(), 7);
  CellRequest next(kEventTableOid);
  next.Serve(Registration(), MODE_GETNEXT);
  EXPECT_EQ(next.Name(), TestOid({3, 1, 2, 5}));
  EXPECT_EQ(next.Integer(), 7);
  CellRequest absent(TestOid({3, 1, 3, 5}));
  absent.Serve(Registration(), MODE_GET);
  EXPECT_EQ(absent.Type(), SNMP_NOSUCHINSTANCE);
}

TEST_F(DataSetRows, AreGoneOnceTheirTableIsDestroyed) {
  auto* const table = BuildEventTable();
  ASSERT_TRUE(table->AddRow(Event(5, "a", 7)));
  delete table;
  CellRequest get(TestOid({3, 1, 2, 5}));
  get.Serve(Registration(), MODE_GET);
  EXPECT_EQ(get.Type(), SNMP_NOSUCHINSTANCE);
  CellRequest next(kEventTableOid);
  next.Serve(Registration(), MODE_GETNEXT);
  EXPECT_EQ(next.Type(), ASN_NULL);
}

struct PhaseCase {
  std::vector<int> before;
  std::vector<int> after;
};

// Every place between two phases.
const PhaseCase kPhaseCases[] = {
    {{MODE_SET_RESERVE1}, {MODE_SET_FREE}},
    {{MODE_SET_RESERVE1},
     {MODE_SET_RESERVE2, MODE_SET_ACTION, MODE_SET_COMMIT}},
    {{MODE_SET_RESERVE1, MODE_SET_RESERVE2},
     {MODE_SET_ACTION, MODE_SET_COMMIT}},
    {{MODE_SET_RESERVE1, MODE_SET_RESERVE2}, {MODE_SET_FREE}},
    {{MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION},
     {MODE_SET_COMMIT}},
    {{MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION}, {MODE_SET_UNDO}},
};

// Row 1 is there and row 2 is made by the SET.
TEST_F(DataSetRows, GoWithTheirTableWhenTheSetThatWorksOnThemHasEnded) {
  for (const unsigned long row : {1UL, 2UL}) {
    for (const PhaseCase& each : kPhaseCases) {
      const KeptDataSets keptSoFar;
      auto* const table = BuildEventTable();
      ASSERT_TRUE(table->AddRow(Event(1, "up", 7)));
      netsnmp_table_data_set* const dataset = table->dataset_;
      auto* const registration = LocalAgent::RegistrationAt(kEventTableOid);
      ASSERT_NE(registration, nullptr);
      netsnmp_agent_session pdu{};
      CellRequest set(TestOid({3, 1, 2, row}), &pdu);
      CellRequest other(TestOid({3, 1, 2, 1}), &pdu);
      set.SetInteger(8);
      other.SetInteger(9);
      for (const int mode : each.before) set.Serve(registration, mode);
      other.Serve(registration, MODE_SET_RESERVE1);
      NetSNMPNode::DeleteNodes();
      other.Serve(registration, MODE_SET_FREE);
      deferred::Run();
      EXPECT_NE(dataset->table->first_row, nullptr);
      for (const int mode : each.after) set.Serve(registration, mode);
      deferred::Run();
      EXPECT_EQ(dataset->table->first_row, nullptr);
    }
  }
}

// The agent library frees what a row was at its first cell, and would read it
// at the next one.
TEST_F(DataSetRows, AreCommittedAndUndoneAtTheirFirstCellOnly) {
  BuildEventTable()->AddRow(Event(5, "a", 7));
  auto* const registration = LocalAgent::RegistrationAt(kEventTableOid);
  for (const int last : {MODE_SET_COMMIT, MODE_SET_UNDO}) {
    netsnmp_agent_session pdu{};
    CellRequest first(TestOid({3, 1, 2, 5}), &pdu);
    CellRequest otherRow(TestOid({3, 1, 2, 6}), &pdu);
    CellRequest second(TestOid({3, 1, 2, 5}), &pdu);
    first.SetInteger(8);
    otherRow.SetBytes(ASN_OCTET_STR, "b");
    second.SetInteger(9);
    first.Append(otherRow);
    otherRow.Append(second);
    for (const int phase :
         {MODE_SET_RESERVE1, MODE_SET_RESERVE2, MODE_SET_ACTION}) {
      first.Serve(registration, phase);
      EXPECT_FALSE(second.Processed());
    }
    first.Serve(registration, last);
    EXPECT_FALSE(first.Processed());
    EXPECT_FALSE(otherRow.Processed());
    EXPECT_TRUE(second.Processed());
  }
}

}  // namespace
