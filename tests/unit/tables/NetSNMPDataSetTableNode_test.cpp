// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPDataSetTableNode.h"

#include <memory>
#include <type_traits>

#include "CountedValue.h"
#include "DataSetTest.h"
#include "NetSNMPDataNode.h"
#include "support/Layout.h"
#include "support/LockWitness.h"
#include "support/VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DataSetTable : public DataSetTest {
 protected:
  struct Column {
    unsigned int number;
    int type;
    int writable;
    bool operator==(const Column& other) const {
      return number == other.number && type == other.type &&
             writable == other.writable;
    }
  };

  static std::vector<Column> ColumnsOf(const NetSNMPDataSetTableNode& table) {
    std::vector<Column> columns;
    for (const auto* column = table.dataset_->default_row; column != nullptr;
         column = column->next) {
      columns.push_back({column->column, column->type, column->writable});
    }
    return columns;
  }

  // Lets somebody else have the OID of the table.
  NetSNMPDataNode* BuildStranger() {
    Oid oid = kEventTableOid;
    return new NetSNMPDataNode(oid.data(), Length(oid), "stranger", Int(1),
                               nullptr, "");
  }
};

TEST_F(DataSetTable, IsRegisteredAtConstructionWhenConnected) {
  auto* const table = BuildEventTable();
  EXPECT_TRUE(table->registered_);
  EXPECT_NE(table->dataset_, nullptr);
  EXPECT_NE(LocalAgent::RegistrationAt(kEventTableOid), nullptr);
  EXPECT_EQ(NetSNMPNode::nodeMap_->at("eventTable"), table);
  const auto* const dataset = table->dataset_;
  EXPECT_TRUE(table->RegisterNode());
  EXPECT_EQ(table->dataset_, dataset);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataSetTable, DefinesAnIndexAndItsColumns) {
  const auto* const table =
      BuildTable(Values(Unsigned(0), Text("", eNodeAccessReadWrite), Int(0),
                        Bool(true, eNodeAccessWriteOnly)));
  const netsnmp_table_data& data = *table->dataset_->table;
  ASSERT_NE(data.indexes_template, nullptr);
  EXPECT_EQ(data.indexes_template->type, ASN_UNSIGNED);
  EXPECT_EQ(data.indexes_template->next_variable, nullptr);
  EXPECT_STREQ(data.name, "eventTable");
  EXPECT_EQ(table->dataset_->allow_creation, 1);
  EXPECT_THAT(ColumnsOf(*table), ElementsAre(Column{2, ASN_OCTET_STR, 1},
                                             Column{3, ASN_INTEGER, 0},
                                             Column{4, ASN_INTEGER, 1}));
}

TEST_F(DataSetTable, TakesItsModesFromTheAccessMode) {
  const std::pair<int, int> modes[] = {{0, HANDLER_CAN_DEFAULT},
                                       {1, HANDLER_CAN_RONLY},
                                       {2, HANDLER_CAN_RWRITE},
                                       {3, HANDLER_CAN_SET_ONLY}};
  unsigned long number = 4;
  for (const auto& [access, expected] : modes) {
    const Oid oid = TestOid({++number});
    BuildTable(Values(Unsigned(0), Int(0)), oid,
               static_cast<eNodeAccessMode>(access));
    const auto* const registration = LocalAgent::RegistrationAt(oid);
    ASSERT_NE(registration, nullptr);
    EXPECT_EQ(registration->modes & HANDLER_CAN_SET_ONLY,
              expected & HANDLER_CAN_SET_ONLY);
    EXPECT_EQ(registration->modes & expected, expected) << access;
  }
}

TEST_F(DataSetTable, NamesItsHandlerAfterTheNode) {
  BuildEventTable();
  const netsnmp_mib_handler* handler =
      LocalAgent::RegistrationAt(kEventTableOid)->handler;
  while (handler->next != nullptr) handler = handler->next;
  EXPECT_STREQ(handler->handler_name, "eventTable");
  EXPECT_EQ(handler->access_method, var_dataset_table_handler);
}

TEST_F(DataSetTable, WaitsForAConnectedSubagent) {
  subAgent_.SetConnected(false);
  auto* const table = BuildEventTable();
  EXPECT_FALSE(table->RegisterNode());
  NetSNMPNode::snmpSubAgent_ = nullptr;
  EXPECT_FALSE(table->RegisterNode());
  EXPECT_EQ(table->dataset_, nullptr);
  EXPECT_FALSE(table->AddRow(Event(5, "a", 7)));
  NetSNMPNode::snmpSubAgent_ = &subAgent_;
  subAgent_.SetConnected(true);
  NetSNMPNode::RegisterMibs();
  EXPECT_TRUE(table->registered_);
  EXPECT_TRUE(table->AddRow(Event(5, "a", 7)));
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataSetTable, IsOnlyForNodesOfTheRegistry) {
  const std::unique_ptr<NetSNMPDataSetTableNode> table(
      new NetSNMPDataSetTableNode(nullptr, 0, "eventTable", Int(0),
                                  Values(Unsigned(0), Int(0))));
  EXPECT_FALSE(table->RegisterNode());
  EXPECT_EQ(table->dataset_, nullptr);
}

TEST_F(DataSetTable, HasNoDatasetWithoutAnIndexColumn) {
  const std::vector<NetSNMPNodeData*> noColumns;
  const std::vector<NetSNMPNodeData*> noIndex = {nullptr};
  for (const auto& columns : {noColumns, noIndex}) {
    auto* const table = BuildTable(columns);
    EXPECT_FALSE(table->RegisterNode());
    EXPECT_EQ(table->dataset_, nullptr);
    EXPECT_FALSE(table->AddRow(columns));
  }
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataSetTable, KeepsItsDatasetWhenItsOidIsTooLong) {
  auto* const table = BuildTable(Values(Unsigned(0), Int(0)), LongOid(129));
  EXPECT_FALSE(table->registered_);
  EXPECT_NE(table->dataset_, nullptr);
  EXPECT_TRUE(table->AddRow(Values(Unsigned(1), Int(1))));
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataSetTable, MakesAFurtherDatasetWhenItWasRefused) {
  const auto* const stranger = BuildStranger();
  log_.Lines();
  auto* const table = BuildEventTable();
  EXPECT_FALSE(table->registered_);
  ASSERT_NE(table->dataset_, nullptr);
  EXPECT_TRUE(table->AddRow(Event(5, "a", 7)));
  EXPECT_FALSE(table->RegisterNode());
  EXPECT_EQ(table->dataset_->table->first_row, nullptr);
  EXPECT_EQ(LocalAgent::RegistrationAt(kEventTableOid),
            stranger->handlerRegistration_);
  EXPECT_THAT(log_.Lines(), IsEmpty());
  delete stranger;
  EXPECT_TRUE(table->RegisterNode());
  EXPECT_NE(LocalAgent::RegistrationAt(kEventTableOid), nullptr);
}

TEST_F(DataSetTable, IsNeverUnregistered) {
  auto* const table = BuildEventTable();
  table->AddRow(Event(5, "a", 7));
  NetSNMPNode::ReregisterMibs();
  EXPECT_TRUE(table->registered_);
  EXPECT_NE(table->dataset_->table->first_row, nullptr);
  EXPECT_NE(LocalAgent::RegistrationAt(kEventTableOid), nullptr);
}

TEST_F(DataSetTable, StaysWithTheAgentLibraryWithoutItsRowsWhenDestroyed) {
  for (const bool connected : {true, false}) {
    const Oid oid = TestOid({connected ? 3UL : 4UL});
    auto* const table = BuildTable(Values(Unsigned(0), Int(0)), oid);
    for (const unsigned int event : {1, 2, 3}) {
      table->AddRow(Values(Unsigned(event), Int(7)));
    }
    const auto* const dataset = table->dataset_;
    subAgent_.SetConnected(connected);
    delete table;
    EXPECT_NE(LocalAgent::RegistrationAt(oid), nullptr);
    EXPECT_EQ(dataset->table->first_row, nullptr);
    EXPECT_EQ(NetSNMPNode::nodeMap_->count("eventTable"), 0U);
  }
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(DataSetTable, KeepsClonesOfItsColumns) {
  const NetSNMPDataSetTableNode* table = nullptr;
  {
    const Values columns(CountedValue(0), CountedValue(0));
    table = BuildTable(columns);
    EXPECT_EQ(CountedValue::Alive(), 4);
  }
  EXPECT_EQ(CountedValue::Alive(), 2);
  delete table;
  EXPECT_EQ(CountedValue::Alive(), 0);
}

TEST_F(DataSetTable, MayBeBuiltFromTheOneThatItReplaces) {
  subAgent_.SetConnected(false);
  const auto* const older = BuildEventTable();
  auto* const newer = new NetSNMPDataSetTableNode(
      older->NodeOID(), older->NodeOIDLen(), older->nodeName_,
      older->accessData_, older->columnTemplate_);
  subAgent_.SetConnected(true);
  EXPECT_TRUE(newer->RegisterNode());
  EXPECT_TRUE(newer->AddRow(Event(5, "a", 7)));
  EXPECT_NE(LocalAgent::RegistrationAt(kEventTableOid), nullptr);
}

TEST_F(DataSetTable, TakesTheLockBeforeItCopiesItsColumns) {
  bool held = true;
  LockWitness column(held);
  BuildTable({&column});
  EXPECT_TRUE(held);
}

TEST_F(DataSetTable, HasAHandlerThatDoesNothing) {
  EXPECT_EQ(var_dataset_table_handler(nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(DataSetTable, HasItsFieldsInTheirFixedOrder) {
  const auto* const table = BuildEventTable();
  EXPECT_TRUE(LieInOrder({table, &table->mapped_, &table->dataset_,
                          &table->accessData_, &table->columnTemplate_}));
}

TEST_F(DataSetTable, HasOneVirtualOperationBeyondThoseOfANode) {
  EXPECT_EQ(VirtualSlot(&NetSNMPDataSetTableNode::RegisterNode), 3);
  EXPECT_EQ(VirtualSlot(&NetSNMPDataSetTableNode::ValidateRow), 9);
  EXPECT_EQ(VirtualSlot(&NetSNMPDataSetTableNode::AddRow), -1);
}

TEST_F(DataSetTable, IsNeverCopied) {
  EXPECT_FALSE(std::is_copy_constructible<NetSNMPDataSetTableNode>::value);
  EXPECT_FALSE(std::is_copy_assignable<NetSNMPDataSetTableNode>::value);
}

}  // namespace
