// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPNODEDATA_H_

#include <string>
#include <vector>

#include "SnmpSubAgentExport.h"

class NetSNMPDataNode;

// The type of a value and of the storage it points at. Any other number is
// carried along and treated as a type without a value.
enum eNodeDataType : int {
  eNodeDataVoid = 0,         // no storage; NetSNMPNodeData itself
  eNodeDataInt = 1,          // int
  eNodeDataUnsignedInt = 2,  // unsigned int
  eNodeDataString = 3,       // std::string
  eNodeDataChar = 4,         // char array ended by a NUL
  eNodeDataBool = 5,         // bool
  eNodeDataByte = 6          // unsigned char array of a fixed length
};

// What a manager may do with a value. Any other number acts as the default.
enum eNodeAccessMode : int {
  eNodeAccessDefault = 0,    // GET; a SET is refused with notWritable
  eNodeAccessReadOnly = 1,   // GET; a SET is refused with notWritable
  eNodeAccessReadWrite = 2,  // GET and SET
  eNodeAccessWriteOnly = 3   // SET; a GET finds no such object
};

// A value that a scalar, a table cell, a table index or a notification carries.
//
// The six typed classes (NetSNMPIntNodeData and its siblings) hold real values.
// This base class, instantiated itself, is an untyped value: a manager sees it
// as NULL and writes to it are ignored. Tables take one to learn their access
// mode.
//
// Storage: a value works in place on the application's own variable (external
// storage) or on a copy that it owns (local data), which wins when both exist.
// External storage must outlive the value and all its clones.
//
// Ownership: whoever holds the pointer owns the value. Nodes, rows and tables
// keep clones; the caller keeps what it passed in.
//
// Threads: no lock. While a subagent runs, an application that reads or writes
// a served value outside a callback holds a NetSNMPAgentGuard meanwhile.
class SNMPSUBAGENT_EXPORT NetSNMPNodeData {
 public:
  // An untyped value: `type` is only carried along. `storage` and `owner` are
  // borrowed and may be null.
  NetSNMPNodeData(eNodeDataType type, eNodeAccessMode mode, void* storage,
                  NetSNMPDataNode* owner);

  // A copy works on the same external storage as `source`, or on its own copy
  // of the local data. What CopyData() says holds.
  NetSNMPNodeData(const NetSNMPNodeData& source);

  // Values are never assigned: an owner would silently change.
  NetSNMPNodeData& operator=(const NetSNMPNodeData&) = delete;

  // Returns a new value of the same class, owned by the caller.
  virtual NetSNMPNodeData* Clone() const;

  virtual ~NetSNMPNodeData();

  // Takes over type, access mode, owner, flags and storage of `source`. Local
  // data is copied between values of one class only; local data held already
  // stays when `source` has none, and is what the value then still reads.
  virtual void CopyData(const NetSNMPNodeData& source);

  // Setters. Each class overrides the one of its own type, which writes and
  // logs always, whether or not the value changed; all others do nothing. With
  // `notify` the value tells its owner: see OnSetNodeValue(). Integers always
  // honour `notify`, the other types only when they write external storage.
  virtual void NodeDataValue(int value, bool notify);
  virtual void NodeDataValue(unsigned int value, bool notify);
  virtual void NodeDataValue(bool value, bool notify);
  virtual void NodeDataValue(const std::string& value, bool notify);
  virtual void NodeDataValue(const char* value, bool notify);
  // A committed SET of a byte buffer arrives here. No class of the library
  // overrides it, so a manager cannot change a byte buffer; an application's
  // subclass may. `size` is the length of `value` in bytes.
  virtual void NodeDataValue(const unsigned char* value, unsigned int size,
                             bool notify);

  // The bytes that go into a varbind, NodeValueSize() of them; null when the
  // value has no storage. Valid until the value is written or destroyed.
  virtual const unsigned char* NodeByteValue() const;

  // Number of bytes at NodeByteValue().
  virtual unsigned int NodeValueSize() const;

  // ASN.1 type of the varbind (RFC 2578): ASN_NULL for an untyped value.
  virtual unsigned char NodeASNDataType() const;

  // Gives up local data; the value then reads its external storage, if any.
  virtual void DeleteLocalData();

  // Tells the owner that the value was set: its callback is called, or, for a
  // table cell or an owner without callback, its trap is fired. Nothing happens
  // without owner or while notifyEnabled_ is false.
  virtual void OnSetNodeValue() const;

  // Logs "Node Data = " + text of the value + "; " + `message` on the owner;
  // nothing without one.
  virtual void NodeDataLogMessage(const std::string& message) const;

  // The current storage: local data, else external storage, else null.
  void* NodeDataValue() const;

  // ASN.1 type of a table index: ASN_INTEGER for an int, ASN_UNSIGNED for an
  // unsigned int, else 0: other types cannot serve as index.
  unsigned char NodeIndexASNDataType() const;

  // Handler modes of the agent library for accessMode_ (HANDLER_CAN_...).
  int NodeHandlerModes() const;

  // Whether a manager may SET the value.
  bool NodeWritable() const;

  // The value as text for log lines: numbers in decimal, "true" or "false",
  // text as it is, bytes as lower-case hexadecimal digits, "void" for type 0,
  // "" without storage. An unsigned int shows the address of its storage, not
  // the number.
  std::string NodeDataToString() const;

  // Deletes all elements, last to first, and empties the vector; null elements
  // are only removed.
  static void DestroyDataVector(std::vector<NetSNMPNodeData*>& values);

  // Appends a clone of `value`.
  static void CatDataVector(std::vector<NetSNMPNodeData*>& destination,
                            const NetSNMPNodeData& value);

  // Appends clones of all elements of `source`, front to back; null elements
  // stay null. `source` may be `destination`.
  static void CatDataVector(const std::vector<NetSNMPNodeData*>& source,
                            std::vector<NetSNMPNodeData*>& destination);

  // Replaces the elements of `destination` by clones of those of `source`. A
  // vector copied onto itself keeps its elements.
  static void CopyDataVector(const std::vector<NetSNMPNodeData*>& source,
                             std::vector<NetSNMPNodeData*>& destination);

  // Returns a new vector of clones; the caller owns both.
  static std::vector<NetSNMPNodeData*>* CopyDataVector(
      const std::vector<NetSNMPNodeData*>& source);

  eNodeDataType dataType_;
  eNodeAccessMode accessMode_;
  void* externalData_;          // borrowed
  void* localData_;             // owned; its form is the typed class's
  unsigned int columnNumber_;   // in a table row, from 1; 0 outside
  NetSNMPDataNode* ownerNode_;  // borrowed
  bool tableData_;              // cell of a table: fires traps, no callback
  bool isIndex_;                // index of a table row
  bool notifyEnabled_;          // true unless the application clears it

 protected:
  // The current storage, but null when a copy from a value of another class
  // left the value with storage of a type that is not the class's own.
  void* StorageOf(eNodeDataType ownType) const;

  // Ends a setter: notifies if asked to and logs. The owner, and this value
  // with it, may be gone afterwards: a callback may delete its node.
  void ValueSet(bool notify) const;
};

#endif  // SNMPSUBAGENT_NETSNMPNODEDATA_H_
