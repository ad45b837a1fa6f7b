// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SENTTRAPS_H_
#define SNMPSUBAGENT_TESTS_SENTTRAPS_H_

#include <ostream>
#include <string>
#include <vector>

#include "NetSNMP.h"
#include "support/Oid.h"

// A variable of a notification.
struct TrapVariable {
  Oid name;
  unsigned char type;
  std::string bytes;
};

bool operator==(const TrapVariable& left, const TrapVariable& right);
std::ostream& operator<<(std::ostream& stream, const TrapVariable& variable);

// An integer as the agent library carries it.
TrapVariable IntegerVariable(const Oid& name, long value,
                             unsigned char type = ASN_INTEGER);
TrapVariable TextVariable(const Oid& name, const std::string& text);
// snmpTrapOID.0 of the notification `trap`.
TrapVariable TrapOidVariable(const Oid& trap);

// The variables of a list, one for one.
using TrapVariables = std::vector<TrapVariable>;
TrapVariables VariablesOf(const variable_list* list);

// Watches the notifications that the agent library sends while it lives.
class SentTraps {
 public:
  SentTraps();
  ~SentTraps();
  SentTraps(const SentTraps&) = delete;
  SentTraps& operator=(const SentTraps&) = delete;

  // Those since the last call. sysUpTime.0, which the agent library puts in
  // front, is left out.
  std::vector<TrapVariables> Take();

 private:
  static int Watch(int major, int minor, void* pdu, void* self);

  std::vector<TrapVariables> sent_;
};

#endif  // SNMPSUBAGENT_TESTS_SENTTRAPS_H_
