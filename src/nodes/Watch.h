// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NODES_WATCH_H_
#define SNMPSUBAGENT_NODES_WATCH_H_

#include <vector>

class NetSNMPNode;
class NetSNMPNodeData;

// Knows whether a node, or a row of a table, still exists.
//
// A watch on the stack is for calls into the application, whose callback may
// delete a node or build another one of its name, and for waits for the master
// agent, during which such callbacks run. A watch that is kept with a SET is
// for its later phases: another thread may have replaced or removed the row,
// and its address may be that of another one.
//
// Threads: any. The lock of NetSNMPAgentGuard keeps others from destroying the
// object after Alive() was called.
class Watch {
 public:
  using Row = std::vector<NetSNMPNodeData*>;

  // Null is always alive.
  explicit Watch(const NetSNMPNode* node);
  explicit Watch(const Row* row);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  bool Alive() const { return alive_; }

  // Whether `row` is the object that is watched, and still there.
  bool IsOf(const Row* row) const { return alive_ && object_ == row; }

  // Called by the destructor of every node, and for every row that a store
  // deletes.
  static void Destroyed(const NetSNMPNode* node);
  static void Destroyed(const Row* row);

 private:
  void Begin();
  static void End(const void* object);

  const void* const object_;
  bool alive_ = true;
  // The neighbours in the list of all watches but those of null.
  Watch* previous_ = nullptr;
  Watch* next_ = nullptr;
};

#endif  // SNMPSUBAGENT_NODES_WATCH_H_
