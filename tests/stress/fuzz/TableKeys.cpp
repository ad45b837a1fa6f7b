// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Sub-identifiers as the index of a row, for keys of every kind: which are
// those of a key, and which row is behind any of them, while rows come and go.
// The reference reads RFC 2578, 7.7, part by part, and knows rows by their
// sub-identifiers alone.
#include <snmpsubagent.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Input.h"

namespace snmp = snmpsubagent;

namespace {

using Ids = std::vector<std::uint32_t>;

enum class Colour { Red = 1, Green = 2 };
enum class Flag { First, Second };
using Mac = std::array<std::uint8_t, 6>;

// ---- The reference.

// One index of a table.
struct Part {
  enum Kind {
    One,
    Number,
    Truth,
    Octets,
    FixedOctets,
    Oid,
    LastOctets,
    LastOid
  };
  Kind kind;
  std::uint32_t most = 4294967295;  // the highest number, or so many octets
};
using Grammar = std::vector<Part>;

constexpr std::size_t kLongest = 128;

bool AreOctets(const Ids& ids, std::size_t from, std::size_t count) {
  return ids.size() - from >= count &&
         std::all_of(ids.begin() + static_cast<std::ptrdiff_t>(from),
                     ids.begin() + static_cast<std::ptrdiff_t>(from + count),
                     [](std::uint32_t id) { return id <= 255; });
}

// Behind the part that begins at `from`; none if there is no such part.
std::optional<std::size_t> Behind(const Part& part, const Ids& ids,
                                  std::size_t from) {
  const std::size_t left = ids.size() - from;
  const auto ifHolds = [](bool holds, std::size_t behind) {
    return holds ? std::optional(behind) : std::nullopt;
  };
  switch (part.kind) {
    case Part::LastOctets:
      return ifHolds(AreOctets(ids, from, left), ids.size());
    case Part::LastOid:
      return ids.size();
    case Part::FixedOctets:
      return ifHolds(AreOctets(ids, from, part.most), from + part.most);
    default:
      break;
  }
  if (left == 0) return std::nullopt;
  const std::uint32_t first = ids[from];
  switch (part.kind) {
    case Part::One:
      return ifHolds(first == 1, from + 1);
    case Part::Truth:
      return ifHolds(first == 1 || first == 2, from + 1);
    case Part::Octets:
      return ifHolds(AreOctets(ids, from + 1, first), from + 1 + first);
    case Part::Oid:
      return ifHolds(first <= left - 1, from + 1 + first);
    default:
      return ifHolds(first <= part.most, from + 1);
  }
}

bool IsKey(const Grammar& grammar, const Ids& ids) {
  std::optional<std::size_t> place = 0;
  for (const Part& part : grammar) {
    place = Behind(part, ids, *place);
    if (!place) return false;
  }
  return !ids.empty() && *place == ids.size();
}

// ---- Sub-identifiers.

std::uint32_t SomeId(Input& input) {
  constexpr std::array<std::uint32_t, 10> kOdd{
      127,   128,   255,        256,        32767,
      65535, 65536, 2147483647, 2147483648, 4294967295};
  switch (input.Below(4)) {
    case 0:
      return kOdd[input.Below(kOdd.size())];
    case 1:
      return input.U8();
    default:
      return input.Below(4);
  }
}

void AddPart(Input& input, const Part& part, Ids& ids) {
  std::size_t count = input.Below(4);
  switch (part.kind) {
    case Part::One:
    case Part::Number:
    case Part::Truth:
      ids.push_back(SomeId(input));
      return;
    case Part::FixedOctets:
      count = part.most;
      break;
    case Part::Octets:
    case Part::Oid:
      ids.push_back(static_cast<std::uint32_t>(count));
      break;
    default:
      break;
  }
  for (; count > 0; --count) ids.push_back(SomeId(input));
}

// Mostly those of a key, or next to one.
Ids SomeIds(Input& input, const Grammar& grammar) {
  Ids ids;
  for (const Part& part : grammar) AddPart(input, part, ids);
  for (unsigned int changes = input.Below(4); changes > 1; --changes) {
    const unsigned int place = input.U8();
    switch (input.Below(5)) {
      case 0:
        ids.resize(std::min<std::size_t>(ids.size(), place % 16));
        break;
      case 1:
        ids.insert(ids.end(), place % 3, SomeId(input));
        break;
      case 2:
        if (!ids.empty()) ++ids[place % ids.size()];
        break;
      case 3:
        if (!ids.empty()) --ids[place % ids.size()];
        break;
      default:
        ids.insert(ids.end(), place, SomeId(input));
    }
  }
  ids.resize(std::min(ids.size(), kLongest));
  return ids;
}

// ---- Under test.

snmp::OidView ViewOf(const Ids& ids) { return {ids.data(), ids.size()}; }

struct Row {
  int number = 0;
};

template <typename Key>
Ids Written(const Key& key) {
  snmp::IndexWriter writer;
  snmp::IndexSyntax<Key>::Write(writer, key);
  Require(!writer.IsTooLong(), "a key has become longer than it was");
  return {writer.View().begin(), writer.View().end()};
}

// The rows of a table in each way in which it can have them.
template <typename Key, typename Map>
class Rows {
 public:
  explicit Rows(const Grammar& grammar)
      : grammar_(grammar), borrowed_(std::make_shared<Store>(map_)) {
    virtual_->SetVirtual(
        [this](const Key& key) {
          const auto found = map_.find(key);
          return found == map_.end() ? std::nullopt
                                     : std::optional(found->second);
        },
        [this](const Key* key) {
          const auto next = key ? map_.upper_bound(*key) : map_.begin();
          return next == map_.end() ? std::nullopt : std::optional(next->first);
        });
  }

  void Add(const Ids& ids) {
    const std::optional<Key> key = Decoded(ids);
    if (!key) return;
    Require(snmp::detail::CanBeIndex(*key), "a key is said to have no index");
    const bool isNew = known_.insert(ids).second;
    Require(held_->Put(*key, {}) == isNew, "another row has that key");
    map_[*key] = {};
  }

  void Erase(const Ids& ids) {
    const std::optional<Key> key = Decoded(ids);
    if (!key) return;
    const bool existed = known_.erase(ids) != 0;
    Require(held_->Erase(*key) == existed, "another row is erased");
    map_.erase(*key);
  }

  // The row there and the one behind, from every kind of rows.
  void Find(const Ids& ids, bool include) {
    Decoded(ids);
    Compare(*held_, ids, include);
    Compare(*borrowed_, ids, include);
    Compare(*virtual_, ids, include);
  }

  // As GETNEXTs walk.
  void Walk() {
    Ids at;
    for (std::size_t i = 0; i <= known_.size(); ++i) {
      Compare(*held_, at, false);
      Compare(*held_, at, false);
      const auto next = known_.upper_bound(at);
      if (next == known_.end()) return;
      at = *next;
    }
  }

  // A row that there is, or nothing.
  Ids Some(Input& input) const {
    auto row = known_.begin();
    for (unsigned int i = input.Below(8); i > 0 && row != known_.end(); --i) {
      ++row;
    }
    return row == known_.end() ? Ids() : *row;
  }

 private:
  using Store = snmp::detail::MapRows<Map>;

  std::optional<Key> Decoded(const Ids& ids) const {
    const auto key = snmp::detail::ReadKey<Key>(ViewOf(ids));
    Require(key.has_value() == IsKey(grammar_, ids),
            "sub-identifiers are a key's for one of the two only");
    Require(!key || Written(*key) == ids, "a key is written as another");
    return key;
  }

  template <typename Store>
  void Compare(Store& store, const Ids& ids, bool include) const {
    snmp::detail::RowView row;
    Require(store.Find(ViewOf(ids), row) == (known_.count(ids) != 0),
            "a row is found where there is none, or not found");
    const auto expected =
        include ? known_.lower_bound(ids) : known_.upper_bound(ids);
    snmp::IndexWriter index;
    const bool found = store.FindNext(ViewOf(ids), include, row, index);
    Require(found == (expected != known_.end()), "the next row is missing");
    if (!found) return;
    Require(index.View() == ViewOf(*expected), "another row is the next");
    Require(Written(*static_cast<const Key*>(row.key)) == *expected,
            "the next row has another key");
  }

  const Grammar& grammar_;
  std::set<Ids> known_;
  Map map_;
  std::shared_ptr<Store> held_ = std::make_shared<Store>();
  std::shared_ptr<Store> borrowed_;
  std::shared_ptr<Store> virtual_ = std::make_shared<Store>();
};

template <typename Key,
          typename Map = std::map<Key, Row, snmp::IndexOrder<Key>>>
void Play(Input& input, const Grammar& grammar) {
  Rows<Key, Map> rows(grammar);
  while (!input.AtEnd()) {
    switch (input.Below(8)) {
      case 0:
        rows.Walk();
        break;
      case 1:
        rows.Erase(rows.Some(input));
        break;
      case 2:
        rows.Erase(SomeIds(input, grammar));
        break;
      case 3: {
        const Ids ids = rows.Some(input);
        rows.Find(ids, input.Below(2) == 0);
        break;
      }
      case 4:
      case 5: {
        const Ids ids = SomeIds(input, grammar);
        rows.Find(ids, input.Below(2) == 0);
        break;
      }
      default:
        rows.Add(SomeIds(input, grammar));
    }
  }
  rows.Walk();
}

struct Kind {
  void (*play)(Input& input, const Grammar& grammar);
  Grammar grammar;
};

template <typename T>
using Last = snmp::Implied<T>;

const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kKinds{
      {Play<int>, {{Part::Number, 2147483647}}},
      {Play<int, std::map<int, Row>>, {{Part::Number, 2147483647}}},
      {Play<unsigned>, {{Part::Number}}},
      {Play<unsigned, std::map<unsigned, Row>>, {{Part::Number}}},
      {Play<std::int8_t>, {{Part::Number, 127}}},
      {Play<std::uint16_t>, {{Part::Number, 65535}}},
      {Play<Colour, std::map<Colour, Row>>, {{Part::Number, 2147483647}}},
      {Play<bool>, {{Part::Truth}}},
      {Play<snmp::TimeTicks>, {{Part::Number}}},
      {Play<std::string>, {{Part::Octets}}},
      {Play<snmp::Bytes>, {{Part::Octets}}},
      {Play<snmp::Bits<Flag>>, {{Part::Octets}}},
      {Play<Last<std::string>>, {{Part::LastOctets}}},
      {Play<Mac>, {{Part::FixedOctets, 6}}},
      {Play<snmp::IpAddress>, {{Part::FixedOctets, 4}}},
      {Play<snmp::Oid>, {{Part::Oid}}},
      {Play<Last<snmp::Oid>>, {{Part::LastOid}}},
      {Play<snmp::InetAddress>, {{Part::Number, 2147483647}, {Part::Octets}}},
      {Play<snmp::Counter32>, {{Part::Number}}},
      {Play<snmp::NetworkAddress>, {{Part::One}, {Part::FixedOctets, 4}}},
      {Play<std::pair<std::string, snmp::Oid>>, {{Part::Octets}, {Part::Oid}}},
      {Play<std::tuple<int, std::string, Last<snmp::Oid>>>,
       {{Part::Number, 2147483647}, {Part::Octets}, {Part::LastOid}}},
      {Play<std::tuple<snmp::IpAddress, std::uint8_t, Last<std::string>>>,
       {{Part::FixedOctets, 4}, {Part::Number, 255}, {Part::LastOctets}}},
      {Play<std::tuple<bool, snmp::Oid, snmp::InetAddress, unsigned>>,
       {{Part::Truth},
        {Part::Oid},
        {Part::Number, 2147483647},
        {Part::Octets},
        {Part::Number}}}};
  return kKinds;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  Input input(data, size);
  const Kind& kind =
      Kinds()[input.Below(static_cast<unsigned int>(Kinds().size()))];
  kind.play(input, kind.grammar);
  return 0;
}
