// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Whole SETs of scalars of every type and source, and of tables whose rows are
// held, shared or borrowed: the phases in any order, of two SETs at once, with
// functions of the application that refuse, throw or answer later, with values
// that the application changes meanwhile, objects that go, and sessions that
// are lost.
#include <snmpsubagent.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Input.h"
#include "KnownObjects.h"
#include "KnownSets.h"
#include "ServedAgent.h"
#include "SetsRun.h"

namespace snmp = snmpsubagent;
namespace wire = known::wire;

namespace {

using known::Kind;
using snmp::SetError;
using Moment = std::chrono::system_clock::time_point;

enum class Mode { Off = 1, Heat = 3, Cool = 7 };
enum class Flag { First = 0, Second = 1, Tenth = 9 };

wire::Value Number(std::int32_t number) {
  return {wire::Type::kInteger, number};
}
wire::Value Octets(std::string octets) {
  return {wire::Type::kOctetString, std::move(octets)};
}

// ---- Scalars.

// A value of the application's, and as managers see it.
template <typename T>
struct Sample {
  T value;
  wire::Value seen;
};

// What the application may do to an object.
class Changeable {
 public:
  virtual ~Changeable() = default;
  virtual void Change(Input& input) = 0;
};

template <typename T>
class KnownScalar : public Changeable {
 public:
  KnownScalar(Input& input, snmp::Module& module, known::Objects& objects,
              known::Sets& sets, std::uint32_t number, Kind kind,
              std::vector<Sample<T>> samples, const snmp::ReadWrite& access)
      : objects_(objects),
        sets_(sets),
        name_(Below(number)),
        samples_(std::move(samples)),
        variable_(samples_[0].value) {
    store_.isScalar = true;
    store_.kinds[0] = kind;
    unit_.state = {known::kActive, {{0, samples_[0].seen}}};
    objects_[name_] = {name_, {{0, {0, kind}}}, &store_};
    Build(input.Below(4), module, std::to_string(number), access);
    AddFunctions(input.Below(2) == 0);
  }

  void Change(Input& input) override {
    if (!scalar_) return;
    const unsigned int what = input.Below(16);
    if (what == 0) {
      scalar_.reset();
      store_.isServed = false;
      objects_.erase(name_);
    } else if (what < 4 && isAsked_) {
      isThere_ = !isThere_;
      unit_.state.status = isThere_ ? known::kActive : known::kAbsent;
    } else {
      const auto& sample = samples_[what % samples_.size()];
      Set(sample.value);
      unit_.state.cells[0] = sample.seen;
    }
  }

 private:
  static constexpr bool kHasAtomic =
      std::is_integral_v<T> && !std::is_same_v<T, bool>;
  using Atomic = std::atomic<std::conditional_t<kHasAtomic, T, int>>;

  void Build(unsigned int source, snmp::Module& module, const std::string& oid,
             const snmp::ReadWrite& access) {
    switch (source) {
      case 0:
        isHeld_ = true;
        scalar_.emplace(module, oid, T(variable_), access);
        break;
      case 1:
        isAsked_ = store_.hasSetter = true;
        scalar_.emplace(module, oid,
                        snmp::GetSet([this] { return Get(); },
                                     [this](const T& t) { return Take(t); }),
                        access);
        break;
      case 2:
        if constexpr (kHasAtomic) {
          isAtomic_ = true;
          atomic_ = variable_;
          scalar_.emplace(module, oid, atomic_, access);
          break;
        }
        [[fallthrough]];
      default:
        scalar_.emplace(module, oid, variable_, access);
    }
  }

  void AddFunctions(bool later) {
    store_.answersLater = later;
    scalar_->Check([this](const T&) { return CheckOf(unit_); });
    scalar_->Changed([this](const T&) { sets_.TellFinal(); });
    if (later) {
      scalar_->Apply(
          [this](const T&, const T&, const snmp::Later<SetError>& answer) {
            ApplyLater(sets_, unit_, answer);
          });
    } else {
      scalar_->Apply(
          [this](const T&, const T&) { return ApplyOf(sets_, unit_); });
    }
  }

  std::optional<T> Get() const {
    return isThere_ ? std::optional<T>(variable_) : std::nullopt;
  }
  SetError Take(const T& value) {
    if (unit_.setterRefuses) return SetError::GenErr;
    variable_ = value;
    return SetError::None;
  }
  void Set(const T& value) {
    if (isHeld_) {
      scalar_->Set(value);
    } else if constexpr (kHasAtomic) {
      (isAtomic_ ? void(atomic_ = value) : void(variable_ = value));
    } else {
      variable_ = value;
    }
  }

  known::Objects& objects_;
  known::Sets& sets_;
  const wire::Oid name_;
  const std::vector<Sample<T>> samples_;
  known::Store store_;
  known::Unit& unit_ = store_.units[{0}];
  T variable_;
  Atomic atomic_{};
  bool isHeld_ = false;
  bool isAtomic_ = false;
  bool isAsked_ = false;
  bool isThere_ = true;
  std::optional<snmp::Scalar<T>> scalar_;
};

// ---- Tables.

struct Row {
  int percent = 0;
  std::optional<int> most;
  std::optional<std::string> label;
  snmp::TestAndIncr lock;
  bool truth = false;
};
bool operator==(const Row& a, const Row& b) {
  return a.percent == b.percent && a.most == b.most && a.label == b.label &&
         a.lock == b.lock && a.truth == b.truth;
}

known::State StateOf(const Row& row) {
  known::State state{known::kActive, {}};
  state.cells[1] = Number(row.percent);
  if (row.most) state.cells[2] = Number(*row.most);
  if (row.label) state.cells[3] = Octets(*row.label);
  state.cells[4] = Number(row.lock.value);
  state.cells[5] = Number(row.truth ? 1 : 2);
  return state;
}

const std::vector<Row>& SomeRows() {
  static const std::vector<Row> kRows{{1, {}, {}, {0}, false},
                                      {2, 3, "label", {2147483647}, true},
                                      {2, {}, "", {5}, true}};
  return kRows;
}

std::map<std::uint32_t, known::Column> ColumnsOf(bool all) {
  std::map<std::uint32_t, known::Column> columns{
      {1, {1, Kind::Percent}},
      {2, {2, Kind::Percent, true, true}},
      {7, {3, Kind::Label}},
      {9, {4, Kind::Lock}}};
  if (all) columns[10] = {5, Kind::Truth, false};
  return columns;
}

std::string TextOf(const wire::Oid& index) {
  return {index.begin() + 1, index.end()};
}

bool IsNumber(const wire::Oid& index) {
  return index.size() == 1 && index[0] <= 2147483647;
}
bool IsText(const wire::Oid& index) {
  return !index.empty() && index[0] == index.size() - 1 &&
         std::all_of(index.begin() + 1, index.end(),
                     [](std::uint32_t id) { return id <= 255; });
}

wire::Oid IndexOf(int key) { return {static_cast<std::uint32_t>(key)}; }
wire::Oid IndexOf(const std::string& key) {
  wire::Oid index{static_cast<std::uint32_t>(key.size())};
  for (const char octet : key)
    index.push_back(static_cast<unsigned char>(octet));
  return index;
}
int KeyOf(const wire::Oid& index, int) { return static_cast<int>(index[0]); }
std::string KeyOf(const wire::Oid& index, const std::string&) {
  return TextOf(index);
}

template <typename Key>
class KnownRows : public Changeable {
 public:
  using Map = std::map<Key, Row, snmp::IndexOrder<Key>>;

  // A table of rows of its own, or, if `borrows`, of the application's.
  KnownRows(Input& input, snmp::Module& module, known::Objects& objects,
            known::Sets& sets, std::uint32_t number, bool borrows)
      : sets_(sets), borrows_(borrows) {
    store_.isCompared = borrows;
    store_.kinds = {{1, Kind::Percent}};
    store_.isIndex = std::is_same_v<Key, int> ? IsNumber : IsText;
    store_.someIndex = [](Input& from) { return SomeIndex(from); };
    const std::string oid = std::to_string(number);
    if (borrows) {
      table_.emplace(module, oid, rows_);
    } else {
      table_.emplace(module, oid);
    }
    table_->Column(1, &Row::percent, snmp::ReadWrite().Range(-10, 90))
        .Column(2, &Row::most, snmp::ReadCreate().Range(-10, 90))
        .Column(7, &Row::label, snmp::ReadWrite().Size(1, 8).Size(12))
        .Column(9, &Row::lock, snmp::ReadWrite());
    if (borrows) table_->Column(10, &Row::truth);
    objects[Below(number)] = {Below(number), ColumnsOf(borrows), &store_};
    AddFunctions(input.Below(2) == 0);
    for (unsigned int rows = input.Below(4); rows > 0; --rows) Change(input);
  }

  // One more table of the same rows.
  void Share(snmp::Module& module, known::Objects& objects,
             std::uint32_t number) {
    sharing_.emplace(module, std::to_string(number), *table_);
    sharing_->Column(1, &Row::truth, snmp::ReadWrite());
    objects[Below(number)] = {Below(number), {{1, {5, Kind::Truth}}}, &store_};
  }

  void Change(Input& input) override {
    const wire::Oid index = SomeIndex(input);
    const Key key = KeyOf(index, Key());
    known::Unit& unit = store_.units[index];
    const bool exists = unit.state.status != known::kAbsent;
    const Row& row = SomeRows()[input.Below(3)];
    switch (input.Below(borrows_ ? 6 : 4)) {
      case 0:
        Require(table_->Insert(key, row) != exists, "a row is there already");
        if (!exists) Put(unit, row);
        return;
      case 1:
        table_->Set(key, row);
        return Put(unit, row);
      case 2:
        Require(table_->Change(key, [&](Row& held) { held = row; }) == exists,
                "a row is not there");
        if (!exists) return;
        unit.state = StateOf(row);
        return sets_.NoteChange(unit);
      case 3:
        Require(table_->Erase(key) == exists, "a row is not there");
        if (!exists) return;
        unit.state = {};
        return sets_.NoteOvertaken(unit);
      case 4:
        rows_[key] = row;
        unit.state = StateOf(row);
        return;
      default:
        rows_.erase(key);
        unit.state = {};
    }
  }

 private:
  using TableOf = snmp::Table<Key, Row>;
  using RowChange = snmp::RowChange<Key, Row>;

  static wire::Oid SomeIndex(Input& input) {
    if constexpr (std::is_same_v<Key, int>) {
      return {input.Below(4)};
    } else {
      wire::Oid index{input.Below(3)};
      while (index.size() <= index[0]) index.push_back(97 + input.Below(2));
      return index;
    }
  }

  void AddFunctions(bool later) {
    store_.answersLater = later;
    table_->Changed([this](const RowChange&) { sets_.TellFinal(); });
    table_->Check([this](const RowChange& change) {
      return CheckOf(store_.units[IndexOf(change.key)]);
    });
    if (later) {
      table_->Apply(
          [this](const RowChange& change, const snmp::Later<SetError>& answer) {
            ApplyLater(sets_, store_.units[IndexOf(change.key)], answer);
          });
    } else {
      table_->Apply([this](const RowChange& change) {
        return ApplyOf(sets_, store_.units[IndexOf(change.key)]);
      });
    }
  }
  void Put(known::Unit& unit, const Row& row) {
    unit.state = StateOf(row);
    sets_.NoteOvertaken(unit);
  }

  known::Sets& sets_;
  const bool borrows_;
  known::Store store_;
  Map rows_;
  std::optional<TableOf> table_;
  std::optional<TableOf> sharing_;
};

// ---- All of them.

class World {
 public:
  explicit World(Input& input)
      : input_(input), module_(agent_.agent, kSubtree) {
    AddNumbers();
    AddOctets();
    AddOthers();
    auto rows = std::make_unique<KnownRows<int>>(input_, module_, objects_,
                                                 sets_, 30, false);
    rows->Share(module_, objects_, 31);
    all_.push_back(std::move(rows));
    all_.push_back(std::make_unique<KnownRows<std::string>>(
        input_, module_, objects_, sets_, 32, true));
    agent_.Connect();
  }
  ~World() { agent_.agent.Stop(); }

  void Play() {
    SetsRun(input_, agent_, objects_, sets_, [this] {
      all_[input_.Below(static_cast<unsigned int>(all_.size()))]->Change(
          input_);
    }).Play();
  }

 private:
  template <typename T>
  void Add(std::uint32_t number, Kind kind, std::vector<Sample<T>> samples,
           const snmp::ReadWrite& access = {}) {
    all_.push_back(std::make_unique<KnownScalar<T>>(
        input_, module_, objects_, sets_, number, kind, std::move(samples),
        access));
  }

  void AddNumbers() {
    using snmp::ReadWrite;
    Add<int>(1, Kind::Percent, {{5, Number(5)}, {-10, Number(-10)}},
             ReadWrite().Range(-10, 90));
    Add<std::int8_t>(2, Kind::Tiny, {{0, Number(0)}, {-128, Number(-128)}});
    Add<std::uint16_t>(3, Kind::Port,
                       {{65535, {wire::Type::kGauge32, 65535U}}});
    Add<unsigned>(4, Kind::Gauge, {{7, {wire::Type::kGauge32, 7U}}},
                  ReadWrite().Range(0, 0).Range(5, 4000000000));
    Add<Mode>(5, Kind::Mode, {{Mode::Heat, Number(3)}, {Mode::Off, Number(1)}},
              ReadWrite().Values(Mode::Off, Mode::Heat, Mode::Cool));
    Add<bool>(6, Kind::Truth, {{true, Number(1)}, {false, Number(2)}});
    Add<snmp::TestAndIncr>(
        7, Kind::Lock, {{{1}, Number(1)}, {{2147483647}, Number(2147483647)}});
    Add<snmp::TimeTicks>(8, Kind::Ticks,
                         {{snmp::TimeTicks(9), {wire::Type::kTimeTicks, 9U}}});
  }

  void AddOctets() {
    using snmp::ReadWrite;
    Add<std::string>(11, Kind::Label,
                     {{"label", Octets("label")}, {"", Octets("")}},
                     ReadWrite().Size(1, 8).Size(12));
    Add<snmp::Bytes>(12, Kind::Octets, {{{0, 255}, Octets({'\0', '\xff'})}});
    Add<std::array<std::uint8_t, 6>>(
        13, Kind::Mac, {{{1, 2, 3, 4, 5, 6}, Octets("\1\2\3\4\5\6")}});
    Add<Moment>(
        14, Kind::Moment,
        {{Moment(), Octets(std::string("\x07\xb2\1\1\0\0\0\0+\0\0", 11))}});
    Add<snmp::Bits<Flag>>(
        15, Kind::Flags,
        {{{Flag::First, Flag::Tenth}, Octets("\x80\x40")}, {{}, Octets("")}},
        ReadWrite().NamedBits(Flag::First, Flag::Second, Flag::Tenth));
    Add<snmp::InetAddress>(16, Kind::Inet,
                           {{snmp::InetAddress("a.b"), Octets("a.b")}});
  }

  void AddOthers() {
    Add<snmp::Oid>(
        21, Kind::Id,
        {{snmp::Oid("1.3.6"), {wire::Type::kObjectId, wire::Oid{1, 3, 6}}}});
    Add<snmp::IpAddress>(
        22, Kind::Ip,
        {{snmp::IpAddress(1, 2, 3, 4), {wire::Type::kIpAddress, "\1\2\3\4"}}});
    Add<snmp::Opaque>(23, Kind::Blob,
                      {{{"\x04"}, {wire::Type::kOpaque, "\x04"}}},
                      snmp::ReadWrite().Size(0, 5));
    const std::string one("\x9f\x78\x04\x3f\x80\0\0", 7);
    Add<float>(24, Kind::Float, {{1, {wire::Type::kOpaque, one}}});
    const std::string two("\x9f\x79\x08\x40\0\0\0\0\0\0\0", 11);
    Add<double>(25, Kind::Double, {{2, {wire::Type::kOpaque, two}}});
  }

  Input& input_;
  ServedAgent agent_;
  known::Objects objects_;
  known::Sets sets_{objects_, ServedAgent::kAnswerTime};
  snmp::Module module_;
  std::vector<std::unique_ptr<Changeable>> all_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  Input input(data, size);
  World(input).Play();
  return 0;
}
