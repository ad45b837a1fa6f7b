// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPCharNodeData.h"

#include "support/OwnerTest.h"

namespace {

using testing::ElementsAre;
using testing::StrEq;

class ACharValue : public OwnerTest {
 protected:
  static const char* TextOf(const NetSNMPCharNodeData& value) {
    return static_cast<const char*>(value.NodeDataValue());
  }

  char variable_[16] = "front";
};

TEST_F(ACharValue, SendsItsTextUpToTheNul) {
  const NetSNMPCharNodeData value(variable_, eNodeAccessReadOnly);
  EXPECT_EQ(value.NodeByteValue(),
            reinterpret_cast<const unsigned char*>(variable_));
  variable_[2] = '\0';
  EXPECT_EQ(value.NodeValueSize(), 2U);
}

TEST_F(ACharValue, WritesTheWholeTextAndItsNulHoweverLong) {
  NetSNMPCharNodeData value(variable_, eNodeAccessReadWrite);
  value.NodeDataValue("fifteen letters", false);
  EXPECT_STREQ(variable_, "fifteen letters");
  value.NodeDataValue("", false);
  EXPECT_STREQ(variable_, "");
  EXPECT_EQ(value.NodeValueSize(), 0U);
  EXPECT_EQ(value.localData_, nullptr);
}

TEST_F(ACharValue, LeavesTheRestOfTheVariableAlone) {
  NetSNMPCharNodeData value(variable_, eNodeAccessReadWrite);
  value.NodeDataValue("ab", false);
  EXPECT_STREQ(variable_ + 3, "nt");
}

TEST_F(ACharValue, LosesItsStorageWhenSetToEmptyText) {
  NetSNMPCharNodeData value(variable_, eNodeAccessReadWrite, true, nullptr,
                            true);
  value.NodeDataValue("", false);
  EXPECT_EQ(value.NodeDataValue(), nullptr);
  EXPECT_EQ(value.NodeByteValue(), nullptr);
  EXPECT_EQ(value.NodeValueSize(), 0U);
}

TEST_F(ACharValue, TakesALocalCopyAgainWhenItIsSetWithoutStorage) {
  NetSNMPCharNodeData value(nullptr, eNodeAccessReadWrite);
  value.NodeDataValue("", false);
  EXPECT_EQ(value.NodeDataValue(), nullptr);
  value.NodeDataValue("back", false);
  EXPECT_THAT(TextOf(value), StrEq("back"));
  EXPECT_EQ(value.NodeDataValue(), value.localData_);
}

TEST_F(ACharValue, ReadsTheVariableWhenItsLocalCopyIsSetToEmptyText) {
  NetSNMPCharNodeData value(variable_, eNodeAccessReadWrite, true);
  value.NodeDataValue("", false);
  EXPECT_EQ(value.localData_, nullptr);
  EXPECT_EQ(value.NodeDataValue(), variable_);
}

TEST_F(ACharValue, TakesNoLocalCopyOfAnEmptyText) {
  variable_[0] = '\0';
  const NetSNMPCharNodeData value(variable_, eNodeAccessReadOnly, true);
  EXPECT_EQ(value.localData_, nullptr);
  EXPECT_EQ(value.NodeDataValue(), variable_);
}

TEST_F(ACharValue, StaysAsItIsWhenItIsSetToNull) {
  NetSNMPDataNode* const owner = BuildOwner(LogCall);
  NetSNMPCharNodeData over(variable_, eNodeAccessReadWrite, false, owner);
  NetSNMPCharNodeData local(variable_, eNodeAccessReadWrite, true, owner);
  over.NodeDataValue(nullptr, false);
  local.NodeDataValue(nullptr, false);
  local.CopyLocalData(nullptr);
  EXPECT_STREQ(variable_, "front");
  EXPECT_THAT(TextOf(local), StrEq("front"));
  const std::string line = OwnerLine("Node Data = front; data value set.");
  EXPECT_THAT(log_.Lines(), ElementsAre(line, line));
}

TEST_F(ACharValue, TakesTheEndOfItsOwnText) {
  NetSNMPCharNodeData over(variable_, eNodeAccessReadWrite);
  NetSNMPCharNodeData local(variable_, eNodeAccessReadWrite, true);
  for (NetSNMPCharNodeData* value : {&over, &local}) {
    value->NodeDataValue(TextOf(*value) + 1, false);
    EXPECT_THAT(TextOf(*value), StrEq("ront"));
  }
  local.CopyLocalData(TextOf(local) + 1);
  EXPECT_THAT(TextOf(local), StrEq("ont"));
}

}  // namespace
