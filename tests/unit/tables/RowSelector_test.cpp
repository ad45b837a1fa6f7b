// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowSelector.h"

#include "NetSNMPAgentGuard.h"
#include "support/EventfulValue.h"
#include "support/ServedTableTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The rows that the iterator has looked at or given to a request.
int rowsOfIterator = 0;

// The mode that a handler behind the selector has seen last.
int seenMode = 0;

int SeeMode(netsnmp_mib_handler* handler, netsnmp_handler_registration* table,
            netsnmp_agent_request_info* info, netsnmp_request_info* requests) {
  seenMode = info->mode;
  return netsnmp_call_next_handler(handler, table, info, requests);
}

variable_list* NoDataPoint(void**, void**, variable_list*,
                           netsnmp_iterator_info*) {
  return nullptr;
}

// Before the iterator of a table with the slots 1.1 and 2.1.
class ARowSelector : public ServedTableTest {
 protected:
  ARowSelector() {
    for (const int unit : {1, 2}) AddSlot(unit, 1, unit);
    table_->iteratorInfo_->free_data_context =
        [](void*, netsnmp_iterator_info*) { ++rowsOfIterator; };
  }

  // Whether the iterator takes part in serving the request.
  bool Iterates(const Oid& oid, int mode) const {
    rowsOfIterator = 0;
    {
      CellRequest request(oid);
      if (mode == MODE_SET_RESERVE1) request.SetInteger(5);
      Serve(request, mode);
    }
    return rowsOfIterator > 0;
  }

  netsnmp_handler_registration* Registration() const {
    return LocalAgent::RegistrationAt(kPortTableOid);
  }

  // Puts a handler behind the selector or behind the iterator.
  void InjectBefore(const char* handler) {
    const NetSNMPAgentGuard guard;
    netsnmp_inject_handler_before(
        Registration(), netsnmp_create_handler("see_mode", SeeMode), handler);
    seenMode = 0;
  }
};

TEST_F(ARowSelector, StandsRightBeforeTheIterator) {
  const netsnmp_mib_handler* handler = Registration()->handler;
  while (handler != nullptr &&
         handler->handler_name != std::string("snmpsubagent_row_selector")) {
    handler = handler->next;
  }
  ASSERT_NE(handler, nullptr);
  EXPECT_STREQ(handler->next->handler_name, TABLE_ITERATOR_NAME);
}

TEST_F(ARowSelector, SparesTheIteratorForTheRowsThatItKnows) {
  EXPECT_FALSE(Iterates(CellOid(3, 1, 1), MODE_GET));
  EXPECT_FALSE(Iterates(CellOid(3, 1, 1), MODE_GETNEXT));
}

TEST_F(ARowSelector, LeavesTheChoiceToTheIteratorWhereItMustCompare) {
  EXPECT_TRUE(Iterates(kPortTableOid, MODE_GETNEXT));
  EXPECT_TRUE(Iterates(CellOid(3, 2, 1), MODE_GETNEXT));
  EXPECT_TRUE(Iterates(CellOid(3, 1, 1), MODE_SET_RESERVE1));
  store_->GetRow("port.2.1");
  EXPECT_TRUE(Iterates(CellOid(3, 1, 1), MODE_GET));
}

TEST_F(ARowSelector, AsksTheTablesHandlerForAGetAsTheIteratorDoes) {
  InjectBefore("portTable");
  CellRequest next(CellOid(3, 1, 1));
  Serve(next, MODE_GETNEXT);
  EXPECT_EQ(seenMode, MODE_GET);
  EXPECT_EQ(next.Name(), CellOid(3, 2, 1));
  EXPECT_EQ(next.Integer(), 2);
}

TEST_F(ARowSelector, PassesOverNoHandlerThatTheApplicationHasInjected) {
  InjectBefore(TABLE_ITERATOR_NAME);
  CellRequest next(CellOid(3, 1, 1));
  Serve(next, MODE_GETNEXT);
  EXPECT_EQ(seenMode, MODE_GETNEXT);
  EXPECT_EQ(next.Integer(), 2);
}

TEST_F(ARowSelector, GivesWayToHooksOfTheApplication) {
  table_->iteratorInfo_->get_first_data_point = NoDataPoint;
  EXPECT_EQ(TypeOfGet(CellOid(3, 1, 1)), SNMP_NOSUCHINSTANCE);
  EXPECT_THAT(Walk(), IsEmpty());
  table_->iteratorInfo_->get_first_data_point = table_get_first_data_point;
  EXPECT_THAT(Walk(), ElementsAre("3.1.1 = 1", "3.2.1 = 2"));
}

TEST_F(ARowSelector, HidesNoRowFromARequestWithinARequest) {
  const auto loseTheIndex = [this](const NetSNMPNodeData&) {
    store_->AddRow(Values(Index(Text("a")), Index(Int(9)), Index(Int(9))));
    CellRequest inner(CellOid(3, 2, 1));
    Serve(inner, MODE_GET);
    EXPECT_EQ(inner.Type(), ASN_INTEGER);
  };
  store_->AddRow(Values(Index(Int(4)), Index(Unsigned(1)),
                        EventfulValue(40, loseTheIndex)));
  CellRequest outer(CellOid(3, 4, 1));
  Serve(outer, MODE_GET);
  EXPECT_EQ(outer.Integer(), 40);
}

TEST_F(ARowSelector, LeavesTheCursorWhereTheIteratorDoes) {
  CellRequest get(CellOid(3, 1, 1));
  Serve(get, MODE_GET);
  EXPECT_EQ(store_->rowCursor_, store_->rows_.find("port.1.1"));
  CellRequest next(CellOid(3, 1, 1));
  Serve(next, MODE_GETNEXT);
  EXPECT_EQ(store_->rowCursor_, store_->rows_.end());
}

}  // namespace
