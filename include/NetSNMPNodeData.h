// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPNODEDATA_H_

#include <string>
#include <vector>

#include "SnmpSubAgentExport.h"

class NetSNMPDataNode;

// The type of a value and of its storage. Any other number is a type without a
// value.
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
  eNodeAccessWriteOnly = 3   // SET; a GET of a scalar finds no such object
};

// A value that a scalar, a table cell, a table index or a notification carries.
//
// The typed classes (NetSNMPIntNodeData and its siblings) hold real values. An
// object of this base class is an untyped value: a manager sees it as NULL, and
// writes to it are ignored. Tables take one for its access mode.
//
// Storage: a value is bound to a variable of the application (external storage)
// or owns a copy (local data), which wins when both exist. External storage
// must outlive the value and all its clones.
//
// Constructors of the typed classes: the value is bound to `storage`, or copies
// it if `copyLocal`. A table cell (`tableData`) keeps no pointer to `storage`.
// `storage` and `owner` are borrowed and may be null.
//
// Ownership: nodes, rows and tables keep clones; the caller keeps what it
// passed in.
//
// Threads: no lock. While a subagent runs, an application that reads or writes
// a served value outside a callback holds a NetSNMPAgentGuard.
class SNMPSUBAGENT_EXPORT NetSNMPNodeData {
 public:
  // An untyped value: `type` is stored and not used.
  NetSNMPNodeData(eNodeDataType type, eNodeAccessMode mode, void* storage,
                  NetSNMPDataNode* owner);

  // A copy is bound to the same external storage as `source`, or has its own
  // copy of the local data; see CopyData().
  NetSNMPNodeData(const NetSNMPNodeData& source);

  // Values are never assigned: an owner would silently change.
  NetSNMPNodeData& operator=(const NetSNMPNodeData&) = delete;

  // Returns a new value of the same class, owned by the caller.
  virtual NetSNMPNodeData* Clone() const;

  virtual ~NetSNMPNodeData();

  // Copies type, access mode, owner, flags and storage of `source`. Local data
  // is copied between values of one class only. If `source` has none, this
  // value keeps its own, and goes on reading it, unless its type changes, or it
  // is a buffer of octets and `source` is none.
  virtual void CopyData(const NetSNMPNodeData& source);

  // Setters. Each class overrides that of its own type, which writes and logs,
  // whether or not the value changed; all others do nothing. With `notify` they
  // call OnSetNodeValue(): integers always, the other types unless they hold
  // local data. A class hides the others, so that no call of the wrong type is
  // quietly lost.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
  virtual void NodeDataValue(int value, bool notify);
  virtual void NodeDataValue(unsigned int value, bool notify);
  virtual void NodeDataValue(bool value, bool notify);
  virtual void NodeDataValue(const std::string& value, bool notify);
  virtual void NodeDataValue(const char* value, bool notify);
  // Called by the COMMIT of a byte buffer; `size` is in bytes. No class of the
  // library overrides it, so a manager cannot change a byte buffer.
  virtual void NodeDataValue(const unsigned char* value, unsigned int size,
                             bool notify);
#pragma GCC diagnostic pop

  // The bytes that go into a varbind, NodeValueSize() of them; null when the
  // value has no storage. Valid until the value is written or destroyed.
  virtual const unsigned char* NodeByteValue() const;

  // Number of bytes at NodeByteValue().
  virtual unsigned int NodeValueSize() const;

  // ASN.1 type of the varbind (RFC 2578): ASN_NULL for an untyped value.
  virtual unsigned char NodeASNDataType() const;

  // Deletes local data; the value then reads its external storage, if any.
  virtual void DeleteLocalData();

  // Calls the owner's callback. For a table cell, or an owner without callback,
  // it fires the owner's trap instead. Nothing happens without an owner or
  // while notifyEnabled_ is false.
  virtual void OnSetNodeValue() const;

  // Logs "Node Data = " + text of the value + "; " + `message` on the owner;
  // nothing without one.
  virtual void NodeDataLogMessage(const std::string& message) const;

  // The current storage: local data, else external storage, else null.
  void* NodeDataValue() const;

  // ASN.1 type of a table index: ASN_INTEGER for an int, ASN_UNSIGNED for an
  // unsigned int, 0 for the other types, which cannot be an index.
  unsigned char NodeIndexASNDataType() const;

  // Handler modes of the agent library for accessMode_ (HANDLER_CAN_...).
  int NodeHandlerModes() const;

  // Whether a manager may SET the value.
  bool NodeWritable() const;

  // The value as text for log lines: numbers in decimal, "true" or "false",
  // text, bytes as lower-case hexadecimal digits, "void" for type 0, "" without
  // storage. An unsigned int shows the address of its storage, not the number.
  std::string NodeDataToString() const;

  // Deletes all elements, last to first, and empties the vector.
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
  // The current storage; null if CopyData() from another class left storage of
  // another type than `ownType`.
  void* StorageOf(eNodeDataType ownType) const;

  // The end of each setter: notifies if `notify`, and logs. A callback may
  // delete its node, so the owner and this value may be gone afterwards.
  void ValueSet(bool notify) const;
};

#endif  // SNMPSUBAGENT_NETSNMPNODEDATA_H_
