// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMPSTRINGNODEDATA_H_
#define SNMPSUBAGENT_NETSNMPSTRINGNODEDATA_H_

#include <string>

#include "NetSNMPNodeData.h"

// Hides the setters of the other types on purpose, as NetSNMPNodeData.h says.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"

// Text in a std::string: ASN_OCTET_STR, of any length. The text of a SET ends
// at its first NUL; the application may store any bytes.
class SNMPSUBAGENT_EXPORT NetSNMPStringNodeData : public NetSNMPNodeData {
 public:
  // For the arguments see NetSNMPNodeData.
  NetSNMPStringNodeData(std::string* storage, eNodeAccessMode mode,
                        bool copyLocal = false,
                        NetSNMPDataNode* owner = nullptr,
                        bool tableData = false);
  NetSNMPStringNodeData(const NetSNMPStringNodeData& source);
  NetSNMPStringNodeData& operator=(const NetSNMPStringNodeData&) = delete;

  NetSNMPNodeData* Clone() const override;
  ~NetSNMPStringNodeData() override;
  void CopyData(const NetSNMPNodeData& source) override;

  // Writes the local data if there is any, without notification; else the
  // external storage.
  void NodeDataValue(const std::string& value, bool notify) override;
  const unsigned char* NodeByteValue() const override;
  unsigned int NodeValueSize() const override;
  unsigned char NodeASNDataType() const override;
  void DeleteLocalData() override;

  // Replaces the local data by a copy of `value`, also when empty.
  virtual void CopyLocalData(const std::string& value);

  // The current storage: a `std::string`, or null.
  void* NodeDataValue() const;
};

#pragma GCC diagnostic pop

#endif  // SNMPSUBAGENT_NETSNMPSTRINGNODEDATA_H_
