// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Regions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "testkit/agentx/Text.h"

namespace {

using snmpsubagent::testing::internal::Region;
using snmpsubagent::testing::internal::Regions;
using snmpsubagent::testing::internal::Segment;
using testing::ElementsAre;
namespace wire = testkit::agentx;

Region Registered(const wire::Oid& subtree, std::uint32_t session,
                  std::uint8_t priority = 127) {
  Region region{{}, "", session};
  region.registered.subtree = subtree;
  region.registered.priority = priority;
  return region;
}

// "begin to end: session" of each.
std::vector<std::string> Segments(Regions& regions,
                                  const std::string& context = "") {
  std::vector<std::string> text;
  for (const Segment& segment : regions.SegmentsIn(context)) {
    text.push_back(wire::Text(segment.begin) + " to " +
                   wire::Text(segment.end) + ": " +
                   std::to_string(segment.session));
  }
  return text;
}

TEST(Regions, GiveAnOidToTheLongestSubtree) {
  Regions regions;
  EXPECT_TRUE(regions.Add(Registered({1, 3}, 1)));
  EXPECT_TRUE(regions.Add(Registered({1, 3, 5}, 2)));
  EXPECT_THAT(
      Segments(regions),
      ElementsAre("1.3 to 1.3.5: 1", "1.3.5 to 1.3.6: 2", "1.3.6 to 1.4: 1"));
}

TEST(Regions, GiveASubtreeToTheLowestPriority) {
  Regions regions;
  regions.Add(Registered({1, 3}, 1));
  regions.Add(Registered({1, 3}, 2, 126));
  regions.Add(Registered({1, 3}, 3, 128));
  EXPECT_THAT(Segments(regions), ElementsAre("1.3 to 1.4: 2"));
  regions.RemoveAll(2);
  EXPECT_THAT(Segments(regions), ElementsAre("1.3 to 1.4: 1"));
}

TEST(Regions, RefuseWhatIsRegisteredWithThatPriority) {
  Regions regions;
  EXPECT_TRUE(regions.Add(Registered({1, 3}, 1)));
  EXPECT_FALSE(regions.Add(Registered({1, 3}, 2)));
  Region inAnotherContext = Registered({1, 3}, 2);
  inAnotherContext.context = "attic";
  EXPECT_TRUE(regions.Add(inAnotherContext));
  EXPECT_THAT(Segments(regions, "attic"), ElementsAre("1.3 to 1.4: 2"));
}

TEST(Regions, TakeARangeOfSubtrees) {
  Regions regions;
  Region range = Registered({1, 3, 5, 9}, 1);
  range.registered.rangeSubid = 3;
  range.registered.upperBound = 6;
  regions.Add(range);
  EXPECT_THAT(Segments(regions),
              ElementsAre("1.3.5.9 to 1.3.5.10: 1", "1.3.6.9 to 1.3.6.10: 1"));
}

TEST(Regions, ReachUpToTheHighestSubIdentifier) {
  Regions regions;
  regions.Add(Registered({1, 4294967295U}, 1));
  EXPECT_THAT(Segments(regions), ElementsAre("1.4294967295 to 2: 1"));
}

TEST(Regions, AreWithdrawnByTheirSessionAlone) {
  Regions regions;
  regions.Add(Registered({1, 3}, 1));
  wire::Unregister withdrawn;
  withdrawn.subtree = {1, 3};
  EXPECT_FALSE(regions.Remove(withdrawn, "", 2));
  EXPECT_FALSE(regions.Remove(withdrawn, "attic", 1));
  EXPECT_TRUE(regions.Remove(withdrawn, "", 1));
  EXPECT_TRUE(Segments(regions).empty());
}

}  // namespace
