// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNOBJECTS_H_
#define SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNOBJECTS_H_

#include <snmpsubagent/Later.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

#include "KnownValues.h"

// What is known of scalars and tables: their definitions, the values that
// managers are to see, and what the functions of the application do.
namespace known {

// What managers see of a scalar or a row. One that is not there has the status
// None; scalars, and rows of tables without a RowStatus, are active.
enum Status { kAbsent = 0, kActive = 1, kNotInService = 2, kNotReady = 3 };
enum Action { kCreateAndGo = 4, kCreateAndWait = 5, kDestroy = 6 };
enum StorageType { kVolatile = 2, kPermanent = 4, kReadOnly = 5 };

struct State {
  int status = kAbsent;
  std::map<unsigned int, wire::Value> cells;
};
bool operator==(const State& a, const State& b);

struct Column {
  unsigned int cell;  // its number among those of a row
  Kind kind;
  bool writable = true;
  bool canCreate = false;
  bool required = false;
};

// What a function of the application does when it is called next.
enum class Way { Accept, Refuse, Throw, Later };

// A scalar or a row, and what is done about it.
struct Unit {
  State state;
  Error check = kNone;  // genErr throws
  Way apply = Way::Accept;
  bool setterRefuses = false;
  // Of an Apply function that has not answered yet.
  std::optional<snmpsubagent::Later<snmpsubagent::SetError>> later;
};

// The rows of a table, or of several; a scalar is the only one.
struct Store {
  bool isScalar = false;
  bool isServed = true;
  bool hasStatus = false;
  bool activeAreFrozen = false;
  // The application changes rows without a word, so that they are compared.
  bool isCompared = false;
  bool hasSetter = false;     // a function of the application's
  bool answersLater = false;  // the Apply function may
  std::size_t limit = 0;
  std::function<bool(const wire::Oid&)> isIndex;
  std::function<wire::Oid(Input&)> someIndex;
  State fresh;                         // a row that a manager makes
  std::map<unsigned int, Kind> kinds;  // of the cells
  std::map<unsigned int, bool> required;
  std::map<wire::Oid, Unit> units;  // by the index
  std::size_t Size() const;
};

// A scalar or a table.
struct Object {
  wire::Oid name;
  std::map<std::uint32_t, Column> columns;  // of a scalar, 0
  Store* store;
};

using Objects = std::map<wire::Oid, Object>;

// A name and what a manager is to read there.
using Values = std::map<wire::Oid, wire::Value>;

// As `index` of that column.
wire::Oid NameOf(const Object& object, std::uint32_t column,
                 const wire::Oid& index);

// All instances that there are, and with `absent` those that may come.
Values ValuesOf(const Objects& objects, bool absent);

}  // namespace known

#endif  // SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNOBJECTS_H_
