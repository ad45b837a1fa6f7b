// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPIntNodeData.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

namespace {

int OnTheWire(const NetSNMPIntNodeData& value) {
  int number = 0;
  std::memcpy(&number, value.NodeByteValue(), value.NodeValueSize());
  return number;
}

TEST(AnIntValue, SendsItsVariableAsItIsAtTheTime) {
  int number = INT_MIN;
  const NetSNMPIntNodeData value(&number, eNodeAccessReadOnly);
  EXPECT_EQ(OnTheWire(value), INT_MIN);
  number = INT_MAX;
  EXPECT_EQ(OnTheWire(value), INT_MAX);
}

TEST(AnIntValue, IsSetToTheLeastAndTheGreatest) {
  for (const bool copyLocal : {false, true}) {
    int number = 0;
    NetSNMPIntNodeData value(&number, eNodeAccessReadWrite, copyLocal);
    for (const int limit : {INT_MIN, -1, INT_MAX}) {
      value.NodeDataValue(limit, false);
      EXPECT_EQ(OnTheWire(value), limit);
      EXPECT_EQ(number, copyLocal ? 0 : limit);
    }
  }
}

}  // namespace
