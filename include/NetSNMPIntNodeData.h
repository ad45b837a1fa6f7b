// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPINTNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPINTNODEDATA_H_

#include "NetSNMPNodeData.h"

// Hides the setters of the other types on purpose, as NetSNMPNodeData.h says.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

// A signed 32-bit integer: ASN_INTEGER (Integer32, RFC 2578), 4 bytes.
class SNMPSUBAGENT_EXPORT NetSNMPIntNodeData : public NetSNMPNodeData {
 public:
  // For the arguments see NetSNMPNodeData.
  NetSNMPIntNodeData(int* storage, eNodeAccessMode mode, bool copyLocal = false,
                     NetSNMPDataNode* owner = nullptr, bool tableData = false);
  NetSNMPIntNodeData(const NetSNMPIntNodeData& source);
  NetSNMPIntNodeData& operator=(const NetSNMPIntNodeData&) = delete;

  NetSNMPNodeData* Clone() const override;
  ~NetSNMPIntNodeData() override;
  void CopyData(const NetSNMPNodeData& source) override;

  // Writes the local data if there is any, else the external storage.
  // `notify` is honoured in both cases.
  void NodeDataValue(int value, bool notify) override;
  const unsigned char* NodeByteValue() const override;
  unsigned int NodeValueSize() const override;
  unsigned char NodeASNDataType() const override;
  void DeleteLocalData() override;

  // Replaces the local data by a copy of `value`.
  virtual void CopyLocalData(int value);

  // The current storage: an `int`, or null.
  void* NodeDataValue() const;
};

#pragma GCC diagnostic pop

#endif  // SNMPSUBAGENT_NETSNMPINTNODEDATA_H_
