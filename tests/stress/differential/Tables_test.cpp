// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Every request goes to a table twice: to the library's, and to one that is
// served in the plainest way by the same public operations. Both responses must
// be equal, byte by byte, and so must log lines, notifications, variables and
// row cursor.
//
// SNMPSUBAGENT_DIFFERENTIAL_SEED repeats a run, SNMPSUBAGENT_DIFFERENTIAL_TIMES
// makes it that many times longer.
#include <gtest/gtest.h>

#include <cstdio>

#include "Seed.h"
#include "World.h"

namespace {

// The sanitizers are slow, and do not look for wrong responses.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr std::uint32_t kShorter = 20;
#else
constexpr std::uint32_t kShorter = 1;
#endif

void ExpectAlike(const std::vector<Shape>& shapes, std::uint32_t requests) {
  const std::uint32_t seed = Seed();
  requests *= Setting("SNMPSUBAGENT_DIFFERENTIAL_TIMES", 1);
  requests /= kShorter;
  std::printf("seed %u, %u requests\n", seed, requests);
  World world(shapes, seed);
  for (std::uint32_t i = 0; i < requests; ++i) {
    const std::string difference = world.Step();
    ASSERT_TRUE(difference.empty())
        << "request " << i << ", seed " << seed << "\n"
        << difference;
  }
}

const std::vector<eNodeDataType> kOneIndex{eNodeDataInt};
const std::vector<eNodeDataType> kUnsignedIndex{eNodeDataUnsignedInt};
const std::vector<eNodeDataType> kTwoIndexes{eNodeDataInt,
                                             eNodeDataUnsignedInt};

TEST(Tables, AnswerAlikeWhenSmall) {
  ExpectAlike({{kOneIndex, 4, 0, false, false},
               {kOneIndex, 4, 3, false, false},
               {kUnsignedIndex, 2, 5, false, false},
               {kTwoIndexes, 5, 8, false, false}},
              12000);
}

TEST(Tables, AnswerAlikeWithManyRows) {
  ExpectAlike(
      {{kOneIndex, 3, 60, false, false}, {kTwoIndexes, 6, 150, false, false}},
      4000);
}

TEST(Tables, AnswerAlikeWithVeryManyRows) {
  ExpectAlike({{kTwoIndexes, 4, 1500, false, false}}, 600);
}

// Rows bound to variables, rows changed after the store returned them or in
// `rows_` directly, and indexes that are no numbers.
TEST(Tables, AnswerAlikeWhenRowsAreOdd) {
  ExpectAlike(
      {{kOneIndex, 4, 6, true, false}, {kTwoIndexes, 5, 12, true, false}},
      15000);
}

TEST(Tables, AnswerAlikeWhenValuesLoseTheirStorage) {
  ExpectAlike(
      {{kOneIndex, 4, 6, false, true}, {kTwoIndexes, 5, 12, true, true}}, 6000);
}

}  // namespace
