// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The rows of a table: added, found, walked.
#include <benchmark/benchmark.h>

#include <string>

#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableRow.h"

namespace {

constexpr eNodeAccessMode kMode = eNodeAccessReadOnly;

// A row of three columns, the first being the index.
class Row {
 public:
  explicit Row(int number)
      : number_(number),
        index_(&number_, kMode, true),
        cell_(&number_, kMode, true),
        text_(&label_, kMode, true),
        values_{&index_, &cell_, &text_} {
    index_.isIndex_ = true;
  }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;

  const std::vector<NetSNMPNodeData*>& Values() const { return values_; }

 private:
  int number_;
  std::string label_ = "a text of ordinary length";
  NetSNMPIntNodeData index_;
  NetSNMPIntNodeData cell_;
  NetSNMPStringNodeData text_;
  std::vector<NetSNMPNodeData*> values_;
};

// A store with rows, outside any registry.
class Store {
 public:
  explicit Store(long rows)
      : store_(oid_, 9, "rows", "row", {Row(0).Values().front()}, 3, nullptr),
        rows_(static_cast<int>(rows)) {
    for (int number = 1; number <= rows_; ++number) {
      store_.AddRow(Row(number).Values());
    }
  }

  NetSNMPTableEntryNode* operator->() { return &store_; }

  // The number of one row after the other, in a scattered order.
  int NextNumber() {
    next_ = (next_ + 7919) % rows_;
    return next_ + 1;
  }

 private:
  unsigned long oid_[9] = {1, 3, 6, 1, 4, 1, 32473, 2, 1};
  NetSNMPTableEntryNode store_;
  int rows_;
  int next_ = 0;
};

void AddAndRemove(benchmark::State& state) {
  Store store(state.range(0));
  const Row row(static_cast<int>(state.range(0)) + 1);
  std::string key;
  store->GetRowName(row.Values(), key);
  for (auto _ : state) {
    store->AddRow(row.Values());
    store->RemoveRow(key);
  }
}

void Replace(benchmark::State& state) {
  Store store(state.range(0));
  const Row row(1);
  for (auto _ : state) store->AddRow(row.Values());
}

void Find(benchmark::State& state) {
  Store store(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        store->GetRow("row." + std::to_string(store.NextNumber())));
  }
}

void MakeKey(benchmark::State& state) {
  Store store(1);
  const Row row(12345);
  std::string key;
  for (auto _ : state) {
    benchmark::DoNotOptimize(store->GetRowName(row.Values(), key));
  }
}

void Walk(benchmark::State& state) {
  Store store(state.range(0));
  for (auto _ : state) {
    const auto* row = store->GetFirstRow();
    while (row != nullptr) {
      benchmark::DoNotOptimize(row);
      row = store->GetNextRow();
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void MakeWorkingRow(benchmark::State& state) {
  const Row row(7);
  for (auto _ : state) {
    NetSNMPTableRow workingRow(row.Values());
    benchmark::DoNotOptimize(workingRow.fullRow_.data());
  }
}

BENCHMARK(AddAndRemove)->Name("rows/add and remove")->Arg(100)->Arg(10000);
BENCHMARK(Replace)->Name("rows/replace")->Arg(100)->Arg(10000);
BENCHMARK(Find)->Name("rows/find")->Arg(100)->Arg(10000);
BENCHMARK(MakeKey)->Name("rows/make key");
BENCHMARK(Walk)->Name("rows/walk")->Arg(100)->Arg(10000);
BENCHMARK(MakeWorkingRow)->Name("rows/working row");

}  // namespace
