// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTrapNode.h"

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"

namespace {

// Frees all variables but the first, which is snmpTrapOID.0. The next link is
// the first field of a variable, so the head stands for the list behind it.
void CutBack(variable_list* list) {
  if (list != nullptr) {
    NetSNMP::delete_snmp_variable_list(&list->next_variable);
  }
}

}  // namespace

NetSNMPTrapNode::NetSNMPTrapNode(unsigned long* oid, unsigned int oidLen,
                                 const std::string& name)
    : NetSNMPTrapNode(NetSNMPAgentGuard(), oid, oidLen, name) {}

NetSNMPTrapNode::NetSNMPTrapNode(const NetSNMPAgentGuard&, unsigned long* oid,
                                 unsigned int oidLen, const std::string& name)
    : NetSNMPNode(oid, oidLen, name), trapVarList_(nullptr) {
  NetSNMP::add_snmp_varlist_variable(
      &trapVarList_, objid_snmptrap, OID_LENGTH(objid_snmptrap), ASN_OBJECT_ID,
      reinterpret_cast<unsigned char*>(nodeOID_),
      nodeOIDLen_ * static_cast<unsigned int>(sizeof(*nodeOID_)));
  NetSNMPTrapNode::RegisterNode();
}

NetSNMPTrapNode::~NetSNMPTrapNode() {
  const NetSNMPAgentGuard guard;
  NetSNMP::delete_snmp_variable_list(&trapVarList_);
  LeaveRegistry();
}

bool NetSNMPTrapNode::RegisterNode() { return mapped_; }

bool NetSNMPTrapNode::AddDataObject(NetSNMPDataNode* node) {
  dataObjects_.push_back(node);
  return true;
}

bool NetSNMPTrapNode::TriggerV2Trap() {
  const NetSNMPAgentGuard guard;
  bool complete = false;
  if (SubAgentConnected()) {
    CutBack(trapVarList_);
    for (NetSNMPDataNode*& node : dataObjects_) {
      complete = AddDataObjectToTrap(node);
      if (!complete) break;
      // No longer collected, also if an override of the next one throws.
      node = nullptr;
    }
    if (complete) NetSNMP::send_trap(trapVarList_);
  }
  dataObjects_.clear();
  return complete;
}

bool NetSNMPTrapNode::TriggerV2Trap(NetSNMPDataNode* node) {
  const NetSNMPAgentGuard guard;
  bool complete = false;
  if (SubAgentConnected()) {
    CutBack(trapVarList_);
    complete = AddDataObjectToTrap(node);
    if (complete) NetSNMP::send_trap(trapVarList_);
  }
  dataObjects_.clear();
  return complete;
}

bool NetSNMPTrapNode::AddDataObjectToTrap(NetSNMPDataNode* node) {
  if (trapVarList_ == nullptr || node == nullptr ||
      node->nodeData_ == nullptr) {
    return false;
  }
  return NetSNMP::add_snmp_varlist_variable(&trapVarList_, node->NodeOID(),
                                            node->NodeOIDLen(),
                                            node->nodeData_) != nullptr;
}

int NetSNMPTrapNode::DataVariableCount() const {
  return static_cast<int>(dataObjects_.size());
}
