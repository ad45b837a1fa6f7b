// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Keys of every kind as the indexes of rows: how they are encoded, which
// sub-identifiers are those of a key, and which row comes behind any.
#include <gtest/gtest.h>
#include <snmpsubagent.h>

#include <array>
#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace snmp = snmpsubagent;

namespace {

using snmp::IndexOrder;
using snmp::IndexWriter;
using snmp::Oid;
using snmp::OidView;
using snmp::SubIdentifier;
using snmp::detail::ReadKey;
using Ids = std::vector<SubIdentifier>;

enum class Colour { Red = 1, Green = 2, Blue = 7 };
enum class Large : std::uint32_t { High = 4294967295 };
enum class Flag { First, Second, Tenth = 9 };
using Mac = std::array<std::uint8_t, 6>;
using Text = std::string;
using LastText = snmp::Implied<std::string>;
using LastOid = snmp::Implied<Oid>;

template <typename Key>
std::string Encoded(const Key& key) {
  IndexWriter written;
  snmp::IndexSyntax<Key>::Write(written, key);
  return snmp::ToString(written.View());
}

template <typename Key>
bool IsKey(const Oid& ids) {
  return ReadKey<Key>(ids).has_value();
}

TEST(AnIndex, IsEncodedAsTheSmiSays) {
  EXPECT_EQ(Encoded(7), "7");
  EXPECT_EQ(Encoded(4294967295U), "4294967295");
  EXPECT_EQ(Encoded(std::uint8_t{255}), "255");
  EXPECT_EQ(Encoded(Colour::Blue), "7");
  EXPECT_EQ(Encoded(Large::High), "4294967295");
  EXPECT_EQ(Encoded(true), "1");
  EXPECT_EQ(Encoded(false), "2");
  EXPECT_EQ(Encoded(snmp::TimeTicks(4000000000)), "4000000000");
  EXPECT_EQ(Encoded(snmp::Counter32{4000000000}), "4000000000");
  EXPECT_EQ(Encoded(Text("ab\xff")), "3.97.98.255");
  EXPECT_EQ(Encoded(Text()), "0");
  EXPECT_EQ(Encoded(snmp::Bytes{0, 255}), "2.0.255");
  EXPECT_EQ(Encoded(LastText("ab")), "97.98");
  EXPECT_EQ(Encoded(Mac{0, 1, 2, 3, 4, 255}), "0.1.2.3.4.255");
  EXPECT_EQ(Encoded(Oid("1.3.6")), "3.1.3.6");
  EXPECT_EQ(Encoded(Oid()), "0");
  EXPECT_EQ(Encoded(LastOid("1.3.6")), "1.3.6");
  EXPECT_EQ(Encoded(snmp::IpAddress(192, 0, 2, 1)), "192.0.2.1");
  EXPECT_EQ(Encoded(snmp::NetworkAddress(snmp::IpAddress(192, 0, 2, 1))),
            "1.192.0.2.1");
  EXPECT_EQ(Encoded(snmp::InetAddress("192.0.2.1")), "1.4.192.0.2.1");
  EXPECT_EQ(Encoded(snmp::InetAddress("2001:db8::1")),
            "2.16.32.1.13.184.0.0.0.0.0.0.0.0.0.0.0.1");
  EXPECT_EQ(Encoded(snmp::InetAddress("a.b")), "16.3.97.46.98");
  EXPECT_EQ(Encoded(snmp::Bits<Flag>{Flag::First, Flag::Tenth}), "2.128.64");
  EXPECT_EQ(Encoded(std::tuple(Text("a"), 5, LastText("bc"))), "1.97.5.98.99");
  EXPECT_EQ(Encoded(std::pair(Colour::Red, Oid("1.3"))), "1.2.1.3");
}

TEST(AnInstance, IsTheColumnWithTheKeyBehind) {
  EXPECT_EQ(snmp::InstanceOf("1.3.6.1", 7), Oid("1.3.6.1.7"));
  EXPECT_EQ(snmp::InstanceOf("1.3.6.1", std::tuple(Text("a"), 5)),
            Oid("1.3.6.1.1.97.5"));
}

TEST(AnIndexOfANumber, IsOneThatTheTypeHas) {
  EXPECT_TRUE(IsKey<int>("2147483647"));
  EXPECT_FALSE(IsKey<int>("2147483648"));
  EXPECT_FALSE(IsKey<int>("4294967295"));
  EXPECT_TRUE(IsKey<unsigned>("4294967295"));
  EXPECT_TRUE(IsKey<std::int8_t>("127"));
  EXPECT_FALSE(IsKey<std::int8_t>("128"));
  EXPECT_FALSE(IsKey<std::uint16_t>("65536"));
  EXPECT_FALSE(IsKey<Colour>("2147483648"));
  EXPECT_TRUE(IsKey<Large>("2147483648"));
  EXPECT_FALSE(IsKey<bool>("0"));
  EXPECT_FALSE(IsKey<bool>("3"));
  EXPECT_TRUE(IsKey<snmp::TimeTicks>("4294967295"));
}

TEST(AnIndexOfANumber, IsOneSubIdentifier) {
  EXPECT_FALSE(IsKey<int>(""));
  EXPECT_FALSE(IsKey<int>("1.0"));
  EXPECT_FALSE(IsKey<Colour>("1.1"));
}

TEST(AnIndexOfOctets, IsOneWithAsManyAsItSays) {
  EXPECT_TRUE(IsKey<Text>("2.97.98"));
  EXPECT_FALSE(IsKey<Text>(""));
  EXPECT_FALSE(IsKey<Text>("2"));
  EXPECT_FALSE(IsKey<Text>("2.97"));
  EXPECT_FALSE(IsKey<Text>("2.97.98.99"));
  EXPECT_FALSE(IsKey<Text>("4294967295.97"));
  EXPECT_TRUE(IsKey<Mac>("0.0.0.0.0.0"));
  EXPECT_FALSE(IsKey<Mac>("0.0.0.0.0"));
  EXPECT_FALSE(IsKey<Mac>("0.0.0.0.0.0.0"));
  EXPECT_FALSE(IsKey<snmp::IpAddress>("192.0.2"));
  EXPECT_FALSE(IsKey<snmp::NetworkAddress>("1.192.0.2"));
  EXPECT_FALSE(IsKey<snmp::NetworkAddress>("2.192.0.2.1"));
  EXPECT_FALSE(IsKey<snmp::InetAddress>("1"));
  EXPECT_FALSE(IsKey<snmp::InetAddress>("1.4.192.0.2"));
}

TEST(AnIndexOfOctets, HasNoNumberAbove255) {
  EXPECT_FALSE(IsKey<Text>("2.97.256"));
  EXPECT_FALSE(IsKey<LastText>("97.256"));
  EXPECT_FALSE(IsKey<Mac>("0.0.0.0.0.256"));
  EXPECT_FALSE(IsKey<snmp::IpAddress>("192.0.2.256"));
}

TEST(AnIndexOfAnOid, IsOneWithAsManySubIdentifiersAsItSays) {
  EXPECT_TRUE(IsKey<Oid>("2.1.3"));
  EXPECT_TRUE(IsKey<Oid>("0"));
  EXPECT_FALSE(IsKey<Oid>("3.1.3"));
  EXPECT_FALSE(IsKey<Oid>("1.1.3"));
  EXPECT_FALSE(IsKey<Oid>("4294967295.1"));
  EXPECT_TRUE(IsKey<LastOid>("1.3.4294967295"));
}

TEST(AnIndex, IsNeverEmpty) {
  EXPECT_FALSE(IsKey<LastText>(""));
  EXPECT_FALSE(IsKey<LastOid>(""));
  EXPECT_FALSE(snmp::detail::CanBeIndex(LastText("")));
}

TEST(AKey, IsNoIndexIfItIsNegativeOrTooLong) {
  EXPECT_FALSE(snmp::detail::CanBeIndex(-1));
  EXPECT_FALSE(snmp::detail::CanBeIndex(std::pair(1, -1)));
  EXPECT_FALSE(snmp::detail::CanBeIndex(static_cast<Colour>(-1)));
  EXPECT_TRUE(snmp::detail::CanBeIndex(Text(127, 'x')));
  EXPECT_FALSE(snmp::detail::CanBeIndex(Text(128, 'x')));
}

TEST(AKey, IsNoIndexIfItHasMoreThan32Bits) {
  enum class Wide : std::uint64_t {};
  EXPECT_TRUE(snmp::detail::CanBeIndex(Wide{4294967295}));
  EXPECT_FALSE(snmp::detail::CanBeIndex(Wide{4294967296}));
}

// ---- Which row comes behind any index, against a map of OIDs.

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  std::uint32_t Below(std::uint32_t bound) { return engine_() % bound; }
  // Often at one of the ends of a range.
  std::uint32_t Id() {
    static const std::uint32_t kIds[] = {
        0,   1,   2,   3,          4,          97,         127,       128,
        254, 255, 256, 2147483647, 2147483648, 4294967294, 4294967295};
    return kIds[Below(std::size(kIds))];
  }
  std::string Octets() {
    std::string octets(Below(4), '\0');
    for (char& octet : octets) octet = static_cast<char>(Id());
    return octets;
  }
  Oid Ids() {
    Oid ids;
    for (std::uint32_t left = Below(4); left > 0; --left) {
      const SubIdentifier id = Id();
      ids = ids + OidView(&id, 1);
    }
    return ids;
  }

 private:
  std::mt19937 engine_;
};

void Fill(Random& random, int& key) {
  key = static_cast<int>(random.Id() & 0x7fffffff);
}
void Fill(Random& random, std::uint32_t& key) { key = random.Id(); }
void Fill(Random& random, std::int8_t& key) {
  key = static_cast<std::int8_t>(random.Id() & 0x7f);
}
void Fill(Random& random, Colour& key) {
  key = static_cast<Colour>(random.Below(8));
}
void Fill(Random& random, bool& key) { key = random.Below(2) == 0; }
void Fill(Random& random, snmp::TimeTicks& key) { key.value = random.Id(); }
void Fill(Random& random, Text& key) { key = random.Octets(); }
void Fill(Random& random, snmp::Bytes& key) {
  const std::string octets = random.Octets();
  key.assign(octets.begin(), octets.end());
}
void Fill(Random& random, LastText& key) { key = "x" + random.Octets(); }
void Fill(Random& random, Oid& key) { key = random.Ids(); }
void Fill(Random& random, LastOid& key) { key = Oid{1} + random.Ids(); }
template <std::size_t N>
void Fill(Random& random, std::array<std::uint8_t, N>& key) {
  for (auto& octet : key) octet = static_cast<std::uint8_t>(random.Id());
}
void Fill(Random& random, snmp::IpAddress& key) { Fill(random, key.octets); }
void Fill(Random& random, snmp::NetworkAddress& key) {
  Fill(random, key.address);
}
void Fill(Random& random, snmp::Counter32& key) { key.value = random.Id(); }
void Fill(Random& random, snmp::InetAddress& key) {
  key = {static_cast<snmp::InetAddressType>(random.Below(5)), random.Octets()};
}
void Fill(Random& random, snmp::Bits<Flag>& key) {
  key = snmp::Bits<Flag>::FromOctets(random.Octets());
}
template <typename... Parts>
void Fill(Random& random, std::tuple<Parts...>& key) {
  std::apply([&](Parts&... part) { (Fill(random, part), ...); }, key);
}
template <typename A, typename B>
void Fill(Random& random, std::pair<A, B>& key) {
  Fill(random, key.first), Fill(random, key.second);
}

template <typename Key>
Ids IdsOf(const Key& key) {
  IndexWriter written;
  snmp::IndexSyntax<Key>::Write(written, key);
  return {written.View().begin(), written.View().end()};
}

OidView ViewOf(const Ids& ids) { return {ids.data(), ids.size()}; }

// Near an index: cut, made longer, or with a number changed.
Ids Near(Random& random, Ids ids) {
  for (std::uint32_t changes = random.Below(3); changes > 0; --changes) {
    if (ids.empty() || random.Below(4) == 0) ids.push_back(random.Id());
    const std::size_t place =
        random.Below(static_cast<std::uint32_t>(ids.size()));
    switch (random.Below(5)) {
      case 0:
        ids.resize(place);
        break;
      case 1:
        ++ids[place];
        break;
      case 2:
        --ids[place];
        break;
      case 3:
        ids[place] = random.Id();
        break;
    }
  }
  return ids;
}

template <typename Key>
class KeysOf : public testing::Test {
 protected:
  using Map = std::map<Key, int, IndexOrder<Key>>;
  using Store = snmp::detail::MapRows<Map>;

  void Add(Random& random) {
    Key key{};
    Fill(random, key);
    const Ids ids = IdsOf(key);
    if (!expected_.emplace(ids, key).second) return;
    EXPECT_TRUE(snmp::detail::CanBeIndex(key));
    EXPECT_EQ(IdsOf(ReadKey<Key>(ViewOf(ids)).value()), ids);
    held_->Put(key, 1);
    rows_.emplace(key, 1);
  }

  // The successor as each store finds it; empty if there is none.
  static Ids Next(snmp::detail::RowStore& store, const Ids& ids, bool include) {
    snmp::detail::RowView row;
    IndexWriter found;
    if (!store.FindNext(ViewOf(ids), include, row, found)) return {};
    EXPECT_EQ(IdsOf(*static_cast<const Key*>(row.key)),
              Ids(found.View().begin(), found.View().end()));
    return {found.View().begin(), found.View().end()};
  }
  Ids Expected(const Ids& ids, bool include) const {
    const auto place = include && !ids.empty() ? expected_.lower_bound(ids)
                                               : expected_.upper_bound(ids);
    return place == expected_.end() ? Ids() : place->first;
  }

  static bool Finds(snmp::detail::RowStore& store, const Ids& ids) {
    snmp::detail::RowView row;
    return store.Find(ViewOf(ids), row);
  }

  void ExpectAllAgreeOn(const Ids& ids) {
    const std::string name = snmp::ToString(ViewOf(ids));
    for (const auto& store : {held_, borrowed_, told_}) {
      ASSERT_EQ(Finds(*store, ids), expected_.count(ids) == 1) << name;
      for (const bool include : {false, true}) {
        const Ids next = Expected(ids, include);
        ASSERT_EQ(Next(*store, ids, include), next) << name << ' ' << include;
        if (next.empty()) continue;
        ASSERT_EQ(Next(*store, next, false), Expected(next, false)) << name;
        // As in a request for several columns.
        ASSERT_EQ(Next(*store, next, false), Expected(next, false)) << name;
      }
    }
  }

  // The rows behind the functions of a table of such.
  std::shared_ptr<Store> MakeTold() {
    auto store = std::make_shared<Store>();
    store->SetVirtual(
        [this](const Key& key) -> std::optional<int> {
          const auto place = rows_.find(key);
          if (place == rows_.end()) return std::nullopt;
          return place->second;
        },
        [this](const Key* key) -> std::optional<Key> {
          const auto place = key ? rows_.upper_bound(*key) : rows_.begin();
          if (place == rows_.end()) return std::nullopt;
          return place->first;
        });
    return store;
  }

  std::map<Ids, Key> expected_;
  Map rows_;
  std::shared_ptr<Store> held_ = std::make_shared<Store>();
  std::shared_ptr<Store> borrowed_ = std::make_shared<Store>(rows_);
  std::shared_ptr<Store> told_ = MakeTold();
};

using KeyTypes =
    testing::Types<int, std::uint32_t, std::int8_t, Colour, bool,
                   snmp::TimeTicks, Text, snmp::Bytes, LastText, Oid, LastOid,
                   Mac, snmp::IpAddress, snmp::NetworkAddress, snmp::Counter32,
                   snmp::InetAddress, snmp::Bits<Flag>, std::pair<bool, Text>,
                   std::tuple<Text, int, LastText>,
                   std::tuple<Oid, std::array<std::uint8_t, 2>>,
                   std::tuple<snmp::InetAddress, std::uint32_t, LastOid>,
                   std::tuple<std::int8_t, std::int8_t, std::int8_t, bool>>;
TYPED_TEST_SUITE(KeysOf, KeyTypes);

TYPED_TEST(KeysOf, EveryKindAreFoundFromAnyIndex) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    Random random(seed);
    this->Add(random);
    this->Add(random);
    std::vector<Ids> indexes{{}};
    for (const auto& row : this->expected_) indexes.push_back(row.first);
    for (int i = 0; i < 40; ++i) {
      const auto some =
          random.Below(static_cast<std::uint32_t>(indexes.size()));
      ASSERT_NO_FATAL_FAILURE(
          this->ExpectAllAgreeOn(Near(random, indexes[some])));
    }
  }
}

TYPED_TEST(KeysOf, EveryKindMakeNoIndexThatCannotBeReadBack) {
  Random random(7);
  for (int i = 0; i < 2000; ++i) {
    TypeParam key{};
    Fill(random, key);
    const Ids ids = Near(random, IdsOf(key));
    if (const auto read = ReadKey<TypeParam>(ViewOf(ids))) {
      ASSERT_EQ(IdsOf(*read), ids) << snmp::ToString(ViewOf(ids));
    }
  }
}

TEST(RowsOfANumber, AreFoundInAMapInTheOrderOfTheNumbers) {
  std::map<int, int> rows{{-5, 1}, {-1, 1}, {0, 1}, {3, 1}, {2147483647, 1}};
  snmp::detail::MapRows<std::map<int, int>> store(rows);
  const auto next = [&](const Ids& ids) {
    snmp::detail::RowView row;
    IndexWriter found;
    return store.FindNext(ViewOf(ids), false, row, found)
               ? snmp::ToString(found.View())
               : "none";
  };
  EXPECT_EQ(next({}), "0");  // There is no index below 0.
  EXPECT_EQ(next({0}), "3");
  EXPECT_EQ(next({0, 9}), "3");
  EXPECT_EQ(next({2}), "3");
  EXPECT_EQ(next({3}), "2147483647");
  EXPECT_EQ(next({2147483647}), "none");
  EXPECT_EQ(next({4294967291}), "none");
}

TEST(AFunctionForTheNextKey, ThatDoesNotGoOnIsNotAskedForEver) {
  snmp::detail::MapRows<std::map<int, int>> store;
  store.SetVirtual([](int) { return std::optional(1); },
                   [](const int*) { return std::optional(3); });
  snmp::detail::RowView row;
  IndexWriter found;
  EXPECT_TRUE(store.FindNext({}, false, row, found));
  const Ids three{3};
  EXPECT_THROW(store.FindNext(ViewOf(three), false, row, found),
               std::logic_error);
}

}  // namespace
