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

// A table whose rows the agent library keeps, in a dataset: rows are copied in,
// and managers may create rows by SET.
//
// A row has one index and one column that is filled, column 2, which ends up
// with the row's last value. A table with several columns of its own values is
// a NetSNMPTableNode.
//
// The registration is never withdrawn: it stays, empty, when the node is
// deleted, until the connection to the master agent ends.
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

  // Removes all rows; those that a SET is working on when it has ended.
  ~NetSNMPDataSetTableNode() override;

  // Returns whether the node is registered now. Logs nothing.
  bool RegisterNode() override;

  // Whether `values` has as many elements as there are columns, and each has
  // its column's type.
  virtual bool ValidateRow(const std::vector<NetSNMPNodeData*>& values) const;

  // Copies a row into the dataset: its first value is the index, its last one
  // column 2. Returns false if the node was never registered or the row is not
  // valid. A row whose index is there already is not taken, and the result is
  // true all the same.
  bool AddRow(const std::vector<NetSNMPNodeData*>& values);

  netsnmp_table_data_set_s* dataset_;  // null until it was made
  NetSNMPNodeData accessData_;
  std::vector<NetSNMPNodeData*> columnTemplate_;  // owned

 private:
  // Constructed under one guard, so that no other thread meets a half-built
  // node in the registry, and from copies, since the originals may belong to
  // the older node that this one destroys.
  NetSNMPDataSetTableNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                          unsigned int oidLen, const std::string& name,
                          const NetSNMPNodeData& accessData,
                          const std::vector<NetSNMPNodeData*>& columns);

  // Makes a new dataset with the columns of the template.
  void CreateDataset();

  // Gives up the dataset, and frees it unless it is registered.
  void ReleaseDataset();

  netsnmp_table_data_set_s* heldDataset_;  // registered; the agent library's
};

// The request handler of every dataset table: answers nothing, because the
// agent library's dataset does. It notes when a SET begins, and refuses it
// without memory for that (resourceUnavailable, RFC 3416). Returns 0.
SNMPSUBAGENT_EXPORT int var_dataset_table_handler(
    netsnmp_mib_handler_s* handler,
    netsnmp_handler_registration_s* registration,
    netsnmp_agent_request_info_s* requestInfo,
    netsnmp_request_info_s* requests);

#endif  // SNMPSUBAGENT_NETSNMPDATASETTABLENODE_H_
