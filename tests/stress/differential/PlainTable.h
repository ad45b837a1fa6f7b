// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_PLAINTABLE_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_PLAINTABLE_H_

#include <string>
#include <vector>

// clang-format off
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
#include <net-snmp/agent/net-snmp-agent-includes.h>
// clang-format on

class NetSNMPTableEntryNode;

// An iterator table as NetSNMPTableNode describes itself, made of the agent
// library's calls and the library's public operations, without any shortcut:
// the hooks walk all rows of the store for every request, and the handler
// builds the working row and the transient node each time.
class PlainTable {
 public:
  // `store` is borrowed, as is `trapName`.
  PlainTable(const std::vector<unsigned long>& oid, std::string name,
             NetSNMPTableEntryNode& store, std::string trapName);

  // Registers the table with the agent library. Requires: the session is up.
  void Register();

 private:
  static variable_list* GetFirst(void** loopContext, void** dataContext,
                                 variable_list* indexes,
                                 netsnmp_iterator_info* info);
  static variable_list* GetNext(void** loopContext, void** dataContext,
                                variable_list* indexes,
                                netsnmp_iterator_info* info);
  static int Handle(netsnmp_mib_handler* handler,
                    netsnmp_handler_registration* registration,
                    netsnmp_agent_request_info* info,
                    netsnmp_request_info* requests);
  // The status of a request; 129 (noSuchInstance) if there is no such cell.
  int Serve(const netsnmp_agent_request_info& info,
            netsnmp_request_info* request) const;

  std::vector<unsigned long> oid_;
  std::string name_;
  NetSNMPTableEntryNode& store_;
  std::string trapName_;
};

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_PLAINTABLE_H_
