// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <vector>

#include "NetSNMP.h"
#include "support/LocalAgent.h"
#include "support/Oid.h"

namespace {

using testing::ElementsAre;

int Serve(netsnmp_mib_handler*, netsnmp_handler_registration*,
          netsnmp_agent_request_info*, netsnmp_request_info*) {
  return SNMP_ERR_NOERROR;
}

std::vector<int> TypesIn(const variable_list* list) {
  std::vector<int> types;
  for (; list != nullptr; list = list->next_variable) {
    types.push_back(list->type);
  }
  return types;
}

class AnIteratorTable : public testing::Test {
 protected:
  static netsnmp_table_registration_info* Info() {
    return SNMP_MALLOC_TYPEDEF(netsnmp_table_registration_info);
  }

  const Oid kOid = TestOid({3});
  const LocalAgent agent_;
};

TEST_F(AnIteratorTable, TakesItsIndexesInTheirOrder) {
  netsnmp_table_registration_info* const info = Info();
  EXPECT_EQ(NetSNMP::add_index_snmp_table(info, ASN_INTEGER), 0);
  EXPECT_EQ(NetSNMP::add_index_snmp_table(info, ASN_UNSIGNED), 0);
  EXPECT_EQ(NetSNMP::add_index_snmp_table(info, ASN_OCTET_STR), 0);
  EXPECT_THAT(TypesIn(info->indexes),
              ElementsAre(ASN_INTEGER, ASN_UNSIGNED, ASN_OCTET_STR));
  EXPECT_EQ(NetSNMP::free_table_registration_info(info), 0);
}

TEST_F(AnIteratorTable, IsRegisteredWithTheHandlersOfOne) {
  auto* const iterator = SNMP_MALLOC_TYPEDEF(netsnmp_iterator_info);
  iterator->table_reginfo = Info();
  NetSNMP::add_index_snmp_table(iterator->table_reginfo, ASN_INTEGER);
  Oid oid = kOid;
  netsnmp_handler_registration* reg = nullptr;
  NetSNMP::create_snmp_handler_registration(
      &reg, "portTable", Serve, oid.data(), Length(oid), HANDLER_CAN_RWRITE);
  EXPECT_EQ(NetSNMP::register_snmp_table_iterator(reg, iterator), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), reg);
  EXPECT_NE(netsnmp_find_handler_by_name(reg, TABLE_HANDLER_NAME), nullptr);
  EXPECT_NE(netsnmp_find_handler_by_name(reg, TABLE_ITERATOR_NAME), nullptr);
  EXPECT_EQ(netsnmp_find_handler_by_name(reg, "instance"), nullptr);
  NetSNMP::unregister_snmp_handler(reg);
  EXPECT_EQ(NetSNMP::delete_snmp_table_iterator(iterator), 0);
}

TEST_F(AnIteratorTable, IsOnlyFreedWhenThereIsOne) {
  EXPECT_EQ(NetSNMP::delete_snmp_table_iterator(nullptr), 0);
  EXPECT_EQ(NetSNMP::free_table_registration_info(nullptr), 0);
}

TEST(ATableRequest, CarriesItsRowAndItsTableInfo) {
  int row = 0;
  netsnmp_table_request_info table = {};
  netsnmp_request_info request = {};
  netsnmp_request_add_list_data(
      &request, netsnmp_create_data_list(TABLE_ITERATOR_NAME, &row, nullptr));
  netsnmp_request_add_list_data(
      &request, netsnmp_create_data_list(TABLE_HANDLER_NAME, &table, nullptr));
  void* context = nullptr;
  netsnmp_table_request_info* info = nullptr;
  EXPECT_EQ(NetSNMP::extract_snmp_iterator_context(&context, &request), 0);
  EXPECT_EQ(NetSNMP::extract_snmp_table_info(&info, &request), 0);
  EXPECT_EQ(context, &row);
  EXPECT_EQ(info, &table);
  netsnmp_free_request_data_sets(&request);
}

TEST(ATableRequest, MayCarryNeither) {
  netsnmp_request_info request = {};
  void* context = &request;
  netsnmp_table_request_info before = {};
  netsnmp_table_request_info* info = &before;
  EXPECT_EQ(NetSNMP::extract_snmp_iterator_context(&context, &request), 0);
  EXPECT_EQ(NetSNMP::extract_snmp_table_info(&info, &request), 0);
  EXPECT_EQ(context, nullptr);
  EXPECT_EQ(info, nullptr);
}

}  // namespace
