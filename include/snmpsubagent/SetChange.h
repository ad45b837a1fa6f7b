// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_SETCHANGE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_SETCHANGE_H_

#include "snmpsubagent/Export.h"

namespace snmpsubagent {

namespace detail {
class Transaction;
}
template <typename T>
class Scalar;

// What a SET is going to change, for Module::Check(). Valid during the call.
//
//   module.Check([&](const snmp::SetChange& change) {
//     return change.After(low) < change.After(high)
//                ? snmp::SetError::None
//                : snmp::SetError::InconsistentValue;
//   });
class SetChange {
 public:
  explicit SetChange(const detail::Transaction& transaction)
      : transaction_(transaction) {}

  // Whether the SET names the object.
  template <typename T>
  bool Names(const Scalar<T>& scalar) const {
    return scalar.IsNamedBy(transaction_);
  }

  // The value as it will be: that of the SET, or the present one.
  template <typename T>
  T After(const Scalar<T>& scalar) const {
    return scalar.After(transaction_);
  }

 private:
  const detail::Transaction& transaction_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_SETCHANGE_H_
