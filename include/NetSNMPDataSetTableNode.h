// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPDATASETTABLENODE_H_
#define SNMPSUBAGENT_NETSNMPDATASETTABLENODE_H_

#include <string>
#include <vector>

#include "NetSNMPNode.h"
#include "NetSNMPNodeData.h"
#include "SnmpSubAgentExport.h"

class NetSNMPAgentGuard;
struct netsnmp_agent_request_info_s;
struct netsnmp_handler_registration_s;
struct netsnmp_mib_handler_s;
struct netsnmp_request_info_s;
struct netsnmp_table_data_set_s;

// A table whose rows are copied into a dataset of the agent library. Managers
// may create rows by SET.
//
// A row has one index and one column that is filled, column 2, with the row's
// last value. For more columns use a NetSNMPTableNode.
//
// The registration is never withdrawn: the table stays, empty, after its node
// is deleted, and the agent library registers it again with each session.
//
// Threads: as NetSNMPNode. AddRow() takes the lock of NetSNMPAgentGuard.
class SNMPSUBAGENT_EXPORT NetSNMPDataSetTableNode : public NetSNMPNode {
 public:
  // `oid` is that of the table object, `oidLen` its length in sub-identifiers.
  // Of `accessData` only the access mode counts. `columns` has one value for
  // each column: the first describes the index, the others give columns 2, 3,
  // ... their types and whether a manager may write them.
  NetSNMPDataSetTableNode(unsigned long* oid, unsigned int oidLen,
                          const std::string& name,
                          const NetSNMPNodeData& accessData,
                          const std::vector<NetSNMPNodeData*>& columns);

  // Removes all rows; those that a SET is using as soon as it has ended.
  ~NetSNMPDataSetTableNode() override;

  // Returns whether the node is registered now. Logs nothing.
  bool RegisterNode() override;

  // Whether `values` has as many elements as there are columns, and each has
  // its column's type.
  virtual bool ValidateRow(const std::vector<NetSNMPNodeData*>& values) const;

  // Copies a row into the dataset: its first value is the index, its last one
  // column 2. Returns false if the node was never registered or the row is not
  // valid. A row whose index exists already is ignored, and the result is true.
  bool AddRow(const std::vector<NetSNMPNodeData*>& values);

  netsnmp_table_data_set_s* dataset_;  // null before the first registration
  NetSNMPNodeData accessData_;
  std::vector<NetSNMPNodeData*> columnTemplate_;  // owned

 private:
  // Built under one guard; see NetSNMPNode.
  NetSNMPDataSetTableNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                          unsigned int oidLen, const std::string& name,
                          const NetSNMPNodeData& accessData,
                          const std::vector<NetSNMPNodeData*>& columns);

  // Makes a new dataset with the columns of the template.
  void CreateDataset();

  // Gives up the dataset, and frees it unless it is registered.
  void ReleaseDataset();

  // That of the dataset, which then belongs to the agent library; null before.
  netsnmp_handler_registration_s* registration_;
};

// The request handler of every dataset table. The agent library's dataset
// serves the requests; this handler tracks SETs, and refuses one without memory
// for that (resourceUnavailable, RFC 3416). Returns 0.
SNMPSUBAGENT_EXPORT int var_dataset_table_handler(
    netsnmp_mib_handler_s* handler,
    netsnmp_handler_registration_s* registration,
    netsnmp_agent_request_info_s* requestInfo,
    netsnmp_request_info_s* requests);

#endif  // SNMPSUBAGENT_NETSNMPDATASETTABLENODE_H_
