// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_RANDOMREQUESTS_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_RANDOMREQUESTS_H_

#include <deque>
#include <vector>

#include "TablePair.h"
#include "support/Random.h"
#include "testkit/agentx/Pdu.h"

// Requests of one to five varbinds for tables, as the fast way serves them: for
// rows that exist, for their neighbours, and for OIDs that no manager would
// request.
class RandomRequests {
 public:
  // `tables` and `random` are borrowed.
  RandomRequests(const std::deque<TablePair>& tables, Random& random)
      : tables_(tables), random_(random) {}

  // A GET, GETNEXT or GETBULK.
  testkit::agentx::Body Read();

  // What a SET is to write.
  std::vector<testkit::agentx::Varbind> Write();

 private:
  testkit::agentx::Oid Name();
  testkit::agentx::Oid Index(const TablePair& table);
  testkit::agentx::SearchRange Range();
  std::vector<testkit::agentx::SearchRange> Ranges();
  testkit::agentx::Value Value();

  const std::deque<TablePair>& tables_;
  Random& random_;
};

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_RANDOMREQUESTS_H_
