// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A request by its mode.
#include <gtest/gtest.h>

#include "Untyped.h"
#include "support/Values.h"
#include "support/Varbind.h"

namespace {

struct ModeCase {
  int mode;
  int result;
  int numberAfter;
  long sentAfter;
};

TEST(AServedRequest, IsServedByItsMode) {
  const ModeCase cases[] = {
      {MODE_SET_BEGIN, 3, 7, 42},    {MODE_SET_RESERVE1, 0, 7, 42},
      {MODE_SET_RESERVE2, 0, 7, 42}, {MODE_SET_ACTION, 0, 7, 42},
      {MODE_SET_COMMIT, 0, 42, 42},  {MODE_SET_FREE, 3, 7, 42},
      {MODE_SET_UNDO, 3, 7, 42},     {6, 3, 7, 42},
      {MODE_GET, 0, 7, 7},           {MODE_GETNEXT, 0, 7, 7},
      {MODE_GETBULK, 3, 7, 42},      {162, 3, 7, 42},
  };
  for (const ModeCase& each : cases) {
    int number = 7;
    NetSNMPIntNodeData value(&number, eNodeAccessReadWrite);
    const Varbind varbind = Varbind::Integer(42);
    EXPECT_EQ(NetSNMP::handle_snmp_request(varbind, &value, each.mode),
              each.result)
        << each.mode;
    EXPECT_EQ(number, each.numberAfter) << each.mode;
    EXPECT_EQ(*varbind->val.integer, each.sentAfter) << each.mode;
    EXPECT_EQ(NetSNMP::handle_snmp_request(varbind, nullptr, each.mode), 3)
        << each.mode;
  }
}

TEST(AServedRequest, HasTheModesOfTheAgentLibrary) {
  EXPECT_EQ(MODE_SET_BEGIN, -1);
  EXPECT_EQ(MODE_SET_RESERVE1, 0);
  EXPECT_EQ(MODE_SET_RESERVE2, 1);
  EXPECT_EQ(MODE_SET_ACTION, 2);
  EXPECT_EQ(MODE_SET_COMMIT, 3);
  EXPECT_EQ(MODE_SET_FREE, 4);
  EXPECT_EQ(MODE_SET_UNDO, 5);
  EXPECT_EQ(MODE_GET, 160);
  EXPECT_EQ(MODE_GETNEXT, 161);
}

TEST(AServedRequest, IsCheckedInBothReservePhases) {
  NetSNMPBoolNodeData truth = Bool(false, eNodeAccessReadWrite);
  NetSNMPIntNodeData readOnly = Int(7, eNodeAccessReadOnly);
  for (const int phase : {MODE_SET_RESERVE1, MODE_SET_RESERVE2}) {
    const auto reserve = [phase](const Varbind& varbind,
                                 NetSNMPNodeData& value) {
      return NetSNMP::handle_snmp_request(varbind, &value, phase);
    };
    EXPECT_EQ(reserve(Varbind::Integer(2), truth), 0);
    EXPECT_EQ(reserve(Varbind::Integer(3), truth), 3);
    EXPECT_EQ(reserve(Varbind::Integer(3), readOnly), 17);
    EXPECT_EQ(reserve(Varbind::Integer(3), *Untyped(0)), 3);
    EXPECT_EQ(reserve(Varbind::Integer(3), *Untyped(7)), 2);
  }
}

TEST(AServedRequest, PassesTheActionPhaseUnchecked) {
  NetSNMPIntNodeData readOnly = Int(7, eNodeAccessReadOnly);
  EXPECT_EQ(NetSNMP::handle_snmp_request(Varbind::WithoutValue(), &readOnly,
                                         MODE_SET_ACTION),
            0);
}

TEST(AServedRequest, IsNotUndone) {
  int number = 7;
  NetSNMPIntNodeData value(&number, eNodeAccessReadWrite);
  const Varbind varbind = Varbind::Integer(42);
  NetSNMP::handle_snmp_request(varbind, &value, MODE_SET_COMMIT);
  EXPECT_EQ(NetSNMP::handle_snmp_request(varbind, &value, MODE_SET_UNDO), 3);
  EXPECT_EQ(number, 42);
}

TEST(AServedRequest, ReadsAnUntypedValueAsNull) {
  const Varbind varbind = Varbind::Integer(42);
  EXPECT_EQ(NetSNMP::handle_snmp_request(varbind, Untyped(1).get(), MODE_GET),
            0);
  EXPECT_EQ(varbind->type, ASN_NULL);
  EXPECT_EQ(varbind->val_len, 0U);
}

TEST(AServedRequest, PassesOnThatTheAgentLibraryCouldNotCopyTheValue) {
  NetSNMPIntNodeData value(nullptr, eNodeAccessReadOnly);
  for (const int mode : {MODE_GET, MODE_GETNEXT}) {
    const Varbind varbind = Varbind::Integer(42);
    const Varbind same = Varbind::Integer(42);
    EXPECT_EQ(NetSNMP::handle_snmp_request(varbind, &value, mode),
              snmp_set_var_typed_value(same, ASN_INTEGER, nullptr, 4));
  }
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

}  // namespace
