// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_VALUE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_VALUE_H_

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "snmpsubagent/Oid.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/Types.h"
#include "snmpsubagent/ValueView.h"

namespace snmpsubagent::testing {

// A value is not of the type that it is asked for.
struct WrongType : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What a manager sends or gets in a varbind: a value with its type, or one of
// noSuchObject, noSuchInstance and endOfMibView. The types of C++ are those of
// <snmpsubagent/Types.h>, so that a test compares with what the service has:
//
//   EXPECT_EQ(master.Get("1.3.6.1.4.1.32473.2.1.0"), 21);            // INTEGER
//   EXPECT_EQ(master.Get("1.3.6.1.4.1.32473.2.4.0"), "boiler room");
//   EXPECT_EQ(master.Get("1.3.6.1.4.1.32473.2.5.0"), snmp::Counter64{7});
//   EXPECT_EQ(master.Get("1.3.6.1.4.1.32473.2.9.0"),
//             snmp::ValueType::NoSuchObject);
//
// Values of different types are never equal: 21u is a Gauge32 and 21 is none.
class Value {
 public:
  // NULL.
  Value() = default;
  // A value that its type tells all about: Null, NoSuchObject, NoSuchInstance
  // or EndOfMibView.
  Value(ValueType type) : type_(type) {}

  // Integers of up to 32 bits: INTEGER if they have a sign, else Gauge32.
  template <typename T, std::enable_if_t<detail::IsInteger32<T>, int> = 0>
  Value(T number)
      : type_(Syntax<T>::kType),
        number_(static_cast<std::uint64_t>(static_cast<std::int64_t>(number))) {
  }
  // Enumerations, of which ValueType is none.
  template <typename T, std::enable_if_t<std::is_enum_v<T>, int> = 0>
  Value(T name) : Value(static_cast<std::int32_t>(name)) {}
  // TruthValue.
  template <typename T, std::enable_if_t<std::is_same_v<T, bool>, int> = 0>
  Value(T truth) : Value(truth ? 1 : 2) {}
  Value(TestAndIncr value) : Value(value.value) {}
  Value(Counter32 value) : type_(ValueType::Counter32), number_(value.value) {}
  Value(Counter64 value) : type_(ValueType::Counter64), number_(value.value) {}
  Value(TimeTicks value) : type_(ValueType::TimeTicks), number_(value.value) {}

  Value(std::string octets)
      : Value(ValueType::OctetString, std::move(octets)) {}
  Value(const char* text) : Value(std::string(text)) {}
  Value(const Bytes& octets)
      : Value(std::string(octets.begin(), octets.end())) {}
  template <std::size_t N>
  Value(const std::array<std::uint8_t, N>& octets)
      : Value(std::string(octets.begin(), octets.end())) {}
  template <typename Enum>
  Value(const Bits<Enum>& bits) : Value(bits.Octets()) {}
  Value(const InetAddress& address) : Value(address.octets) {}
  // DateAndTime in UTC.
  Value(std::chrono::system_clock::time_point moment)
      : Value(detail::WriteDateAndTime(moment)) {}
  Value(const IpAddress& address)
      : Value(ValueType::IpAddress,
              std::string(address.octets.begin(), address.octets.end())) {}
  Value(Opaque value) : Value(ValueType::Opaque, std::move(value.octets)) {}
  Value(float number) : Value(Opaque{detail::WriteOpaqueFloat(number)}) {}
  Value(double number) : Value(Opaque{detail::WriteOpaqueDouble(number)}) {}
  Value(Oid oid) : type_(ValueType::ObjectIdentifier), oid_(std::move(oid)) {}

  // From what has come in.
  explicit Value(const ValueView& view)
      : type_(view.type),
        number_(view.number),
        octets_(view.octets),
        oid_(view.oid) {}

  ValueType Type() const { return type_; }
  // Valid as long as this value is as it is.
  ValueView View() const { return {type_, number_, octets_, oid_}; }

  // As a type of C++: As<int>(), As<std::string>(), As<State>(). Throws
  // WrongType if it is none, or does not fit.
  template <typename T>
  T As() const {
    Expect(Syntax<T>::kType);
    T value{};
    if constexpr (detail::CanRead<T>) {
      if (Syntax<T>::Read(View(), value) != SetError::None) Misfit();
    } else {
      value.value = static_cast<decltype(value.value)>(number_);
    }
    return value;
  }

  friend bool operator==(const Value& a, const Value& b) {
    return a.type_ == b.type_ && a.number_ == b.number_ &&
           a.octets_ == b.octets_ && a.oid_ == b.oid_;
  }
  friend bool operator!=(const Value& a, const Value& b) { return !(a == b); }

 private:
  Value(ValueType type, std::string octets)
      : type_(type), octets_(std::move(octets)) {}

  void Expect(ValueType type) const;
  [[noreturn]] void Misfit() const;

  ValueType type_ = ValueType::Null;
  std::uint64_t number_ = 0;  // of an INTEGER, its sign extended
  std::string octets_;
  Oid oid_;
};

// "INTEGER 21", "Gauge32 7", "STRING \"boiler room\"", octets that are no text
// as "STRING 00 1f", "OID 1.3.6.1", "IpAddress 192.0.2.1", "noSuchInstance".
std::string ToString(const Value& value);
std::ostream& operator<<(std::ostream& stream, const Value& value);

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_VALUE_H_
