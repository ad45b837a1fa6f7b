// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTableNode.h"

#include <algorithm>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "adapter/Deferred.h"
#include "adapter/InUse.h"
#include "adapter/Registration.h"
#include "nodes/NodeRegistration.h"
#include "nodes/Watch.h"
#include "tables/RowLookup.h"
#include "tables/RowSelector.h"
#include "tables/TableIterator.h"

NetSNMPTableNode::NetSNMPTableNode(unsigned long* oid, unsigned int oidLen,
                                   const std::string& name,
                                   const NetSNMPNodeData& accessData,
                                   void (*callback)(NetSNMPDataNode*),
                                   const std::string& trapNodeName)
    // In braces, so that the guard comes before the copies.
    : NetSNMPTableNode{NetSNMPAgentGuard(),
                       oid,
                       oidLen,
                       name,
                       NetSNMPNodeData(accessData),
                       callback,
                       std::string(trapNodeName)} {}

NetSNMPTableNode::NetSNMPTableNode(const NetSNMPAgentGuard&, unsigned long* oid,
                                   unsigned int oidLen, const std::string& name,
                                   const NetSNMPNodeData& accessData,
                                   void (*callback)(NetSNMPDataNode*),
                                   const std::string& trapNodeName)
    : NetSNMPNode(oid, oidLen, name),
      NetSNMPTrapTrigger(callback, trapNodeName),
      accessData_(eNodeDataVoid, eNodeAccessDefault, nullptr, nullptr),
      handlerRegistration_(nullptr),
      iteratorInfo_(nullptr),
      entryNode_(nullptr),
      iteratorRegistered_(false),
      liveRegistration_(nullptr) {
  accessData_.CopyData(accessData);
  NetSNMPTableNode::RegisterNode();
}

NetSNMPTableNode::~NetSNMPTableNode() {
  const NetSNMPAgentGuard guard;
  // First, since a callback may build a node of this name while the withdrawal
  // waits for the master agent.
  LeaveRegistry();
  NetSNMPTableNode::UnregisterNode();
  // Left with the agent library while disconnected, it would be served again
  // after the reconnection, without its node.
  if (liveRegistration_ != nullptr) Withdraw();
  NetSNMP::delete_snmp_table_iterator(iteratorInfo_);
  if (entryNode_ != nullptr) {
    auto& tables = RowLookup::Of(*entryNode_).tables;
    tables.erase(std::remove(tables.begin(), tables.end(), this), tables.end());
  }
}

bool NetSNMPTableNode::RegisterNode() {
  const NetSNMPAgentGuard guard;
  if (registered_ || !mapped_ || !SubAgentConnected()) return registered_;
  if (node_registration::MustWait(*this)) return registered_;
  const int created = NetSNMP::create_snmp_handler_registration(
      &handlerRegistration_, nodeName_.c_str(), var_table_handler, nodeOID_,
      nodeOIDLen_, accessData_.NodeHandlerModes());
  registered_ = NetSNMP::snmp_succeeded(created) != 0;
  if (!registered_) {
    node_registration::Log(*this, "Net-SNMP table node registration failed.");
    return false;
  }
  node_registration::Log(*this,
                         "Net-SNMP table node registration was successful.");
  const Watch watch(this);
  RegisterEntryNode();
  return watch.Alive() && registered_;
}

void NetSNMPTableNode::UnregisterNode() {
  const NetSNMPAgentGuard guard;
  if (!registered_) return;
  registered_ = false;
  if (!SubAgentConnected()) {
    node_registration::Log(
        *this,
        "Net-SNMP table node unregistration could not complete- disconnected "
        "subagent.");
  } else if (handlerRegistration_ != nullptr) {
    // One that never reached the agent library cannot be withdrawn from it,
    // and another node may have registered the same OID meanwhile.
    const Watch watch(this);
    const bool withdrawn = liveRegistration_ != nullptr &&
                           NetSNMP::snmp_succeeded(Withdraw()) != 0;
    if (!watch.Alive()) return;
    node_registration::Log(
        *this, withdrawn ? "Net-SNMP table node unregistration was successful."
                         : "Net-SNMP table node unregistration failed.");
  }
  ForgetRegistration();
}

void NetSNMPTableNode::RegisterEntryNode() {
  const NetSNMPAgentGuard guard;
  if (iteratorRegistered_ || entryNode_ == nullptr ||
      handlerRegistration_ == nullptr || !registered_) {
    return;
  }
  // That of a failed attempt.
  NetSNMP::delete_snmp_table_iterator(iteratorInfo_);
  iteratorInfo_ = table_iterator::NewInfo(*entryNode_, &nodeName_);
  if (iteratorInfo_ == nullptr) return;
  iteratorRegistered_ = true;
  liveRegistration_ = handlerRegistration_;
  const Watch watch(this);
  const int result = NetSNMP::register_snmp_table_iterator(handlerRegistration_,
                                                           iteratorInfo_);
  // It may have been deleted or withdrawn meanwhile.
  if (!watch.Alive() || liveRegistration_ == nullptr) return;
  iteratorRegistered_ = NetSNMP::snmp_succeeded(result) != 0;
  if (iteratorRegistered_) {
    row_selector::PutBeforeIterator(liveRegistration_);
    in_use::TrackSetsOf(liveRegistration_);
  } else {
    // What the agent library refuses, it has freed.
    handlerRegistration_ = nullptr;
    liveRegistration_ = nullptr;
  }
  node_registration::Log(
      *this, iteratorRegistered_
                 ? "Net-SNMP table iterator registration was successful."
                 : "Net-SNMP table iterator registration failed.");
}

void NetSNMPTableNode::TableEntryNode(NetSNMPTableEntryNode* entry) {
  const NetSNMPAgentGuard guard;
  if (entryNode_ != nullptr || entry == nullptr) return;
  RowLookup::Of(*entry).tables.push_back(this);
  entryNode_ = entry;
  RegisterEntryNode();
}

bool NetSNMPTableNode::AddRow(const std::vector<NetSNMPNodeData*>& values) {
  return entryNode_ != nullptr && entryNode_->AddRow(values);
}

bool NetSNMPTableNode::RemoveRow(const std::string& rowName) {
  return entryNode_ != nullptr && entryNode_->RemoveRow(rowName);
}

std::vector<NetSNMPNodeData*>* NetSNMPTableNode::GetRow(
    const std::string& rowName) {
  return entryNode_ == nullptr ? nullptr : entryNode_->GetRow(rowName);
}

int NetSNMPTableNode::GetRowName(const std::vector<NetSNMPNodeData*>& values,
                                 std::string& rowName) const {
  return entryNode_ == nullptr ? 0 : entryNode_->GetRowName(values, rowName);
}

int NetSNMPTableNode::Withdraw() {
  netsnmp_handler_registration* const registration = liveRegistration_;
  if (handlerRegistration_ == registration) handlerRegistration_ = nullptr;
  liveRegistration_ = nullptr;
  return registration::IsRegistered(registration, nodeOID_, nodeOIDLen_)
             ? deferred::Withdraw(registration, &iteratorInfo_)
             : MIB_NO_SUCH_REGISTRATION;
}

void NetSNMPTableNode::ForgetRegistration() {
  if (handlerRegistration_ != liveRegistration_) {
    NetSNMP::free_register_snmp_handler(handlerRegistration_);
  }
  handlerRegistration_ = nullptr;
}
