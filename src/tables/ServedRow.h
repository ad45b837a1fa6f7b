// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_SERVEDROW_H_
#define SNMPSUBAGENT_TABLES_SERVEDROW_H_

#include <string>
#include <vector>

class NetSNMPNodeData;
class NetSNMPTableEntryNode;
struct netsnmp_agent_request_info_s;
struct netsnmp_request_info_s;

// The row that the agent library's table iterator chose for a request.
class ServedRow {
 public:
  // The row, or null if the iterator found none, or the application has
  // replaced or removed it since: between the phases of a SET it may.
  static std::vector<NetSNMPNodeData*>* Of(
      const NetSNMPTableEntryNode& entry,
      const netsnmp_agent_request_info_s& requestInfo,
      netsnmp_request_info_s* request);

  // Its row key, in `scratch` if it has to be made; else in the store, which
  // keeps it while the row is there.
  static const std::string& KeyOf(const NetSNMPTableEntryNode& entry,
                                  const std::vector<NetSNMPNodeData*>& row,
                                  std::string& scratch);

 private:
  static bool IsStored(const NetSNMPTableEntryNode& entry, const void* row);
};

#endif  // SNMPSUBAGENT_TABLES_SERVEDROW_H_
