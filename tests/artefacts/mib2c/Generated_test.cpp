// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The code made of TEMPLATE-TEST-MIB, which has one of each kind.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "NetSNMPAgentGuard.h"
#include "support/Session.h"
#include "testScalars.h"
#include "testTables.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr char kScalars[] = ".1.3.6.1.4.1.32473.98.1";
constexpr char kTables[] = ".1.3.6.1.4.1.32473.98.2";

std::string Scalar(int number) {
  return std::string(kScalars) + "." + std::to_string(number) + ".0";
}

class GeneratedScalars : public testing::Test {
 protected:
  GeneratedScalars() {
    BuildTestScalars(variables_);
    session_.Connect();
  }

  // Something else than zero, and all different.
  void SetAll() {
    const NetSNMPAgentGuard guard;
    variables_.testInteger = -5;
    variables_.testEnumeration = 2;
    variables_.testUnsigned = 4294967295;
    variables_.testGauge = 7;
    variables_.testCounter = 8;
    variables_.testTicks = 100;
    variables_.testBigCounter = {1, 2};
    variables_.testTruth = true;
    variables_.testText = "text";
    variables_.testBytes[2] = 0xff;
    variables_.testBits = std::string(1, '\xc0');
    variables_.testAddress[0] = 192;
    variables_.testObjectId[0] = 1;
    variables_.testObjectId[1] = 3;
    variables_.testOpaque = "\x04\x01!";
    variables_.default_ = 15;
  }

  TestScalars variables_;
  support::Session session_;
};

TEST_F(GeneratedScalars, ShowTheVariablesWithTheTypesOfTheMib) {
  SetAll();
  EXPECT_THAT(
      session_.Manager().Objects(kScalars),
      ElementsAre(
          Scalar(1) + " = INTEGER: -5", Scalar(2) + " = INTEGER: 2",
          Scalar(3) + " = Gauge32: 4294967295", Scalar(4) + " = Gauge32: 7",
          Scalar(5) + " = Counter32: 8",
          Scalar(6) + " = Timeticks: (100) 0:00:01.00",
          Scalar(7) + " = Counter64: 4294967298", Scalar(8) + " = INTEGER: 1",
          Scalar(9) + " = STRING: \"text\"",
          Scalar(10) + " = Hex-STRING: 00 00 FF ",
          Scalar(11) + " = Hex-STRING: C0 ",
          Scalar(12) + " = IpAddress: 192.0.0.0", Scalar(13) + " = OID: .1.3",
          Scalar(14) + " = OPAQUE: 04 01 21 ", Scalar(15) + " = INTEGER: 15"));
}

TEST_F(GeneratedScalars, LetManagersWriteWhatTheMibLetsThemWrite) {
  EXPECT_TRUE(session_
                  .Set({Scalar(1), "i", "3", Scalar(8), "i", "1", Scalar(9),
                        "s", "written"})
                  .Succeeded());
  const NetSNMPAgentGuard guard;
  EXPECT_EQ(variables_.testInteger, 3);
  EXPECT_TRUE(variables_.testTruth);
  EXPECT_EQ(variables_.testText, "written");
}

TEST_F(GeneratedScalars, RefuseWritesOfTheOthers) {
  EXPECT_THAT(session_.Set({Scalar(3), "u", "3"}).error,
              HasSubstr("notWritable"));
  const NetSNMPAgentGuard guard;
  EXPECT_EQ(variables_.testUnsigned, 0U);
}

class GeneratedTables : public testing::Test {
 protected:
  GeneratedTables() {
    gapRow_.testGapSigned = 4;
    gapRow_.testGapTruth = 2;
    gapRow_.testGapName = "four";
    gapRow_.testGapCount = 44;
    gapTable_.Add(gapRow_);
    moreRow_.testGapSigned = 4;
    moreRow_.testGapTruth = 2;
    moreRow_.testMoreFound = 45;
    moreTable_.Add(moreRow_);
    session_.Connect();
  }

  // A cell of the row, of the column below the tables' node.
  static std::string Cell(const std::string& column) {
    return std::string(kTables) + "." + column + ".4.2";
  }

  TestGapEntry gapRow_;
  TestMoreEntry moreRow_;
  support::Session session_;
  TestGapTable gapTable_;
  TestMoreTable moreTable_;
};

TEST_F(GeneratedTables, ServeEachColumnUnderItsNumberAndPassOverGaps) {
  EXPECT_THAT(session_.Manager().Objects(kTables),
              ElementsAre(Cell("1.1.3") + " = STRING: \"four\"",
                          Cell("1.1.7") + " = Counter32: 44",
                          Cell("2.1.3") + " = INTEGER: 45"));
}

TEST_F(GeneratedTables, HaveNoInstanceInAGap) {
  EXPECT_THAT(session_.Manager().Get(Cell("1.1.4")).out,
              HasSubstr("No Such Instance"));
}

TEST_F(GeneratedTables, LetManagersWriteTheVariableOfARow) {
  EXPECT_TRUE(session_.Set({Cell("1.1.3"), "s", "new"}).Succeeded());
  EXPECT_THAT(session_.Set({Cell("1.1.7"), "u", "1"}).error,
              HasSubstr("notWritable"));
  const NetSNMPAgentGuard guard;
  EXPECT_EQ(gapRow_.testGapName, "new");
  EXPECT_EQ(gapRow_.testGapCount, 44U);
}

TEST_F(GeneratedTables, ForgetARowThatIsRemoved) {
  gapTable_.Remove(gapRow_);
  EXPECT_THAT(session_.Manager().Objects(kTables),
              ElementsAre(Cell("2.1.3") + " = INTEGER: 45"));
}

}  // namespace
