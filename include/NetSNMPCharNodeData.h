// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPCHARNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPCHARNODEDATA_H_

#include "NetSNMPNodeData.h"

// Hides the setters of the other types on purpose, as NetSNMPNodeData.h says.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

// Text in a char array ended by a NUL: ASN_OCTET_STR of the text's length.
//
// The size of the array is unknown: a SET writes the whole text, past the end
// of the array too. Where a manager may write, use NetSNMPSizedCharNodeData or
// NetSNMPStringNodeData.
class SNMPSUBAGENT_EXPORT NetSNMPCharNodeData : public NetSNMPNodeData {
 public:
  // For the arguments see NetSNMPNodeData.
  NetSNMPCharNodeData(char* storage, eNodeAccessMode mode,
                      bool copyLocal = false, NetSNMPDataNode* owner = nullptr,
                      bool tableData = false);
  NetSNMPCharNodeData(const NetSNMPCharNodeData& source);
  NetSNMPCharNodeData& operator=(const NetSNMPCharNodeData&) = delete;

  NetSNMPNodeData* Clone() const override;
  ~NetSNMPCharNodeData() override;
  void CopyData(const NetSNMPNodeData& source) override;

  // Writes the local data if there is any, without notification; else the
  // external storage, whatever its size. Local data set to "" is deleted. A
  // value without storage makes a local copy of a text that is not empty. A
  // null `value` changes nothing.
  void NodeDataValue(const char* value, bool notify) override;
  const unsigned char* NodeByteValue() const override;
  unsigned int NodeValueSize() const override;
  unsigned char NodeASNDataType() const override;
  void DeleteLocalData() override;

  // Replaces the local data by a copy of `value`; "" leaves none, and a null
  // `value` changes nothing.
  virtual void CopyLocalData(const char* value);

  // The current storage: a `char` array, or null.
  void* NodeDataValue() const;
};

#pragma GCC diagnostic pop

#endif  // SNMPSUBAGENT_NETSNMPCHARNODEDATA_H_
