// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPBoolNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPSizedCharNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"
#include "support/Scalars.h"
#include "support/Session.h"

using support::AddIntScalar;
using support::AddScalar;
using support::ScalarOid;
using support::Session;
using testing::HasSubstr;
using testkit::CommandResult;

namespace {

// A SET that a manager sends, and what becomes of the scalar it is for.
class ASetRequest : public testing::Test {
 protected:
  ASetRequest() {
    session_.Connect();
    AddScalar(1, "int", NetSNMPIntNodeData(&number_, eNodeAccessReadWrite));
    AddScalar(2, "unsigned",
              NetSNMPUnsignedIntNodeData(&count_, eNodeAccessReadWrite));
    AddScalar(3, "string", NetSNMPStringNodeData(&text_, eNodeAccessReadWrite));
    AddScalar(4, "bool", NetSNMPBoolNodeData(&flag_, eNodeAccessReadWrite));
    AddScalar(
        6, "sized",
        NetSNMPSizedCharNodeData(label_, sizeof(label_), eNodeAccessReadWrite));
  }

  CommandResult Set(unsigned long scalar, const std::string& type,
                    const std::string& value) {
    return session_.Set({ScalarOid(scalar), type, value});
  }

  void ExpectTaken(const CommandResult& result) {
    EXPECT_TRUE(result.Succeeded()) << result;
  }

  void ExpectRefused(const CommandResult& result, const std::string& reason) {
    EXPECT_FALSE(result.Succeeded()) << result;
    EXPECT_THAT(result.error, HasSubstr(reason));
  }

  int Number() const {
    const NetSNMPAgentGuard guard;
    return number_;
  }

  unsigned int Count() const {
    const NetSNMPAgentGuard guard;
    return count_;
  }

  std::string Text() const {
    const NetSNMPAgentGuard guard;
    return text_;
  }

  std::string Label() const {
    const NetSNMPAgentGuard guard;
    return label_;
  }

  bool Flag() const {
    const NetSNMPAgentGuard guard;
    return flag_;
  }

  int number_ = 7;
  unsigned int count_ = 7;
  std::string text_ = "seven";
  char label_[8] = "seven";
  bool flag_ = true;
  Session session_;
};

TEST_F(ASetRequest, OfTextOtherThanFourBytesLongIsRefusedByAnInt) {
  for (const char* text : {"", "abc", "abcde", "abcdefgh"}) {
    ExpectRefused(Set(1, "s", text), "badValue");
  }
  EXPECT_EQ(Number(), 7);
}

TEST_F(ASetRequest, OfTextFourBytesLongIsTakenAsTheBytesOfAnInt) {
  ExpectTaken(Set(1, "s", "abcd"));
  int expected = 0;
  std::memcpy(&expected, "abcd", sizeof(expected));
  EXPECT_EQ(Number(), expected);
}

TEST_F(ASetRequest, OfA64BitNumberIsRefusedByAnUnsignedInt) {
  ExpectRefused(Set(2, "U", "8"), "badValue");
  EXPECT_EQ(Count(), 7U);
}

TEST_F(ASetRequest, OfAnyNumberOf32BitsIsTakenByAnInt) {
  int expected = 100;
  for (const char* type : {"i", "u", "t"}) {
    SCOPED_TRACE(type);
    ExpectTaken(Set(1, type, std::to_string(++expected)));
    EXPECT_EQ(Number(), expected);
  }
}

TEST_F(ASetRequest, OfTheSmallestAndTheLargestNumberIsTakenByAnInt) {
  ExpectTaken(Set(1, "i", "-2147483648"));
  EXPECT_EQ(Number(), -2147483647 - 1);
  ExpectTaken(Set(1, "i", "2147483647"));
  EXPECT_EQ(Number(), 2147483647);
}

TEST_F(ASetRequest, OfANumberThatIsNoTruthValueIsRefusedByABool) {
  for (const char* number : {"0", "3", "-1", "257"}) {
    ExpectRefused(Set(4, "i", number), "badValue");
  }
  EXPECT_TRUE(Flag());
}

TEST_F(ASetRequest, OfTwoAndOneIsTakenAsFalseAndTrueByABool) {
  ExpectTaken(Set(4, "i", "2"));
  EXPECT_FALSE(Flag());
  ExpectTaken(Set(4, "i", "1"));
  EXPECT_TRUE(Flag());
}

TEST_F(ASetRequest, OfEmptyTextIsTakenByAString) {
  ExpectTaken(Set(3, "s", ""));
  EXPECT_EQ(Text(), "");
}

TEST_F(ASetRequest, OfLongTextIsTakenWholeByAString) {
  for (std::size_t length : {40, 41, 42, 255, 1000}) {
    const std::string text(length, 'x');
    ExpectTaken(Set(3, "s", text));
    EXPECT_EQ(Text(), text);
  }
}

TEST_F(ASetRequest, OfBytesIsTakenUpToTheFirstNulByAString) {
  ExpectTaken(Set(3, "x", "6162006364"));
  EXPECT_EQ(Text(), "ab");
}

TEST_F(ASetRequest, OfTextThatFillsABufferOfAKnownSizeIsTakenWhole) {
  ExpectTaken(Set(6, "s", "letters"));
  EXPECT_EQ(Label(), "letters");
}

TEST_F(ASetRequest, OfTextTooLongForABufferOfAKnownSizeIsRefused) {
  for (const std::size_t length : {8, 41, 1000}) {
    ExpectRefused(Set(6, "s", std::string(length, 'x')), "wrongLength");
  }
  ExpectRefused(
      session_.Set({ScalarOid(1), "i", "8", ScalarOid(6), "s", "too long"}),
      "wrongLength");
  EXPECT_EQ(Label(), "seven");
  EXPECT_EQ(Number(), 7);
}

TEST_F(ASetRequest, OfSeveralObjectsSetsThemAll) {
  ExpectTaken(session_.Set({ScalarOid(1), "i", "8", ScalarOid(3), "s", "eight",
                            ScalarOid(4), "i", "2"}));
  EXPECT_EQ(Number(), 8);
  EXPECT_EQ(Text(), "eight");
  EXPECT_FALSE(Flag());
}

TEST_F(ASetRequest, OfSeveralObjectsSetsNoneIfOneIsRefused) {
  ExpectRefused(session_.Set({ScalarOid(1), "i", "8", ScalarOid(3), "s",
                              "eight", ScalarOid(4), "i", "3"}),
                "badValue");
  EXPECT_EQ(Number(), 7);
  EXPECT_EQ(Text(), "seven");
  EXPECT_TRUE(Flag());
}

TEST_F(ASetRequest, OfSeveralObjectsSetsNoneIfOneIsNotWritable) {
  AddIntScalar(5, "fixed", 1);
  ExpectRefused(session_.Set({ScalarOid(1), "i", "8", ScalarOid(5), "i", "8"}),
                "notWritable");
  EXPECT_EQ(Number(), 7);
}

}  // namespace
