// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_ACCESS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_ACCESS_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/ValueView.h"

namespace snmpsubagent {

namespace detail {

// What a manager may write: the SYNTAX clause of an object, as far as its type
// does not say it.
class SNMPSUBAGENT_OBJECTS_EXPORT Constraints {
 public:
  using Bounds = std::pair<std::int64_t, std::int64_t>;

  void AddRange(std::int64_t lowest, std::int64_t highest);
  void AddSize(std::size_t shortest, std::size_t longest);
  void AddBit(std::size_t place);
  bool HasRanges() const { return !ranges_.empty(); }
  bool HasBits() const { return !bits_.empty(); }

  // WrongLength, WrongValue or None, for a value whose type is right.
  SetError Check(const ValueView& value) const;

  // Throws std::invalid_argument, naming `object`, if these are no constraints
  // for values of that type.
  void RequireFor(ValueType type, OidView object) const;
  // Throws it if a range goes beyond these numbers.
  void RequireWithin(const Bounds& numbers, OidView object) const;

 private:
  std::vector<Bounds> ranges_;  // none for any number
  std::vector<Bounds> sizes_;   // in octets; none for any
  std::string bits_;            // those with a name; empty for any
};

// As it stands in a varbind.
template <typename Enum>
std::int64_t NumberOfValue(Enum value) {
  return static_cast<std::int64_t>(value);
}
inline std::int64_t NumberOfValue(bool value) { return value ? 1 : 2; }

[[noreturn]] SNMPSUBAGENT_OBJECTS_EXPORT void ThrowLacksValues(OidView object);

// Throws std::invalid_argument, naming `object`, if managers could write what a
// T does not have. `rules` may be null.
template <typename T>
void RequireWritable(const Constraints* rules, OidView object) {
  if constexpr (std::is_enum_v<T>) {
    if (!rules || !rules->HasRanges()) ThrowLacksValues(object);
  } else if constexpr (std::is_integral_v<T> && sizeof(T) < 4 &&
                       !std::is_same_v<T, bool>) {  // that is 1 or 2
    using Limits = std::numeric_limits<T>;
    if (rules) rules->RequireWithin({Limits::min(), Limits::max()}, object);
  }
}

}  // namespace detail

// How managers may use an object: the MAX-ACCESS and SYNTAX clauses of its
// definition (RFC 2578, section 7). One of ReadOnly, ReadWrite, ReadCreate and
// NotAccessible, with what restricts its values:
//
//   snmp::ReadWrite().Range(0, 90)
//   snmp::ReadWrite().Range(-1, -1).Range(10, 3600)
//   snmp::ReadCreate().Size(1, 64)
//   snmp::ReadWrite().Values(Mode::Off, Mode::Heat, Mode::Cool)
//
// Constraints are for what managers write. The application's own values are not
// checked.
template <typename Derived>
class Access {
 public:
  // Numbers from `lowest` to `highest`, both included. With several, those of
  // any. Throws std::invalid_argument if `lowest` is above `highest`.
  Derived& Range(std::int64_t lowest, std::int64_t highest) {
    Own().AddRange(lowest, highest);
    return Self();
  }

  // So many octets; with several, those of any. For OCTET STRING and Opaque.
  Derived& Size(std::size_t shortest, std::size_t longest) {
    Own().AddSize(shortest, longest);
    return Self();
  }
  Derived& Size(std::size_t octets) { return Size(octets, octets); }

  // These numbers of an enumeration, and no others. A writable enumeration
  // needs them.
  template <typename... Enum>
  Derived& Values(Enum... values) {
    (Own().AddRange(detail::NumberOfValue(values),
                    detail::NumberOfValue(values)),
     ...);
    return Self();
  }

  // These bits of a Bits, and no others.
  template <typename... Enum>
  Derived& NamedBits(Enum... bits) {
    (Own().AddBit(static_cast<std::size_t>(bits)), ...);
    return Self();
  }

  // Null without constraints.
  std::shared_ptr<const detail::Constraints> Rules() const { return rules_; }

 private:
  Derived& Self() { return static_cast<Derived&>(*this); }
  // Objects and copies that have been given these rules keep them as they are.
  detail::Constraints& Own() {
    if (!rules_) {
      rules_ = std::make_shared<detail::Constraints>();
    } else if (rules_.use_count() > 1) {
      rules_ = std::make_shared<detail::Constraints>(*rules_);
    }
    return *rules_;
  }

  std::shared_ptr<detail::Constraints> rules_;
};

// Managers read it.
class ReadOnly : public Access<ReadOnly> {};

// Managers read and write it.
class ReadWrite : public Access<ReadWrite> {};

// A column that managers read and write, also to make a row.
class ReadCreate : public Access<ReadCreate> {
 public:
  // A row that a manager makes is not ready before this column is written.
  // Other columns begin with what a Row() has in them (DEFVAL).
  ReadCreate& Required() {
    isRequired_ = true;
    return *this;
  }
  bool IsRequired() const { return isRequired_; }

 private:
  bool isRequired_ = false;
};

// An index that managers know from the instance alone; see Table::Index().
class NotAccessible : public Access<NotAccessible> {};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_ACCESS_H_
