// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "LostMaster.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/Values.h"

using support::AddDataSetTable;
using support::AddIntScalar;
using support::AddStore;
using support::AddTable;
using support::CellOid;
using support::ScalarOid;
using support::TablesOid;
using testing::Contains;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

// Sets of nodes of all kinds: of each number a scalar, a table, its store and a
// table of events. Every set ends in another order.
class NodesOfAllKinds : public LostMaster {
 protected:
  using Order = std::vector<std::string>;

  static std::vector<Order> AllOrders() {
    Order order = {"events", "scalar", "store", "table"};
    std::vector<Order> orders;
    do {
      orders.push_back(order);
    } while (std::next_permutation(order.begin(), order.end()));
    return orders;
  }

  void Build(int number) {
    const std::string suffix = std::to_string(number);
    AddIntScalar(number, "scalar" + suffix, number);
    BuildTable(number, "table" + suffix, "store" + suffix)
        ->AddRow(Values(Index(Int(1)), Int(number)));
    auto* const events = AddDataSetTable(100 + number, "events" + suffix,
                                         Values(Unsigned(0), Int(0)));
    events->AddRow(Values(Unsigned(1), Int(number)));
    for (const std::string& kind : orders_.front())
      alive_.insert(kind + suffix);
  }

  // Every other time the store is there before the table.
  static NetSNMPTableEntryNode* BuildTable(int number, const std::string& name,
                                           const std::string& storeName) {
    if (number % 2 == 0) {
      return AddStore(number, storeName, 1, 2, AddTable(number, name));
    }
    auto* const store = AddStore(number, storeName, 1, 2, nullptr);
    AddTable(number, name)->TableEntryNode(store);
    return store;
  }

  void BuildAll() {
    for (int number = 1; number <= Count(); ++number) Build(number);
  }

  void Destroy(const std::string& kind, int number) {
    const std::string name = kind + std::to_string(number);
    delete NetSNMPNode::nodeMap_->at(name);
    alive_.erase(name);
  }

  void DestroyAll() {
    for (int number = 1; number <= Count(); ++number) {
      for (const std::string& kind : orders_[number - 1]) Destroy(kind, number);
    }
  }

  int Count() const { return static_cast<int>(orders_.size()); }

  bool IsAlive(const std::string& kind, int number) const {
    return alive_.count(kind + std::to_string(number)) != 0;
  }

  // The objects of all nodes that are alive.
  std::vector<std::string> Expected() const {
    std::vector<std::string> tables, events, scalars;
    for (int number = 1; number <= Count(); ++number) {
      const std::string value = " = INTEGER: " + std::to_string(number);
      if (IsAlive("table", number) && IsAlive("store", number)) {
        tables.push_back(CellOid(number, 2, "1") + value);
      }
      if (IsAlive("events", number)) {
        events.push_back(CellOid(100 + number, 2, "1") + value);
      }
      if (IsAlive("scalar", number)) {
        scalars.push_back(ScalarOid(number) + value);
      }
    }
    tables.insert(tables.end(), events.begin(), events.end());
    tables.insert(tables.end(), scalars.begin(), scalars.end());
    return tables;
  }

  // What a manager sees of all nodes.
  std::vector<std::string> Shown() const {
    return session_.Manager().Objects(".1.3.6.1.4.1.32473");
  }

  void ExpectNoTables() const {
    EXPECT_THAT(session_.Manager().Objects(TablesOid()),
                Not(Contains(StartsWith(TablesOid()))));
  }

  const std::vector<Order> orders_ = AllOrders();
  std::set<std::string> alive_;
};

TEST_F(NodesOfAllKinds, MayEndInAnyOrderWhileTheSessionIsUp) {
  session_.Connect();
  for (int number = 1; number <= Count(); ++number) {
    Build(number);
    ASSERT_THAT(Shown(), ElementsAreArray(Expected()));
    for (const std::string& kind : orders_[number - 1]) {
      Destroy(kind, number);
      ASSERT_THAT(Shown(), ElementsAreArray(Expected())) << kind << number;
    }
  }
  // The registration of a dataset outlives its node: others may come again.
  for (int number = 1; number <= Count(); ++number) {
    Build(number);
    Destroy("events", number);
  }
  EXPECT_THAT(Shown(), ElementsAreArray(Expected()));
}

TEST_F(NodesOfAllKinds, MayComeAndEndBeforeTheSessionIsUp) {
  for (int round = 0; round < 2; ++round) {
    BuildAll();
    DestroyAll();
  }
  session_.Connect();
  EXPECT_THAT(Shown(), IsEmpty());
  BuildAll();
  EXPECT_THAT(Shown(), ElementsAreArray(Expected()));
}

// Datasets take no rows before they are registered.
TEST_F(NodesOfAllKinds, AreServedIfTheyWereBuiltWhileTheSessionWasDown) {
  session_.Connect();
  LoseMaster();
  BuildAll();
  RegainMaster();
  for (int number = 1; number <= Count(); ++number) Destroy("events", number);
  EXPECT_THAT(Shown(), ElementsAreArray(Expected()));
}

TEST_F(NodesOfAllKinds, AreServedAgainWhenTheSessionComesBack) {
  BuildAll();
  session_.Connect();
  for (int number = 1; number <= Count(); ++number) {
    static_cast<NetSNMPDataSetTableNode*>(
        NetSNMPNode::nodeMap_->at("events" + std::to_string(number)))
        ->AddRow(Values(Unsigned(1), Int(number)));
  }
  EXPECT_THAT(Shown(), ElementsAreArray(Expected()));
  LoseMaster();
  RegainMaster();
  EXPECT_THAT(Shown(), ElementsAreArray(Expected()));
}

TEST_F(NodesOfAllKinds, MayEndInAnyOrderWhileTheSessionIsDown) {
  session_.Connect();
  BuildAll();
  LoseMaster();
  DestroyAll();
  RegainMaster();
  ExpectNoTables();
  // Scalars stay with the agent library until others take their names.
  for (int number = 1; number <= Count(); ++number) {
    EXPECT_FALSE(session_.Manager().Get(ScalarOid(number)).Succeeded());
  }
  BuildAll();
  for (int number = 1; number <= Count(); ++number) Destroy("events", number);
  EXPECT_THAT(Shown(), ElementsAreArray(Expected()));
}

TEST_F(NodesOfAllKinds, MayAllBeDeletedWhileTheSessionIsDown) {
  session_.Connect();
  BuildAll();
  LoseMaster();
  EXPECT_EQ(NetSNMPNode::DeleteNodes(), 4 * Count());
  RegainMaster();
  ExpectNoTables();
}

TEST_F(NodesOfAllKinds, MayAllBeDeletedOnceTheSubAgentHasStopped) {
  session_.Connect();
  BuildAll();
  session_.SubAgent().Stop();
  DestroyAll();
  EXPECT_THAT(*NetSNMPNode::nodeMap_, IsEmpty());
}

}  // namespace
