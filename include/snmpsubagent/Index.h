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

// Takes an index apart, from its front. To find the place of sub-identifiers
// that are those of no value, it can also round down: then it takes the highest
// number that may stand there in the place of one that is higher, and from
// there on the highest of everything.
class IndexReader {
 public:
  enum class Mode {
    Exact,
    RoundDown,
    Below  // rounds down, and the highest of everything follows the last one
  };
  explicit IndexReader(OidView ids, Mode mode = Mode::Exact)
      : ids_(ids), mode_(mode) {}

  // Fails if there is none left, or none of that range.
  bool Take(SubIdentifier& id, SubIdentifier lowest = 0,
            SubIdentifier highest = std::numeric_limits<SubIdentifier>::max()) {
    if (ids_.empty()) {
      if (!isBelow_ && mode_ != Mode::Below) return false;
      isBelow_ = true;
    }
    id = isBelow_ ? highest : ids_[0];
    if (id < lowest) return false;
    if (id > highest) {
      if (mode_ == Mode::Exact) return false;
      id = highest;
      isBelow_ = true;
    }
    ids_ = isBelow_ ? OidView() : ids_.After(1);
    return true;
  }
  // How many of something follow.
  bool TakeSize(SubIdentifier& size) { return Take(size, 0, Oid::kMaxSize); }
  bool HasMore() const {
    return isBelow_ || mode_ == Mode::Below || !ids_.empty();
  }

  OidView Rest() const { return ids_; }

 private:
  OidView ids_;
  Mode mode_;
  bool isBelow_ = false;  // what has been taken is below what there was
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

namespace detail {

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

// The key that is exactly these sub-identifiers. No key has none.
template <typename Key>
std::optional<Key> ReadKey(OidView index) {
  IndexReader reader(index);
  Key key{};
  if (index.empty() || !IndexSyntax<Key>::Read(reader, key) ||
      !reader.Rest().empty()) {
    return std::nullopt;
  }
  return key;
}

// The greatest key that is not behind these sub-identifiers, in the order of
// the OIDs; it may be longer than an OID can be.
template <typename Key>
std::optional<Key> FloorKey(OidView index) {
  std::vector<SubIdentifier> ids(index.begin(), index.end());
  auto mode = IndexReader::Mode::RoundDown;
  while (!ids.empty()) {
    IndexReader reader(OidView(ids.data(), ids.size()), mode);
    Key key{};
    if (IndexSyntax<Key>::Read(reader, key)) return key;
    // There is none with what has been read in front: then the greatest one
    // with less in front.
    ids.resize(ids.size() - reader.Rest().size());
    while (!ids.empty() && ids.back() == 0) ids.pop_back();
    if (!ids.empty()) --ids.back();
    mode = IndexReader::Mode::Below;
  }
  return std::nullopt;
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

// The OID of a cell: that of its column, and the key of its row behind.
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
