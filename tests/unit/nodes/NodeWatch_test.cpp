// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/NodeWatch.h"

#include "support/DataNodeTest.h"

namespace {

class NodeWatchTest : public DataNodeTest {};

TEST_F(NodeWatchTest, SeesItsNodeLive) {
  const NodeWatch watch(BuildFanSpeed());
  EXPECT_TRUE(watch.Alive());
}

TEST_F(NodeWatchTest, SeesItsNodeDestroyedButNoOther) {
  auto* const node = BuildFanSpeed();
  auto* const other = Build(kOtherOid, "other",
                            NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  const NodeWatch outer(node);
  const NodeWatch watchOfOther(other);
  const NodeWatch inner(node);
  delete node;
  EXPECT_FALSE(outer.Alive());
  EXPECT_FALSE(inner.Alive());
  EXPECT_TRUE(watchOfOther.Alive());
}

TEST_F(NodeWatchTest, SeesItsNodeReplacedByANamesake) {
  const NodeWatch watch(BuildFanSpeed());
  Build(kOtherOid, "fanSpeed",
        NetSNMPIntNodeData(&speed_, eNodeAccessReadOnly));
  EXPECT_FALSE(watch.Alive());
}

TEST_F(NodeWatchTest, NoLongerMattersOnceItHasGone) {
  auto* const node = BuildFanSpeed();
  const NodeWatch outer(node);
  { const NodeWatch inner(node); }
  delete node;
  EXPECT_FALSE(outer.Alive());
}

TEST_F(NodeWatchTest, TakesANullNode) {
  const NodeWatch watch(nullptr);
  delete BuildFanSpeed();
  EXPECT_TRUE(watch.Alive());
}

}  // namespace
