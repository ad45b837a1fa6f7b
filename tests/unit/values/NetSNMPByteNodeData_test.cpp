// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPByteNodeData.h"

#include <array>

#include "NetSNMPIntNodeData.h"
#include "support/Layout.h"
#include "support/OwnerTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AByteBuffer : public OwnerTest {
 protected:
  static std::vector<unsigned char> BytesOf(const NetSNMPByteNodeData& value) {
    const unsigned char* const bytes = value.NodeByteValue();
    if (bytes == nullptr) return {};
    return {bytes, bytes + value.NodeValueSize()};
  }

  std::array<unsigned char, 4> variable_ = {{1, 2, 3, 4}};
};

TEST_F(AByteBuffer, SendsAsManyBytesAsItIsGiven) {
  const NetSNMPByteNodeData value(variable_.data(), 3, eNodeAccessReadOnly);
  EXPECT_EQ(value.dataSize_, 3U);
  EXPECT_EQ(value.NodeByteValue(), variable_.data());
  EXPECT_THAT(BytesOf(value), ElementsAre(1, 2, 3));
}

TEST_F(AByteBuffer, WritesNoMoreThanItsSize) {
  NetSNMPByteNodeData value(variable_.data(), 3, eNodeAccessReadWrite);
  const unsigned char bytes[] = {9, 0, 7};
  value.NodeDataValue(bytes, false);
  EXPECT_THAT(variable_, ElementsAre(9, 0, 7, 4));
}

TEST_F(AByteBuffer, OfNoBytesTakesNoLocalCopy) {
  NetSNMPByteNodeData value(variable_.data(), 0, eNodeAccessReadWrite, true);
  EXPECT_EQ(value.localData_, nullptr);
  EXPECT_EQ(value.NodeDataValue(), variable_.data());
  const NetSNMPByteNodeData cell(variable_.data(), 0, eNodeAccessReadWrite,
                                 true, nullptr, true);
  EXPECT_EQ(cell.NodeDataValue(), nullptr);
}

TEST_F(AByteBuffer, GivesUpItsLocalCopyWhenItHasNoBytesAnyMore) {
  NetSNMPByteNodeData value(variable_.data(), 4, eNodeAccessReadWrite, true);
  value.dataSize_ = 0;
  value.CopyLocalData(variable_.data());
  EXPECT_EQ(value.localData_, nullptr);
}

TEST_F(AByteBuffer, IsNotChangedByTheSetterWithALength) {
  NetSNMPByteNodeData over(variable_.data(), 4, eNodeAccessReadWrite, false,
                           BuildOwner(LogCall));
  NetSNMPByteNodeData local(variable_.data(), 4, eNodeAccessReadWrite, true,
                            over.ownerNode_);
  const unsigned char bytes[] = {9, 9, 9, 9};
  for (NetSNMPNodeData* value : {&over, &local}) {
    value->NodeDataValue(bytes, 4, true);
  }
  EXPECT_THAT(BytesOf(over), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(BytesOf(local), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(AByteBuffer, StaysAsItIsWhenItIsSetToNull) {
  NetSNMPByteNodeData over(variable_.data(), 4, eNodeAccessReadWrite);
  NetSNMPByteNodeData local(variable_.data(), 4, eNodeAccessReadWrite, true);
  for (NetSNMPByteNodeData* value : {&over, &local}) {
    value->NodeDataValue(nullptr, false);
    EXPECT_THAT(BytesOf(*value), ElementsAre(1, 2, 3, 4));
  }
  local.CopyLocalData(nullptr);
  EXPECT_THAT(BytesOf(local), ElementsAre(1, 2, 3, 4));
}

TEST_F(AByteBuffer, TakesTheSizeOfWhatItCopies) {
  const NetSNMPByteNodeData source(variable_.data(), 2, eNodeAccessReadOnly,
                                   true);
  NetSNMPByteNodeData value(variable_.data(), 4, eNodeAccessReadOnly, true);
  value.CopyData(source);
  EXPECT_EQ(value.dataSize_, 2U);
  EXPECT_THAT(BytesOf(value), ElementsAre(1, 2));
}

TEST_F(AByteBuffer, FitsTheLocalCopyThatItKeepsToTheSizeItTakes) {
  NetSNMPByteNodeData value(variable_.data(), 2, eNodeAccessReadOnly, true);
  value.CopyData(NetSNMPByteNodeData(variable_.data(), 4, eNodeAccessReadOnly));
  EXPECT_THAT(BytesOf(value), ElementsAre(1, 2, 0, 0));
  value.CopyData(NetSNMPByteNodeData(variable_.data(), 1, eNodeAccessReadOnly));
  EXPECT_THAT(BytesOf(value), ElementsAre(1));
  value.CopyData(NetSNMPByteNodeData(variable_.data(), 0, eNodeAccessReadOnly));
  EXPECT_EQ(value.localData_, nullptr);
}

TEST_F(AByteBuffer, TakesTheSizeOfAValueOfAnotherClassToo) {
  NetSNMPByteNodeData value(variable_.data(), 2, eNodeAccessReadOnly);
  value.CopyData(NetSNMPIntNodeData(nullptr, eNodeAccessReadOnly));
  EXPECT_EQ(value.dataSize_, 4U);
  value.CopyData(
      NetSNMPNodeData(eNodeDataVoid, eNodeAccessDefault, nullptr, nullptr));
  EXPECT_EQ(value.dataSize_, 0U);
}

TEST_F(AByteBuffer, HasItsSizeBehindTheFieldsOfTheBase) {
  const NetSNMPByteNodeData value(nullptr, 0, eNodeAccessDefault);
  EXPECT_TRUE(LieInOrder({&value.notifyEnabled_, &value.dataSize_}));
}

}  // namespace
