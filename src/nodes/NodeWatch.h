// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_NODEWATCH_H_
#define SNMPSUBAGENT_NODES_NODEWATCH_H_

class NetSNMPNode;

// Tells whether a node survived a call into the application, whose callback may
// delete the node it is called for, or build one of the same name; or a wait
// for the master agent, in which such callbacks run. Watches live on the stack
// and see what their own thread does.
class NodeWatch {
 public:
  explicit NodeWatch(const NetSNMPNode* node);
  ~NodeWatch();
  NodeWatch(const NodeWatch&) = delete;
  NodeWatch& operator=(const NodeWatch&) = delete;

  bool Alive() const { return alive_; }

  // Called by the destructor of every node.
  static void Destroyed(const NetSNMPNode* node);

 private:
  const NetSNMPNode* node_;
  NodeWatch* outer_;
  bool alive_ = true;
};

#endif  // SNMPSUBAGENT_NODES_NODEWATCH_H_
