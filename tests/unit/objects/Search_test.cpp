// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// GET, GETNEXT and GetBulk with search ranges of every kind.
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

class AnAgent : public testing::Test {
 protected:
  void Add(snmp::Module& in, const std::string& oid, int value) {
    scalars.push_back(std::make_unique<snmp::Scalar<int>>(in, oid, int{value}));
  }

  Device device;
  snmp::Module module{device.agent, kBase};
  std::vector<std::unique_ptr<snmp::Scalar<int>>> scalars;
};

// Of three scalars 1, 3.1 and 4294967295.
class AnAgentWithThree : public AnAgent {
 protected:
  void SetUp() override {
    Add(module, "3.1", 31);
    Add(module, "1", 1);
    Add(module, "4294967295", 9);
    device.Connect();
  }
};

TEST_F(AnAgentWithThree, TellsAbsentObjectsFromAbsentInstances) {
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
  EXPECT_EQ(device.Get("1"), "noSuchInstance");
  EXPECT_EQ(device.Get("1.1"), "noSuchInstance");
  EXPECT_EQ(device.Get("1.0.0"), "noSuchInstance");
  EXPECT_EQ(device.Get("0"), "noSuchObject");
  EXPECT_EQ(device.Get("2.0"), "noSuchObject");
  EXPECT_EQ(device.Get("3"), "noSuchObject");
  EXPECT_EQ(device.Get("3.0"), "noSuchObject");
  EXPECT_EQ(device.Get("3.1.0"), "INTEGER 31");
  EXPECT_EQ(device.Get("4294967295.0"), "INTEGER 9");
  EXPECT_EQ(device.Get("4294967294.0"), "noSuchObject");
  EXPECT_EQ(device.Get(""), "noSuchObject");
  EXPECT_EQ(device.Get(".1.3"), "noSuchObject");
  EXPECT_EQ(device.Get(".2.5.1.0"), "noSuchObject");
  EXPECT_EQ(device.Get("."), "noSuchObject");
}

TEST_F(AnAgentWithThree, AnswersEachVarbindOfAGetInItsPlace) {
  EXPECT_EQ(device.GetAll({"3.1.0", "1.0", "2.0", "1.1", "1.0"}),
            "INTEGER 31, INTEGER 1, noSuchObject, noSuchInstance, INTEGER 1");
}

TEST_F(AnAgentWithThree, AnswersARequestWithoutVarbinds) {
  EXPECT_EQ(device.GetAll(std::vector<std::string>()), "noError");
  EXPECT_EQ(device.GetNext(std::vector<wire::SearchRange>()), "noError");
  EXPECT_EQ(device.GetBulk(0, 10, {}), "noError");
  EXPECT_EQ(device.GetBulk(5, 10, {}), "noError");
}

TEST_F(AnAgentWithThree, WalksFromWherever) {
  const std::string all =
      "1.0 INTEGER 1, 3.1.0 INTEGER 31, 4294967295.0 INTEGER 9";
  EXPECT_EQ(device.Walk(""), all);
  EXPECT_EQ(device.Walk("."), all);
  EXPECT_EQ(device.Walk(".1.3"), all);
  EXPECT_EQ(device.Walk("0.5.6"), all);
  EXPECT_EQ(device.Walk("1"), all);
  const std::string behindFirst = "3.1.0 INTEGER 31, 4294967295.0 INTEGER 9";
  EXPECT_EQ(device.Walk("1.0"), behindFirst);
  EXPECT_EQ(device.Walk("1.0.0"), behindFirst);
  EXPECT_EQ(device.Walk("1.5"), behindFirst);
  EXPECT_EQ(device.Walk("2.9"), behindFirst);
  EXPECT_EQ(device.Walk("3"), behindFirst);
  EXPECT_EQ(device.Walk("3.1"), behindFirst);
  EXPECT_EQ(device.Walk("3.2"), "4294967295.0 INTEGER 9");
  EXPECT_EQ(device.Walk("4294967295.0"), "");
  EXPECT_EQ(device.Walk(".1.3.6.1.4.1.32473.8"), "");
  EXPECT_EQ(device.Walk(".2"), "");
}

TEST_F(AnAgentWithThree, KeepsTheBoundsOfASearchRange) {
  EXPECT_EQ(device.GetNext({From("1.0")}), "1.0 INTEGER 1");
  EXPECT_EQ(device.GetNext({After("1.0")}), "3.1.0 INTEGER 31");
  EXPECT_EQ(device.GetNext({From("1")}), "1.0 INTEGER 1");
  EXPECT_EQ(device.GetNext({From("1.0.0")}), "3.1.0 INTEGER 31");
  EXPECT_EQ(device.GetNext({After("1.0", "3")}), "1.0 endOfMibView");
  EXPECT_EQ(device.GetNext({After("1.0", "3.1")}), "1.0 endOfMibView");
  EXPECT_EQ(device.GetNext({After("1.0", "3.1.0")}), "1.0 endOfMibView");
  EXPECT_EQ(device.GetNext({After("1.0", "3.1.0.0")}), "3.1.0 INTEGER 31");
  EXPECT_EQ(device.GetNext({After("1.0", "3.1.1")}), "3.1.0 INTEGER 31");
  EXPECT_EQ(device.GetNext({From("1.0", "1.0")}), "1.0 endOfMibView");
  EXPECT_EQ(device.GetNext({From("3.1.0", "1.0")}), "3.1.0 endOfMibView");
  EXPECT_EQ(device.GetNext({From("2", "2.1")}), "2 endOfMibView");
}

TEST_F(AnAgentWithThree, AnswersEachRangeOfAGetNextByItself) {
  EXPECT_EQ(device.GetNext({After("3.1.0"), After("1.0", "2"), From("1.0"),
                            After("4294967295.0")}),
            "4294967295.0 INTEGER 9, 1.0 endOfMibView, 1.0 INTEGER 1, "
            "4294967295.0 endOfMibView");
}

TEST_F(AnAgentWithThree, RepeatsTheRangesOfAGetBulk) {
  EXPECT_EQ(device.GetBulk(1, 2, {After("1"), After("1"), After("3")}),
            "1.0 INTEGER 1, 1.0 INTEGER 1, 3.1.0 INTEGER 31, "
            "3.1.0 INTEGER 31, 4294967295.0 INTEGER 9");
  EXPECT_EQ(device.GetBulk(0, 1, {From("1.0"), After("1.0")}),
            "1.0 INTEGER 1, 3.1.0 INTEGER 31");
  EXPECT_EQ(device.GetBulk(2, 0, {After("1"), After("3"), After("3")}),
            "1.0 INTEGER 1, 3.1.0 INTEGER 31");
  EXPECT_EQ(device.GetBulk(7, 3, {After("1"), After("3")}),
            "1.0 INTEGER 1, 3.1.0 INTEGER 31");
  EXPECT_EQ(device.GetBulk(0, 0, {After("1")}), "noError");
}

TEST_F(AnAgentWithThree, EndsAGetBulkWhenARoundFindsNothing) {
  EXPECT_EQ(device.GetBulk(0, 100, {After("1.0")}),
            "3.1.0 INTEGER 31, 4294967295.0 INTEGER 9, "
            "4294967295.0 endOfMibView");
  EXPECT_EQ(device.GetBulk(0, 65535, {After("1.0", "2"), After("3")}),
            "1.0 endOfMibView, 3.1.0 INTEGER 31, "
            "1.0 endOfMibView, 4294967295.0 INTEGER 9, "
            "1.0 endOfMibView, 4294967295.0 endOfMibView");
  EXPECT_EQ(device.GetBulk(1, 100, {After("1.0", "2"), After("9", "10")}),
            "1.0 endOfMibView, 9 endOfMibView");
}

TEST_F(AnAgent, EndsAGetBulkBeforeItBecomesHuge) {
  Add(module, "1", 1);
  std::vector<std::unique_ptr<snmp::Scalar<std::string>>> texts;
  for (int i = 2; i < 60; ++i) {
    texts.push_back(std::make_unique<snmp::Scalar<std::string>>(
        module, std::to_string(i), std::string(1000, 'x')));
  }
  device.Connect();
  const wire::Response response =
      device.Master().Ask(wire::GetBulk{0, 1000, {After("0")}});
  EXPECT_GT(response.varbinds.size(), 30U);
  EXPECT_LT(response.varbinds.size(), 40U);
  EXPECT_EQ(response.varbinds.at(20).name, Id("21.0"));
}

TEST_F(AnAgent, ServesNothingBeforeThereIsAnObject) {
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  EXPECT_EQ(device.GetNext("0"), "0 endOfMibView");
  EXPECT_EQ(device.GetBulk(0, 3, {After("0"), After("1")}),
            "0 endOfMibView, 1 endOfMibView");
}

TEST_F(AnAgent, WalksThroughAllItsModules) {
  snmp::Module below(device.agent, "1.3.6.1.4.1.32473.7.2");
  snmp::Module above(device.agent, "1.3.6.1.4.1.32473.6");
  snmp::Module far(device.agent, "1.3.6.1.2.1.99");
  Add(module, "1", 1);
  Add(module, "3", 3);
  Add(below, "1", 21);
  Add(below, "5", 25);
  Add(above, "1", 61);
  Add(far, "4", 4);
  device.Connect(4);
  EXPECT_EQ(device.Walk(".1"),
            ".1.3.6.1.2.1.99.4.0 INTEGER 4, .1.3.6.1.4.1.32473.6.1.0 INTEGER "
            "61, 1.0 INTEGER 1, 2.1.0 INTEGER 21, 2.5.0 INTEGER 25, "
            "3.0 INTEGER 3");
  EXPECT_EQ(device.GetNext({After("1.0", "2.1.0")}), "1.0 endOfMibView");
}

TEST_F(AnAgent, RefusesTwoObjectsInOnePlaceOfNestedModules) {
  snmp::Module below(device.agent, "1.3.6.1.4.1.32473.7.2");
  Add(module, "2.1", 1);
  EXPECT_THROW(Add(below, "1", 2), std::invalid_argument);
  Add(below, "2", 3);
  EXPECT_THROW(Add(module, "2.2", 1), std::invalid_argument);
  EXPECT_THROW(Add(module, "2", 1), std::invalid_argument);
}

TEST_F(AnAgent, ServesEachSubtreeOfAModule) {
  module.AddSubtree("1.3.6.1.2.1.99");
  Add(module, "1", 1);
  Add(module, ".1.3.6.1.2.1.99.1", 2);
  EXPECT_THROW(Add(module, ".1.3.6.1.2.1.98.1", 2), std::invalid_argument);
  EXPECT_THROW(module.AddSubtree(""), std::invalid_argument);
  device.Connect(2);
  EXPECT_EQ(device.Walk(".1"), ".1.3.6.1.2.1.99.1.0 INTEGER 2, 1.0 INTEGER 1");
}

TEST_F(AnAgent, KeepsContextsApart) {
  snmp::ModuleOptions options;
  options.context = "east";
  snmp::Module east(device.agent, kBase, options);
  Add(module, "1", 1);
  Add(east, "1", 2);
  Add(east, "2", 3);
  device.Connect(2);
  EXPECT_EQ(device.Walk("0"), "1.0 INTEGER 1");
  device.Master().SetContext("east");
  EXPECT_EQ(device.Walk("0"), "1.0 INTEGER 2, 2.0 INTEGER 3");
  EXPECT_EQ(device.Set({{"1.0", Int(5)}}), "notWritable 1");
  device.Master().SetContext("west");
  EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  EXPECT_EQ(device.GetNext("0"), "0 endOfMibView");
  EXPECT_EQ(device.Set({{"1.0", Int(5)}}), "notWritable 1");
}

TEST_F(AnAgent, ComparesContextsByAllOfTheirOctets) {
  snmp::ModuleOptions options;
  options.context = "east";
  snmp::Module east(device.agent, kBase, options);
  Add(east, "1", 2);
  device.Connect(2);
  device.Master().SetContext(std::string("east\0", 5));
  EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  device.Master().SetContext("east");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 2");
}

TEST(AnAgentsContext, IsThatOfModulesThatNameNone) {
  snmp::AgentOptions options = Device::Options();
  options.context = "south";
  Device device(options);
  snmp::Module module(device.agent, kBase);
  const snmp::Scalar scalar(module, "1", 1);
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "noSuchObject");
  device.Master().SetContext("south");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
}

TEST_F(AnAgent, AnswersInTheByteOrderOfTheRequest) {
  Add(module, "1", 0x01020304);
  device.Connect();
  device.Master().SetByteOrder(0);
  EXPECT_EQ(device.Get("1.0"), "INTEGER 16909060");
  EXPECT_EQ(device.GetBulk(0, 1, {From("1")}), "1.0 INTEGER 16909060");
  device.Master().SetByteOrder(wire::kNetworkByteOrder);
  EXPECT_EQ(device.Get("1.0"), "INTEGER 16909060");
}

TEST_F(AnAgent, ServesTheLongestNames) {
  std::string oid = "1";
  while (snmp::Oid(kBase + ("." + oid)).size() < 127) oid += ".4294967295";
  Add(module, oid, 1);
  EXPECT_THROW(Add(module, "2" + oid.substr(1) + ".1", 1),
               std::invalid_argument);
  device.Connect();
  EXPECT_EQ(device.Get(oid + ".0"), "INTEGER 1");
  EXPECT_EQ(device.GetNext("0"), oid + ".0 INTEGER 1");
}

TEST_F(AnAgent, ServesMoreObjectsThanItLost) {
  for (int i = 1; i <= 500; ++i) Add(module, std::to_string(i), i);
  device.Connect();
  for (std::size_t i = 0; i < scalars.size(); i += 2) scalars[i].reset();
  std::string odd;
  for (int i = 2; i <= 500; i += 2) {
    odd += (odd.empty() ? "" : ", ") + std::to_string(i) + ".0 INTEGER " +
           std::to_string(i);
  }
  EXPECT_EQ(device.Walk("0"), odd);
}

}  // namespace
