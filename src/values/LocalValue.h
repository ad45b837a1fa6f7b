// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_VALUES_LOCALVALUE_H_
#define SNMPSUBAGENT_VALUES_LOCALVALUE_H_

#include <memory>

#include "NetSNMPNodeData.h"

// The local data of the classes whose local data is one object of type T.
namespace local_value {

// Replaces the local data by a copy of `value`. The copy is made before the old
// one is freed, since `value` may be part of it.
template <typename T>
void Replace(NetSNMPNodeData& data, eNodeDataType type, const T& value) {
  std::unique_ptr<T> copy(new T(value));
  data.DeleteLocalData();
  data.localData_ = copy.release();
  data.dataType_ = type;
}

// The part of CopyData() that the class Data adds: local data is copied between
// values of this class, and deleted if the value gets the type code of another
// one.
template <typename T, typename Data>
void Copy(Data& data, const NetSNMPNodeData& source) {
  if (dynamic_cast<const Data*>(&source) == nullptr) {
    if (source.dataType_ != data.dataType_) data.DeleteLocalData();
  } else if (source.localData_ != nullptr) {
    data.CopyLocalData(*static_cast<const T*>(source.localData_));
  }
}

template <typename T>
void Delete(NetSNMPNodeData& data) {
  delete static_cast<T*>(data.localData_);
}

}  // namespace local_value

#endif  // SNMPSUBAGENT_VALUES_LOCALVALUE_H_
