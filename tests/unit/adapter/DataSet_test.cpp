// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/DataSet.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "NetSNMP.h"
#include "support/LocalAgent.h"
#include "support/Oid.h"

namespace {

using testing::ElementsAre;

// A dataset with one integer index, and rows named by it.
class ADataSet : public testing::Test {
 protected:
  ADataSet() {
    EXPECT_EQ(NetSNMP::create_snmp_dataset(&set_, "portTable", 0, ASN_INTEGER),
              0);
  }
  ~ADataSet() override {
    if (set_ != nullptr) data_set::Free(set_);
  }

  static netsnmp_table_row* Row(long index) {
    netsnmp_table_row* row = nullptr;
    EXPECT_EQ(NetSNMP::create_snmp_dataset_row(&row), 0);
    EXPECT_EQ(NetSNMP::add_index_snmp_dataset(
                  row, ASN_INTEGER,
                  reinterpret_cast<const unsigned char*>(&index), sizeof index),
              0);
    return row;
  }

  netsnmp_table_row* Add(long index) {
    netsnmp_table_row* const row = Row(index);
    EXPECT_EQ(NetSNMP::add_snmp_dataset_row(row, set_), 0);
    return row;
  }

  netsnmp_table_row* First() {
    netsnmp_table_row* first = nullptr;
    EXPECT_EQ(NetSNMP::get_snmp_dataset_first_row(&first, set_), 0);
    return first;
  }

  // The indexes of the rows, in the order of the dataset.
  std::vector<unsigned long> Rows() {
    std::vector<unsigned long> indexes;
    for (const netsnmp_table_row* row = First(); row != nullptr;
         row = row->next) {
      indexes.push_back(row->index_oid[0]);
    }
    return indexes;
  }

  static netsnmp_table_data_set_storage* Column(netsnmp_table_row* row,
                                                unsigned int column) {
    return netsnmp_table_data_set_find_column(
        static_cast<netsnmp_table_data_set_storage*>(row->data), column);
  }

  netsnmp_table_data_set* set_ = nullptr;
};

TEST_F(ADataSet, HasItsNameAndItsIndex) {
  EXPECT_STREQ(set_->table->name, "portTable");
  EXPECT_EQ(set_->allow_creation, 0);
  ASSERT_NE(set_->table->indexes_template, nullptr);
  EXPECT_EQ(set_->table->indexes_template->type, ASN_INTEGER);
  EXPECT_EQ(set_->table->indexes_template->next_variable, nullptr);
}

TEST_F(ADataSet, AllowsTheCreationOfRowsIfAskedTo) {
  netsnmp_table_data_set* set = nullptr;
  NetSNMP::create_snmp_dataset(&set, "portTable", 1, ASN_OCTET_STR);
  EXPECT_EQ(set->allow_creation, 1);
  EXPECT_EQ(set->table->indexes_template->type, ASN_OCTET_STR);
  data_set::Free(set);
}

TEST_F(ADataSet, DefinesAColumnOnce) {
  EXPECT_EQ(NetSNMP::define_snmp_dataset_column(set_, 2, ASN_INTEGER, 1), 0);
  EXPECT_EQ(NetSNMP::define_snmp_dataset_column(set_, 2, ASN_OCTET_STR, 1),
            SNMPERR_GENERR);
  const netsnmp_table_data_set_storage* const column = set_->default_row;
  ASSERT_NE(column, nullptr);
  EXPECT_EQ(column->column, 2U);
  EXPECT_EQ(column->type, ASN_INTEGER);
  EXPECT_EQ(column->writable, 1);
  EXPECT_EQ(column->data.voidp, nullptr);
  EXPECT_EQ(column->next, nullptr);
}

TEST_F(ADataSet, IsRegisteredWithTheHandlerOfOne) {
  const LocalAgent agent;
  Oid oid = TestOid({4});
  netsnmp_handler_registration* reg = nullptr;
  NetSNMP::create_snmp_handler_registration(
      &reg, "portTable", nullptr, oid.data(), Length(oid), HANDLER_CAN_RWRITE);
  NetSNMP::define_snmp_dataset_column(set_, 2, ASN_INTEGER, 1);
  EXPECT_EQ(NetSNMP::register_snmp_dataset_table(reg, set_), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(oid), reg);
  EXPECT_NE(netsnmp_find_handler_by_name(reg, TABLE_DATA_SET_NAME), nullptr);
  NetSNMP::unregister_snmp_handler(reg);
}

TEST_F(ADataSet, KeepsItsRowsInTheOrderOfTheirIndexes) {
  EXPECT_EQ(First(), nullptr);
  Add(2);
  netsnmp_table_row* const one = Add(1);
  Add(3);
  EXPECT_EQ(First(), one);
  EXPECT_THAT(Rows(), ElementsAre(1, 2, 3));
}

TEST_F(ADataSet, DeletesARow) {
  Add(1);
  netsnmp_table_row* const two = Add(2);
  NetSNMP::set_snmp_dataset_row_col(two, 2, ASN_OCTET_STR, "front", 5, 0);
  EXPECT_EQ(NetSNMP::delete_remove_snmp_dataset_row(two, set_), 0);
  EXPECT_THAT(Rows(), ElementsAre(1));
}

TEST_F(ADataSet, TakesNoRowOfAnIndexThatItHas) {
  netsnmp_table_row* const one = Add(1);
  EXPECT_TRUE(data_set::HasRow(*set_, *one));
  netsnmp_table_row* const twin = Add(1);
  EXPECT_FALSE(data_set::HasRow(*set_, *twin));
  NetSNMP::set_snmp_dataset_row_col(twin, 2, ASN_OCTET_STR, "front", 5, 0);
  data_set::FreeRow(twin);
  netsnmp_table_row* const two = Add(2);
  EXPECT_TRUE(data_set::HasRow(*set_, *one));
  EXPECT_TRUE(data_set::HasRow(*set_, *two));
}

TEST_F(ADataSet, SetsAColumnOfARowAndWhetherItIsWritable) {
  netsnmp_table_row* const row = Add(1);
  for (const int writable : {1, 0}) {
    const std::string text = writable != 0 ? "front" : "rear";
    EXPECT_EQ(NetSNMP::set_snmp_dataset_row_col(
                  row, 2, ASN_OCTET_STR, text.data(),
                  static_cast<unsigned int>(text.size()), writable),
              0);
    const netsnmp_table_data_set_storage* const column = Column(row, 2);
    ASSERT_NE(column, nullptr);
    EXPECT_EQ(column->type, ASN_OCTET_STR);
    EXPECT_EQ(std::string(column->data.string,
                          column->data.string + column->data_len),
              text);
    EXPECT_EQ(column->writable, writable);
  }
}

TEST_F(ADataSet, LeavesAColumnAsItIsThatItCannotSet) {
  netsnmp_table_row* const row = Add(1);
  NetSNMP::set_snmp_dataset_row_col(row, 2, ASN_OCTET_STR, "front", 5, 0);
  const long number = 7;
  EXPECT_EQ(NetSNMP::set_snmp_dataset_row_col(
                row, 2, ASN_INTEGER, reinterpret_cast<const char*>(&number),
                sizeof number, 1),
            SNMPERR_GENERR);
  EXPECT_EQ(Column(row, 2)->type, ASN_OCTET_STR);
  EXPECT_EQ(Column(row, 2)->writable, 0);
  EXPECT_EQ(
      NetSNMP::set_snmp_dataset_row_col(nullptr, 2, ASN_INTEGER, nullptr, 0, 1),
      SNMPERR_GENERR);
}

}  // namespace
