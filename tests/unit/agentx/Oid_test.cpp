// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Oid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace snmpsubagent {
namespace {

std::vector<SubIdentifier> Numbers(const Oid& oid) {
  return {oid.begin(), oid.end()};
}

std::string Reason(const std::string& text) {
  try {
    Oid(std::string_view(text));
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "";
}

// So many times "1", with dots between.
std::string Ones(std::size_t count) {
  std::string text = "1";
  while (--count > 0) text += ".1";
  return text;
}

TEST(AnOid, IsReadFromNumbersWithDotsBetween) {
  EXPECT_EQ(Numbers("1.3.6.1.4.1.32473"),
            (std::vector<SubIdentifier>{1, 3, 6, 1, 4, 1, 32473}));
  EXPECT_EQ(Numbers("0"), (std::vector<SubIdentifier>{0}));
  EXPECT_EQ(Numbers("1.4294967295"),
            (std::vector<SubIdentifier>{1, 4294967295}));
}

TEST(AnOid, MayBeginWithADot) { EXPECT_EQ(Oid(".1.3.6"), Oid("1.3.6")); }

TEST(AnOid, IsNullWhenThereIsNoText) {
  EXPECT_TRUE(Oid("").empty());
  EXPECT_EQ(Oid(""), Oid());
}

TEST(AnOid, IsNotReadFromAnythingElse) {
  for (const char* const text :
       {".", "..", "1.", "1..3", "..1", "-1", "+1", "1.-3", " 1", "1 ", "1.a",
        "iso.3", "0x10", "1,3", "1.3.6.1.", "1 .3"}) {
    EXPECT_EQ(Reason(text), '"' + std::string(text) +
                                "\" is no OID: it is not numbers with dots "
                                "between");
  }
}

TEST(AnOid, HasSubIdentifiersOfUpTo32Bits) {
  EXPECT_EQ(Reason("1.4294967296"),
            "\"1.4294967296\" is no OID: a sub-identifier has more than 32 "
            "bits");
}

TEST(AnOid, HasUpTo128SubIdentifiers) {
  EXPECT_EQ(Oid(Ones(128)).size(), 128U);
  EXPECT_EQ(Reason(Ones(129)),
            '"' + Ones(129) + "\" is no OID: it has more than 128 numbers");
  const std::vector<SubIdentifier> tooMany(129, 1);
  EXPECT_THROW(Oid(OidView(tooMany.data(), 129)), std::invalid_argument);
  EXPECT_EQ(Oid(OidView(tooMany.data(), 128)), Oid(Ones(128)));
}

TEST(AnOid, IsMadeOfNumbers) {
  EXPECT_EQ(ToString(Oid{1, 3, 6}), "1.3.6");
  EXPECT_EQ(ToString(Oid{}), "");
}

TEST(AnOid, IsShownAsItIsRead) {
  const std::string text = "2.25.4294967295.0.1";
  EXPECT_EQ(ToString(Oid(text)), text);
}

TEST(AnOid, HasAnotherBehindIt) {
  EXPECT_EQ(Oid("1.3") + Oid("6.1"), Oid("1.3.6.1"));
  EXPECT_EQ(Oid() + Oid("6"), Oid("6"));
  EXPECT_THROW(Oid(Ones(100)) + Oid(Ones(29)), std::invalid_argument);
  EXPECT_EQ((Oid(Ones(100)) + Oid(Ones(28))).size(), 128U);
}

TEST(AnOid, StandsInTheOrderOfAWalk) {
  const std::vector<Oid> order = {
      "", "0", "1", "1.0", "1.0.9", "1.1", "1.4294967295", "2"};
  for (std::size_t i = 0; i < order.size(); ++i) {
    for (std::size_t j = 0; j < order.size(); ++j) {
      const OidView a = order[i];
      const OidView b = order[j];
      EXPECT_EQ(a < b, i < j) << i << ' ' << j;
      EXPECT_EQ(a > b, i > j) << i << ' ' << j;
      EXPECT_EQ(a <= b, i <= j) << i << ' ' << j;
      EXPECT_EQ(a >= b, i >= j) << i << ' ' << j;
      EXPECT_EQ(a == b, i == j) << i << ' ' << j;
      EXPECT_EQ(a != b, i != j) << i << ' ' << j;
      EXPECT_EQ(order[i] < order[j], i < j) << i << ' ' << j;
    }
  }
}

}  // namespace
}  // namespace snmpsubagent
