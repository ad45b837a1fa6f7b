// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_LOCALAGENT_H_
#define SNMPSUBAGENT_TESTS_LOCALAGENT_H_

#include "NetSNMP.h"
#include "support/Oid.h"

// The agent library of this process, in the subagent's role but without a
// session: registrations are real ones and end in its own tables.
class LocalAgent {
 public:
  LocalAgent();

  // Withdraws what is still registered under the OID of the tests.
  ~LocalAgent();

  LocalAgent(const LocalAgent&) = delete;
  LocalAgent& operator=(const LocalAgent&) = delete;

  // What is registered at exactly `oid`; null if nothing is.
  static netsnmp_handler_registration* RegistrationAt(const Oid& oid);
};

#endif  // SNMPSUBAGENT_TESTS_LOCALAGENT_H_
