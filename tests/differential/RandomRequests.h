// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_RANDOMREQUESTS_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_RANDOMREQUESTS_H_

#include <deque>
#include <vector>

#include "Random.h"
#include "TablePair.h"
#include "agentx/Pdu.h"

// Requests of one to five varbinds for tables, as the fast way serves them:
// for rows that there are, for their neighbours, and for what no manager in its
// right mind would ask.
class RandomRequests {
 public:
  // `tables` and `random` are borrowed.
  RandomRequests(const std::deque<TablePair>& tables, Random& random)
      : tables_(tables), random_(random) {}

  // A GET, GETNEXT or GETBULK.
  agentx::Body Read();

  // What a SET is to write.
  std::vector<agentx::Varbind> Write();

 private:
  agentx::Oid Name();
  agentx::Oid Index(const TablePair& table);
  agentx::SearchRange Range();
  std::vector<agentx::SearchRange> Ranges();
  agentx::Value Value();

  const std::deque<TablePair>& tables_;
  Random& random_;
};

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_RANDOMREQUESTS_H_
