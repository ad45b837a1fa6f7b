// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SERVEDTABLETEST_H_
#define SNMPSUBAGENT_TESTS_SERVEDTABLETEST_H_

#include <string>
#include <vector>

#include "support/CellRequest.h"
#include "support/TableTest.h"

// A table behind all the handlers that the agent library puts before it.
class ServedTableTest : public TableTest {
 protected:
  // Lets the table answer the request.
  int Serve(CellRequest& request, int mode) const {
    return request.Serve(LocalAgent::RegistrationAt(kPortTableOid), mode);
  }

  // What a manager walks through: "column.unit.slot = number" of each cell.
  static std::vector<std::string> WalkFrom(const Oid& tableOid) {
    std::vector<std::string> cells;
    for (Oid oid = tableOid;;) {
      CellRequest next(oid);
      next.Serve(LocalAgent::RegistrationAt(tableOid), MODE_GETNEXT);
      if (next.Type() == ASN_NULL) return cells;
      oid = next.Name();
      // The agent library asks again where a row lacks the column.
      if (next.Type() == ASN_PRIV_RETRY) continue;
      cells.push_back(InstanceOf(oid) + " = " + std::to_string(next.Integer()));
    }
  }

  std::vector<std::string> Walk() const { return WalkFrom(kPortTableOid); }

  std::vector<std::string> WalkedRows() const {
    std::vector<std::string> rows = Walk();
    for (std::string& row : rows) row = row.substr(2, row.find(' ') - 2);
    return rows;
  }

  // The sub-identifiers behind the OID of the entry.
  static std::string InstanceOf(const Oid& oid) {
    std::string instance;
    for (std::size_t position = TestOid({2, 1}).size(); position < oid.size();
         ++position) {
      instance += (instance.empty() ? "" : ".") + std::to_string(oid[position]);
    }
    return instance;
  }

  void AddSlot(int unit, unsigned int slot, int number = 0) {
    EXPECT_TRUE(store_->AddRow(
        Values(Index(Int(unit)), Index(Unsigned(slot)), Int(number))));
  }

  unsigned char TypeOfGet(const Oid& oid) const {
    CellRequest get(oid);
    Serve(get, MODE_GET);
    return get.Type();
  }

  NetSNMPTableNode* const table_ = BuildPortTable();
  // One column behind the indexes.
  NetSNMPTableEntryNode* const store_ =
      BuildStore("portStore", Values(Int(0), Unsigned(0)), 3, table_);
};

#endif  // SNMPSUBAGENT_TESTS_SERVEDTABLETEST_H_
