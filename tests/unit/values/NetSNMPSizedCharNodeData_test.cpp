// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPSizedCharNodeData.h"

#include <memory>

#include "NetSNMPIntNodeData.h"
#include "support/OwnerTest.h"
#include "values/BuiltInValue.h"

namespace {

using testing::ElementsAre;
using testing::StrEq;

class ASizedCharValue : public OwnerTest {
 protected:
  static const char* TextOf(const NetSNMPCharNodeData& value) {
    return static_cast<const char*>(value.NodeDataValue());
  }

  // A text of four letters and its NUL fill the buffer.
  static constexpr unsigned int kSize = 5;
  struct {
    char buffer[kSize] = "fan";
    char behind[8] = "behind!";
  } variables_;
  char* const variable_ = variables_.buffer;
};

TEST_F(ASizedCharValue, IsACharValueWithASize) {
  const NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadWrite);
  EXPECT_EQ(value.dataType_, eNodeDataChar);
  EXPECT_EQ(value.bufferSize_, kSize);
  EXPECT_EQ(value.NodeDataValue(), variable_);
  EXPECT_EQ(value.NodeValueSize(), 3U);
  EXPECT_TRUE(IsBuiltInValue(value));
}

TEST_F(ASizedCharValue, TakesATextThatFillsItsBuffer) {
  NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadWrite);
  value.NodeDataValue("four", false);
  EXPECT_STREQ(variable_, "four");
  value.NodeDataValue("", false);
  EXPECT_STREQ(variable_, "");
}

TEST_F(ASizedCharValue, RefusesALongerTextWithALineAndNoNotification) {
  NetSNMPDataNode* const owner = BuildOwner(LogCall);
  NetSNMPSizedCharNodeData over(variable_, kSize, eNodeAccessReadWrite, false,
                                owner);
  NetSNMPSizedCharNodeData local(variable_, kSize, eNodeAccessReadWrite, true,
                                 owner);
  over.NodeDataValue("fives", true);
  local.NodeDataValue("fives", true);
  local.CopyLocalData("fives");
  EXPECT_STREQ(variable_, "fan");
  EXPECT_THAT(TextOf(local), StrEq("fan"));
  EXPECT_STREQ(variables_.behind, "behind!");
  const std::string line = OwnerLine("Node Data = fan; data value too long.");
  EXPECT_THAT(log_.Lines(), ElementsAre(line, line));
}

TEST_F(ASizedCharValue, StaysAsItIsWhenItIsSetToNull) {
  NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadWrite, true);
  value.NodeDataValue(nullptr, false);
  value.CopyLocalData(nullptr);
  EXPECT_THAT(TextOf(value), StrEq("fan"));
}

TEST_F(ASizedCharValue, KeepsNoPointerToTheVariableAsTableData) {
  const NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadOnly,
                                       true, nullptr, true);
  EXPECT_TRUE(value.tableData_);
  EXPECT_EQ(value.externalData_, nullptr);
  EXPECT_THAT(TextOf(value), StrEq("fan"));
}

TEST_F(ASizedCharValue, HandsItsSizeOnToItsClones) {
  for (const bool copyLocal : {false, true}) {
    const NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadWrite,
                                         copyLocal);
    const std::unique_ptr<NetSNMPNodeData> clone(value.Clone());
    auto* const sized = dynamic_cast<NetSNMPSizedCharNodeData*>(clone.get());
    ASSERT_NE(sized, nullptr);
    EXPECT_EQ(sized->bufferSize_, kSize);
    EXPECT_THAT(TextOf(*sized), StrEq("fan"));
    EXPECT_EQ(sized->NodeDataValue() == variable_, !copyLocal);
    sized->NodeDataValue("fives", false);
    EXPECT_THAT(TextOf(*sized), StrEq("fan"));
  }
}

TEST_F(ASizedCharValue, HasNoRoomInStorageOfAnUnknownSize) {
  int number = 7;
  const NetSNMPCharNodeData over(variable_, eNodeAccessReadWrite);
  const NetSNMPCharNodeData local(variable_, eNodeAccessReadWrite, true);
  const NetSNMPIntNodeData other(&number, eNodeAccessReadWrite);
  for (const NetSNMPNodeData* source :
       {static_cast<const NetSNMPNodeData*>(&over),
        static_cast<const NetSNMPNodeData*>(&local),
        static_cast<const NetSNMPNodeData*>(&other)}) {
    NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadWrite,
                                   true);
    value.CopyData(*source);
    EXPECT_EQ(value.bufferSize_, 0U);
    EXPECT_EQ(value.localData_, nullptr);
    value.NodeDataValue("", false);
    value.NodeDataValue("x", false);
    EXPECT_STREQ(variable_, "fan");
    EXPECT_EQ(number, 7);
  }
}

TEST_F(ASizedCharValue, HasRoomForTheNulToo) {
  const NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadWrite);
  EXPECT_TRUE(value.Fits(0));
  EXPECT_TRUE(value.Fits(4));
  EXPECT_FALSE(value.Fits(5));
  const NetSNMPSizedCharNodeData none(nullptr, 0, eNodeAccessReadWrite);
  EXPECT_FALSE(none.Fits(0));
}

TEST_F(ASizedCharValue, TakesTheEndOfItsOwnText) {
  NetSNMPSizedCharNodeData value(variable_, kSize, eNodeAccessReadWrite);
  value.NodeDataValue(variable_ + 1, false);
  EXPECT_STREQ(variable_, "an");
}

}  // namespace
