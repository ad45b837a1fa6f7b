// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPSmiNodeData.h"

#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

#include "NetSNMP.h"

namespace {

TEST(ASmiValue, HasTheTypeThatItIsNamedAfter) {
  EXPECT_EQ(
      NetSNMPCounter32NodeData(nullptr, eNodeAccessReadOnly).NodeASNDataType(),
      ASN_COUNTER);
  EXPECT_EQ(
      NetSNMPTimeTicksNodeData(nullptr, eNodeAccessReadOnly).NodeASNDataType(),
      ASN_TIMETICKS);
  EXPECT_EQ(NetSNMPIpAddressNodeData(nullptr, 4, eNodeAccessReadOnly)
                .NodeASNDataType(),
            ASN_IPADDRESS);
  EXPECT_EQ(NetSNMPObjectIdNodeData(nullptr, 0, eNodeAccessReadOnly)
                .NodeASNDataType(),
            ASN_OBJECT_ID);
  EXPECT_EQ(NetSNMPCounter64NodeData(nullptr, 0, eNodeAccessReadOnly)
                .NodeASNDataType(),
            ASN_COUNTER64);
  EXPECT_EQ(
      NetSNMPOpaqueNodeData(nullptr, eNodeAccessReadOnly).NodeASNDataType(),
      ASN_OPAQUE);
  EXPECT_EQ(NetSNMPAbsentNodeData(eNodeDataVoid, eNodeAccessReadOnly, nullptr,
                                  nullptr)
                .NodeASNDataType(),
            SNMP_NOSUCHINSTANCE);
}

TEST(ASmiValue, IsClonedAsWhatItIsOverTheSameVariable) {
  unsigned int count = 1;
  const NetSNMPCounter32NodeData value(&count, eNodeAccessReadOnly);
  const std::unique_ptr<NetSNMPNodeData> clone(value.Clone());
  const NetSNMPNodeData& copy = *clone;
  EXPECT_EQ(typeid(copy), typeid(value));
  EXPECT_EQ(clone->NodeDataValue(), &count);
}

TEST(ASmiValue, IsClonedWithACopyOfItsLocalData) {
  unsigned int count = 1;
  const NetSNMPCounter32NodeData value(&count, eNodeAccessReadOnly, true);
  const std::unique_ptr<NetSNMPNodeData> clone(value.Clone());
  count = 2;
  ASSERT_NE(clone->NodeDataValue(), nullptr);
  EXPECT_NE(clone->NodeDataValue(), value.NodeDataValue());
  EXPECT_EQ(*static_cast<unsigned int*>(clone->NodeDataValue()), 1U);
}

}  // namespace
