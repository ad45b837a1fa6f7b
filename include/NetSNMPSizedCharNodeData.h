// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPSIZEDCHARNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPSIZEDCHARNODEDATA_H_

#include <cstddef>

#include "NetSNMPCharNodeData.h"

// Text in a char array of a known size. A SET of a text that does not fit with
// its NUL is refused with wrongLength (RFC 3416), also if the value has a local
// copy. Only the text up to its first NUL counts. Type code, encoding and
// storage are those of NetSNMPCharNodeData.
class SNMPSUBAGENT_EXPORT NetSNMPSizedCharNodeData
    : public NetSNMPCharNodeData {
 public:
  // `size` is the sizeof of `storage`, the closing NUL included; for the rest
  // see NetSNMPNodeData.
  NetSNMPSizedCharNodeData(char* storage, unsigned int size,
                           eNodeAccessMode mode, bool copyLocal = false,
                           NetSNMPDataNode* owner = nullptr,
                           bool tableData = false);
  NetSNMPSizedCharNodeData(const NetSNMPSizedCharNodeData& source);
  NetSNMPSizedCharNodeData& operator=(const NetSNMPSizedCharNodeData&) = delete;

  NetSNMPNodeData* Clone() const override;

  // Copies the size as well. The size of another class's storage is unknown and
  // becomes 0: nothing fits any more.
  void CopyData(const NetSNMPNodeData& source) override;

  using NetSNMPCharNodeData::NodeDataValue;

  // Unlike in NetSNMPCharNodeData, a `value` that does not fit changes nothing,
  // does not notify and is logged on the owner.
  void NodeDataValue(const char* value, bool notify) override;

  // The same: a `value` that does not fit changes nothing.
  void CopyLocalData(const char* value) override;

  // Whether there is room for a text of `length` bytes and its NUL.
  bool Fits(std::size_t length) const;

  unsigned int bufferSize_;  // in bytes, the closing NUL included
};

#endif  // SNMPSUBAGENT_NETSNMPSIZEDCHARNODEDATA_H_
