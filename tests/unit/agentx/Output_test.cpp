// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/Output.h"

#include <gtest/gtest.h>

namespace snmpsubagent::agentx {
namespace {

void Append(Output& output, std::uint8_t octet, std::size_t count = 1) {
  output.Bytes().insert(output.Bytes().end(), count, octet);
}

TEST(AnOutput, IsTakenFromItsFront) {
  Output output;
  Append(output, 1);
  Append(output, 2);
  ASSERT_EQ(output.size(), 2U);
  EXPECT_EQ(output.data()[0], 1);
  output.Sent(1);
  ASSERT_EQ(output.size(), 1U);
  EXPECT_EQ(output.data()[0], 2);
  Append(output, 3);
  EXPECT_EQ(output.data()[1], 3);
  output.Sent(2);
  EXPECT_TRUE(output.empty());
}

TEST(AnOutput, CountsWhatWasAppendedAndWhatWasSent) {
  Output output;
  Append(output, 1, 10);
  EXPECT_EQ(output.End(), 10U);
  EXPECT_EQ(output.SentSoFar(), 0U);
  output.Sent(4);
  Append(output, 1, 2);
  EXPECT_EQ(output.End(), 12U);
  EXPECT_EQ(output.SentSoFar(), 4U);
}

TEST(AnOutput, BeginsAnewWhenItIsCleared) {
  Output output;
  Append(output, 1, 10);
  output.Sent(4);
  output.Clear();
  EXPECT_TRUE(output.empty());
  EXPECT_EQ(output.End(), 0U);
  EXPECT_EQ(output.SentSoFar(), 0U);
  Append(output, 7);
  EXPECT_EQ(output.data()[0], 7);
}

TEST(AnOutput, KeepsEveryOctetHoweverSlowlyItIsTaken) {
  Output output;
  std::uint8_t appended = 0;
  std::uint8_t sent = 0;
  for (int round = 0; round < 3000; ++round) {
    for (int i = 0; i < 999; ++i) Append(output, appended++);
    for (int i = 0; i < 700; ++i) ASSERT_EQ(output.data()[i], sent++);
    output.Sent(700);
  }
  while (!output.empty()) {
    ASSERT_EQ(output.data()[0], sent++);
    output.Sent(1);
  }
  EXPECT_EQ(sent, appended);
}

TEST(AnOutput, GivesBackTheMemoryOfABurst) {
  Output output;
  Append(output, 1, 8 * 1024 * 1024);
  output.Sent(output.size());
  EXPECT_LT(output.Bytes().capacity(), 1024 * 1024U);
  Append(output, 1, 8 * 1024 * 1024);
  output.Clear();
  EXPECT_LT(output.Bytes().capacity(), 1024 * 1024U);
}

// What is sent message by message needs no memory each time.
TEST(AnOutput, KeepsTheMemoryOfAMessage) {
  Output output;
  Append(output, 1, 1000);
  const auto capacity = output.Bytes().capacity();
  output.Sent(1000);
  EXPECT_EQ(output.Bytes().capacity(), capacity);
}

}  // namespace
}  // namespace snmpsubagent::agentx
