// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Whether a SET may write a varbind into a value.
#include <gtest/gtest.h>

#include <string>

#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPSizedCharNodeData.h"
#include "Untyped.h"
#include "support/Values.h"
#include "support/Varbind.h"

namespace {

TEST(AVarbind, IsRefusedForNoValueAndForAnUnknownType) {
  const Varbind varbind = Varbind::Integer(1);
  EXPECT_EQ(NetSNMP::set_snmp_validate(varbind, nullptr), 2);
  for (const int type : {7, 8, 255, -1}) {
    EXPECT_EQ(NetSNMP::set_snmp_validate(varbind, Untyped(type).get()), 2)
        << type;
  }
}

TEST(AVarbind, IsRefusedForAValueWithoutAType) {
  EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind::Integer(1), Untyped(0).get()),
            3);
}

struct AccessCase {
  int mode;
  int result;
};

TEST(AVarbind, IsRefusedForAValueThatIsNotWritableBeforeAnythingElse) {
  const AccessCase cases[] = {{0, 17}, {1, 17}, {2, 0},
                              {3, 0},  {4, 17}, {-1, 17}};
  for (const AccessCase& each : cases) {
    const auto mode = static_cast<eNodeAccessMode>(each.mode);
    NetSNMPIntNodeData value = Int(0, mode);
    EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind::Integer(1), &value),
              each.result)
        << each.mode;
    if (each.result == 0) continue;
    EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind::Text("x"), &value), 17);
    EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind::WithoutValue(), &value), 17);
    EXPECT_EQ(
        NetSNMP::set_snmp_validate(Varbind::Integer(1), Untyped(7, mode).get()),
        17);
  }
}

struct LengthCase {
  unsigned char type;
  std::size_t length;
  int result;
};

TEST(AVarbind, SuitsAnIntegerWith4BytesOrALongOfAnIntegerType) {
  const LengthCase cases[] = {
      {ASN_INTEGER, 4, 0},     {ASN_INTEGER, sizeof(long), 0},
      {ASN_COUNTER, 4, 0},     {ASN_COUNTER, sizeof(long), 0},
      {ASN_UNSIGNED, 4, 0},    {ASN_UNSIGNED, sizeof(long), 0},
      {ASN_GAUGE, 4, 0},       {ASN_GAUGE, sizeof(long), 0},
      {ASN_TIMETICKS, 4, 0},   {ASN_TIMETICKS, sizeof(long), 0},
      {ASN_UINTEGER, 4, 0},    {ASN_UINTEGER, sizeof(long), 0},
      {ASN_OCTET_STR, 4, 0},   {ASN_OCTET_STR, 8, 3},
      {ASN_IPADDRESS, 4, 0},   {ASN_OPAQUE, 8, 3},
      {ASN_COUNTER64, 16, 3},  {ASN_COUNTER64, 8, 3},
      {ASN_OBJECT_ID, 8, 3},   {ASN_BIT_STR, 8, 3},
      {ASN_NULL, 0, 3},        {ASN_INTEGER, 0, 3},
      {ASN_INTEGER, 1, 3},     {ASN_INTEGER, 3, 3},
      {ASN_INTEGER, 5, 3},     {ASN_INTEGER, 7, 3},
      {ASN_INTEGER, 9, 3},     {ASN_INTEGER, 16, 3},
      {ASN_OCTET_STR, 100, 3},
  };
  NetSNMPIntNodeData number = Int(0, eNodeAccessReadWrite);
  NetSNMPUnsignedIntNodeData count = Unsigned(0, eNodeAccessReadWrite);
  for (const LengthCase& each : cases) {
    const Varbind varbind(each.type, std::string(each.length, '\1'));
    EXPECT_EQ(NetSNMP::set_snmp_validate(varbind, &number), each.result)
        << int{each.type} << " of " << each.length;
    EXPECT_EQ(NetSNMP::set_snmp_validate(varbind, &count), each.result)
        << int{each.type} << " of " << each.length;
  }
}

struct BytesCase {
  std::string bytes;
  int result;
};

TEST(AVarbind, SuitsABoolWithThe1Or2OfATruthValueInWhateverLength) {
  const std::string tail(100, '\xFF');
  const BytesCase cases[] = {
      {BytesOf(1), 0},
      {BytesOf(2), 0},
      {BytesOf(0), 3},
      {BytesOf(3), 3},
      {BytesOf(-1), 3},
      {BytesOf(1L), 0},
      {BytesOf(2L), 0},
      {BytesOf(0L), 3},
      {BytesOf(3L), 3},
      {BytesOf(-1L), 3},
      {BytesOf(257), 3},
      {BytesOf(0x100000001L), 0},
      {"\1", 0},
      {"\2", 0},
      {"\3", 3},
      {"", 3},
      {BytesOf(1L) + "\xFF", 0},
      {BytesOf(2L) + tail, 0},
      {BytesOf(3L) + tail, 3},
  };
  NetSNMPBoolNodeData truth = Bool(false, eNodeAccessReadWrite);
  for (const BytesCase& each : cases) {
    for (const unsigned char type : {ASN_INTEGER, ASN_OCTET_STR}) {
      EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind(type, each.bytes), &truth),
                each.result)
          << testing::PrintToString(each.bytes);
    }
  }
}

TEST(AVarbind, IsReadAsATruthValueNoFurtherThanItsLength) {
  NetSNMPBoolNodeData truth = Bool(false, eNodeAccessReadWrite);
  const Varbind varbind(ASN_INTEGER, "\1\1\1\1");
  EXPECT_EQ(NetSNMP::set_snmp_validate(varbind, &truth), 3);
  varbind->val_len = 1;
  EXPECT_EQ(NetSNMP::set_snmp_validate(varbind, &truth), 0);
}

TEST(AVarbind, SuitsTextsAndBytesInWhateverTypeAndLength) {
  NetSNMPStringNodeData string = Text("", eNodeAccessReadWrite);
  NetSNMPCharNodeData text(nullptr, eNodeAccessReadWrite);
  NetSNMPByteNodeData bytes(nullptr, 4, eNodeAccessReadWrite);
  NetSNMPNodeData* const values[] = {&string, &text, &bytes};
  for (NetSNMPNodeData* value : values) {
    for (const std::size_t length : {0, 1, 4, 40, 41, 1000}) {
      for (const unsigned char type : {ASN_OCTET_STR, ASN_INTEGER}) {
        const Varbind varbind(type, std::string(length, 'x'));
        EXPECT_EQ(NetSNMP::set_snmp_validate(varbind, value), 0);
      }
    }
  }
}

// Also for an application-defined class.
class DerivedSizedChar : public NetSNMPSizedCharNodeData {
 public:
  using NetSNMPSizedCharNodeData::NetSNMPSizedCharNodeData;
};

TEST(AVarbind, IsRefusedWithWrongLengthWhenItsTextExceedsTheSizeOfAValue) {
  char text[41] = "";
  NetSNMPSizedCharNodeData over(text, sizeof(text), eNodeAccessReadWrite);
  NetSNMPSizedCharNodeData local(text, sizeof(text), eNodeAccessReadWrite,
                                 true);
  DerivedSizedChar derived(text, sizeof(text), eNodeAccessReadWrite);
  NetSNMPNodeData* const values[] = {&over, &local, &derived};
  for (NetSNMPNodeData* value : values) {
    for (const unsigned char type : {ASN_OCTET_STR, ASN_INTEGER}) {
      for (const std::size_t length : {0, 1, 39, 40}) {
        EXPECT_EQ(NetSNMP::set_snmp_validate(
                      Varbind(type, std::string(length, 'x')), value),
                  0)
            << length;
      }
      for (const std::size_t length : {41, 42, 1000}) {
        EXPECT_EQ(NetSNMP::set_snmp_validate(
                      Varbind(type, std::string(length, 'x')), value),
                  8)
            << length;
      }
    }
  }
}

TEST(AVarbind, CountsUpToItsFirstNulAgainstTheSizeOfAValue) {
  char text[5] = "";
  NetSNMPSizedCharNodeData value(text, sizeof(text), eNodeAccessReadWrite);
  const Varbind fits = Varbind::Text(std::string("four\0more", 9));
  EXPECT_EQ(NetSNMP::set_snmp_validate(fits, &value), 0);
  EXPECT_EQ(NetSNMP::set_snmp_commit(fits, &value), 0);
  EXPECT_STREQ(text, "four");
  EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind::Text(std::string("fives\0", 6)),
                                       &value),
            8);
}

TEST(AVarbind, TooLongForASizeIsRefusedAsNotWritableFirst) {
  char text[2] = "";
  NetSNMPSizedCharNodeData value(text, sizeof(text), eNodeAccessReadOnly);
  EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind::Text("long"), &value), 17);
}

TEST(AVarbind, WithoutAValueIsRefusedAndNeverRead) {
  for (int type = eNodeDataVoid; type <= eNodeDataByte; ++type) {
    const auto value = Untyped(type);
    EXPECT_EQ(NetSNMP::set_snmp_validate(Varbind::WithoutValue(), value.get()),
              3)
        << type;
    EXPECT_NE(NetSNMP::set_snmp_commit(Varbind::WithoutValue(), value.get()), 0)
        << type;
  }
}

}  // namespace
