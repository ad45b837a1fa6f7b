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

class ARegistration : public testing::Test {
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

TEST_F(ARegistration, IsCreatedFromWhatItIsGiven) {
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

TEST_F(ARegistration, IsNullForMoreThan128SubIdentifiers) {
  for (const unsigned int length : {129U, 255U, 256U, 257U, 300U}) {
    netsnmp_handler_registration before = {};
    netsnmp_handler_registration* reg = &before;
    EXPECT_EQ(Create(LongOid(length), &reg), 3) << length;
    EXPECT_EQ(reg, nullptr) << length;
  }
}

TEST_F(ARegistration, MayHave128SubIdentifiers) {
  const Oid longest = LongOid(128);
  netsnmp_handler_registration* const reg = Created(longest);
  ASSERT_NE(reg, nullptr);
  EXPECT_EQ(NetSNMP::register_snmp_handler(reg), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(longest), reg);
  EXPECT_EQ(NetSNMP::unregister_snmp_handler(reg), 0);
}

TEST_F(ARegistration, IsOneOfAnInstance) {
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
TEST_F(ARegistration, IsRefusedWhereThereIsOne) {
  netsnmp_handler_registration* const first = Created(kOid);
  EXPECT_EQ(NetSNMP::register_snmp_handler(first), 0);
  EXPECT_NE(NetSNMP::register_snmp_handler(Created(kOid)), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), first);
}

TEST_F(ARegistration, IsGoneOnceItIsUnregistered) {
  netsnmp_handler_registration* const reg = Created(kOid);
  NetSNMP::register_snmp_handler(reg);
  EXPECT_EQ(NetSNMP::unregister_snmp_handler(reg), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), nullptr);
  EXPECT_EQ(NetSNMP::register_snmp_handler(Created(kOid)), 0);
}

TEST_F(ARegistration, IsGoneOnceItsOidIsUnregistered) {
  NetSNMP::register_snmp_handler(Created(kOid));
  Oid oid = kOid;
  EXPECT_EQ(NetSNMP::unregister_snmp_mib(oid.data(), Length(oid)), 0);
  EXPECT_EQ(LocalAgent::RegistrationAt(kOid), nullptr);
  EXPECT_EQ(NetSNMP::unregister_snmp_mib(oid.data(), Length(oid)),
            MIB_NO_SUCH_REGISTRATION);
}

TEST_F(ARegistration, IsOnlyFreedWhenThereIsOne) {
  EXPECT_EQ(NetSNMP::free_register_snmp_handler(nullptr), 0);
  EXPECT_EQ(NetSNMP::free_register_snmp_handler(Created(kOid)), 0);
}

TEST(ARequestError, IsRecordedWhenItIsAboveZero) {
  for (const int error : {1, 2, 3, 5, 17}) {
    netsnmp_agent_request_info agentRequest = {};
    netsnmp_request_info request = {};
    agentRequest.mode = MODE_SET_RESERVE1;
    EXPECT_EQ(NetSNMP::set_snmp_request_error(&agentRequest, &request, error),
              error);
    EXPECT_EQ(request.status, error);
    EXPECT_EQ(request.processed, 1);
  }
}

TEST(ARequestError, TouchesNoRequestWhenItIsNone) {
  for (const int error : {0, -1, -2}) {
    netsnmp_agent_request_info agentRequest = {};
    netsnmp_request_info request = {};
    EXPECT_EQ(NetSNMP::set_snmp_request_error(&agentRequest, &request, error),
              error);
    EXPECT_EQ(request.status, 0);
    EXPECT_EQ(request.processed, 0);
  }
}

TEST(ATrap, IsSentWithItsVariables) {
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
