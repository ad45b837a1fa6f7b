// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_CELLOWNER_H_
#define SNMPSUBAGENT_TABLES_CELLOWNER_H_

#include <map>
#include <string>

#include "nodes/Watch.h"

class NetSNMPDataNode;
class NetSNMPNode;
class NetSNMPNodeData;
class NetSNMPTableNode;
struct variable_list;

// The scalar that owns a cell while it is served: it fires the table's trap,
// and is in the registry under the row key.
class CellOwner {
 public:
  CellOwner(const NetSNMPTableNode& table, const std::string& rowKey,
            const variable_list& varbind, const NetSNMPNodeData& cell);
  ~CellOwner();
  CellOwner(const CellOwner&) = delete;
  CellOwner& operator=(const CellOwner&) = delete;

  NetSNMPDataNode* Get() const { return node_; }

 private:
  // Takes `node` out of the registry for its lifetime if it has that name, so
  // that a node of the same name, built meanwhile, does not destroy it.
  class KeptAside {
   public:
    KeptAside(const NetSNMPNode& node, const std::string& name);
    ~KeptAside();
    KeptAside(const KeptAside&) = delete;
    KeptAside& operator=(const KeptAside&) = delete;

   private:
    std::map<std::string, NetSNMPNode*>::node_type entry_;
  };

  // The table being served and its store survive a row key that is their name.
  const KeptAside table_;
  const KeptAside store_;
  NetSNMPDataNode* const node_;
  const Watch watch_;
};

#endif  // SNMPSUBAGENT_TABLES_CELLOWNER_H_
