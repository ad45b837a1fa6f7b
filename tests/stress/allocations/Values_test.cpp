// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <memory>
#include <string>

#include "FailingNew.h"
#include "NetSNMPTableRow.h"
#include "support/DataNodeTest.h"
#include "support/Kinds.h"

namespace {

template <typename K>
class AValueWithoutMemory : public testing::Test {};
TYPED_TEST_SUITE(AValueWithoutMemory, Kinds, KindName);

TYPED_TEST(AValueWithoutMemory, IsBuiltWholeOrNotAtAll) {
  auto variable = TypeParam::kOne;
  WithEachAllocationFailing([&](const auto& fail) {
    fail([&] {
      const auto value =
          MakeValue<TypeParam>(&variable, eNodeAccessReadWrite, true);
      const std::unique_ptr<NetSNMPNodeData> clone(value->Clone());
    });
  });
}

TYPED_TEST(AValueWithoutMemory, KeepsItsLocalDataWhenItCannotBeReplaced) {
  auto variable = TypeParam::kOne;
  auto other = TypeParam::kOther;
  WithEachAllocationFailing([&](const auto& fail) {
    const auto value =
        MakeValue<TypeParam>(&variable, eNodeAccessReadWrite, true);
    const bool set = fail(
        [&] { value->NodeDataValue(ArgumentOf<TypeParam>(other), false); });
    EXPECT_EQ(StateOf<TypeParam>(*value), set ? other : variable);
  });
}

TYPED_TEST(AValueWithoutMemory, KeepsItsLocalDataWhenItCannotCopyAnother) {
  auto variable = TypeParam::kOne;
  auto other = TypeParam::kOther;
  WithEachAllocationFailing([&](const auto& fail) {
    const auto value =
        MakeValue<TypeParam>(&variable, eNodeAccessReadWrite, true);
    const auto source = MakeValue<TypeParam>(&other, eNodeAccessReadOnly, true);
    const bool copied = fail([&] { value->CopyData(*source); });
    EXPECT_EQ(StateOf<TypeParam>(*value), copied ? other : variable);
  });
}

TYPED_TEST(AValueWithoutMemory, WritesAndLosesNoMoreThanItsLogLine) {
  auto variable = TypeParam::kOne;
  const auto other = TypeParam::kOther;
  const ScopedRegistry registry;
  NetSNMPNode::NodeMsgLogger_ = [](unsigned int, const std::string&) {};
  int number = 0;
  auto* const owner = new NetSNMPDataNode(
      nullptr, 0, "owner", NetSNMPIntNodeData(&number, eNodeAccessReadOnly),
      nullptr, "");
  WithEachAllocationFailing([&](const auto& fail) {
    const auto value =
        MakeValue<TypeParam>(&variable, eNodeAccessReadWrite, false, owner);
    fail([&] { value->NodeDataValue(ArgumentOf<TypeParam>(other), true); });
    fail([&] { value->NodeDataLogMessage("text"); });
  });
  delete owner;
  NetSNMPNode::NodeMsgLogger_ = nullptr;
}

using Vector = std::vector<NetSNMPNodeData*>;

class AVectorWithoutMemory : public testing::Test {
 protected:
  AVectorWithoutMemory() {
    std::string text = "a text too long to lie inline";
    int number = 7;
    const NetSNMPStringNodeData textValue(&text, eNodeAccessReadOnly, true);
    NetSNMPIntNodeData index(&number, eNodeAccessReadOnly, true);
    index.isIndex_ = true;
    NetSNMPNodeData::CatDataVector(values_, index);
    NetSNMPNodeData::CatDataVector(values_, textValue);
  }
  ~AVectorWithoutMemory() override {
    NetSNMPNodeData::DestroyDataVector(values_);
  }

  Vector values_;
};

TEST_F(AVectorWithoutMemory, IsCopiedWholeOrNotAtAll) {
  WithEachAllocationFailing([&](const auto& fail) {
    Vector copy;
    const bool copied =
        fail([&] { NetSNMPNodeData::CopyDataVector(values_, copy); });
    EXPECT_EQ(copy.size(), copied ? values_.size() : 0U);
    NetSNMPNodeData::DestroyDataVector(copy);
  });
  WithEachAllocationFailing([&](const auto& fail) {
    Vector* copy = nullptr;
    fail([&] { copy = NetSNMPNodeData::CopyDataVector(values_); });
    if (copy != nullptr) NetSNMPNodeData::DestroyDataVector(*copy);
    delete copy;
  });
}

TEST_F(AVectorWithoutMemory, GrowsByWholeValuesOrNotAtAll) {
  WithEachAllocationFailing([&](const auto& fail) {
    Vector copy;
    const bool grown =
        fail([&] { NetSNMPNodeData::CatDataVector(copy, *values_.front()); });
    EXPECT_EQ(copy.size(), grown ? 1U : 0U);
    NetSNMPNodeData::DestroyDataVector(copy);
  });
}

TEST_F(AVectorWithoutMemory, MakesAWholeTableRowOrNone) {
  WithEachAllocationFailing([&](const auto& fail) {
    fail([&] {
      NetSNMPTableRow row(values_);
      row.AddIndex(*values_.front(), true);
      row.AppendData(*values_.back(), true);
    });
  });
}

}  // namespace
