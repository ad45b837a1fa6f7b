// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPBOOLNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPBOOLNODEDATA_H_

#include "NetSNMPNodeData.h"

// Hides the setters of the other types on purpose, as NetSNMPNodeData.h says.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

// A truth value: ASN_INTEGER 1 for true and 2 for false (TruthValue, RFC 2579),
// 4 bytes. A SET of any other number is refused.
class SNMPSUBAGENT_EXPORT NetSNMPBoolNodeData : public NetSNMPNodeData {
 public:
  // For the arguments see NetSNMPNodeData.
  NetSNMPBoolNodeData(bool* storage, eNodeAccessMode mode,
                      bool copyLocal = false, NetSNMPDataNode* owner = nullptr,
                      bool tableData = false);
  NetSNMPBoolNodeData(const NetSNMPBoolNodeData& source);
  NetSNMPBoolNodeData& operator=(const NetSNMPBoolNodeData&) = delete;

  NetSNMPNodeData* Clone() const override;
  ~NetSNMPBoolNodeData() override;
  void CopyData(const NetSNMPNodeData& source) override;

  // Writes the local data if there is any, without notification; else the
  // external storage.
  void NodeDataValue(bool value, bool notify) override;
  const unsigned char* NodeByteValue() const override;
  unsigned int NodeValueSize() const override;
  unsigned char NodeASNDataType() const override;
  void DeleteLocalData() override;

  // Replaces the local data by a copy of `value`.
  virtual void CopyLocalData(bool value);

  // The current storage: a `bool`, or null.
  void* NodeDataValue() const;
};

#pragma GCC diagnostic pop

#endif  // SNMPSUBAGENT_NETSNMPBOOLNODEDATA_H_
