// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPBYTENODEDATA_H_
#define SNMPSUBAGENT_NETSNMPBYTENODEDATA_H_

#include "NetSNMPNodeData.h"

// A buffer of a fixed number of bytes: ASN_OCTET_STR of just that length.
//
// A manager's SET is accepted and leaves the buffer unchanged, because it goes
// to the setter with a length, which this class does not override; derive and
// override that one to take SETs. The application itself writes with the setter
// without a length.
class SNMPSUBAGENT_EXPORT NetSNMPByteNodeData : public NetSNMPNodeData {
 public:
  // `storage` is the application's buffer of `size` bytes, worked on in place;
  // with `copyLocal` the value takes a copy of it and works on that. With
  // `tableData` the value is a table cell and keeps no pointer to `storage`.
  // `storage` and `owner` are borrowed and may be null.
  NetSNMPByteNodeData(unsigned char* storage, unsigned int size,
                      eNodeAccessMode mode, bool copyLocal = false,
                      NetSNMPDataNode* owner = nullptr, bool tableData = false);
  NetSNMPByteNodeData(const NetSNMPByteNodeData& source);
  NetSNMPByteNodeData& operator=(const NetSNMPByteNodeData&) = delete;

  NetSNMPNodeData* Clone() const override;
  ~NetSNMPByteNodeData() override;
  void CopyData(const NetSNMPNodeData& source) override;

  const unsigned char* NodeByteValue() const override;
  unsigned int NodeValueSize() const override;
  unsigned char NodeASNDataType() const override;
  void DeleteLocalData() override;

  // Copies dataSize_ bytes from `value` into the local data if there is any,
  // without notification; else into the external storage. A null `value`
  // changes nothing.
  virtual void NodeDataValue(const unsigned char* value, bool notify);

  // Replaces the local data by a copy of dataSize_ bytes from `value`; a size
  // of 0 leaves none, and a null `value` changes nothing.
  virtual void CopyLocalData(const unsigned char* value);

  // The current storage: an array of dataSize_ bytes, or null.
  void* NodeDataValue() const;

  unsigned int dataSize_;  // in bytes

 private:
  // Cuts or zero-fills local data of `oldSize` bytes to dataSize_.
  void ResizeLocalData(unsigned int oldSize);
};

#endif  // SNMPSUBAGENT_NETSNMPBYTENODEDATA_H_
