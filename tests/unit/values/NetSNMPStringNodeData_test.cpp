// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPStringNodeData.h"

#include <gtest/gtest.h>

namespace {

TEST(AStringValue, SendsAllItsBytesNulsToo) {
  std::string text("a\0b", 3);
  const NetSNMPStringNodeData value(&text, eNodeAccessReadOnly);
  EXPECT_EQ(value.NodeValueSize(), 3U);
  EXPECT_EQ(value.NodeByteValue(),
            reinterpret_cast<const unsigned char*>(text.data()));
}

TEST(AStringValue, WritesNulsToo) {
  std::string text;
  NetSNMPStringNodeData value(&text, eNodeAccessReadWrite);
  value.NodeDataValue(std::string("a\0b", 3), false);
  EXPECT_EQ(text, std::string("a\0b", 3));
}

TEST(AStringValue, KeepsAnEmptyTextAsLocalCopy) {
  std::string text;
  NetSNMPStringNodeData value(&text, eNodeAccessReadWrite, true);
  EXPECT_NE(value.localData_, nullptr);
  value.NodeDataValue("front", false);
  value.NodeDataValue("", false);
  EXPECT_NE(value.localData_, nullptr);
  EXPECT_NE(value.NodeByteValue(), nullptr);
  EXPECT_EQ(value.NodeValueSize(), 0U);
}

}  // namespace
