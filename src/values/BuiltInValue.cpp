// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "values/BuiltInValue.h"

#include <typeinfo>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPSizedCharNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"

bool IsBuiltInValue(const NetSNMPNodeData& value) {
  switch (value.dataType_) {
    case eNodeDataInt:
      return typeid(value) == typeid(NetSNMPIntNodeData);
    case eNodeDataUnsignedInt:
      return typeid(value) == typeid(NetSNMPUnsignedIntNodeData);
    case eNodeDataString:
      return typeid(value) == typeid(NetSNMPStringNodeData);
    case eNodeDataChar:
      return typeid(value) == typeid(NetSNMPCharNodeData) ||
             typeid(value) == typeid(NetSNMPSizedCharNodeData);
    case eNodeDataBool:
      return typeid(value) == typeid(NetSNMPBoolNodeData);
    case eNodeDataByte:
      return typeid(value) == typeid(NetSNMPByteNodeData);
    default:
      return false;
  }
}
