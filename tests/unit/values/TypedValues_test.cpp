// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the six typed classes have in common.
#include <memory>
#include <string>
#include <vector>

#include "TypedValueTest.h"
#include "support/VirtualSlot.h"

namespace {

using testing::IsEmpty;

template <typename K>
class ATypedValue : public TypedValueTest<K> {};
TYPED_TEST_SUITE(ATypedValue, Kinds, KindName);

template <typename K>
constexpr bool IsInteger() {
  return K::kType == eNodeDataInt || K::kType == eNodeDataUnsignedInt;
}

// Records what its setter calls.
template <typename K>
class RecordingValue : public K::Class {
 public:
  using K::Class::Class;
  void OnSetNodeValue() const override { calls_.push_back("notified"); }
  void NodeDataLogMessage(const std::string& message) const override {
    calls_.push_back(message);
  }

  mutable std::vector<std::string> calls_;
};

// ---- Construction ----

TYPED_TEST(ATypedValue, StartsWithWhatItIsGivenAndNotificationOn) {
  NetSNMPDataNode* const owner = this->BuildOwner();
  const auto value = MakeValue<TypeParam>(&this->variable_,
                                          eNodeAccessWriteOnly, false, owner);
  EXPECT_EQ(value->dataType_, TypeParam::kType);
  EXPECT_EQ(value->accessMode_, eNodeAccessWriteOnly);
  EXPECT_EQ(value->externalData_, this->Storage());
  EXPECT_EQ(value->localData_, nullptr);
  EXPECT_EQ(value->columnNumber_, 0U);
  EXPECT_EQ(value->ownerNode_, owner);
  EXPECT_FALSE(value->tableData_);
  EXPECT_FALSE(value->isIndex_);
  EXPECT_TRUE(value->notifyEnabled_);
}

TYPED_TEST(ATypedValue, WorksByDefaultOnTheVariableWithoutAnOwner) {
  const auto value =
      MakeValue<TypeParam>(&this->variable_, eNodeAccessReadOnly);
  EXPECT_EQ(value->NodeDataValue(), this->Storage());
  EXPECT_EQ(value->localData_, nullptr);
  EXPECT_EQ(value->ownerNode_, nullptr);
  EXPECT_FALSE(value->tableData_);
}

TYPED_TEST(ATypedValue, TakesALocalCopyWhenAskedTo) {
  const auto value = this->Local();
  this->variable_ = TypeParam::kOther;
  EXPECT_NE(value->localData_, nullptr);
  EXPECT_EQ(value->externalData_, this->Storage());
  EXPECT_EQ(value->NodeDataValue(), value->localData_);
  EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
}

TYPED_TEST(ATypedValue, KeepsNoPointerToTheVariableAsTableData) {
  for (const bool copyLocal : {false, true}) {
    const auto value = MakeValue<TypeParam>(
        &this->variable_, eNodeAccessReadOnly, copyLocal, nullptr, true);
    EXPECT_TRUE(value->tableData_);
    EXPECT_EQ(value->externalData_, nullptr);
    EXPECT_EQ(value->localData_ != nullptr, copyLocal);
    if (copyLocal) {
      EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
    }
  }
}

TYPED_TEST(ATypedValue, TakesNoLocalCopyOfNothing) {
  const auto value =
      MakeValue<TypeParam>(nullptr, eNodeAccessReadOnly, true, nullptr);
  EXPECT_EQ(value->localData_, nullptr);
  EXPECT_EQ(value->NodeDataValue(), nullptr);
}

// ---- On the wire ----

TYPED_TEST(ATypedValue, HasItsTypeAndSizeOnTheWire) {
  for (const auto& value : this->OverAndLocal()) {
    EXPECT_EQ(value->NodeASNDataType(), TypeParam::kAsnType);
    EXPECT_EQ(value->NodeValueSize(), TypeParam::kSize);
  }
}

TYPED_TEST(ATypedValue, WithoutStorageReadsAsNull) {
  const auto value = this->WithoutStorage();
  EXPECT_EQ(value->NodeDataValue(), nullptr);
  EXPECT_EQ(value->NodeByteValue(), nullptr);
  EXPECT_EQ(value->NodeValueSize(), TypeParam::kSizeWithoutStorage);
  EXPECT_EQ(value->NodeASNDataType(), TypeParam::kAsnType);
}

// ---- Setter ----

TYPED_TEST(ATypedValue, WritesTheVariableItWorksOn) {
  const auto value = this->Over();
  this->Set(*value, TypeParam::kOther);
  EXPECT_EQ(value->NodeDataValue(), this->Storage());
  EXPECT_EQ(value->localData_, nullptr);
  EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOther);
}

TYPED_TEST(ATypedValue, WritesItsLocalCopyAndNotTheVariable) {
  const auto value = this->Local();
  this->Set(*value, TypeParam::kOther);
  EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOther);
  EXPECT_EQ(this->variable_, TypeParam::kOne);
}

// A char text makes a local copy: after a SET of "", which leaves it without
// storage, it could otherwise never be written again.
TYPED_TEST(ATypedValue, StoresNothingWithoutStorageUnlessItIsACharText) {
  const auto value = this->WithoutStorage();
  this->Set(*value, TypeParam::kOther);
  EXPECT_EQ(value->NodeDataValue() != nullptr,
            TypeParam::kType == eNodeDataChar);
}

TYPED_TEST(ATypedValue, IsSetThroughTheSlotOfItsType) {
  using Setter = void (TypeParam::Class::*)(typename TypeParam::Argument, bool);
  EXPECT_EQ(VirtualSlot<Setter>(&TypeParam::Class::NodeDataValue),
            TypeParam::kSetterSlot);
}

// Unlike integers, values held locally do not notify.
TYPED_TEST(ATypedValue, NotifiesByItsRuleAndThenLogsEvenWhenUnchanged) {
  enum Storage { kVariable, kLocal, kNone };
  for (const Storage storage : {kVariable, kLocal, kNone}) {
    for (const bool notify : {false, true}) {
      const auto value = MakeValue<TypeParam, RecordingValue<TypeParam>>(
          storage == kNone ? nullptr : &this->variable_, eNodeAccessReadWrite,
          storage == kLocal);
      value->NodeDataValue(ArgumentOf<TypeParam>(TypeParam::kOne), notify);
      std::vector<std::string> expected = {"data value set."};
      if (notify && (storage != kLocal || IsInteger<TypeParam>())) {
        expected.insert(expected.begin(), "notified");
      }
      EXPECT_EQ(value->calls_, expected) << storage << notify;
    }
  }
}

TYPED_TEST(ATypedValue, CallsTheCallbackBeforeItLogsOnItsOwner) {
  const auto value = this->Over(this->BuildOwner(this->LogCall));
  this->Set(*value, TypeParam::kOne, true);
  std::vector<std::string> expected = this->kCallback;
  expected.push_back(this->OwnerLine(
      "Node Data = " + value->NodeDataToString() + "; data value set."));
  EXPECT_EQ(this->log_.Lines(), expected);
}

TYPED_TEST(ATypedValue, IsAlreadyWrittenWhenTheCallbackRuns) {
  static typename TypeParam::Variable seen;
  seen = TypeParam::kOne;
  NetSNMPDataNode* const owner =
      this->BuildOwner(*this->Over(), [](NetSNMPDataNode* node) {
        seen = StateOf<TypeParam>(*node->nodeData_);
      });
  auto& value = static_cast<typename TypeParam::Class&>(*owner->nodeData_);
  this->Set(value, TypeParam::kOther, true);
  EXPECT_EQ(seen, TypeParam::kOther);
}

TYPED_TEST(ATypedValue, MayBeDeletedByTheCallbackOfItsOwner) {
  NetSNMPDataNode* const owner = this->BuildOwner(
      *this->Over(), [](NetSNMPDataNode* node) { delete node; });
  auto& value = static_cast<typename TypeParam::Class&>(*owner->nodeData_);
  this->Set(value, TypeParam::kOther, true);
  EXPECT_THAT(this->log_.Lines(), IsEmpty());
  EXPECT_EQ(StateOf<TypeParam>(*this->Over()), TypeParam::kOther);
}

TYPED_TEST(ATypedValue, IgnoresTheSettersOfTheOtherTypes) {
  const unsigned char bytes[] = {1, 1, 1, 1};
  NetSNMPDataNode* const owner = this->BuildOwner(this->LogCall);
  for (const auto& value : this->OverAndLocal()) {
    NetSNMPNodeData& base = *value;
    base.ownerNode_ = owner;
    const eNodeDataType type = TypeParam::kType;
    if (type != eNodeDataInt) base.NodeDataValue(1, true);
    if (type != eNodeDataUnsignedInt) base.NodeDataValue(1U, true);
    if (type != eNodeDataBool) base.NodeDataValue(false, true);
    if (type != eNodeDataString) base.NodeDataValue(std::string("1"), true);
    if (type != eNodeDataChar) base.NodeDataValue("1", true);
    // A byte buffer too: its own setter is another one.
    base.NodeDataValue(bytes, sizeof bytes, true);
    EXPECT_EQ(StateOf<TypeParam>(base), TypeParam::kOne);
    EXPECT_THAT(this->log_.Lines(), IsEmpty());
  }
}

TYPED_TEST(ATypedValue, TakesWhatLiesInItsOwnStorage) {
  for (const auto& value : this->OverAndLocal()) {
    value->NodeDataValue(ArgumentAt<TypeParam>(value->NodeDataValue()), false);
    EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
    value->CopyLocalData(ArgumentAt<TypeParam>(value->NodeDataValue()));
    EXPECT_EQ(StateOf<TypeParam>(*value), TypeParam::kOne);
  }
}

// ---- Local data ----

TYPED_TEST(ATypedValue, ReplacesItsLocalDataOnly) {
  const auto value = this->Over(this->BuildOwner(this->LogCall));
  for (const auto& state : {TypeParam::kOne, TypeParam::kOther}) {
    value->CopyLocalData(ArgumentOf<TypeParam>(state));
    EXPECT_EQ(value->NodeDataValue(), value->localData_);
    EXPECT_EQ(StateOf<TypeParam>(*value), state);
  }
  EXPECT_EQ(this->variable_, TypeParam::kOne);
  EXPECT_THAT(this->log_.Lines(), IsEmpty());
}

TYPED_TEST(ATypedValue, FallsBackOnTheVariableWithoutItsLocalData) {
  const auto value = this->Local();
  value->DeleteLocalData();
  EXPECT_EQ(value->NodeDataValue(), this->Storage());
  value->DeleteLocalData();
  EXPECT_EQ(value->localData_, nullptr);
}

TYPED_TEST(ATypedValue, HasItsOwnVirtualOperationsBehindThoseOfTheBase) {
  EXPECT_EQ(VirtualSlot(&TypeParam::Class::CopyLocalData),
            TypeParam::kType == eNodeDataByte ? 17 : 16);
}

// ---- Overloads ----

template <typename V, typename... Arguments>
using SetResult =
    decltype(std::declval<V&>().NodeDataValue(std::declval<Arguments>()...));

template <typename Enable, typename V, typename... Arguments>
constexpr bool kTakes = false;
template <typename V, typename... Arguments>
constexpr bool
    kTakes<std::void_t<SetResult<V, Arguments...>>, V, Arguments...> = true;

TYPED_TEST(ATypedValue, HidesTheSettersThatWouldDoNothing) {
  using Class = typename TypeParam::Class;
  EXPECT_TRUE((kTakes<void, Class, typename TypeParam::Argument, bool>));
  EXPECT_TRUE((kTakes<void, const Class>));
  EXPECT_FALSE((kTakes<void, Class, const unsigned char*, unsigned int, bool>));
  const bool takesString = kTakes<void, Class, const std::string&, bool>;
  EXPECT_EQ(takesString, TypeParam::kType == eNodeDataString);
}

TEST(ALiteral, ReachesTheSetterOfTheClass) {
  std::string text;
  NetSNMPStringNodeData string(&text, eNodeAccessReadWrite);
  string.NodeDataValue("abc", true);
  EXPECT_EQ(text, "abc");
  EXPECT_EQ(string.NodeDataValue(), &text);
  int number = 0;
  NetSNMPIntNodeData(&number, eNodeAccessReadWrite).NodeDataValue(7U, true);
  EXPECT_EQ(number, 7);
  unsigned int count = 0;
  NetSNMPUnsignedIntNodeData(&count, eNodeAccessReadWrite)
      .NodeDataValue(7, true);
  EXPECT_EQ(count, 7U);
  bool truth = false;
  NetSNMPBoolNodeData(&truth, eNodeAccessReadWrite).NodeDataValue(1, true);
  EXPECT_TRUE(truth);
}

}  // namespace
