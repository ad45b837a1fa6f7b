// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_QUIETAGENT_H_
#define SNMPSUBAGENT_TESTS_QUIETAGENT_H_

#include "NetSNMP.h"
#include "support/LocalAgent.h"

// The agent of a process, whose lines about odd input would be millions.
struct QuietAgent {
  QuietAgent() { snmp_disable_log(); }

  const LocalAgent agent;
};

#endif  // SNMPSUBAGENT_TESTS_QUIETAGENT_H_
