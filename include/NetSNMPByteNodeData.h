// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPBYTENODEDATA_H_
#define SNMPSUBAGENT_NETSNMPBYTENODEDATA_H_

#include "NetSNMPNodeData.h"

// Hides the setters of the other types on purpose, as NetSNMPNodeData.h says.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

// A buffer of a fixed number of bytes: ASN_OCTET_STR of exactly that length.
//
// A manager's SET is accepted and leaves the buffer unchanged: it calls the
// setter that takes a length, which a derived class may override. The
// application writes with the setter that takes none.
class SNMPSUBAGENT_EXPORT NetSNMPByteNodeData : public NetSNMPNodeData {
 public:
  // `size` is that of `storage`, in bytes; for the rest see NetSNMPNodeData.
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

  // Replaces the local data by a copy of dataSize_ bytes from `value`, or by
  // none if that is 0. A null `value` changes nothing.
  virtual void CopyLocalData(const unsigned char* value);

  // The current storage: an array of dataSize_ bytes, or null.
  void* NodeDataValue() const;

  unsigned int dataSize_;  // in bytes

 private:
  // Truncates or zero-fills local data of `oldSize` bytes to dataSize_.
  void ResizeLocalData(unsigned int oldSize);
};

#pragma GCC diagnostic pop

#endif  // SNMPSUBAGENT_NETSNMPBYTENODEDATA_H_
