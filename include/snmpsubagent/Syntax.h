// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_SYNTAX_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_SYNTAX_H_

#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/Oid.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/Types.h"
#include "snmpsubagent/ValueView.h"
#include "snmpsubagent/ValueWriter.h"

namespace snmpsubagent {

// How values of a C++ type stand in a varbind. An application gives a type of
// its own, which has an operator==, an SMI syntax by a specialisation:
//
//   template <>
//   struct snmpsubagent::Syntax<Celsius> {
//     static constexpr ValueType kType = ValueType::Integer;
//     static void Write(ValueWriter& writer, Celsius value) {
//       writer.Integer(value.degrees);
//     }
//     // `view` is of type kType. None, WrongLength, WrongEncoding or
//     // WrongValue; `value` counts only with None.
//     static SetError Read(const ValueView& view, Celsius& value) {
//       return value.degrees = static_cast<int>(view.number), SetError::None;
//     }
//   };
template <typename T, typename = void>
struct Syntax;

namespace detail {

// Whether T has a Syntax.
template <typename T, typename = void>
struct HasSyntaxOf : std::false_type {};
template <typename T>
struct HasSyntaxOf<T, std::void_t<decltype(Syntax<T>::kType)>>
    : std::true_type {};
template <typename T>
constexpr bool HasSyntax = HasSyntaxOf<T>::value;

// Whether what a manager writes can be read as a T.
template <typename T, typename = void>
struct CanReadAs : std::false_type {};
template <typename T>
struct CanReadAs<T, std::void_t<decltype(Syntax<T>::Read(
                        std::declval<const ValueView&>(), std::declval<T&>()))>>
    : std::true_type {};
template <typename T>
constexpr bool CanRead = CanReadAs<T>::value;

// Whether values of a T can be compared.
template <typename T, typename = void>
struct IsComparableOf : std::false_type {};
template <typename T>
struct IsComparableOf<
    T, std::void_t<decltype(static_cast<bool>(std::declval<const T&>() ==
                                              std::declval<const T&>()))>>
    : std::true_type {};

// Whether they are the same, as two NaN are; `otherwise` if they cannot be
// compared.
template <typename T>
bool AreEqual(const T& a, const T& b, bool otherwise = false) {
  if constexpr (std::is_floating_point_v<T>) {
    return a == b || (std::isnan(a) && std::isnan(b));
  } else if constexpr (IsComparableOf<T>::value) {
    return a == b;
  } else {
    static_cast<void>(a), static_cast<void>(b);
    return otherwise;
  }
}

// The integers that fit Integer32 and Unsigned32. `char` is none: whether it
// has a sign depends on the processor.
template <typename T>
constexpr bool IsInteger32 = std::is_integral_v<T> && sizeof(T) <= 4 &&
                             !std::is_same_v<T, bool> &&
                             !std::is_same_v<T, char> &&
                             !std::is_same_v<T, wchar_t> &&
                             !std::is_same_v<T, char16_t> &&
                             !std::is_same_v<T, char32_t>;

inline std::string_view AsText(const std::uint8_t* octets, std::size_t size) {
  return {reinterpret_cast<const char*>(octets), size};
}

// Fails unless the number fits a T.
template <typename T>
SetError ReadNumber(std::int64_t number, T& value) {
  const bool mayBe = std::is_signed_v<T> || number >= 0;
  if (!mayBe || static_cast<std::int64_t>(static_cast<T>(number)) != number) {
    return SetError::WrongValue;
  }
  value = static_cast<T>(number);
  return SetError::None;
}

SNMPSUBAGENT_OBJECTS_EXPORT SetError ReadDateAndTime(
    std::string_view octets, std::chrono::system_clock::time_point& value);
SNMPSUBAGENT_OBJECTS_EXPORT std::string WriteDateAndTime(
    std::chrono::system_clock::time_point value);
// Opaque around a number of IEEE 754, as Net-SNMP does it: 0x9f, 0x78 or 0x79,
// the length and the octets, most significant first.
SNMPSUBAGENT_OBJECTS_EXPORT std::string WriteOpaqueFloat(float value);
SNMPSUBAGENT_OBJECTS_EXPORT std::string WriteOpaqueDouble(double value);
SNMPSUBAGENT_OBJECTS_EXPORT SetError ReadOpaqueFloat(std::string_view octets,
                                                     float& value);
SNMPSUBAGENT_OBJECTS_EXPORT SetError ReadOpaqueDouble(std::string_view octets,
                                                      double& value);

}  // namespace detail

template <typename T>
struct Syntax<T, std::enable_if_t<detail::IsInteger32<T>>> {
  static constexpr ValueType kType =
      std::is_signed_v<T> ? ValueType::Integer : ValueType::Gauge32;
  static void Write(ValueWriter& writer, T value) {
    if constexpr (std::is_signed_v<T>) {
      writer.Integer(value);
    } else {
      writer.Unsigned(kType, value);
    }
  }
  static SetError Read(const ValueView& view, T& value) {
    return detail::ReadNumber(static_cast<std::int64_t>(view.number), value);
  }
};

template <typename T>
struct Syntax<T, std::enable_if_t<std::is_enum_v<T>>> {
  static constexpr ValueType kType = ValueType::Integer;
  static void Write(ValueWriter& writer, T value) {
    writer.Integer(static_cast<std::int32_t>(value));
  }
  static SetError Read(const ValueView& view, T& value) {
    std::underlying_type_t<T> number{};
    const SetError error =
        detail::ReadNumber(static_cast<std::int64_t>(view.number), number);
    value = static_cast<T>(number);
    return error;
  }
};

// TruthValue (RFC 2579).
template <>
struct Syntax<bool> {
  static constexpr ValueType kType = ValueType::Integer;
  static void Write(ValueWriter& writer, bool value) {
    writer.Integer(value ? 1 : 2);
  }
  static SetError Read(const ValueView& view, bool& value) {
    value = view.number == 1;
    return view.number == 1 || view.number == 2 ? SetError::None
                                                : SetError::WrongValue;
  }
};

template <>
struct Syntax<TestAndIncr> {
  static constexpr ValueType kType = ValueType::Integer;
  static void Write(ValueWriter& writer, TestAndIncr value) {
    writer.Integer(value.value);
  }
  static SetError Read(const ValueView& view, TestAndIncr& value) {
    const SetError error =
        detail::ReadNumber(static_cast<std::int64_t>(view.number), value.value);
    return value.value < 0 ? SetError::WrongValue : error;
  }
};

template <>
struct Syntax<Counter32> {
  static constexpr ValueType kType = ValueType::Counter32;
  static void Write(ValueWriter& writer, Counter32 value) {
    writer.Unsigned(kType, value.value);
  }
};

template <>
struct Syntax<Counter64> {
  static constexpr ValueType kType = ValueType::Counter64;
  static void Write(ValueWriter& writer, Counter64 value) {
    writer.Counter64(value.value);
  }
};

template <>
struct Syntax<TimeTicks> {
  static constexpr ValueType kType = ValueType::TimeTicks;
  static void Write(ValueWriter& writer, TimeTicks value) {
    writer.Unsigned(kType, value.value);
  }
  static SetError Read(const ValueView& view, TimeTicks& value) {
    value.value = static_cast<std::uint32_t>(view.number);
    return SetError::None;
  }
};

template <>
struct Syntax<TimeStamp> {
  static constexpr ValueType kType = ValueType::TimeTicks;
  static void Write(ValueWriter& writer, TimeStamp value) {
    writer.UpTimeAt(value.moment);
  }
};

template <>
struct Syntax<std::string> {
  static constexpr ValueType kType = ValueType::OctetString;
  static void Write(ValueWriter& writer, const std::string& value) {
    writer.Octets(kType, value);
  }
  static SetError Read(const ValueView& view, std::string& value) {
    value = view.octets;
    return SetError::None;
  }
};

template <>
struct Syntax<Bytes> {
  static constexpr ValueType kType = ValueType::OctetString;
  static void Write(ValueWriter& writer, const Bytes& value) {
    writer.Octets(kType, detail::AsText(value.data(), value.size()));
  }
  static SetError Read(const ValueView& view, Bytes& value) {
    value.assign(view.octets.begin(), view.octets.end());
    return SetError::None;
  }
};

template <std::size_t N>
struct Syntax<std::array<std::uint8_t, N>> {
  static constexpr ValueType kType = ValueType::OctetString;
  static void Write(ValueWriter& writer,
                    const std::array<std::uint8_t, N>& value) {
    writer.Octets(kType, detail::AsText(value.data(), N));
  }
  static SetError Read(const ValueView& view,
                       std::array<std::uint8_t, N>& value) {
    if (view.octets.size() != N) return SetError::WrongLength;
    for (std::size_t i = 0; i < N; ++i) {
      value[i] = static_cast<std::uint8_t>(view.octets[i]);
    }
    return SetError::None;
  }
};

// DateAndTime (RFC 2579), in UTC; of a SET, with or without a time zone.
template <>
struct Syntax<std::chrono::system_clock::time_point> {
  using Moment = std::chrono::system_clock::time_point;
  static constexpr ValueType kType = ValueType::OctetString;
  static void Write(ValueWriter& writer, Moment value) {
    writer.Octets(kType, detail::WriteDateAndTime(value));
  }
  static SetError Read(const ValueView& view, Moment& value) {
    return detail::ReadDateAndTime(view.octets, value);
  }
};

template <typename Enum>
struct Syntax<Bits<Enum>> {
  static constexpr ValueType kType = ValueType::OctetString;
  static void Write(ValueWriter& writer, const Bits<Enum>& value) {
    writer.Octets(kType, value.Octets());
  }
  static SetError Read(const ValueView& view, Bits<Enum>& value) {
    value = Bits<Enum>::FromOctets(view.octets);
    return SetError::None;
  }
};

template <>
struct Syntax<Oid> {
  static constexpr ValueType kType = ValueType::ObjectIdentifier;
  static void Write(ValueWriter& writer, const Oid& value) {
    writer.ObjectIdentifier(value);
  }
  static SetError Read(const ValueView& view, Oid& value) {
    value = Oid(view.oid);
    return SetError::None;
  }
};

template <>
struct Syntax<IpAddress> {
  static constexpr ValueType kType = ValueType::IpAddress;
  static void Write(ValueWriter& writer, const IpAddress& value) {
    writer.Octets(kType, detail::AsText(value.octets.data(), 4));
  }
  static SetError Read(const ValueView& view, IpAddress& value) {
    if (view.octets.size() != 4) return SetError::WrongLength;
    for (std::size_t i = 0; i < 4; ++i) {
      value.octets[i] = static_cast<std::uint8_t>(view.octets[i]);
    }
    return SetError::None;
  }
};

template <>
struct Syntax<NetworkAddress> {
  static constexpr ValueType kType = ValueType::IpAddress;
  static void Write(ValueWriter& writer, const NetworkAddress& value) {
    Syntax<IpAddress>::Write(writer, value.address);
  }
  static SetError Read(const ValueView& view, NetworkAddress& value) {
    return Syntax<IpAddress>::Read(view, value.address);
  }
};

// The type stays what it was: a manager writes it to the object that has it.
template <>
struct Syntax<InetAddress> {
  static constexpr ValueType kType = ValueType::OctetString;
  static void Write(ValueWriter& writer, const InetAddress& value) {
    writer.Octets(kType, value.octets);
  }
  static SetError Read(const ValueView& view, InetAddress& value) {
    if (view.octets.size() > 255) return SetError::WrongLength;
    value.octets = view.octets;
    return SetError::None;
  }
};

template <>
struct Syntax<Opaque> {
  static constexpr ValueType kType = ValueType::Opaque;
  static void Write(ValueWriter& writer, const Opaque& value) {
    writer.Octets(kType, value.octets);
  }
  static SetError Read(const ValueView& view, Opaque& value) {
    value.octets = view.octets;
    return SetError::None;
  }
};

template <>
struct Syntax<float> {
  static constexpr ValueType kType = ValueType::Opaque;
  static void Write(ValueWriter& writer, float value) {
    writer.Octets(kType, detail::WriteOpaqueFloat(value));
  }
  static SetError Read(const ValueView& view, float& value) {
    return detail::ReadOpaqueFloat(view.octets, value);
  }
};

template <>
struct Syntax<double> {
  static constexpr ValueType kType = ValueType::Opaque;
  static void Write(ValueWriter& writer, double value) {
    writer.Octets(kType, detail::WriteOpaqueDouble(value));
  }
  static SetError Read(const ValueView& view, double& value) {
    return detail::ReadOpaqueDouble(view.octets, value);
  }
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_SYNTAX_H_
