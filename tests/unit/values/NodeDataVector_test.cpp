// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Vectors of values that they own.
#include <gmock/gmock.h>

#include <memory>
#include <new>
#include <vector>

#include "NetSNMPIntNodeData.h"

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;

using Values = std::vector<NetSNMPNodeData*>;

// An int that records its deletion. Cloning 0 fails.
class MortalInt : public NetSNMPIntNodeData {
 public:
  explicit MortalInt(int number)
      : NetSNMPIntNodeData(&number, eNodeAccessReadOnly, true, nullptr, true) {}
  ~MortalInt() override { grave.push_back(Number()); }

  NetSNMPNodeData* Clone() const override {
    if (Number() == 0) throw std::bad_alloc();
    return new MortalInt(Number());
  }

  int Number() const { return *static_cast<int*>(NodeDataValue()); }

  static inline std::vector<int> grave;
};

// The numbers of a vector, -1 for a null element.
std::vector<int> NumbersOf(const Values& values) {
  std::vector<int> numbers;
  for (const NetSNMPNodeData* value : values) {
    const auto* const number = static_cast<const MortalInt*>(value);
    numbers.push_back(number == nullptr ? -1 : number->Number());
  }
  return numbers;
}

class AVectorOfValues : public testing::Test {
 protected:
  AVectorOfValues() { MortalInt::grave.clear(); }
  ~AVectorOfValues() override {
    NetSNMPNodeData::DestroyDataVector(source_);
    NetSNMPNodeData::DestroyDataVector(destination_);
  }

  static Values ValuesOf(const std::vector<int>& numbers) {
    Values values;
    for (const int number : numbers) values.push_back(new MortalInt(number));
    return values;
  }

  Values source_ = {new MortalInt(1), nullptr, new MortalInt(2)};
  Values destination_ = ValuesOf({7, 8});
};

TEST_F(AVectorOfValues, IsDestroyedFromItsLastElementToItsFirst) {
  NetSNMPNodeData::DestroyDataVector(source_);
  EXPECT_THAT(source_, IsEmpty());
  EXPECT_THAT(MortalInt::grave, ElementsAre(2, 1));
}

TEST_F(AVectorOfValues, OfNullsIsEmptiedToo) {
  Values nulls = {nullptr, nullptr};
  NetSNMPNodeData::DestroyDataVector(nulls);
  EXPECT_THAT(nulls, IsEmpty());
  NetSNMPNodeData::DestroyDataVector(nulls);
  EXPECT_THAT(nulls, IsEmpty());
}

TEST_F(AVectorOfValues, TakesACloneOfOneValue) {
  const MortalInt value(3);
  NetSNMPNodeData::CatDataVector(destination_, value);
  EXPECT_THAT(NumbersOf(destination_), ElementsAre(7, 8, 3));
  EXPECT_NE(destination_.back(), &value);
}

TEST_F(AVectorOfValues, TakesClonesOfAllElementsInTheirOrderBehindItsOwn) {
  NetSNMPNodeData::CatDataVector(source_, destination_);
  EXPECT_THAT(NumbersOf(destination_), ElementsAre(7, 8, 1, -1, 2));
  EXPECT_NE(destination_[2], source_[0]);
  EXPECT_THAT(NumbersOf(source_), ElementsAre(1, -1, 2));
  EXPECT_THAT(MortalInt::grave, IsEmpty());
}

TEST_F(AVectorOfValues, CanBeAppendedToItself) {
  NetSNMPNodeData::CatDataVector(source_, source_);
  EXPECT_THAT(NumbersOf(source_), ElementsAre(1, -1, 2, 1, -1, 2));
  EXPECT_NE(source_[3], source_[0]);
}

TEST_F(AVectorOfValues, DeletesItsElementsBeforeItTakesTheCopies) {
  NetSNMPNodeData::CopyDataVector(source_, destination_);
  EXPECT_THAT(NumbersOf(destination_), ElementsAre(1, -1, 2));
  EXPECT_NE(destination_[0], source_[0]);
  EXPECT_THAT(MortalInt::grave, ElementsAre(8, 7));
}

TEST_F(AVectorOfValues, KeepsItsElementsWhenItIsCopiedOntoItself) {
  const Values before = source_;
  NetSNMPNodeData::CopyDataVector(source_, source_);
  EXPECT_EQ(source_, before);
  EXPECT_THAT(MortalInt::grave, IsEmpty());
}

TEST_F(AVectorOfValues, IsCopiedToANewOne) {
  const std::unique_ptr<Values> copy(NetSNMPNodeData::CopyDataVector(source_));
  EXPECT_THAT(NumbersOf(*copy), ElementsAre(1, -1, 2));
  EXPECT_NE((*copy)[0], source_[0]);
  NetSNMPNodeData::DestroyDataVector(*copy);
}

TEST_F(AVectorOfValues, StaysAsItIsWhenAnElementCannotBeCloned) {
  Values failing = ValuesOf({5, 0});
  EXPECT_THROW(NetSNMPNodeData::CatDataVector(failing, destination_),
               std::bad_alloc);
  EXPECT_THAT(NumbersOf(destination_), ElementsAre(7, 8));
  EXPECT_THROW(NetSNMPNodeData::CopyDataVector(failing), std::bad_alloc);
  EXPECT_THAT(MortalInt::grave, ElementsAre(5, 5));
  NetSNMPNodeData::DestroyDataVector(failing);
}

}  // namespace
