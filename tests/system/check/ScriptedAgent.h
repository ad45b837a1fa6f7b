// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_CHECK_SCRIPTEDAGENT_H_
#define SNMPSUBAGENT_TESTS_CHECK_SCRIPTEDAGENT_H_

#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "check/CheckMib.h"
#include "check/Value.h"
#include "testkit/LoopbackPort.h"

namespace check = snmpsubagent::check;
using snmpsubagent::check::operator+;

// The MIB that these tests know.
inline const check::Oid kModule = {1, 3, 6, 1, 4, 1, 32473, 77};
check::Oid ScalarName(oid number);  // its instance
check::Oid CellName(oid table, oid column, const check::Oid& row);

check::Value Integer(long number);
check::Value Number(u_char type, long number);
check::Value Text(const std::string& octets);

// An SNMP agent with any faults, on a loopback port: it serves a map, unless
// its functions say something else. It checks nothing of a SET by itself.
//
// Threads: its functions are called on another one.
class ScriptedAgent {
 public:
  using Objects = std::map<check::Oid, check::Value>;

  ScriptedAgent();
  ~ScriptedAgent();
  ScriptedAgent(const ScriptedAgent&) = delete;
  ScriptedAgent& operator=(const ScriptedAgent&) = delete;

  // From here on, requests are answered. All below is to be set before.
  void Start();

  check::Peer Peer() const;

  Objects objects;
  // What GET answers with, if not what `objects` has.
  std::function<std::optional<check::Value>(const check::Oid&)> get;
  // Where GETNEXT goes, if not to the next of `objects`.
  std::function<std::optional<check::Varbind>(const check::Oid&)> next;
  // The error-status of a request; 0 to answer it. -1 for no response at all.
  std::function<long(int command, const std::vector<check::Varbind>&)> error;
  // Stores what a SET has brought, if not just into `objects`.
  std::function<void(const std::vector<check::Varbind>&)> store;

 private:
  static int OnPdu(int operation, netsnmp_session*, int, netsnmp_pdu* pdu,
                   void* agent);
  void Serve();
  void Answer(const netsnmp_pdu& request);
  std::vector<check::Varbind> AnswerTo(
      const netsnmp_pdu& request, const std::vector<check::Varbind>& asked);
  check::Value Get(const check::Oid& name) const;
  check::Varbind Next(const check::Oid& name) const;

  testkit::LoopbackPort port_;
  void* session_ = nullptr;
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

#endif  // SNMPSUBAGENT_TESTS_CHECK_SCRIPTEDAGENT_H_
