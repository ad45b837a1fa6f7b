// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "values/TruthValue.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

TEST(ATruthValue, IsOneForTrueAndTwoForFalse) {
  EXPECT_EQ(truth_value::kTrue, 1);
  EXPECT_EQ(truth_value::kFalse, 2);
}

TEST(ATruthValue, HasFourBytesInNativeOrder) {
  static_assert(truth_value::kSize == 4);
  std::int32_t number;
  std::memcpy(&number, truth_value::Bytes(true), sizeof number);
  EXPECT_EQ(number, 1);
  std::memcpy(&number, truth_value::Bytes(false), sizeof number);
  EXPECT_EQ(number, 2);
}

// The agent library reads integers as a long and narrows them.
TEST(ATruthValue, CanBeReadAsALong) {
  for (const bool truth : {true, false}) {
    long number;
    std::memcpy(&number, truth_value::Bytes(truth), sizeof number);
    EXPECT_EQ(static_cast<std::int32_t>(number), truth ? 1 : 2);
    if (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
      EXPECT_EQ(number, truth ? 1 : 2);
    }
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(truth_value::Bytes(truth)) %
                  alignof(long),
              0U);
  }
}

}  // namespace
