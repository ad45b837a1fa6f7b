// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The wrappers that reach the agent library's own state take its lock.
#include "adapter/AgentLock.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "adapter/DataSet.h"
#include "support/LocalAgent.h"
#include "support/LockWitness.h"
#include "support/Oid.h"

namespace {

// Whether `call` takes the lock, once, and gives it back.
template <typename Call>
bool TakesTheLock(const Call& call) {
  const unsigned long turn = TurnNow();
  call();
  return TurnNow() == turn + 2;
}

class AWrapper : public testing::Test {
 protected:
  netsnmp_handler_registration* Create() {
    netsnmp_handler_registration* reg = nullptr;
    NetSNMP::create_snmp_handler_registration(&reg, "fanSpeed", nullptr,
                                              oid_.data(), Length(oid_),
                                              HANDLER_CAN_RONLY);
    return reg;
  }

  Oid oid_ = TestOid({1, 0});
  const LocalAgent agent_;
};

TEST_F(AWrapper, OfSetUpTakesTheLock) {
  EXPECT_TRUE(TakesTheLock([] { NetSNMP::init_snmp_agent("again"); }));
  EXPECT_TRUE(TakesTheLock([] { NetSNMP::set_snmp_int(4711, 0, 0); }));
  EXPECT_TRUE(TakesTheLock([] { NetSNMP::set_snmp_boolean(4711, 0, 0); }));
  EXPECT_TRUE(TakesTheLock(
      [] { NetSNMP::register_snmp_callback(4711, 0, nullptr, nullptr); }));
  EXPECT_TRUE(TakesTheLock(
      [] { NetSNMP::unregister_snmp_callback(4711, 0, nullptr, nullptr, 0); }));
}

TEST_F(AWrapper, OfATransportDomainTakesTheLock) {
  EXPECT_TRUE(TakesTheLock([] { NetSNMP::register_snmp_tdomain(nullptr); }));
  EXPECT_TRUE(TakesTheLock([] { NetSNMP::unregister_snmp_tdomain(nullptr); }));
}

TEST_F(AWrapper, OfARegistrationTakesTheLock) {
  netsnmp_handler_registration* reg = nullptr;
  EXPECT_TRUE(TakesTheLock([&] { reg = Create(); }));
  EXPECT_TRUE(TakesTheLock([&] { NetSNMP::register_snmp_handler(reg); }));
  EXPECT_TRUE(TakesTheLock([&] { NetSNMP::unregister_snmp_handler(reg); }));
  reg = Create();
  EXPECT_TRUE(TakesTheLock([&] { NetSNMP::free_register_snmp_handler(reg); }));
  EXPECT_TRUE(TakesTheLock(
      [&] { NetSNMP::unregister_snmp_mib(oid_.data(), Length(oid_)); }));
  EXPECT_TRUE(TakesTheLock([] { NetSNMP::send_trap(nullptr); }));
}

TEST_F(AWrapper, OfAnIteratorTableTakesTheLock) {
  auto* const iterator = SNMP_MALLOC_TYPEDEF(netsnmp_iterator_info);
  iterator->table_reginfo =
      SNMP_MALLOC_TYPEDEF(netsnmp_table_registration_info);
  netsnmp_handler_registration* const reg = Create();
  EXPECT_TRUE(TakesTheLock(
      [&] { NetSNMP::register_snmp_table_iterator(reg, iterator); }));
  NetSNMP::unregister_snmp_handler(reg);
  EXPECT_TRUE(
      TakesTheLock([&] { NetSNMP::delete_snmp_table_iterator(iterator); }));
}

TEST_F(AWrapper, OfADataSetTakesTheLock) {
  netsnmp_table_data_set* set = nullptr;
  netsnmp_table_row* row = nullptr;
  const long index = 1;
  NetSNMP::create_snmp_dataset_row(&row);
  NetSNMP::add_index_snmp_dataset(
      row, ASN_INTEGER, reinterpret_cast<const unsigned char*>(&index),
      sizeof index);
  EXPECT_TRUE(TakesTheLock(
      [&] { NetSNMP::create_snmp_dataset(&set, "ports", 0, ASN_INTEGER); }));
  EXPECT_TRUE(TakesTheLock(
      [&] { NetSNMP::define_snmp_dataset_column(set, 2, ASN_INTEGER, 0); }));
  EXPECT_TRUE(TakesTheLock([&] {
    NetSNMP::set_snmp_dataset_row_col(row, 2, ASN_OCTET_STR, "x", 1, 0);
  }));
  EXPECT_TRUE(TakesTheLock([&] { NetSNMP::add_snmp_dataset_row(row, set); }));
  EXPECT_TRUE(
      TakesTheLock([&] { NetSNMP::get_snmp_dataset_first_row(&row, set); }));
  netsnmp_handler_registration* const reg = Create();
  EXPECT_TRUE(
      TakesTheLock([&] { NetSNMP::register_snmp_dataset_table(reg, set); }));
  NetSNMP::unregister_snmp_handler(reg);
  EXPECT_TRUE(
      TakesTheLock([&] { NetSNMP::delete_remove_snmp_dataset_row(row, set); }));
  NetSNMP::create_snmp_dataset_row(&row);
  EXPECT_TRUE(TakesTheLock([&] { data_set::FreeRow(row); }));
  EXPECT_TRUE(TakesTheLock([&] { data_set::Free(set); }));
}

}  // namespace
