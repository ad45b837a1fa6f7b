// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_ROWCHANGE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_ROWCHANGE_H_

#include <cstdint>
#include <optional>

namespace snmpsubagent {

// The state of a conceptual row, and what a manager may write to change it
// (RFC 2579). A row is never seen as CreateAndGo, CreateAndWait or Destroy.
enum class RowStatus : std::int32_t {
  None = 0,  // there is no such row
  Active = 1,
  NotInService = 2,
  NotReady = 3,  // a column that it needs is missing
  CreateAndGo = 4,
  CreateAndWait = 5,
  Destroy = 6
};

// How a row is kept (RFC 2579). Managers can't destroy one that is Permanent,
// and neither change nor destroy one that is ReadOnly.
enum class StorageType : std::int32_t {
  Other = 1,
  Volatile = 2,
  NonVolatile = 3,
  Permanent = 4,
  ReadOnly = 5
};

// What a SET does to one row.
template <typename Key, typename Row>
struct RowChange {
  Key key;
  std::optional<Row> before;  // none if the row is new
  std::optional<Row> after;   // none if it is destroyed
  RowStatus statusBefore;     // None if the row is new
  RowStatus statusAfter;      // None if it is destroyed
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_ROWCHANGE_H_
