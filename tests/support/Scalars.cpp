// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/Scalars.h"

#include <array>

#include "NetSNMPIntNodeData.h"

namespace support {

std::string ScalarsOid() { return ".1.3.6.1.4.1.32473.99"; }

std::string ScalarOid(unsigned long number) {
  return ScalarsOid() + "." + std::to_string(number) + ".0";
}

NetSNMPDataNode* AddScalar(unsigned long number, const std::string& name,
                           const NetSNMPNodeData& value,
                           void (*callback)(NetSNMPDataNode*)) {
  std::array<unsigned long, 10> oid{1, 3, 6, 1, 4, 1, 32473, 99, number, 0};
  return new NetSNMPDataNode(oid.data(), oid.size(), name, value, callback, "");
}

NetSNMPDataNode* AddIntScalar(unsigned long number, const std::string& name,
                              int value) {
  return AddScalar(number, name,
                   NetSNMPIntNodeData(&value, eNodeAccessReadOnly, true));
}

}  // namespace support
