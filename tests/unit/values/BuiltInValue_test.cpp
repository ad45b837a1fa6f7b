// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "values/BuiltInValue.h"

#include "NetSNMPSizedCharNodeData.h"
#include "TypedValueTest.h"

namespace {

template <typename K>
class ABuiltInValue : public TypedValueTest<K> {};
TYPED_TEST_SUITE(ABuiltInValue, Kinds, KindName);

TYPED_TEST(ABuiltInValue, IsOneOfATypedClass) {
  for (const auto& value : this->OverAndLocal()) {
    EXPECT_TRUE(IsBuiltInValue(*value));
  }
}

template <typename K>
class OwnValue : public K::Class {
 public:
  using K::Class::Class;
};

TYPED_TEST(ABuiltInValue, IsNoneOfTheApplicationsClasses) {
  const auto own = MakeValue<TypeParam, OwnValue<TypeParam>>(
      &this->variable_, eNodeAccessReadOnly);
  EXPECT_FALSE(IsBuiltInValue(*own));
}

TYPED_TEST(ABuiltInValue, HasTheTypeOfItsClass) {
  const auto value = this->Over();
  value->dataType_ =
      TypeParam::kType == eNodeDataInt ? eNodeDataUnsignedInt : eNodeDataInt;
  EXPECT_FALSE(IsBuiltInValue(*value));
  value->dataType_ = TypeParam::kType;
}

TEST(ABuiltInValueOfText, MayHaveASize) {
  char text[8] = "front";
  const NetSNMPSizedCharNodeData value(text, sizeof(text), eNodeAccessReadOnly);
  EXPECT_TRUE(IsBuiltInValue(value));
}

}  // namespace
