// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/Scalars.h"
#include "support/Session.h"

using support::AddIntScalar;
using support::ScalarOid;
using support::ScalarsOid;
using support::Session;
using testing::HasSubstr;

namespace {

// Nodes that the application's thread builds and deletes while the subagent
// thread serves.
class NodesWhileConnected : public testing::Test {
 protected:
  NodesWhileConnected() { session_.Connect(); }

  void BuildNodes(int count) {
    for (int number = 1; number <= count; ++number)
      AddIntScalar(number, "scalar" + std::to_string(number), number);
  }

  std::size_t ServedNodes() {
    return session_.Manager().Objects(ScalarsOid()).size();
  }

  Session session_;
};

TEST_F(NodesWhileConnected, AreServedOnceTheyAreBuilt) {
  AddIntScalar(1, "scalar", 1);
  EXPECT_THAT(session_.Manager().Get(ScalarOid(1)).out,
              HasSubstr("INTEGER: 1"));
}

TEST_F(NodesWhileConnected, AreNotServedOnceTheyAreDeleted) {
  delete AddIntScalar(1, "scalar", 1);
  EXPECT_THAT(session_.Manager().Get(ScalarOid(1)).out, HasSubstr("No Such"));
}

TEST_F(NodesWhileConnected, AreReplacedByANodeOfTheSameName) {
  AddIntScalar(1, "scalar", 1);
  AddIntScalar(1, "scalar", 2);
  EXPECT_THAT(session_.Manager().Get(ScalarOid(1)).out,
              HasSubstr("INTEGER: 2"));
}

TEST_F(NodesWhileConnected, AreBuiltAndDeletedManyTimesWithoutHanging) {
  for (int round = 0; round < 50; ++round) {
    BuildNodes(6);
    EXPECT_EQ(NetSNMPNode::DeleteNodes(), 6);
  }
  BuildNodes(6);
  EXPECT_EQ(ServedNodes(), 6U);
}

TEST_F(NodesWhileConnected, AreReregisteredManyTimesWithoutHanging) {
  BuildNodes(6);
  for (int round = 0; round < 50; ++round) NetSNMPNode::ReregisterMibs();
  EXPECT_EQ(ServedNodes(), 6U);
}

TEST_F(NodesWhileConnected, AreRefusedAtAnOidThatIsTaken) {
  AddIntScalar(1, "first", 1);
  EXPECT_FALSE(AddIntScalar(1, "second", 2)->registered_);
  EXPECT_THAT(session_.Manager().Get(ScalarOid(1)).out,
              HasSubstr("INTEGER: 1"));
}

}  // namespace
