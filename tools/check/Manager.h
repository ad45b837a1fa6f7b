// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_MANAGER_H_
#define SNMPSUBAGENT_TOOLS_CHECK_MANAGER_H_

#include <cstddef>
#include <string>
#include <vector>

#include "check/CheckMib.h"
#include "check/Value.h"

namespace snmpsubagent::check {

struct Response {
  bool answered = false;
  long error = 0;         // error-status: SNMP_ERR_...
  std::size_t index = 0;  // of the varbind that it is about, from 1 on
  std::vector<Varbind> varbinds;

  bool Succeeded() const { return answered && error == 0; }
};

// "genErr"; "no response".
std::string ErrorText(const Response& response);
// "wrongType": error-status by its name in RFC 3416.
std::string ErrorName(long error);

// A manager on the agent library's session functions.
//
// Threads: one.
class Manager {
 public:
  // Throws CannotCheck if the address is none, or names no host.
  explicit Manager(const Peer& peer);
  ~Manager();
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  // One request each. Names are as many as a message holds.
  Response Get(const std::vector<Oid>& names);
  Response GetNext(const std::vector<Oid>& names);
  Response GetBulk(const Oid& name, long maxRepetitions);
  Response Set(const std::vector<Varbind>& varbinds);

 private:
  Response Send(netsnmp_pdu* request);

  void* session_ = nullptr;
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_MANAGER_H_
