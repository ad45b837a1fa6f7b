// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_VALUESOURCES_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_VALUESOURCES_H_

#include <atomic>
#include <chrono>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "snmpsubagent/SetError.h"
#include "snmpsubagent/Types.h"

// Where the value of an object comes from, besides a variable, a std::atomic, a
// copy or a function: see Scalar.
namespace snmpsubagent {

// A function whose result is kept for a time.
template <typename Function>
struct Cached {
  Function function;
  std::chrono::steady_clock::duration timeToLive;

  Cached(Function f, std::chrono::steady_clock::duration time)
      : function(std::move(f)), timeToLive(time) {}
};

// Two functions, one that tells the value and one that takes a new one. The
// second returns nothing, or whether it took the value, or a SetError; it is
// called with the old value when a SET is undone.
template <typename Getter, typename Setter>
struct GetSet {
  Getter get;
  Setter set;

  GetSet(Getter getter, Setter setter)
      : get(std::move(getter)), set(std::move(setter)) {}
};

// A variable of a plain integer type that managers see as a T. See As().
template <typename T, typename Variable>
struct Counted {
  Variable& variable;
};

// A plain or atomic integer variable, shown as Counter32, Counter64 or
// TimeTicks:
//
//   std::atomic<std::uint64_t> octets;
//   snmp::Scalar received(module, "3", snmp::As<snmp::Counter64>(octets));
template <typename T, typename Variable>
Counted<T, Variable> As(Variable& variable) {
  using Number = std::decay_t<decltype(variable + 0)>;
  constexpr bool isCounter = std::is_same_v<T, Counter32> ||
                             std::is_same_v<T, Counter64> ||
                             std::is_same_v<T, TimeTicks>;
  static_assert(isCounter, "As() makes a Counter32, a Counter64 or TimeTicks");
  static_assert(
      !isCounter || (std::is_unsigned_v<Number> && sizeof(Number) == sizeof(T)),
      "a Counter32 or TimeTicks needs a std::uint32_t, a Counter64 "
      "a std::uint64_t, atomic or not");
  static_assert(!std::is_const_v<Variable>, "the variable never changes");
  return {variable};
}

namespace detail {

// What an application function that may return nothing, a bool or a
// SetError has said; `refused` stands for false.
template <typename Call>
SetError AsSetError(Call&& call, SetError refused = SetError::CommitFailed) {
  using Result = decltype(call());
  if constexpr (std::is_void_v<Result>) {
    call();
    return SetError::None;
  } else if constexpr (std::is_same_v<Result, bool>) {
    return call() ? SetError::None : refused;
  } else if constexpr (std::is_same_v<Result, SetError>) {
    return call();
  } else {
    static_assert(std::is_void_v<Result>,
                  "the function is to return nothing, bool or SetError");
    return refused;
  }
}

}  // namespace detail
}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_VALUESOURCES_H_
