// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/LivingSubAgents.h"

#include <gtest/gtest.h>

#include "support/FakeSubAgent.h"

namespace {

TEST(LivingSubAgentsTest, ContainASubagentFromItsConstructorToItsDestructor) {
  const ISNMPSubAgent* subAgent = nullptr;
  EXPECT_FALSE(LivingSubAgents::Contains(subAgent));
  {
    const FakeSubAgent brief(true);
    subAgent = &brief;
    EXPECT_TRUE(LivingSubAgents::Contains(subAgent));
  }
  EXPECT_FALSE(LivingSubAgents::Contains(subAgent));
}

TEST(LivingSubAgentsTest, ContainACopyApartFromItsOriginal) {
  const FakeSubAgent original(true);
  const ISNMPSubAgent* copied = nullptr;
  {
    const FakeSubAgent copy(original);
    copied = &copy;
    EXPECT_TRUE(LivingSubAgents::Contains(copied));
  }
  EXPECT_FALSE(LivingSubAgents::Contains(copied));
  EXPECT_TRUE(LivingSubAgents::Contains(&original));
}

}  // namespace
