// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPNODE_H_
#define SNMPSUBAGENT_NETSNMPNODE_H_

#include <map>
#include <string>

#include "SnmpSubAgentExport.h"

class ISNMPSubAgent;

// A managed object: the base of scalars, tables and notifications.
//
// A node has an OID and a name. Its name is its key in the process-wide
// registry nodeMap_, where requests, traps and the static operations find it.
// The application creates the registry, once, before it builds nodes:
//
//   NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
//
// A node built without a registry, or with an empty OID, is never found and
// never served.
//
// Ownership: the registry owns its nodes, which therefore come from `new`.
// DeleteNodes() deletes them; a newer node of the same name does, too, at once.
// A node that the application deletes leaves the registry. A node outside the
// registry belongs to whoever created it.
//
// Threads: nodes may be built, registered and deleted on any thread, also in a
// callback. Each constructor does all of its work under one NetSNMPAgentGuard,
// so that no other thread finds a half-built node, and on copies of its
// arguments, since the originals may belong to the older node that it destroys.
// Other accesses to nodeMap_ while the subagent runs need a guard.
//
// If a node is deleted while a request that addresses it is being served, or
// while its registration awaits the master agent's response, it is withdrawn as
// soon as that is over; a new node for the same OID is registered right after.
// A callback must not replace a node of an application-defined class while its
// constructor waits.
class SNMPSUBAGENT_EXPORT NetSNMPNode {
 public:
  // `oidLen` is in sub-identifiers; the OID is copied. An older node of this
  // name is destroyed.
  NetSNMPNode(unsigned long* oid, unsigned int oidLen, const std::string& name);

  NetSNMPNode(const NetSNMPNode&) = delete;
  NetSNMPNode& operator=(const NetSNMPNode&) = delete;

  // Leaves the registry. Does not withdraw a registration with the agent
  // library: the derived classes do.
  virtual ~NetSNMPNode();

  // Logs "SNMP: Node = " + name + "; " + `message` through NodeMsgLogger_.
  virtual void NodeLogMessage(const std::string& message) const;

  // Registers the node with the agent library, and so with the master agent, if
  // the subagent is connected. Returns whether the node is registered now. The
  // base class has nothing to register and returns false.
  virtual bool RegisterNode();

  // Withdraws what RegisterNode() did. The base class does nothing.
  virtual void UnregisterNode();

  // The node's own copy of its OID, null if empty; valid as long as the node.
  virtual unsigned long* NodeOID() const;

  // Length of the OID in sub-identifiers.
  virtual unsigned int NodeOIDLen() const;

  virtual std::string NodeName() const;

  // Copies the OID and enters the node into the registry, where it destroys an
  // older node of its name. Part of construction.
  virtual void Initialize(unsigned long* oid, unsigned int oidLen);

  // Sets nodeOID_ to a copy, without releasing an earlier one. Returns
  // `oidLen`; if that is 0, nothing happens.
  unsigned int CopyOID(unsigned long* oid, unsigned int oidLen);

  // Copies `srcLen` sub-identifiers, if `dstLen` is enough.
  static void CopyOID(unsigned long* src, unsigned int srcLen,
                      unsigned long* dst, unsigned int dstLen);

  // Registers every node of the registry, in the byte order of their names.
  // Nodes that are registered already stay so.
  static void RegisterMibs();

  // Unregisters and registers every node, one after the other, in that order.
  static void ReregisterMibs();

  // Destroys every node of the registry; returns how many entries there were.
  static int DeleteNodes();

  // Destroys every node and the registry itself; nodeMap_ is null afterwards.
  static void DeleteNodeMap();

  unsigned long* nodeOID_;   // owned; null when empty
  unsigned int nodeOIDLen_;  // in sub-identifiers
  std::string nodeName_;
  bool registered_;  // with the agent library
  bool mapped_;      // the registry's entry for its name

  // The registry, created by the application; null at load.
  static std::map<std::string, NetSNMPNode*>* nodeMap_;
  // The subagent that nodes ask whether it is connected; null at load, set by
  // the subagent's initialisation. Borrowed.
  static ISNMPSubAgent* snmpSubAgent_;
  // The log sink of all nodes, with the signature of LogXMessage(); null at
  // load, which turns node logging off.
  static void (*NodeMsgLogger_)(unsigned int level, const std::string& text);
  // The level that NodeMsgLogger_ is called with; 0 at load.
  static unsigned int NodeMsgLogType_;

 protected:
  // Whether there is a live subagent and its session is up.
  // Requires: the lock of NetSNMPAgentGuard.
  static bool SubAgentConnected();

  // Removes the node's entry from the registry, if it is the one for its name.
  void LeaveRegistry();
};

#endif  // SNMPSUBAGENT_NETSNMPNODE_H_
