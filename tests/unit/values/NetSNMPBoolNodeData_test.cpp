// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPBoolNodeData.h"

#include <gtest/gtest.h>

#include "values/TruthValue.h"

namespace {

TEST(ABoolValue, SendsTheTruthValueAndNotItsStorage) {
  bool truth = true;
  const NetSNMPBoolNodeData over(&truth, eNodeAccessReadOnly);
  NetSNMPBoolNodeData local(&truth, eNodeAccessReadOnly, true);
  EXPECT_EQ(over.NodeByteValue(), truth_value::Bytes(true));
  EXPECT_EQ(local.NodeByteValue(), truth_value::Bytes(true));
  truth = false;
  EXPECT_EQ(over.NodeByteValue(), truth_value::Bytes(false));
  EXPECT_EQ(local.NodeByteValue(), truth_value::Bytes(true));
  local.NodeDataValue(false, false);
  EXPECT_EQ(local.NodeByteValue(), truth_value::Bytes(false));
}

}  // namespace
