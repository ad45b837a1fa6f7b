// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/Watch.h"

#include <memory>
#include <thread>

#include "support/DataNodeTest.h"

namespace {

class AWatch : public DataNodeTest {};

TEST_F(AWatch, SeesItsNodeLive) {
  const Watch watch(BuildFanSpeed());
  EXPECT_TRUE(watch.Alive());
}

TEST_F(AWatch, SeesItsNodeDestroyedButNoOther) {
  auto* const node = BuildFanSpeed();
  auto* const other = Build(kOtherOid, "other",
                            NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  const Watch outer(node);
  const Watch watchOfOther(other);
  const Watch inner(node);
  delete node;
  EXPECT_FALSE(outer.Alive());
  EXPECT_FALSE(inner.Alive());
  EXPECT_TRUE(watchOfOther.Alive());
}

TEST_F(AWatch, SeesItsNodeReplacedByANamesake) {
  const Watch watch(BuildFanSpeed());
  Build(kOtherOid, "fanSpeed",
        NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  EXPECT_FALSE(watch.Alive());
}

TEST_F(AWatch, NoLongerMattersOnceItHasGone) {
  auto* const node = BuildFanSpeed();
  const Watch outer(node);
  { const Watch inner(node); }
  delete node;
  EXPECT_FALSE(outer.Alive());
}

TEST_F(AWatch, TakesANullNode) {
  const NetSNMPNode* const none = nullptr;
  const Watch watch(none);
  delete BuildFanSpeed();
  EXPECT_TRUE(watch.Alive());
}

TEST_F(AWatch, SeesARowGivenUpButNoOther) {
  const Watch::Row row;
  const Watch::Row other;
  const Watch watch(&row);
  const Watch watchOfOther(&other);
  EXPECT_TRUE(watch.IsOf(&row));
  EXPECT_FALSE(watch.IsOf(&other));
  Watch::Destroyed(&row);
  EXPECT_FALSE(watch.IsOf(&row));
  EXPECT_TRUE(watchOfOther.IsOf(&other));
}

TEST_F(AWatch, MayEndBeforeThoseBegunLater) {
  const Watch::Row row;
  auto first = std::make_unique<Watch>(&row);
  auto second = std::make_unique<Watch>(&row);
  const Watch third(&row);
  second.reset();
  first.reset();
  Watch::Destroyed(&row);
  EXPECT_FALSE(third.Alive());
}

TEST_F(AWatch, SeesWhatAnotherThreadDestroys) {
  auto* const node = BuildFanSpeed();
  const Watch watch(node);
  std::thread([node] { delete node; }).join();
  EXPECT_FALSE(watch.Alive());
}

}  // namespace
