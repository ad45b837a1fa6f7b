// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include "NetSNMP.h"
#include "support/LocalAgent.h"
#include "support/Oid.h"
#include "support/SentTraps.h"

namespace {

using testing::ElementsAre;

TEST(ANotificationOfTheAgentLibrary, IsSentWithItsVariables) {
  const LocalAgent agent;
  SentTraps sent;
  const Oid trap = TestOid({0, 1});
  variable_list* vars = nullptr;
  NetSNMP::add_snmp_varlist_variable(
      &vars, objid_snmptrap, 11, ASN_OBJECT_ID,
      reinterpret_cast<unsigned char*>(const_cast<unsigned long*>(trap.data())),
      Length(trap) * static_cast<unsigned int>(sizeof(oid)));
  EXPECT_EQ(NetSNMP::send_trap(vars), 0);
  EXPECT_THAT(sent.Take(), ElementsAre(ElementsAre(TrapOidVariable(trap))));
  NetSNMP::delete_snmp_variable_list(&vars);
  EXPECT_EQ(NetSNMP::send_trap(nullptr), 0);
}

}  // namespace
