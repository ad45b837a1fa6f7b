// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_NEWVALUE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_NEWVALUE_H_

#include <cstdint>
#include <limits>
#include <type_traits>

#include "snmpsubagent/SetError.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/Types.h"
#include "snmpsubagent/ValueView.h"

namespace snmpsubagent::detail {

// Whether a manager's value can be read as a T.
template <typename T>
SetError DecodeAs(const ValueView& view) {
  if constexpr (CanRead<T>) {
    T decoded{};
    return Syntax<T>::Read(view, decoded);
  } else {
    return SetError::NotWritable;
  }
}

// What a manager's value makes of the present one, which is in `value`.
template <typename T>
SetError MakeNewValue(const ValueView& view, T& value) {
  if constexpr (std::is_same_v<T, TestAndIncr>) {
    const TestAndIncr before = value;
    const SetError error = Syntax<T>::Read(view, value);
    if (error != SetError::None) return error;
    if (!(value == before)) return SetError::InconsistentValue;
    const bool last = value.value == std::numeric_limits<std::int32_t>::max();
    value.value = last ? 0 : value.value + 1;
    return SetError::None;
  } else if constexpr (CanRead<T>) {
    return Syntax<T>::Read(view, value);
  } else {
    return SetError::NotWritable;
  }
}

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_NEWVALUE_H_
