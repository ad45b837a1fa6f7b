// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_UNTYPED_H_
#define SNMPSUBAGENT_TESTS_UNTYPED_H_

#include <memory>

#include "NetSNMPNodeData.h"

// A value without a class of its own that says that it is of `type`.
inline std::unique_ptr<NetSNMPNodeData> Untyped(
    int type, eNodeAccessMode mode = eNodeAccessReadWrite) {
  return std::make_unique<NetSNMPNodeData>(static_cast<eNodeDataType>(type),
                                           mode, nullptr, nullptr);
}

#endif  // SNMPSUBAGENT_TESTS_UNTYPED_H_
