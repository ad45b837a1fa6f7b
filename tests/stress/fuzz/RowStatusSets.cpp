// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs that make, activate, change and destroy rows (RFC 2579, RowStatus and
// StorageType): several rows and two SETs at once, required columns also in a
// table that augments the first, rows that the application changes meanwhile.
#include <snmpsubagent.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
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
using snmp::StorageType;

struct Row {
  int percent = 0;
  std::string label = "none";
  int plain = 30;
  std::optional<int> most;
  bool truth = true;
  StorageType storage = StorageType::Volatile;
};

wire::Value Number(std::int32_t number) {
  return {wire::Type::kInteger, number};
}

// The cells by their numbers.
enum Cell : unsigned { kPercent, kLabel, kPlain, kMost, kTruth, kStorage };

known::State StateOf(const Row& row) {
  known::State state{known::kActive, {}};
  state.cells[kPercent] = Number(row.percent);
  state.cells[kLabel] = {wire::Type::kOctetString, row.label};
  state.cells[kPlain] = Number(row.plain);
  if (row.most) state.cells[kMost] = Number(*row.most);
  state.cells[kTruth] = Number(row.truth ? 1 : 2);
  state.cells[kStorage] = Number(static_cast<int>(row.storage));
  return state;
}

const std::vector<Row>& SomeRows() {
  static const std::vector<Row> kRows{
      {1, "one", 1, {}, true, StorageType::Volatile},
      {2, "two", 2, 2, false, StorageType::NonVolatile},
      {3, "three", 3, {}, true, StorageType::Permanent},
      {4, "four", 4, 4, false, StorageType::ReadOnly}};
  return kRows;
}

// Of one sub-identifier, or of a last text of which the length is implied.
wire::Oid IndexOf(int key) { return {static_cast<std::uint32_t>(key)}; }
wire::Oid IndexOf(const snmp::Implied<std::string>& key) {
  return {key.value.begin(), key.value.end()};
}
bool IsIndex(const wire::Oid& index, int) {
  return index.size() == 1 && index[0] <= 2147483647;
}
bool IsIndex(const wire::Oid& index, const snmp::Implied<std::string>&) {
  bool areOctets = !index.empty();
  for (const std::uint32_t id : index) areOctets &= id <= 255;
  return areOctets;
}
wire::Oid SomeIndex(Input& input, int) { return {input.Below(4)}; }
wire::Oid SomeIndex(Input& input, const snmp::Implied<std::string>&) {
  const std::size_t size = 1 + input.Below(2);
  return wire::Oid(size, 97 + input.Below(2));
}
int KeyOf(const wire::Oid& index, int) { return static_cast<int>(index[0]); }
snmp::Implied<std::string> KeyOf(const wire::Oid& index,
                                 const snmp::Implied<std::string>&) {
  return std::string(index.begin(), index.end());
}

class Changeable {
 public:
  virtual ~Changeable() = default;
  virtual void Change(Input& input) = 0;
};

// A table whose rows managers make, and one that augments it.
template <typename Key>
class KnownRows : public Changeable {
 public:
  KnownRows(Input& input, snmp::Module& module, known::Objects& objects,
            known::Sets& sets, std::uint32_t number)
      : sets_(sets),
        table_(module, std::to_string(number)),
        more_(module, std::to_string(number + 1), table_) {
    AddColumns();
    Know(objects, number);
    if (input.Below(2) == 0) {
      store_.activeAreFrozen = true;
      table_.FreezeActiveRows();
    }
    store_.limit = input.Below(5);
    table_.Limit(store_.limit);
    AddFunctions(input.Below(2) == 0);
  }

  void Change(Input& input) override {
    const wire::Oid index = SomeIndex(input, Key());
    const Key key = KeyOf(index, Key());
    known::Unit& unit = store_.units[index];
    const bool exists = unit.state.status != known::kAbsent;
    const Row& row = SomeRows()[input.Below(4)];
    switch (input.Below(4)) {
      case 0:
        Require(table_.Insert(key, row) != exists, "a row is there already");
        if (!exists) Put(unit, row, known::kActive);
        break;
      case 1:
        table_.Set(key, row);
        Put(unit, row,
            exists && unit.state.status != known::kActive ? known::kNotInService
                                                          : known::kActive);
        break;
      case 2:
        Require(table_.Change(key, [&](Row& held) { held = row; }) == exists,
                "a row is not there");
        if (exists) Overwrite(unit, row);
        break;
      default:
        Require(table_.Erase(key) == exists, "a row is not there");
        if (!exists) return;
        unit.state = {};
        sets_.NoteOvertaken(unit);
    }
    Require(static_cast<int>(table_.Status(key)) == unit.state.status,
            "another status");
  }

 private:
  using RowChange = snmp::RowChange<Key, Row>;

  void AddColumns() {
    using snmp::ReadCreate;
    table_.Column(2, &Row::percent, ReadCreate().Range(-10, 90).Required())
        .Column(3, &Row::label, ReadCreate().Size(1, 8).Size(12).Required())
        .Column(5, &Row::plain, ReadCreate().Range(-10, 90))
        .Column(6, &Row::most, ReadCreate().Range(-10, 90))
        .StorageType(7, &Row::storage)
        .RowStatus(9);
    more_.Column(1, &Row::truth, ReadCreate().Required());
  }

  void Know(known::Objects& objects, std::uint32_t number) {
    store_.hasStatus = true;
    store_.isIndex = [](const wire::Oid& index) {
      return IsIndex(index, Key());
    };
    store_.someIndex = [](Input& input) { return SomeIndex(input, Key()); };
    store_.kinds = {{kStorage, Kind::Storage}};
    store_.required = {{kPercent, true}, {kLabel, true}, {kTruth, true}};
    store_.fresh = StateOf({});
    for (const auto& [cell, is] : store_.required) {
      store_.fresh.cells.erase(cell);
    }
    objects[Below(number)] = {Below(number),
                              {{2, {kPercent, Kind::Percent}},
                               {3, {kLabel, Kind::Label}},
                               {5, {kPlain, Kind::Percent}},
                               {6, {kMost, Kind::Percent, true, true}},
                               {7, {kStorage, Kind::Storage}},
                               {9, {99, Kind::Status}}},
                              &store_};
    objects[Below(number + 1)] = {
        Below(number + 1), {{1, {kTruth, Kind::Truth}}}, &store_};
  }

  void AddFunctions(bool later) {
    store_.answersLater = later;
    table_.Check([this](const RowChange& change) {
      return CheckOf(store_.units[IndexOf(change.key)]);
    });
    table_.Changed([this](const RowChange&) { sets_.TellFinal(); });
    if (later) {
      table_.Apply(
          [this](const RowChange& change, const snmp::Later<SetError>& answer) {
            ApplyLater(sets_, store_.units[IndexOf(change.key)], answer);
          });
    } else {
      table_.Apply([this](const RowChange& change) {
        return ApplyOf(sets_, store_.units[IndexOf(change.key)]);
      });
    }
  }

  void Put(known::Unit& unit, const Row& row, int status) {
    unit.state = StateOf(row);
    unit.state.status = status;
    sets_.NoteOvertaken(unit);
  }

  // What a row that is not ready lacks, it still lacks.
  void Overwrite(known::Unit& unit, const Row& row) {
    known::State state = StateOf(row);
    state.status = unit.state.status;
    for (const auto& [cell, is] : store_.required) {
      if (unit.state.cells.count(cell) == 0) state.cells.erase(cell);
    }
    unit.state = state;
    sets_.NoteChange(unit);
  }

  known::Sets& sets_;
  known::Store store_;
  snmp::Table<Key, Row> table_;
  snmp::Table<Key, Row> more_;
};

class World {
 public:
  explicit World(Input& input)
      : input_(input), module_(agent_.agent, kSubtree) {
    numbered_ =
        std::make_unique<KnownRows<int>>(input_, module_, objects_, sets_, 1);
    named_ = std::make_unique<KnownRows<snmp::Implied<std::string>>>(
        input_, module_, objects_, sets_, 5);
    agent_.Connect();
  }
  ~World() { agent_.agent.Stop(); }

  void Play() {
    SetsRun(input_, agent_, objects_, sets_, [this] {
      (input_.Below(4) == 0 ? *named_ : *numbered_).Change(input_);
    }).Play();
  }

 private:
  Input& input_;
  ServedAgent agent_;
  known::Objects objects_;
  known::Sets sets_{objects_, ServedAgent::kAnswerTime};
  snmp::Module module_;
  std::unique_ptr<Changeable> numbered_;
  std::unique_ptr<Changeable> named_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  Input input(data, size);
  World(input).Play();
  return 0;
}
