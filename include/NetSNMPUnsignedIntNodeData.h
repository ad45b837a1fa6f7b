// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPUNSIGNEDINTNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPUNSIGNEDINTNODEDATA_H_

#include "NetSNMPNodeData.h"

// Hides the setters of the other types on purpose, as NetSNMPNodeData.h says.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

// An unsigned 32-bit integer: ASN_UNSIGNED (Unsigned32, RFC 2578), 4 bytes.
class SNMPSUBAGENT_EXPORT NetSNMPUnsignedIntNodeData : public NetSNMPNodeData {
 public:
  // For the arguments see NetSNMPNodeData.
  NetSNMPUnsignedIntNodeData(unsigned int* storage, eNodeAccessMode mode,
                             bool copyLocal = false,
                             NetSNMPDataNode* owner = nullptr,
                             bool tableData = false);
  NetSNMPUnsignedIntNodeData(const NetSNMPUnsignedIntNodeData& source);
  NetSNMPUnsignedIntNodeData& operator=(const NetSNMPUnsignedIntNodeData&) =
      delete;

  NetSNMPNodeData* Clone() const override;
  ~NetSNMPUnsignedIntNodeData() override;
  void CopyData(const NetSNMPNodeData& source) override;

  // Writes the local data if there is any, else the external storage.
  // `notify` is honoured in both cases.
  void NodeDataValue(unsigned int value, bool notify) override;
  const unsigned char* NodeByteValue() const override;
  unsigned int NodeValueSize() const override;
  unsigned char NodeASNDataType() const override;
  void DeleteLocalData() override;

  // Replaces the local data by a copy of `value`.
  virtual void CopyLocalData(unsigned int value);

  // The current storage: an `unsigned int`, or null.
  void* NodeDataValue() const;
};

#pragma GCC diagnostic pop

#endif  // SNMPSUBAGENT_NETSNMPUNSIGNEDINTNODEDATA_H_
