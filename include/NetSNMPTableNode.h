// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPTABLENODE_H_
#define SNMPSUBAGENT_NETSNMPTABLENODE_H_

#include <string>
#include <vector>

#include "NetSNMPNode.h"
#include "NetSNMPNodeData.h"
#include "NetSNMPTrapTrigger.h"
#include "SnmpSubAgentExport.h"

class NetSNMPAgentGuard;
class NetSNMPTableEntryNode;
class NetSNMPTableRow;
struct netsnmp_agent_request_info_s;
struct netsnmp_handler_registration_s;
struct netsnmp_iterator_info_s;
struct netsnmp_mib_handler_s;
struct netsnmp_request_info_s;
struct variable_list;

// A conceptual table (RFC 2578) whose rows the application keeps in a
// NetSNMPTableEntryNode, served through the agent library's table iterator.
//
// Managers see the table once the node is registered and a store with an index
// template that is not empty is attached. The index columns themselves are not
// accessible.
//
// A SET of a cell works on a copy of the row: the row in the store keeps its
// values. Bind the cell to a variable to learn of the new value, or name a
// trap; to show it, store the row again with AddRow(). The callback is not
// called.
//
// The iterator is registered only once: after UnregisterNode() managers do not
// see the table any more. After a reconnection use NetSNMPNode::RegisterMibs(),
// not ReregisterMibs().
//
// Threads: as NetSNMPNode; rows as NetSNMPTableEntryNode.
class SNMPSUBAGENT_EXPORT NetSNMPTableNode : public NetSNMPNode,
                                             public NetSNMPTrapTrigger {
 public:
  // `oid` is that of the table object, `oidLen` its length in sub-identifiers.
  // Of `accessData` only the access mode counts: that of the whole table.
  // `trapNodeName` names the trap that a SET of a cell fires.
  NetSNMPTableNode(unsigned long* oid, unsigned int oidLen,
                   const std::string& name, const NetSNMPNodeData& accessData,
                   void (*callback)(NetSNMPDataNode*),
                   const std::string& trapNodeName);

  // Withdraws the table. The store is not deleted.
  ~NetSNMPTableNode() override;

  // Returns whether the node is registered now. Without a store it is, but
  // managers do not see it.
  bool RegisterNode() override;
  void UnregisterNode() override;

  // Registers the iterator, once, when the node is registered and a store is
  // attached.
  void RegisterEntryNode();

  // Attaches a store, which is borrowed, and registers the iterator. Only the
  // first call has an effect.
  void TableEntryNode(NetSNMPTableEntryNode* entry);

  // The operations of the store; without one they return false, false, null and
  // 0 and change nothing.
  bool AddRow(const std::vector<NetSNMPNodeData*>& values);
  bool RemoveRow(const std::string& rowName);
  std::vector<NetSNMPNodeData*>* GetRow(const std::string& rowName);
  int GetRowName(const std::vector<NetSNMPNodeData*>& values,
                 std::string& rowName) const;

  NetSNMPNodeData accessData_;
  // The agent library's; null when not registered.
  netsnmp_handler_registration_s* handlerRegistration_;
  netsnmp_iterator_info_s* iteratorInfo_;  // owned
  NetSNMPTableEntryNode* entryNode_;       // borrowed
  bool iteratorRegistered_;                // never false again

 private:
  // Built under one guard; see NetSNMPNode.
  NetSNMPTableNode(const NetSNMPAgentGuard& guard, unsigned long* oid,
                   unsigned int oidLen, const std::string& name,
                   const NetSNMPNodeData& accessData,
                   void (*callback)(NetSNMPDataNode*),
                   const std::string& trapNodeName);

  // Withdraws the table. Returns the agent library's status.
  int Withdraw();

  // Releases a registration that never reached the agent library.
  void ForgetRegistration();

  // The registration that the agent library has. Unlike handlerRegistration_,
  // it is set until it is withdrawn: one left behind while disconnected comes
  // back with the connection.
  netsnmp_handler_registration_s* liveRegistration_;
};

// The agent library's request handler of every iterator table. Returns an SNMP
// error number (RFC 3416).
SNMPSUBAGENT_EXPORT int var_table_handler(
    netsnmp_mib_handler_s* handler,
    netsnmp_handler_registration_s* registration,
    netsnmp_agent_request_info_s* requestInfo,
    netsnmp_request_info_s* requests);

// The iterator's hooks: write the indexes of the first or next row into
// `indexData` and return it, or null if there is no row. The loop context is
// the store, the data context the stored row.
SNMPSUBAGENT_EXPORT variable_list* table_get_first_data_point(
    void** loopContext, void** dataContext, variable_list* indexData,
    netsnmp_iterator_info_s* info);
SNMPSUBAGENT_EXPORT variable_list* table_get_next_data_point(
    void** loopContext, void** dataContext, variable_list* indexData,
    netsnmp_iterator_info_s* info);

// Writes the index values of `row` into the varbinds of `indexData`, side by
// side, until either ends.
SNMPSUBAGENT_EXPORT void set_data_point_indices(NetSNMPTableRow& row,
                                                variable_list* indexData);

#endif  // SNMPSUBAGENT_NETSNMPTABLENODE_H_
