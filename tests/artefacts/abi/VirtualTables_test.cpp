// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The order of virtual operations in the library as it is built. Services call
// them by slot, and were compiled before: what these lists name stays where it
// is, docs/abi.md says what else may come.
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "VirtualTable.h"

namespace {

using Operations = std::vector<std::string>;
using ::testing::ElementsAreArray;

Operations operator+(Operations first, const Operations& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

const Operations kValue = {
    "Clone() const",
    "~",
    "~",
    "CopyData(NetSNMPNodeData const&)",
    "NodeDataValue(int, bool)",
    "NodeDataValue(unsigned int, bool)",
    "NodeDataValue(bool, bool)",
    "NodeDataValue(std::string const&, bool)",
    "NodeDataValue(char const*, bool)",
    "NodeDataValue(unsigned char const*, unsigned int, bool)",
    "NodeByteValue() const",
    "NodeValueSize() const",
    "NodeASNDataType() const",
    "DeleteLocalData()",
    "OnSetNodeValue() const",
    "NodeDataLogMessage(std::string const&) const"};

const Operations kNode = {"~",
                          "~",
                          "NodeLogMessage(std::string const&) const",
                          "RegisterNode()",
                          "UnregisterNode()",
                          "NodeOID() const",
                          "NodeOIDLen() const",
                          "NodeName() const",
                          "Initialize(unsigned long*, unsigned int)"};

// An abstract class has its destructor in the table with Clang, and nothing in
// its place with GCC.
Operations WithoutDestructor(Operations operations) {
  operations.erase(std::remove(operations.begin(), operations.end(), "~"),
                   operations.end());
  return operations;
}

const Operations kDestructor = {"~", "~"};
const Operations kDestructorOfFurtherBase = {"thunk to ~", "thunk to ~"};

TEST(VirtualTables, OfValuesKeepTheirOrder) {
  EXPECT_THAT(VirtualTable("NetSNMPNodeData"), ElementsAreArray(kValue));
}

TEST(VirtualTables, OfTypedValuesAddTheCopyOfTheirType) {
  const auto added = [](const std::string& type) {
    return kValue + Operations{"CopyLocalData(" + type + ")"};
  };
  EXPECT_THAT(VirtualTable("NetSNMPIntNodeData"),
              ElementsAreArray(added("int")));
  EXPECT_THAT(VirtualTable("NetSNMPUnsignedIntNodeData"),
              ElementsAreArray(added("unsigned int")));
  EXPECT_THAT(VirtualTable("NetSNMPBoolNodeData"),
              ElementsAreArray(added("bool")));
  EXPECT_THAT(VirtualTable("NetSNMPStringNodeData"),
              ElementsAreArray(added("std::string const&")));
  EXPECT_THAT(VirtualTable("NetSNMPCharNodeData"),
              ElementsAreArray(added("char const*")));
}

TEST(VirtualTables, OfByteBuffersAddTheirSetterFirst) {
  EXPECT_THAT(
      VirtualTable("NetSNMPByteNodeData"),
      ElementsAreArray(kValue +
                       Operations{"NodeDataValue(unsigned char const*, bool)",
                                  "CopyLocalData(unsigned char const*)"}));
}

TEST(VirtualTables, OfNodesKeepTheirOrder) {
  EXPECT_THAT(VirtualTable("NetSNMPNode"), ElementsAreArray(kNode));
  EXPECT_THAT(VirtualTable("NetSNMPTableEntryNode"), ElementsAreArray(kNode));
}

TEST(VirtualTables, OfNodesThatFireTrapsEndWithTheTriggersDestructor) {
  EXPECT_THAT(VirtualTable("NetSNMPDataNode"),
              ElementsAreArray(kNode + kDestructorOfFurtherBase));
  EXPECT_THAT(VirtualTable("NetSNMPTableNode"),
              ElementsAreArray(kNode + kDestructorOfFurtherBase));
}

TEST(VirtualTables, OfTrapNodesAddWhatSendsThem) {
  EXPECT_THAT(
      VirtualTable("NetSNMPTrapNode"),
      ElementsAreArray(kNode + Operations{"AddDataObject(NetSNMPDataNode*)",
                                          "TriggerV2Trap()",
                                          "TriggerV2Trap(NetSNMPDataNode*)"}));
}

TEST(VirtualTables, OfDataSetTablesAddTheCheckOfARow) {
  EXPECT_THAT(
      VirtualTable("NetSNMPDataSetTableNode"),
      ElementsAreArray(kNode +
                       Operations{"ValidateRow(std::vector<NetSNMPNodeData*, "
                                  "std::allocator<NetSNMPNodeData*> > const&) "
                                  "const"}));
}

TEST(VirtualTables, OfRowsAndTriggersHaveTheDestructorOnly) {
  EXPECT_THAT(VirtualTable("NetSNMPTableRow"), ElementsAreArray(kDestructor));
  EXPECT_THAT(VirtualTable("NetSNMPTrapTrigger"),
              ElementsAreArray(kDestructor));
}

TEST(VirtualTables, OfTheSubAgentHaveTheInterfaceAndThenTheRunnableTask) {
  EXPECT_THAT(VirtualTable("ISNMPSubAgent"),
              ElementsAreArray(Operations(6, "pure")));
  EXPECT_THAT(
      WithoutDestructor(VirtualTable("SNMPSubAgent")),
      ElementsAreArray({"Connected() const", "pure", "pure",
                        "RegisterSubAgentCallback(std::string const&, "
                        "ISNMPSubAgentCallback*)",
                        "UnregisterSubAgentCallback(std::string const&)",
                        "NotifySubAgentCallbacks(int)", "Start()", "Stop()",
                        "IsRunning() const", "thunk to Start()",
                        "thunk to Stop()", "thunk to IsRunning() const"}));
}

}  // namespace
