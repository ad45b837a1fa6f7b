// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <string>

#include "NetSNMP.h"
#include "support/LocalAgent.h"
#include "support/Oid.h"
#include "support/SentTraps.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

int Serve(netsnmp_mib_handler*, netsnmp_handler_registration*,
          netsnmp_agent_request_info*, netsnmp_request_info*) {
  return SNMP_ERR_NOERROR;
}

class AHandlersRegistration : public testing::Test {
 protected:
  static int Create(Oid oid, netsnmp_handler_registration** reg,
                    int modes = HANDLER_CAN_RWRITE) {
    return NetSNMP::create_snmp_handler_registration(
        reg, "fanSpeed", Serve, oid.data(), Length(oid), modes);
  }

  static netsnmp_handler_registration* Created(const Oid& oid) {
    netsnmp_handler_registration* reg = nullptr;
    Create(oid, &reg);
    return reg;
  }

  const Oid kOid = TestOid({1, 0});
  const LocalAgent agent_;
};

TEST_F(AHandlersRegistration, IsCreatedFromWhatItIsGiven) {
  netsnmp_handler_registration* reg = nullptr;
  EXPECT_EQ(Create(kOid, &reg, HANDLER_CAN_SET_ONLY), 0);
  ASSERT_NE(reg, nullptr);
  EXPECT_STREQ(reg->handlerName, "fanSpeed");
  EXPECT_STREQ(reg->handler->handler_name, "fanSpeed");
  EXPECT_EQ(reg->handler->access_method, Serve);
  EXPECT_EQ(reg->modes, HANDLER_CAN_SET_ONLY);
  EXPECT_THAT(Oid(reg->rootoid, reg->rootoid + reg->rootoid_len),
              ElementsAreArray(kOid));
  EXPECT_EQ(NetSNMP::free_register_snmp_handler(reg), 0);
}

TEST_F(AHandlersRegistration, IsNullForMoreThan128SubIdentifiers) {
  for (const unsigned int length : {129U, 255U, 256U, 257U, 300U}) {
    netsnmp_handler_registration before = {};
    netsnmp_handler_registration* reg = &before;
    EXPECT_EQ(Create(LongOid(length), &reg), 3) << length;
    EXPECT_EQ(reg, nullptr) << length;
  }
}

TEST_F(AHandlersRegistration, MayHave128SubIdentifiers) {
  const Oid longest = LongOid(128);
  netsnmp_handler_registration* const reg = Created(longest);
  ASSERT_NE(reg, nullptr);
  EXPECT_EQ(NetSNMP::register_snmp_handler(reg), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(longest), reg);
  EXPECT_EQ(NetSNMP::unregister_snmp_handler(reg), 0);
}

TEST_F(AHandlersRegistration, IsOneOfAnInstance) {
  netsnmp_handler_registration* const reg = Created(kOid);
  EXPECT_EQ(NetSNMP::register_snmp_handler(reg), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), reg);
  netsnmp_mib_handler* const instance =
      netsnmp_find_handler_by_name(reg, "instance");
  ASSERT_NE(instance, nullptr);
  EXPECT_STREQ(instance->next->handler_name, "fanSpeed");
  EXPECT_EQ(instance->next->next, nullptr);
  EXPECT_EQ(netsnmp_find_handler_by_name(reg, "scalar"), nullptr);
}

// The agent library frees what it refuses: nothing is left to be freed here.
TEST_F(AHandlersRegistration, IsRefusedWhereThereIsOne) {
  netsnmp_handler_registration* const first = Created(kOid);
  EXPECT_EQ(NetSNMP::register_snmp_handler(first), 0);
  EXPECT_NE(NetSNMP::register_snmp_handler(Created(kOid)), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), first);
}

TEST_F(AHandlersRegistration, IsGoneOnceItIsUnregistered) {
  netsnmp_handler_registration* const reg = Created(kOid);
  NetSNMP::register_snmp_handler(reg);
  EXPECT_EQ(NetSNMP::unregister_snmp_handler(reg), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), nullptr);
  EXPECT_EQ(NetSNMP::register_snmp_handler(Created(kOid)), 0);
}

TEST_F(AHandlersRegistration, IsGoneOnceItsOidIsUnregistered) {
  NetSNMP::register_snmp_handler(Created(kOid));
  Oid oid = kOid;
  EXPECT_EQ(NetSNMP::unregister_snmp_mib(oid.data(), Length(oid)), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), nullptr);
  EXPECT_EQ(NetSNMP::unregister_snmp_mib(oid.data(), Length(oid)),
            MIB_NO_SUCH_REGISTRATION);
}

TEST_F(AHandlersRegistration, IsOnlyFreedWhenThereIsOne) {
  EXPECT_EQ(NetSNMP::free_register_snmp_handler(nullptr), 0);
  EXPECT_EQ(NetSNMP::free_register_snmp_handler(Created(kOid)), 0);
}

}  // namespace
