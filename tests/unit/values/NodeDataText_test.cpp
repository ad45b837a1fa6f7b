// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Values as text for log lines.
#include <climits>
#include <locale>
#include <sstream>

#include "support/Kinds.h"
#include "support/OwnerTest.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string AddressText(const void* address) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream << address;
  return stream.str();
}

template <typename K>
std::string TextOf(typename K::Variable state) {
  return MakeValue<K>(&state, eNodeAccessReadOnly)->NodeDataToString();
}

std::string TextOfUntyped(int type, void* storage) {
  return NetSNMPNodeData(static_cast<eNodeDataType>(type), eNodeAccessDefault,
                         storage, nullptr)
      .NodeDataToString();
}

TEST(TheTextOfAValue, IsTheNumberOfAnInt) {
  EXPECT_EQ(TextOf<IntKind>(42), "42");
  EXPECT_EQ(TextOf<IntKind>(INT_MIN), "-2147483648");
}

TEST(TheTextOfAValue, IsTheAddressOfAnUnsignedIntAndNotItsNumber) {
  unsigned int number = 42;
  const NetSNMPUnsignedIntNodeData over(&number, eNodeAccessReadOnly);
  const NetSNMPUnsignedIntNodeData local(&number, eNodeAccessReadOnly, true);
  EXPECT_EQ(over.NodeDataToString(), AddressText(&number));
  EXPECT_EQ(local.NodeDataToString(), AddressText(local.localData_));
}

TEST(TheTextOfAValue, IsAStringAsItIs) {
  const std::string text("a\0b\n", 4);
  EXPECT_EQ(TextOf<StringKind>(text), text);
  EXPECT_EQ(TextOf<StringKind>(""), "");
}

TEST(TheTextOfAValue, IsACharTextUpToItsNul) {
  EXPECT_EQ(TextOf<CharKind>({"front\0rest"}), "front");
}

TEST(TheTextOfAValue, IsTrueOrFalseForABool) {
  EXPECT_EQ(TextOf<BoolKind>(true), "true");
  EXPECT_EQ(TextOf<BoolKind>(false), "false");
}

TEST(TheTextOfAValue, IsTheLowerCaseHexadecimalDigitsOfAByteBuffer) {
  EXPECT_EQ(TextOf<ByteKind>({{0x0A, 0xFF, 0x00, 0x7F}}), "0aff007f");
  unsigned char nothing = 0;
  EXPECT_EQ(
      NetSNMPByteNodeData(&nothing, 0, eNodeAccessReadOnly).NodeDataToString(),
      "");
}

TEST(TheTextOfAValue, IsThatOfTheLocalDataWhenThereIsAny) {
  int number = 42;
  const NetSNMPIntNodeData value(&number, eNodeAccessReadOnly, true);
  number = 7;
  EXPECT_EQ(value.NodeDataToString(), "42");
}

TEST(TheTextOfAValue, FollowsTheTypeOfAnUntypedValue) {
  int number = 42;
  std::string text = "front";
  char characters[] = "front";
  bool truth = true;
  EXPECT_EQ(TextOfUntyped(0, nullptr), "void");
  EXPECT_EQ(TextOfUntyped(0, &number), "void");
  EXPECT_EQ(TextOfUntyped(1, &number), "42");
  EXPECT_EQ(TextOfUntyped(2, &number), AddressText(&number));
  EXPECT_EQ(TextOfUntyped(3, &text), "front");
  EXPECT_EQ(TextOfUntyped(4, characters), "front");
  EXPECT_EQ(TextOfUntyped(5, &truth), "true");
  EXPECT_EQ(TextOfUntyped(6, characters), "");  // It has no size.
  EXPECT_EQ(TextOfUntyped(7, &number), "");
  EXPECT_EQ(TextOfUntyped(-1, &number), "");
}

TEST(TheTextOfAValue, IsEmptyWithoutStorageButForAnUnsignedInt) {
  for (const int type : {1, 3, 4, 5, 6, 7}) {
    EXPECT_EQ(TextOfUntyped(type, nullptr), "") << type;
  }
  EXPECT_EQ(TextOfUntyped(2, nullptr), AddressText(nullptr));
  EXPECT_EQ(
      NetSNMPByteNodeData(nullptr, 4, eNodeAccessReadOnly).NodeDataToString(),
      "");
}

// Sets digits apart, as the locales of some countries do.
class GroupedDigits : public std::numpunct<char> {
 protected:
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\1"; }
};

class GlobalLocale {
 public:
  explicit GlobalLocale(const std::locale& locale)
      : before_(std::locale::global(locale)) {}
  ~GlobalLocale() { std::locale::global(before_); }

 private:
  const std::locale before_;
};

TEST(TheTextOfAValue, IsTheSameInEveryLocale) {
  const GlobalLocale grouped(
      std::locale(std::locale::classic(), new GroupedDigits));
  unsigned int number = 42;
  EXPECT_EQ(TextOf<IntKind>(1234567), "1234567");
  EXPECT_EQ(NetSNMPUnsignedIntNodeData(&number, eNodeAccessReadOnly)
                .NodeDataToString(),
            AddressText(&number));
  EXPECT_EQ(TextOf<ByteKind>({{0x0A, 0xFF, 0x00, 0x7F}}), "0aff007f");
}

class ALogLineOfAValue : public OwnerTest {};

TEST_F(ALogLineOfAValue, NamesTheValueAndTheMessage) {
  int number = 42;
  const NetSNMPIntNodeData value(&number, eNodeAccessReadOnly, false,
                                 BuildOwner());
  value.NodeDataLogMessage("data value set.");
  EXPECT_THAT(log_.Lines(),
              ElementsAre(OwnerLine("Node Data = 42; data value set.")));
}

TEST_F(ALogLineOfAValue, IsLostWithoutAnOwner) {
  int number = 42;
  NetSNMPIntNodeData value(&number, eNodeAccessReadWrite);
  value.NodeDataLogMessage("data value set.");
  value.NodeDataValue(7, true);
  EXPECT_THAT(log_.Lines(), IsEmpty());
}

}  // namespace
