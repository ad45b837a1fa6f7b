// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <boost/thread.hpp>
#include <stdexcept>

#include "NetSNMPTableRow.h"
#include "adapter/ExceptionBarrier.h"
#include "support/CellRequest.h"
#include "support/EventfulValue.h"
#include "support/TableTest.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// A list of index varbinds, as the agent library gives it to the hooks.
class Indexes {
 public:
  explicit Indexes(const std::vector<unsigned char>& types) {
    const int number = 77;
    for (const unsigned char type : types) {
      snmp_varlist_add_variable(&list_, nullptr, 0, type, &number,
                                sizeof number);
    }
  }
  ~Indexes() { snmp_free_varbind(list_); }
  Indexes(const Indexes&) = delete;
  Indexes& operator=(const Indexes&) = delete;

  variable_list* List() const { return list_; }

  std::vector<long> Numbers() const {
    std::vector<long> numbers;
    for (const auto* index = list_; index != nullptr;
         index = index->next_variable) {
      numbers.push_back(*index->val.integer);
    }
    return numbers;
  }

 private:
  variable_list* list_ = nullptr;
};

class IteratorHooks : public TableTest {
 protected:
  variable_list* First(const std::string& tableName = "portTable") {
    tableName_ = tableName;
    info_.myvoid = &tableName_;
    return table_get_first_data_point(&loopContext_, &dataContext_,
                                      indexes_.List(), &info_);
  }
  variable_list* Next() {
    return table_get_next_data_point(&loopContext_, &dataContext_,
                                     indexes_.List(), &info_);
  }

  // Two ports, whose unit calls a function of the test when it is read.
  NetSNMPTableEntryNode* AddPortsWith(const EventfulValue::Event& onRead) {
    auto* const store = BuildPortStore(BuildPortTable());
    for (const int unit : {1, 2}) {
      EXPECT_TRUE(store->AddRow(
          Values(Index(EventfulValue(unit, onRead)), Index(Unsigned(1)))));
    }
    log_.Lines();
    return store;
  }

  std::string tableName_;
  netsnmp_iterator_info info_{};
  void* loopContext_ = nullptr;
  void* dataContext_ = nullptr;
  const Indexes indexes_{{ASN_INTEGER, ASN_UNSIGNED}};
};

TEST_F(IteratorHooks, HandOutOneRowAfterTheOther) {
  auto* const store = BuildPortStore(BuildPortTable());
  for (const int unit : {2, 10}) ASSERT_TRUE(store->AddRow(Port(unit, 1, 0)));
  EXPECT_EQ(First(), indexes_.List());
  EXPECT_EQ(loopContext_, store);
  EXPECT_EQ(dataContext_, store->GetRow("port.10.1"));
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(10, 1));
  EXPECT_EQ(Next(), indexes_.List());
  EXPECT_EQ(loopContext_, store);
  EXPECT_EQ(dataContext_, store->GetRow("port.2.1"));
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(2, 1));
  EXPECT_EQ(Next(), nullptr);
  EXPECT_EQ(Next(), nullptr);
  EXPECT_EQ(First(), indexes_.List());
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(10, 1));
}

TEST_F(IteratorHooks, HandOutNothingWithoutRows) {
  auto* const table = BuildPortTable();
  EXPECT_EQ(First(), nullptr);
  BuildPortStore(table);
  EXPECT_EQ(First(), nullptr);
  EXPECT_EQ(loopContext_, nullptr);
  EXPECT_EQ(dataContext_, nullptr);
  EXPECT_EQ(Next(), nullptr);
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(77, 77));
}

TEST_F(IteratorHooks, HandOutNothingOfATableThatIsGone) {
  BuildPortStore(BuildPortTable())->AddRow(Port(1, 1, 0));
  info_.myvoid = nullptr;
  EXPECT_EQ(table_get_first_data_point(&loopContext_, &dataContext_,
                                       indexes_.List(), &info_),
            nullptr);
  EXPECT_EQ(NetSNMPNode::nodeMap_->size(), 2U);
}

TEST_F(IteratorHooks, HandOutNothingWithoutARegistry) {
  NetSNMPNode::DeleteNodeMap();
  EXPECT_EQ(First(), nullptr);
  EXPECT_EQ(loopContext_, nullptr);
}

TEST_F(IteratorHooks, EnterAnUnknownNameWithoutANode) {
  BuildPortStore(BuildPortTable())->AddRow(Port(1, 2, 10));
  EXPECT_EQ(First("unknown"), nullptr);
  EXPECT_EQ(First("portStore"), nullptr);
  EXPECT_THAT(*NetSNMPNode::nodeMap_, Contains(Pair("unknown", nullptr)));
}

TEST_F(IteratorHooks, EndTheWalkWhenItsRowIsRemoved) {
  auto* const store = BuildPortStore(BuildPortTable());
  for (const int unit : {1, 2, 3}) ASSERT_TRUE(store->AddRow(Port(unit, 1, 0)));
  EXPECT_EQ(First(), indexes_.List());
  store->RemoveRow("port.1.1");
  EXPECT_EQ(Next(), nullptr);
}

TEST_F(IteratorHooks, EndTheWalkAndLogWhenAValueThrows) {
  bool failing = true;
  AddPortsWith([&](const NetSNMPNodeData&) {
    if (failing) throw std::runtime_error("bus busy");
  });
  const std::string line = PortTableLine("Exception in a callback: bus busy");
  EXPECT_EQ(First(), nullptr);
  EXPECT_THAT(log_.Lines(), ElementsAre(line));
  failing = false;
  EXPECT_EQ(First(), indexes_.List());
  failing = true;
  EXPECT_EQ(Next(), nullptr);
  EXPECT_THAT(log_.Lines(), ElementsAre(line));
}

TEST_F(IteratorHooks, RememberAnInterruption) {
  AddPortsWith(
      [](const NetSNMPNodeData&) { throw boost::thread_interrupted(); });
  EXPECT_EQ(First(), nullptr);
  EXPECT_THROW(exception_barrier::RaisePendingInterruption(),
               boost::thread_interrupted);
}

TEST_F(IteratorHooks, SurviveAnIndexThatRemovesItsRow) {
  auto* const store = AddPortsWith([](const NetSNMPNodeData& value) {
    auto* const table =
        dynamic_cast<NetSNMPTableNode*>(NetSNMPNode::nodeMap_->at("portTable"));
    table->RemoveRow("port." + value.NodeDataToString() + ".1");
  });
  First();
  EXPECT_EQ(store->GetRow("port.1.1"), nullptr);
  EXPECT_EQ(Next(), nullptr);
}

class DataPointIndices : public IteratorHooks {};

TEST_F(DataPointIndices, AreWrittenSideBySide) {
  NetSNMPTableRow row(
      Values(Int(30), Index(Int(-1)), Index(Unsigned(4294967295))));
  set_data_point_indices(row, indexes_.List());
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(-1, 4294967295));
  EXPECT_EQ(indexes_.List()->type, ASN_INTEGER);
  EXPECT_EQ(indexes_.List()->next_variable->type, ASN_UNSIGNED);
}

TEST_F(DataPointIndices, KeepTheTypeOfTheVarbind) {
  NetSNMPTableRow row(Values(Index(Unsigned(4294967295)), Index(Int(-1))));
  set_data_point_indices(row, indexes_.List());
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(-1, 4294967295));
  EXPECT_EQ(indexes_.List()->type, ASN_INTEGER);
}

TEST_F(DataPointIndices, LeaveASurplusOnEitherSideAlone) {
  NetSNMPTableRow one(Values(Index(Int(1))));
  set_data_point_indices(one, indexes_.List());
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(1, 77));
  NetSNMPTableRow three(Values(Index(Int(4)), Index(Int(5)), Index(Int(6))));
  set_data_point_indices(three, indexes_.List());
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(4, 5));
  NetSNMPTableRow none(Values(Int(7)));
  set_data_point_indices(none, indexes_.List());
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(4, 5));
  set_data_point_indices(three, nullptr);
}

TEST_F(DataPointIndices, AreZeroForAnIndexWithoutStorage) {
  NetSNMPTableRow row(Values(
      Index(NetSNMPIntNodeData(nullptr, eNodeAccessReadOnly)), Index(Int(2))));
  set_data_point_indices(row, indexes_.List());
  EXPECT_THAT(indexes_.Numbers(), ElementsAre(0, 2));
}

}  // namespace
