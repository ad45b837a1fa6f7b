// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "snmpsubagent/Oid.h"

namespace snmpsubagent {
namespace {

int Order(OidView a, OidView b) { return Compare(a, b); }

TEST(AnOidView, IsEmptyByItself) {
  const OidView view;
  EXPECT_TRUE(view.empty());
  EXPECT_EQ(view.size(), 0U);
  EXPECT_EQ(view.begin(), view.end());
  EXPECT_EQ(view, Oid());
}

TEST(AnOidView, ShowsTheSubIdentifiersWhereTheyAre) {
  std::vector<SubIdentifier> owner{1, 3, 6};
  const OidView view(owner.data(), 2);
  EXPECT_EQ(view.data(), owner.data());
  EXPECT_EQ(std::vector<SubIdentifier>(view.begin(), view.end()),
            (std::vector<SubIdentifier>{1, 3}));
  owner[1] = 0;
  EXPECT_EQ(view[0], 1U);
  EXPECT_EQ(view[1], 0U);
}

// No OID is so long, but what a manager sends may be put together to be.
TEST(AnOidView, MayBeLongerThanAnOid) {
  std::vector<SubIdentifier> owner(1000);
  std::iota(owner.begin(), owner.end(), 0);
  const OidView view(owner.data(), owner.size());
  EXPECT_EQ(view.size(), 1000U);
  EXPECT_TRUE(view.StartsWith(view.First(999)));
  EXPECT_LT(view.First(999), view);
}

TEST(AnOidView, IsSplitAtAnyPlace) {
  const Oid oid("1.3.6");
  EXPECT_EQ(Oid(oid.View().First(2)), Oid("1.3"));
  EXPECT_EQ(Oid(oid.View().After(2)), Oid("6"));
  EXPECT_TRUE(oid.View().First(0).empty());
  EXPECT_EQ(Oid(oid.View().After(0)), oid);
}

TEST(AnOidView, IsSplitBehindItsEndIntoAllAndNothing) {
  const Oid oid("1.3.6");
  for (const std::size_t place : {3, 4, 9}) {
    EXPECT_EQ(Oid(oid.View().First(place)), oid) << place;
    EXPECT_TRUE(oid.View().After(place).empty()) << place;
    EXPECT_EQ(oid.View().After(place).data(), oid.View().end()) << place;
  }
  EXPECT_TRUE(OidView().First(1).empty());
  EXPECT_TRUE(OidView().After(1).empty());
}

TEST(AnOidView, BeginsWithAPrefix) {
  const Oid oid("1.3.6.1");
  EXPECT_TRUE(oid.View().StartsWith(Oid("1.3")));
  EXPECT_TRUE(oid.View().StartsWith(oid));
  EXPECT_TRUE(oid.View().StartsWith(Oid()));
  EXPECT_TRUE(OidView().StartsWith(OidView()));
}

TEST(AnOidView, DoesNotBeginWithWhatIsLongerOrDiffers) {
  const Oid oid("1.3.6.1");
  EXPECT_FALSE(oid.View().StartsWith(Oid("1.3.6.1.0")));
  EXPECT_FALSE(oid.View().StartsWith(Oid("1.4")));
  EXPECT_FALSE(oid.View().StartsWith(Oid("0")));
  EXPECT_FALSE(OidView().StartsWith(Oid("0")));
}

TEST(AnOidView, IsComparedByTheFirstSubIdentifierThatDiffers) {
  EXPECT_LT(Order(Oid("1.2.9.9"), Oid("1.3")), 0);
  EXPECT_GT(Order(Oid("1.3"), Oid("1.2.9.9")), 0);
  EXPECT_EQ(Order(Oid("1.3"), Oid("1.3")), 0);
}

TEST(AnOidView, ComesBehindItsPrefix) {
  EXPECT_LT(Order({}, Oid("0")), 0);
  EXPECT_LT(Order(Oid("1.3"), Oid("1.3.0")), 0);
  EXPECT_GT(Order(Oid("1.3.0"), Oid("1.3")), 0);
}

TEST(AnOidView, HasSubIdentifiersWithoutASign) {
  EXPECT_LT(Order(Oid("1.2147483647"), Oid("1.2147483648")), 0);
  EXPECT_GT(Order(Oid("1.4294967295"), Oid("1.0")), 0);
}

TEST(AnOidView, IsEqualToTheSameSubIdentifiersElsewhere) {
  const Oid one("1.3.6");
  const Oid other("1.3.6");
  ASSERT_NE(one.View().data(), other.View().data());
  EXPECT_TRUE(one.View() == other.View());
  EXPECT_FALSE(one.View() != other.View());
}

}  // namespace
}  // namespace snmpsubagent
