// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_CELLTEST_H_
#define SNMPSUBAGENT_TESTS_CELLTEST_H_

#include <string>

#include "support/CellRequest.h"
#include "support/TableTest.h"

// The cells of a table with the one port 1.2.
class CellTest : public TableTest {
 protected:
  CellTest() {
    store_->AddRow(Port(1, 2, 10));
    log_.Lines();
  }

  StoredRow* PortRow() const { return store_->GetRow("port.1.2"); }

  // A SET of the port's speed, before its first phase.
  struct SpeedSet : CellRequest {
    SpeedSet(StoredRow* row, long speed) : CellRequest(CellOid(3, 1, 2)) {
      Choose(row, 3);
      SetInteger(speed);
    }
    // Goes through the phases of a SET; returns the status of the last one.
    int Commit() {
      int status = 0;
      for (const int mode : {MODE_SET_RESERVE1, MODE_SET_RESERVE2,
                             MODE_SET_ACTION, MODE_SET_COMMIT}) {
        status = HandleAs("portTable", mode);
      }
      return status;
    }
  };

  NetSNMPTableNode* const table_ = BuildTable(
      kPortTableOid, "portTable", eNodeAccessReadWrite,
      [](NetSNMPDataNode*) { ADD_FAILURE() << "callback called"; },
      "portAlarm");
  NetSNMPTableEntryNode* const store_ = BuildPortStore(table_);
};

#endif  // SNMPSUBAGENT_TESTS_CELLTEST_H_
