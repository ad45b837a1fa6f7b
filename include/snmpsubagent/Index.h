// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_INDEX_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_INDEX_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "snmpsubagent/Oid.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/Types.h"

namespace snmpsubagent {

// The sub-identifiers of an index on their way into an OID. Of one that is too
// long for an OID, those that are too many are left out and IsTooLong() tells.
class IndexWriter {
 public:
  void Add(SubIdentifier id) {
    if (size_ < ids_.size()) {
      ids_[size_++] = id;
    } else {
      tooLong_ = true;
    }
  }
  void AddOctets(std::string_view octets) {
    for (const char octet : octets) Add(static_cast<unsigned char>(octet));
  }

  void Clear() { size_ = 0, tooLong_ = false; }
  OidView View() const { return {ids_.data(), size_}; }
  bool IsTooLong() const { return tooLong_; }

 private:
  std::array<SubIdentifier, Oid::kMaxSize> ids_;
  std::size_t size_ = 0;
  bool tooLong_ = false;
};

// Takes an index apart, from its front.
class IndexReader {
 public:
  explicit IndexReader(OidView ids) : ids_(ids) {}

  // Fails if there is none left.
  bool Take(SubIdentifier& id) {
    if (ids_.empty()) return false;
    id = ids_[0];
    ids_ = ids_.After(1);
    return true;
  }
  // Fails unless there are so many, each an octet.
  bool TakeOctets(std::size_t count, std::string& octets) {
    if (ids_.size() < count) return false;
    octets.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
      if (ids_[i] > 255) return false;
      octets[i] = static_cast<char>(ids_[i]);
    }
    ids_ = ids_.After(count);
    return true;
  }

  OidView Rest() const { return ids_; }
  void Skip(std::size_t count) { ids_ = ids_.After(count); }

 private:
  OidView ids_;
};

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

// How a C++ type stands in an index (RFC 2578, 7.7). Write() encodes; Read()
// decodes and fails if the sub-identifiers are those of no value.
template <typename T, typename = void>
struct IndexSyntax;

template <typename T>
struct IndexSyntax<T, std::enable_if_t<detail::IsInteger32<T>>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, T value) {
    writer.Add(static_cast<SubIdentifier>(value));
  }
  static bool Read(IndexReader& reader, T& value) {
    SubIdentifier id;
    if (!reader.Take(id) ||
        id > static_cast<SubIdentifier>(std::numeric_limits<T>::max())) {
      return false;
    }
    value = static_cast<T>(id);
    return true;
  }
};

template <typename T>
struct IndexSyntax<T, std::enable_if_t<std::is_enum_v<T>>> {
  static constexpr std::size_t kParts = 1;
  using Number = std::underlying_type_t<T>;
  static void Write(IndexWriter& writer, T value) {
    writer.Add(static_cast<SubIdentifier>(value));
  }
  static bool Read(IndexReader& reader, T& value) {
    SubIdentifier id;
    if (!reader.Take(id) ||
        static_cast<std::uint64_t>(id) >
            static_cast<std::uint64_t>(std::numeric_limits<Number>::max())) {
      return false;
    }
    value = static_cast<T>(id);
    return true;
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
    if (!reader.Take(id) || id < 1 || id > 2) return false;
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

namespace detail {

// Octets with their number in front, or, if they are implied, all that is left.
inline void WriteOctets(IndexWriter& writer, std::string_view octets) {
  writer.Add(static_cast<SubIdentifier>(octets.size()));
  writer.AddOctets(octets);
}
inline bool ReadOctets(IndexReader& reader, std::string& octets) {
  SubIdentifier size;
  return reader.Take(size) && reader.TakeOctets(size, octets);
}

}  // namespace detail

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
    return reader.TakeOctets(reader.Rest().size(), value.value);
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
    std::string octets;
    if (!detail::ReadOctets(reader, octets)) return false;
    value.assign(octets.begin(), octets.end());
    return true;
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
      if (!reader.Take(id) || id > 255) return false;
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
struct IndexSyntax<Oid> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const Oid& value) {
    writer.Add(static_cast<SubIdentifier>(value.size()));
    for (const SubIdentifier id : value) writer.Add(id);
  }
  static bool Read(IndexReader& reader, Oid& value) {
    SubIdentifier size;
    if (!reader.Take(size) || reader.Rest().size() < size) return false;
    value = Oid(reader.Rest().First(size));
    reader.Skip(size);
    return true;
  }
};

template <>
struct IndexSyntax<Implied<Oid>> {
  static constexpr std::size_t kParts = 1;
  static void Write(IndexWriter& writer, const Implied<Oid>& value) {
    for (const SubIdentifier id : value.value) writer.Add(id);
  }
  static bool Read(IndexReader& reader, Implied<Oid>& value) {
    value.value = Oid(reader.Rest());
    reader.Skip(reader.Rest().size());
    return true;
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
struct IndexSyntax<std::tuple<Parts...>> {
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
struct IndexSyntax<std::pair<A, B>> {
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

template <typename Key, typename = void>
struct HasIndexSyntaxOf : std::false_type {};
template <typename Key>
struct HasIndexSyntaxOf<Key, std::void_t<decltype(IndexSyntax<Key>::kParts)>>
    : std::true_type {};
template <typename Key>
constexpr bool HasIndexSyntax = HasIndexSyntaxOf<Key>::value;

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

// The key that is exactly these sub-identifiers.
template <typename Key>
std::optional<Key> ReadKey(OidView index) {
  IndexReader reader(index);
  Key key{};
  if (!IndexSyntax<Key>::Read(reader, key) || !reader.Rest().empty()) {
    return std::nullopt;
  }
  return key;
}

}  // namespace detail

// The order in which managers see keys: that of the OIDs that they make.
// Compares with sub-identifiers as well, which may be those of no key. For a
// container of the application's own:
//
//   std::map<std::string, User, snmp::IndexOrder<std::string>> users;
template <typename Key>
struct IndexOrder {
  using is_transparent = void;

  bool operator()(const Key& a, const Key& b) const {
    if constexpr (detail::IsNumberIndex<Key>) {
      return static_cast<SubIdentifier>(a) < static_cast<SubIdentifier>(b);
    } else {
      IndexWriter written;
      IndexSyntax<Key>::Write(written, a);
      return (*this)(written.View(), b);
    }
  }
  bool operator()(const Key& a, OidView b) const { return Compared(a, b) < 0; }
  bool operator()(OidView a, const Key& b) const { return Compared(b, a) > 0; }

 private:
  static int Compared(const Key& key, OidView index) {
    if constexpr (detail::IsNumberIndex<Key>) {
      const SubIdentifier id = static_cast<SubIdentifier>(key);
      return Compare(OidView(&id, 1), index);
    } else {
      IndexWriter written;
      IndexSyntax<Key>::Write(written, key);
      return Compare(written.View(), index);
    }
  }
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_INDEX_H_
