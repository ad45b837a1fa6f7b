// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/LiveSubAgents.h"

#include <gtest/gtest.h>

#include "support/FakeSubAgent.h"

namespace {

TEST(LiveSubAgents, ContainASubagentFromItsConstructorToItsDestructor) {
  const ISNMPSubAgent* subAgent = nullptr;
  EXPECT_FALSE(live_subagents::Contains(subAgent));
  {
    const FakeSubAgent brief(true);
    subAgent = &brief;
    EXPECT_TRUE(live_subagents::Contains(subAgent));
  }
  EXPECT_FALSE(live_subagents::Contains(subAgent));
}

TEST(LiveSubAgents, ContainACopyApartFromItsOriginal) {
  const FakeSubAgent original(true);
  const ISNMPSubAgent* copied = nullptr;
  {
    const FakeSubAgent copy(original);
    copied = &copy;
    EXPECT_TRUE(live_subagents::Contains(copied));
  }
  EXPECT_FALSE(live_subagents::Contains(copied));
  EXPECT_TRUE(live_subagents::Contains(&original));
}

}  // namespace
