// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_SETCHANGE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_SETCHANGE_H_

#include <optional>

#include "snmpsubagent/Export.h"

namespace snmpsubagent {

namespace detail {
class Transaction;
}
template <typename T>
class Scalar;
template <typename Key, typename Row, typename Container>
class Table;

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

  // The same for the row of a table with that key: whether the SET names cells
  // of it, and the row as it will be, or none.
  template <typename Key, typename Row, typename Container>
  bool Names(const Table<Key, Row, Container>& table,
             const typename Container::key_type& key) const {
    return table.IsNamedBy(transaction_, key);
  }
  template <typename Key, typename Row, typename Container>
  std::optional<Row> After(const Table<Key, Row, Container>& table,
                           const typename Container::key_type& key) const {
    return table.After(transaction_, key);
  }

 private:
  const detail::Transaction& transaction_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_SETCHANGE_H_
