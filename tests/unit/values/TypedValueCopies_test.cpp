// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the copies of the six typed classes have in common.
#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "TypedValueTest.h"

namespace {

template <typename K>
class ACopiedValue : public TypedValueTest<K> {};
TYPED_TEST_SUITE(ACopiedValue, Kinds, KindName);

// Clone, copy construction and CopyData() of one value.
template <typename K>
std::vector<std::unique_ptr<typename K::Class>> CopiesOf(
    const typename K::Class& source) {
  std::vector<std::unique_ptr<typename K::Class>> copies;
  copies.emplace_back(dynamic_cast<typename K::Class*>(source.Clone()));
  copies.push_back(std::make_unique<typename K::Class>(source));
  copies.push_back(MakeValue<K>(nullptr, eNodeAccessDefault));
  copies.back()->CopyData(source);
  return copies;
}

TYPED_TEST(ACopiedValue, SharesTheVariableWithItsCopies) {
  const auto value = this->Over();
  for (const auto& copy : CopiesOf<TypeParam>(*value)) {
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->externalData_, this->Storage());
    EXPECT_EQ(copy->localData_, nullptr);
    EXPECT_EQ(copy->NodeValueSize(), TypeParam::kSize);
  }
}

TYPED_TEST(ACopiedValue, GivesItsCopiesLocalDataOfTheirOwn) {
  const auto value = this->Local();
  for (const auto& copy : CopiesOf<TypeParam>(*value)) {
    EXPECT_EQ(copy->externalData_, nullptr);
    ASSERT_NE(copy->localData_, nullptr);
    EXPECT_NE(copy->localData_, value->localData_);
    EXPECT_EQ(StateOf<TypeParam>(*copy), TypeParam::kOne);
    this->Set(*copy, TypeParam::kOther);
    EXPECT_EQ(StateOf<TypeParam>(*copy), TypeParam::kOther);
  }
  EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
}

TYPED_TEST(ACopiedValue, GivesEveryFieldToItsCopies) {
  NetSNMPDataNode* const owner = this->BuildOwner();
  const auto value = MakeValue<TypeParam>(&this->variable_,
                                          eNodeAccessWriteOnly, false, owner);
  value->columnNumber_ = 3;
  value->tableData_ = true;
  value->isIndex_ = true;
  value->notifyEnabled_ = false;
  for (const auto& copy : CopiesOf<TypeParam>(*value)) {
    EXPECT_EQ(copy->dataType_, TypeParam::kType);
    EXPECT_EQ(copy->accessMode_, eNodeAccessWriteOnly);
    EXPECT_EQ(copy->columnNumber_, 3U);
    EXPECT_EQ(copy->ownerNode_, owner);
    EXPECT_TRUE(copy->tableData_);
    EXPECT_TRUE(copy->isIndex_);
    EXPECT_FALSE(copy->notifyEnabled_);
  }
}

TYPED_TEST(ACopiedValue, StillReadsItsLocalDataAfterCopyingOneWithoutAny) {
  auto other = TypeParam::kOther;
  const auto source = MakeValue<TypeParam>(&other, eNodeAccessReadOnly);
  const auto value = this->Local();
  value->CopyData(*source);
  EXPECT_EQ(value->externalData_, source->externalData_);
  EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
}

// A byte buffer takes the size of the untyped value, which is 0.
TYPED_TEST(ACopiedValue, StillReadsItsLocalDataAfterCopyingAnUntypedValue) {
  auto other = TypeParam::kOther;
  const NetSNMPNodeData source(TypeParam::kType, eNodeAccessReadOnly, &other,
                               nullptr);
  const auto value = this->Local();
  value->CopyData(source);
  EXPECT_EQ(value->externalData_, &other);
  if (TypeParam::kType == eNodeDataByte) return;
  EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
}

TYPED_TEST(ACopiedValue, StaysItselfWhenItCopiesItself) {
  for (const auto& value : this->OverAndLocal()) {
    value->CopyData(*value);
    EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
    EXPECT_EQ(value->NodeValueSize(), TypeParam::kSize);
  }
}

// A value of each kind, over a variable that lives on, or with local data.
template <typename... Ks>
std::vector<std::unique_ptr<NetSNMPNodeData>> ValuesOf(testing::Types<Ks...>,
                                                       bool copyLocal) {
  static std::tuple<typename Ks::Variable...> variables;
  variables = {Ks::kOne...};
  std::vector<std::unique_ptr<NetSNMPNodeData>> values;
  (values.push_back(MakeValue<Ks>(&std::get<typename Ks::Variable>(variables),
                                  eNodeAccessWriteOnly, copyLocal)),
   ...);
  return values;
}

TYPED_TEST(ACopiedValue, TakesNoStorageOfAnotherClassForItsOwn) {
  for (const bool copyLocal : {false, true}) {
    for (const auto& source : ValuesOf(Kinds(), copyLocal)) {
      if (source->dataType_ == TypeParam::kType) continue;
      const std::string sourceText = source->NodeDataToString();
      for (const auto& value : this->OverAndLocal()) {
        value->CopyData(*source);
        EXPECT_EQ(value->dataType_, source->dataType_);
        EXPECT_EQ(value->accessMode_, eNodeAccessWriteOnly);
        EXPECT_EQ(value->externalData_,
                  copyLocal ? nullptr : source->externalData_);
        EXPECT_EQ(value->localData_, nullptr);
        EXPECT_EQ(value->NodeByteValue(), nullptr);
        value->NodeValueSize();
        this->Set(*value, TypeParam::kOther);
        EXPECT_EQ(source->NodeDataToString(), sourceText);
      }
    }
  }
}

TYPED_TEST(ACopiedValue, IsNeverAssigned) {
  EXPECT_FALSE(std::is_copy_assignable_v<typename TypeParam::Class>);
}

}  // namespace
