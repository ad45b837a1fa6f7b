// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <memory>

#include "NetSNMPDataNode.h"
#include "support/TableTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kRegistered[] =
    "Net-SNMP table node registration was successful.";
constexpr char kNotRegistered[] = "Net-SNMP table node registration failed.";
constexpr char kIterated[] =
    "Net-SNMP table iterator registration was successful.";
constexpr char kNotIterated[] = "Net-SNMP table iterator registration failed.";

class TableRegistration : public TableTest {
 protected:
  // The log lines of the table since the last call, without its name.
  testing::AssertionResult HasLogged(const std::vector<std::string>& messages) {
    std::vector<std::string> lines;
    for (const std::string& message : messages) {
      lines.push_back(PortTableLine(message));
    }
    const std::vector<std::string> logged = log_.Lines();
    if (logged == lines) return testing::AssertionSuccess();
    return testing::AssertionFailure() << testing::PrintToString(logged);
  }

  static std::vector<unsigned char> IndexTypes(
      const netsnmp_table_registration_info& info) {
    std::vector<unsigned char> types;
    for (const variable_list* index = info.indexes; index != nullptr;
         index = index->next_variable) {
      types.push_back(index->type);
    }
    return types;
  }

  NetSNMPTableNode* BuildEarlyPortTable() {
    subAgent_.SetConnected(false);
    auto* const table = BuildPortTable();
    subAgent_.SetConnected(true);
    return table;
  }

  // Lets somebody else have the OID of the table.
  NetSNMPDataNode* BuildStranger() {
    Oid oid = kPortTableOid;
    return new NetSNMPDataNode(oid.data(), Length(oid), "stranger", Int(1),
                               nullptr, "");
  }
};

TEST_F(TableRegistration, IsMadeAtConstructionButUnseenWithoutAStore) {
  auto* const table = BuildPortTable();
  EXPECT_TRUE(table->registered_);
  EXPECT_NE(table->handlerRegistration_, nullptr);
  EXPECT_FALSE(table->iteratorRegistered_);
  EXPECT_EQ(table->iteratorInfo_, nullptr);
  EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid), nullptr);
  EXPECT_TRUE(HasLogged({kRegistered}));
  table->RegisterEntryNode();
  EXPECT_TRUE(HasLogged({}));
}

TEST_F(TableRegistration, BecomesVisibleWithItsStore) {
  auto* const table = BuildPortTable();
  BuildPortStore(table);
  EXPECT_TRUE(table->iteratorRegistered_);
  EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid),
            table->handlerRegistration_);
  EXPECT_TRUE(HasLogged({kRegistered, kIterated}));
}

TEST_F(TableRegistration, GivesTheIteratorItsHooksAndTheNameOfTheNode) {
  auto* const table = BuildPortTable();
  BuildPortStore(table);
  const netsnmp_iterator_info* const info = table->iteratorInfo_;
  ASSERT_NE(info, nullptr);
  EXPECT_EQ(info->get_first_data_point, table_get_first_data_point);
  EXPECT_EQ(info->get_next_data_point, table_get_next_data_point);
  EXPECT_EQ(info->myvoid, &table->nodeName_);
  EXPECT_EQ(info->make_data_context, nullptr);
  EXPECT_EQ(info->free_loop_context, nullptr);
  EXPECT_EQ(info->free_data_context, nullptr);
  EXPECT_EQ(info->free_loop_context_at_end, nullptr);
  EXPECT_EQ(info->flags, 0);
}

TEST_F(TableRegistration, ServesTheColumnsBehindTheIndexes) {
  auto* const table = BuildPortTable();
  BuildPortStore(table);
  ASSERT_NE(table->iteratorInfo_, nullptr);
  const netsnmp_table_registration_info* const info =
      table->iteratorInfo_->table_reginfo;
  EXPECT_EQ(info->min_column, 3U);
  EXPECT_EQ(info->max_column, 5U);
  EXPECT_THAT(IndexTypes(*info), ElementsAre(ASN_INTEGER, ASN_UNSIGNED));
}

TEST_F(TableRegistration, GivesIndexesOfOtherTypesNone) {
  auto* const table = BuildPortTable();
  BuildStore("portStore", Values(Text(""), Bool(true), Int(0)), 4, table);
  ASSERT_NE(table->iteratorInfo_, nullptr);
  EXPECT_THAT(IndexTypes(*table->iteratorInfo_->table_reginfo),
              ElementsAre(0, 0, ASN_INTEGER));
}

TEST_F(TableRegistration, NamesItsHandlerAfterTheNode) {
  const auto* const table = BuildPortTable();
  const netsnmp_mib_handler* const handler =
      table->handlerRegistration_->handler;
  EXPECT_STREQ(handler->handler_name, "portTable");
  EXPECT_EQ(handler->access_method, var_table_handler);
}

TEST_F(TableRegistration, TakesItsModesFromTheAccessMode) {
  const std::pair<int, int> modes[] = {{0, HANDLER_CAN_DEFAULT},
                                       {1, HANDLER_CAN_RONLY},
                                       {2, HANDLER_CAN_RWRITE},
                                       {3, HANDLER_CAN_SET_ONLY},
                                       {9, HANDLER_CAN_DEFAULT}};
  for (const auto& [access, expected] : modes) {
    const auto* const table = BuildTable(kPortTableOid, "portTable",
                                         static_cast<eNodeAccessMode>(access));
    EXPECT_EQ(table->handlerRegistration_->modes, expected) << access;
  }
}

TEST_F(TableRegistration, WaitsForAConnectedSubagent) {
  auto* const table = BuildEarlyPortTable();
  BuildPortStore(table);
  subAgent_.SetConnected(false);
  EXPECT_FALSE(table->RegisterNode());
  NetSNMPNode::snmpSubAgent_ = nullptr;
  EXPECT_FALSE(table->RegisterNode());
  EXPECT_EQ(table->handlerRegistration_, nullptr);
  EXPECT_TRUE(HasLogged({}));
  NetSNMPNode::snmpSubAgent_ = &subAgent_;
  subAgent_.SetConnected(true);
  NetSNMPNode::RegisterMibs();
  EXPECT_TRUE(table->registered_);
  EXPECT_NE(LocalAgent::RegistrationAt(kPortTableOid), nullptr);
  EXPECT_TRUE(HasLogged({kRegistered, kIterated}));
}

TEST_F(TableRegistration, IsOnlyForNodesOfTheRegistry) {
  const std::unique_ptr<NetSNMPTableNode> table(new NetSNMPTableNode(
      nullptr, 0, "portTable",
      NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadOnly, nullptr, nullptr),
      nullptr, ""));
  EXPECT_FALSE(table->RegisterNode());
  EXPECT_EQ(table->handlerRegistration_, nullptr);
  EXPECT_TRUE(HasLogged({}));
}

TEST_F(TableRegistration, IsNotRepeated) {
  auto* const table = BuildPortTable();
  BuildPortStore(table);
  const auto* const registration = table->handlerRegistration_;
  log_.Lines();
  EXPECT_TRUE(table->RegisterNode());
  subAgent_.SetConnected(false);
  EXPECT_TRUE(table->RegisterNode());
  table->RegisterEntryNode();
  EXPECT_EQ(table->handlerRegistration_, registration);
  EXPECT_TRUE(HasLogged({}));
}

TEST_F(TableRegistration, FailsForAnOidThatIsTooLongAndIsTriedAgain) {
  auto* const table = BuildTable(LongOid(129), "portTable");
  BuildPortStore(table);
  EXPECT_FALSE(table->registered_);
  EXPECT_EQ(table->handlerRegistration_, nullptr);
  EXPECT_TRUE(HasLogged({kNotRegistered}));
  EXPECT_FALSE(table->RegisterNode());
  EXPECT_TRUE(HasLogged({kNotRegistered}));
  table->UnregisterNode();
  EXPECT_TRUE(HasLogged({}));
}

TEST_F(TableRegistration, HasNoIteratorWithoutIndexes) {
  auto* const table = BuildPortTable();
  BuildStore("portStore", Values(), 1, table);
  EXPECT_TRUE(table->registered_);
  EXPECT_FALSE(table->iteratorRegistered_);
  EXPECT_EQ(table->iteratorInfo_, nullptr);
  EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid), nullptr);
  EXPECT_TRUE(HasLogged({kRegistered}));
}

TEST_F(TableRegistration, ForgetsARegistrationThatIsRefused) {
  const auto* const stranger = BuildStranger();
  log_.Lines();
  auto* const table = BuildPortTable();
  BuildPortStore(table);
  EXPECT_TRUE(table->registered_);
  EXPECT_FALSE(table->iteratorRegistered_);
  EXPECT_EQ(table->handlerRegistration_, nullptr);
  EXPECT_TRUE(HasLogged({kRegistered, kNotIterated}));

  table->UnregisterNode();
  EXPECT_FALSE(table->registered_);
  delete table;
  EXPECT_TRUE(HasLogged({}));
  EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid),
            stranger->handlerRegistration_);
}

TEST_F(TableRegistration, TriesARefusedIteratorAgain) {
  const auto* const stranger = BuildStranger();
  auto* const table = BuildPortTable();
  BuildPortStore(table);
  log_.Lines();
  table->UnregisterNode();
  EXPECT_TRUE(table->RegisterNode());
  EXPECT_TRUE(HasLogged({kRegistered, kNotIterated}));
  delete stranger;
  log_.Lines();
  table->UnregisterNode();
  EXPECT_TRUE(table->RegisterNode());
  EXPECT_TRUE(table->iteratorRegistered_);
  EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid),
            table->handlerRegistration_);
  EXPECT_TRUE(HasLogged({kRegistered, kIterated}));
}

TEST_F(TableRegistration, GivesItsPlaceToANewerTableOfTheSameName) {
  BuildPortStore(BuildPortTable());
  auto* const newer = BuildPortTable();
  EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid), nullptr);
  newer->TableEntryNode(static_cast<NetSNMPTableEntryNode*>(
      NetSNMPNode::nodeMap_->at("portStore")));
  EXPECT_EQ(LocalAgent::RegistrationAt(kPortTableOid),
            newer->handlerRegistration_);
}

}  // namespace
