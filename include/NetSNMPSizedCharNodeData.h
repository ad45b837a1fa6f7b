// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPSIZEDCHARNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPSIZEDCHARNODEDATA_H_

#include <cstddef>

#include "NetSNMPCharNodeData.h"

// Text in a char array whose size is known: no text that does not fit in with
// its NUL is ever written.
//
// Type code, wire form and storage are those of NetSNMPCharNodeData. A SET of a
// text that is too long is refused with wrongLength (RFC 3416), also where the
// value holds a copy. What counts is the text up to its first NUL.
class SNMPSUBAGENT_EXPORT NetSNMPSizedCharNodeData
    : public NetSNMPCharNodeData {
 public:
  // `size` is that of `storage` in bytes, the closing NUL included; the rest is
  // as with NetSNMPCharNodeData. For an array, `size` is its sizeof.
  NetSNMPSizedCharNodeData(char* storage, unsigned int size,
                           eNodeAccessMode mode, bool copyLocal = false,
                           NetSNMPDataNode* owner = nullptr,
                           bool tableData = false);
  NetSNMPSizedCharNodeData(const NetSNMPSizedCharNodeData& source);
  NetSNMPSizedCharNodeData& operator=(const NetSNMPSizedCharNodeData&) = delete;

  NetSNMPNodeData* Clone() const override;

  // Takes over the size as well. From a value of another class, whose storage
  // has an unknown size, it takes the size 0: nothing fits any more.
  void CopyData(const NetSNMPNodeData& source) override;

  using NetSNMPCharNodeData::NodeDataValue;

  // As with NetSNMPCharNodeData, but a `value` that does not fit changes
  // nothing, notifies nobody and is logged on the owner.
  void NodeDataValue(const char* value, bool notify) override;

  // The same: a `value` that does not fit changes nothing.
  void CopyLocalData(const char* value) override;

  // Whether there is room for a text of `length` bytes and its NUL.
  bool Fits(std::size_t length) const;

  unsigned int bufferSize_;  // in bytes, the closing NUL included
};

#endif  // SNMPSUBAGENT_NETSNMPSIZEDCHARNODEDATA_H_
