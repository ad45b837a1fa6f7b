// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_INDEX_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_INDEX_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "snmpsubagent/IndexReader.h"
#include "snmpsubagent/IndexWriter.h"
#include "snmpsubagent/Oid.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/Types.h"

namespace snmpsubagent {

// A string or OID that is the last of a table's indexes, which the MIB says to
// be IMPLIED: its length is not part of the index.
template <typename T>
struct Implied {
  T value;

  Implied() = default;
  Implied(T v) : value(std::move(v)) {}  // NOLINT: meant to be implicit
  Implied(const char* text) : value(text) {}
  operator const T&() const { return value; }
};
template <typename T>
bool operator==(const Implied<T>& a, const Implied<T>& b) {
  return a.value == b.value;
}

// How a C++ type stands in an index (RFC 2578, 7.7). `kParts` is the number of
// the indexes that it is. Write() adds its sub-identifiers; Read() takes them,
// and returns false if they are those of no value.
template <typename T, typename = void>
struct IndexSyntax;

namespace detail {

template <typename Key, typename = void>
struct HasIndexSyntaxOf : std::false_type {};
template <typename Key>
struct HasIndexSyntaxOf<Key, std::void_t<decltype(IndexSyntax<Key>::kParts)>>
    : std::true_type {};
template <typename Key>
constexpr bool HasIndexSyntax = HasIndexSyntaxOf<Key>::value;

// A number of a type that has at most the range of `Number`.
template <typename Number, typename T>
bool ReadNumber(IndexReader& reader, T& value) {
  constexpr auto kHighest =
      static_cast<std::uint64_t>(std::numeric_limits<Number>::max());
  constexpr auto kHighestId = std::numeric_limits<SubIdentifier>::max();
  SubIdentifier id;
  if (!reader.Take(id, 0,
                   kHighest < kHighestId ? static_cast<SubIdentifier>(kHighest)
                                         : kHighestId)) {
    return false;
  }
  value = static_cast<T>(id);
  return true;
}

// Octets with their number in front.
inline void WriteOctets(IndexWriter& writer, std::string_view octets) {
  writer.Add(static_cast<SubIdentifier>(octets.size()));
  writer.AddOctets(octets);
}
template <typename Octets>
bool ReadOctets(IndexReader& reader, Octets& octets) {
  SubIdentifier size;
  if (!reader.TakeSize(size)) return false;
  octets.clear();
  for (SubIdentifier octet; octets.size() < size;) {
    if (!reader.Take(octet, 0, 255)) return false;
    octets.push_back(static_cast<typename Octets::value_type>(octet));
  }
  return true;
}

}  // namespace detail

template <typename T>
struct IndexSyntax<T, std::enable_if_t<detail::IsInteger32<T>>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, T value) {
    writer.Add(static_cast<SubIdentifier>(value));
  }
  static bool Read(IndexReader& reader, T& value) {
    return detail::ReadNumber<T>(reader, value);
  }
};

template <typename T>
struct IndexSyntax<T, std::enable_if_t<std::is_enum_v<T>>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, T value) {
    writer.Add(static_cast<SubIdentifier>(value));
  }
  static bool Read(IndexReader& reader, T& value) {
    return detail::ReadNumber<std::underlying_type_t<T>>(reader, value);
  }
};

template <>
struct IndexSyntax<bool> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, bool value) {
    writer.Add(value ? 1 : 2);
  }
  static bool Read(IndexReader& reader, bool& value) {
    SubIdentifier id;
    if (!reader.Take(id, 1, 2)) return false;
    value = id == 1;
    return true;
  }
};

template <>
struct IndexSyntax<TimeTicks> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, TimeTicks value) {
    writer.Add(value.value);
  }
  static bool Read(IndexReader& reader, TimeTicks& value) {
    return reader.Take(value.value);
  }
};

template <>
struct IndexSyntax<Counter32> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, Counter32 value) {
    writer.Add(value.value);
  }
  static bool Read(IndexReader& reader, Counter32& value) {
    return reader.Take(value.value);
  }
};

template <>
struct IndexSyntax<std::string> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const std::string& value) {
    detail::WriteOctets(writer, value);
  }
  static bool Read(IndexReader& reader, std::string& value) {
    return detail::ReadOctets(reader, value);
  }
};

template <>
struct IndexSyntax<Implied<std::string>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const Implied<std::string>& value) {
    writer.AddOctets(value.value);
  }
  static bool Read(IndexReader& reader, Implied<std::string>& value) {
    value.value.clear();
    for (SubIdentifier octet;
         reader.HasMore() && value.value.size() < Oid::kMaxSize;) {
      if (!reader.Take(octet, 0, 255)) return false;
      value.value.push_back(static_cast<char>(octet));
    }
    return true;
  }
};

template <>
struct IndexSyntax<Bytes> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const Bytes& value) {
    writer.Add(static_cast<SubIdentifier>(value.size()));
    for (const std::uint8_t octet : value) writer.Add(octet);
  }
  static bool Read(IndexReader& reader, Bytes& value) {
    return detail::ReadOctets(reader, value);
  }
};

template <typename Enum>
struct IndexSyntax<Bits<Enum>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const Bits<Enum>& value) {
    detail::WriteOctets(writer, value.Octets());
  }
  static bool Read(IndexReader& reader, Bits<Enum>& value) {
    std::string octets;
    if (!detail::ReadOctets(reader, octets)) return false;
    value = Bits<Enum>::FromOctets(octets);
    return true;
  }
};

template <std::size_t N>
struct IndexSyntax<std::array<std::uint8_t, N>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer,
                    const std::array<std::uint8_t, N>& value) {
    for (const std::uint8_t octet : value) writer.Add(octet);
  }
  static bool Read(IndexReader& reader, std::array<std::uint8_t, N>& value) {
    for (std::uint8_t& octet : value) {
      SubIdentifier id;
      if (!reader.Take(id, 0, 255)) return false;
      octet = static_cast<std::uint8_t>(id);
    }
    return true;
  }
};

template <>
struct IndexSyntax<IpAddress> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const IpAddress& value) {
    IndexSyntax<std::array<std::uint8_t, 4>>::Write(writer, value.octets);
  }
  static bool Read(IndexReader& reader, IpAddress& value) {
    return IndexSyntax<std::array<std::uint8_t, 4>>::Read(reader, value.octets);
  }
};

template <>
struct IndexSyntax<NetworkAddress> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const NetworkAddress& value) {
    writer.Add(1);
    IndexSyntax<IpAddress>::Write(writer, value.address);
  }
  static bool Read(IndexReader& reader, NetworkAddress& value) {
    SubIdentifier kind;
    return reader.Take(kind, 1, 1) &&
           IndexSyntax<IpAddress>::Read(reader, value.address);
  }
};

namespace detail {

// So many sub-identifiers, or those that there are.
inline bool ReadIds(IndexReader& reader, std::size_t most, Oid& value) {
  IndexWriter ids;
  for (SubIdentifier id; ids.View().size() < most && reader.HasMore();) {
    if (!reader.Take(id)) return false;
    ids.Add(id);
  }
  value = Oid(ids.View());
  return true;
}

}  // namespace detail

template <>
struct IndexSyntax<Oid> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const Oid& value) {
    writer.Add(static_cast<SubIdentifier>(value.size()));
    for (const SubIdentifier id : value) writer.Add(id);
  }
  static bool Read(IndexReader& reader, Oid& value) {
    SubIdentifier size;
    return reader.TakeSize(size) && detail::ReadIds(reader, size, value) &&
           value.size() == size;
  }
};

template <>
struct IndexSyntax<Implied<Oid>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const Implied<Oid>& value) {
    for (const SubIdentifier id : value.value) writer.Add(id);
  }
  static bool Read(IndexReader& reader, Implied<Oid>& value) {
    return detail::ReadIds(reader, Oid::kMaxSize, value.value);
  }
};

// Two indexes: InetAddressType and InetAddress (RFC 4001).
template <>
struct IndexSyntax<InetAddress> {
  static constexpr std::size_t kParts = 2;
  static void Write(IndexWriter& writer, const InetAddress& value) {
    writer.Add(static_cast<SubIdentifier>(value.type));
    detail::WriteOctets(writer, value.octets);
  }
  static bool Read(IndexReader& reader, InetAddress& value) {
    return IndexSyntax<InetAddressType>::Read(reader, value.type) &&
           detail::ReadOctets(reader, value.octets);
  }
};

// Several indexes.
template <typename... Parts>
struct IndexSyntax<std::tuple<Parts...>,
                   std::enable_if_t<(detail::HasIndexSyntax<Parts> && ...)>> {
  static constexpr std::size_t kParts = (IndexSyntax<Parts>::kParts + ...);
  static void Write(IndexWriter& writer, const std::tuple<Parts...>& value) {
    std::apply(
        [&](const Parts&... part) {
          (IndexSyntax<Parts>::Write(writer, part), ...);
        },
        value);
  }
  static bool Read(IndexReader& reader, std::tuple<Parts...>& value) {
    return std::apply(
        [&](Parts&... part) {
          return (IndexSyntax<Parts>::Read(reader, part) && ...);
        },
        value);
  }
};
template <typename A, typename B>
struct IndexSyntax<
    std::pair<A, B>,
    std::enable_if_t<detail::HasIndexSyntax<A> && detail::HasIndexSyntax<B>>> {
  static constexpr std::size_t kParts =
      IndexSyntax<A>::kParts + IndexSyntax<B>::kParts;
  static void Write(IndexWriter& writer, const std::pair<A, B>& value) {
    IndexSyntax<A>::Write(writer, value.first);
    IndexSyntax<B>::Write(writer, value.second);
  }
  static bool Read(IndexReader& reader, std::pair<A, B>& value) {
    return IndexSyntax<A>::Read(reader, value.first) &&
           IndexSyntax<B>::Read(reader, value.second);
  }
};

namespace detail {

// Whether one sub-identifier is all of the index, in the order of the number.
template <typename Key>
constexpr bool IsNumberIndex = IsInteger32<Key> || std::is_enum_v<Key>;

template <typename T, bool = std::is_enum_v<T>>
struct NumberOfType {
  using Type = T;
};
template <typename T>
struct NumberOfType<T, true> {
  using Type = std::underlying_type_t<T>;
};
template <typename T>
using NumberOf = typename NumberOfType<T>::Type;

}  // namespace detail

// The OID of a cell: that of its column, and the key of its row behind. Throws
// std::invalid_argument for more than 128 sub-identifiers.
//
//   linkDown.Send({{snmp::InstanceOf("1.3.6.1.2.1.2.2.1.8", 7), status}});
template <typename Key>
Oid InstanceOf(const Oid& column, const Key& key) {
  IndexWriter index;
  IndexSyntax<Key>::Write(index, key);
  return column + index.View();
}

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_INDEX_H_
