// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "CellTest.h"
#include "NetSNMPTrapNode.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class TableHandler : public CellTest {};

TEST_F(TableHandler, AnswersWithTheCellOfEachColumn) {
  for (const int mode : {MODE_GET, MODE_GETNEXT}) {
    const std::pair<unsigned int, long> integers[] = {
        {1, 1}, {2, 2}, {3, 10}, {5, 1}};
    for (const auto& [column, number] : integers) {
      CellRequest request(CellOid(column, 1, 2));
      request.Choose(PortRow(), column);
      EXPECT_EQ(request.HandleAs("portTable", mode), SNMP_ERR_NOERROR);
      EXPECT_EQ(request.Status(), SNMP_ERR_NOERROR);
      EXPECT_EQ(request.Type(), column == 2 ? ASN_UNSIGNED : ASN_INTEGER);
      EXPECT_EQ(request.Integer(), number) << "column " << column;
    }
    CellRequest label(CellOid(4, 1, 2));
    label.Choose(PortRow(), 4);
    EXPECT_EQ(label.HandleAs("portTable", mode), SNMP_ERR_NOERROR);
    EXPECT_EQ(label.Type(), ASN_OCTET_STR);
    EXPECT_EQ(label.Text(), "uplink");
  }
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(TableHandler, CountsColumnsAlongIndexesThenData) {
  ASSERT_TRUE(store_->AddRow(
      Values(Int(30), Index(Int(3)), Int(40), Index(Unsigned(4)))));
  const std::pair<unsigned int, long> cells[] = {
      {1, 3}, {2, 4}, {3, 30}, {4, 40}};
  for (const auto& [column, number] : cells) {
    CellRequest request(CellOid(column, 3, 4));
    request.Choose(store_->GetRow("port.3.4"), column);
    EXPECT_EQ(request.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
    EXPECT_EQ(request.Integer(), number) << "column " << column;
  }
}

TEST_F(TableHandler, AnswersNoSuchInstanceForAColumnThatTheRowLacks) {
  for (const unsigned int column : {0U, 6U, 7U, 4294967295U}) {
    CellRequest request(CellOid(3, 1, 2));
    request.Choose(PortRow(), column);
    EXPECT_EQ(request.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
    EXPECT_EQ(request.Type(), SNMP_NOSUCHINSTANCE) << "column " << column;
    EXPECT_EQ(request.Name(), CellOid(3, 1, 2));
    EXPECT_EQ(request.Text(), "");
  }
}

TEST_F(TableHandler, AnswersNoSuchInstanceWithoutTableInformation) {
  CellRequest request(CellOid(3, 1, 2));
  EXPECT_EQ(request.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
  EXPECT_EQ(request.Type(), SNMP_NOSUCHINSTANCE);
}

TEST_F(TableHandler, AnswersNoSuchInstanceWithoutARow) {
  CellRequest absent(CellOid(3, 9, 9));
  absent.Choose(nullptr, 3);
  CellRequest present(CellOid(3, 1, 2));
  present.Choose(PortRow(), 3);
  absent.Append(present);
  EXPECT_EQ(absent.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
  EXPECT_EQ(absent.Type(), SNMP_NOSUCHINSTANCE);
  EXPECT_TRUE(absent.Processed());
  EXPECT_EQ(present.Integer(), 10);
}

TEST_F(TableHandler, TouchesNoRowThatHasGone) {
  CellRequest removed(CellOid(3, 1, 2));
  removed.Choose(PortRow(), 3);
  ASSERT_TRUE(store_->RemoveRow("port.1.2"));
  EXPECT_EQ(removed.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
  EXPECT_EQ(removed.Type(), SNMP_NOSUCHINSTANCE);
}

TEST_F(TableHandler, TouchesNoRowOfAStoreThatHasGone) {
  CellRequest request(CellOid(3, 1, 2));
  request.Choose(PortRow(), 3);
  delete store_;
  EXPECT_EQ(request.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
  EXPECT_EQ(request.Type(), SNMP_NOSUCHINSTANCE);
}

TEST_F(TableHandler, PassesOverRequestsThatAreProcessed) {
  CellRequest processed(CellOid(3, 1, 2));
  processed.Choose(PortRow(), 3);
  processed.MarkProcessed();
  CellRequest open(CellOid(3, 1, 2));
  open.Choose(PortRow(), 3);
  processed.Append(open);
  EXPECT_EQ(processed.HandleAs("portTable", MODE_GET), SNMP_ERR_NOERROR);
  EXPECT_EQ(processed.Type(), ASN_NULL);
  EXPECT_EQ(open.Integer(), 10);
}

TEST_F(TableHandler, ReturnsTheResultOfTheLastCell) {
  CellRequest readOnly(CellOid(4, 1, 2));
  readOnly.Choose(PortRow(), 4);
  SpeedSet writable(PortRow(), 20);
  CellRequest absent(CellOid(3, 9, 9));
  absent.Choose(nullptr, 3);
  writable.Append(readOnly);
  readOnly.Append(absent);
  EXPECT_EQ(writable.HandleAs("portTable", MODE_SET_RESERVE1),
            SNMP_ERR_NOTWRITABLE);
  EXPECT_EQ(writable.Status(), SNMP_ERR_NOERROR);
  EXPECT_EQ(readOnly.Status(), SNMP_ERR_NOTWRITABLE);
  EXPECT_EQ(absent.Status(), SNMP_ERR_NOCREATION);
  EXPECT_EQ(absent.HandleAs("portTable", MODE_SET_RESERVE2), SNMP_ERR_NOERROR);
}

TEST_F(TableHandler, AnswersBadValueWithoutARegistry) {
  NetSNMPNode::DeleteNodeMap();
  CellRequest first(CellOid(3, 1, 2));
  CellRequest second(CellOid(3, 1, 2));
  first.Append(second);
  EXPECT_EQ(first.HandleAs("portTable", MODE_GET), SNMP_ERR_BADVALUE);
  EXPECT_EQ(first.Status(), SNMP_ERR_BADVALUE);
  EXPECT_FALSE(second.Processed());
}

TEST_F(TableHandler, AnswersBadValueUnderANameThatIsNoTable) {
  Oid oid = TestOid({0, 1});
  new NetSNMPTrapNode(oid.data(), Length(oid), "alarm");
  for (const char* name : {"unknown", "portStore", "alarm"}) {
    CellRequest first(CellOid(3, 1, 2));
    first.Choose(PortRow(), 3);
    CellRequest second(CellOid(3, 1, 2));
    second.Choose(PortRow(), 3);
    first.Append(second);
    EXPECT_EQ(first.HandleAs(name, MODE_GET), SNMP_ERR_BADVALUE) << name;
    EXPECT_EQ(first.Status(), SNMP_ERR_BADVALUE);
    EXPECT_EQ(second.Status(), SNMP_ERR_NOERROR);
    EXPECT_FALSE(second.Processed());
    EXPECT_EQ(second.Type(), ASN_NULL);
  }
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(TableHandler, EntersAnUnknownNameWithoutANode) {
  CellRequest request(CellOid(3, 1, 2));
  request.HandleAs("unknown", MODE_GET);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, Contains(Pair("unknown", nullptr)));
}

TEST_F(TableHandler, IsDoneAtOnceWithoutRequests) {
  char portTable[] = "portTable";
  char unknown[] = "unknown";
  netsnmp_agent_request_info info{};
  info.mode = MODE_GET;
  netsnmp_mib_handler handler{};
  handler.handler_name = portTable;
  EXPECT_EQ(var_table_handler(&handler, nullptr, &info, nullptr),
            SNMP_ERR_NOERROR);
  handler.handler_name = unknown;
  EXPECT_EQ(var_table_handler(&handler, nullptr, &info, nullptr),
            SNMP_ERR_BADVALUE);
}

}  // namespace
