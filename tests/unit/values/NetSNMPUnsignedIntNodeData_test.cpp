// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPUnsignedIntNodeData.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "NetSNMP.h"

namespace {

TEST(AnUnsignedIntValue, SendsWhatNoIntHolds) {
  for (const bool copyLocal : {false, true}) {
    unsigned int number = INT_MAX;
    NetSNMPUnsignedIntNodeData value(&number, eNodeAccessReadWrite, copyLocal);
    for (const unsigned int large : {INT_MAX + 1U, UINT_MAX}) {
      value.NodeDataValue(large, false);
      unsigned int sent = 0;
      std::memcpy(&sent, value.NodeByteValue(), value.NodeValueSize());
      EXPECT_EQ(sent, large);
      EXPECT_EQ(value.NodeASNDataType(), ASN_UNSIGNED);
      EXPECT_EQ(number, copyLocal ? INT_MAX : large);
    }
  }
}

}  // namespace
