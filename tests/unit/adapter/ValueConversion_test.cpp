// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// From values to varbinds.
#include <gmock/gmock.h>

#include <string>

#include "support/Kinds.h"
#include "support/Oid.h"
#include "support/Varbind.h"
#include "values/TruthValue.h"

namespace {

using testing::ElementsAreArray;

struct SentValue {
  const char* description;
  NetSNMPNodeData& value;
  unsigned char type;
  std::string bytes;
};

class AValueOnItsWay : public testing::Test {
 protected:
  ~AValueOnItsWay() override { snmp_free_varbind(list_); }

  variable_list* Add(const Oid& name, NetSNMPNodeData& value) {
    return NetSNMP::add_snmp_varlist_variable(&list_, name.data(), Length(name),
                                              &value);
  }

  int number_ = -7;
  unsigned int count_ = 4294967295U;
  std::string string_ = std::string("a\0b", 3);
  std::string noString_;
  std::string longString_ = std::string(1000, 'x');
  char text_[6] = "front";
  bool true_ = true;
  bool false_ = false;
  unsigned char bytes_[4] = {0x0A, 0xFF, 0x00, 0x7F};

  NetSNMPIntNodeData int_{&number_, eNodeAccessReadOnly};
  NetSNMPUnsignedIntNodeData unsignedInt_{&count_, eNodeAccessReadOnly};
  NetSNMPStringNodeData stringValue_{&string_, eNodeAccessReadOnly};
  NetSNMPStringNodeData noStringValue_{&noString_, eNodeAccessReadOnly};
  NetSNMPStringNodeData longStringValue_{&longString_, eNodeAccessReadOnly};
  NetSNMPCharNodeData charValue_{text_, eNodeAccessReadOnly};
  NetSNMPBoolNodeData trueValue_{&true_, eNodeAccessReadOnly};
  NetSNMPBoolNodeData falseValue_{&false_, eNodeAccessReadOnly};
  NetSNMPByteNodeData byteValue_{bytes_, 4, eNodeAccessReadOnly};
  NetSNMPNodeData untyped_{eNodeDataInt, eNodeAccessReadOnly, &number_,
                           nullptr};
  NetSNMPIntNodeData withoutStorage_{nullptr, eNodeAccessReadOnly};

  // The agent library keeps integers in a long, also those that a long of 32
  // bits shows as negative.
  const long kLongOfCount = static_cast<long>(count_);
  const SentValue kSent[10] = {
      {"int", int_, ASN_INTEGER, BytesOf(-7L)},
      {"unsigned int", unsignedInt_, ASN_UNSIGNED, BytesOf(kLongOfCount)},
      {"string", stringValue_, ASN_OCTET_STR, string_},
      {"empty string", noStringValue_, ASN_OCTET_STR, ""},
      {"long string", longStringValue_, ASN_OCTET_STR, longString_},
      {"char text", charValue_, ASN_OCTET_STR, "front"},
      {"true", trueValue_, ASN_INTEGER, BytesOf(1L)},
      {"false", falseValue_, ASN_INTEGER, BytesOf(2L)},
      {"bytes", byteValue_, ASN_OCTET_STR, BytesOf(bytes_)},
      {"untyped", untyped_, ASN_NULL, ""},
  };
  variable_list* list_ = nullptr;
};

TEST_F(AValueOnItsWay, IsCopiedIntoAVarbindWithItsType) {
  for (const SentValue& each : kSent) {
    const Varbind varbind = Varbind::Text("before");
    EXPECT_EQ(NetSNMP::get_snmp_value(varbind, &each.value), 0)
        << each.description;
    EXPECT_EQ(varbind->type, each.type) << each.description;
    EXPECT_EQ(varbind.Bytes(), each.bytes) << each.description;
    EXPECT_NE(varbind->val.string, each.value.NodeDataValue());
  }
}

TEST_F(AValueOnItsWay, IsNotCopiedWithoutStorage) {
  const Varbind varbind = Varbind::Text("before");
  EXPECT_NE(NetSNMP::get_snmp_value(varbind, &withoutStorage_), 0);
  // Not an integer without a number, which the agent library would read.
  EXPECT_EQ(varbind->type, ASN_OCTET_STR);
  EXPECT_EQ(varbind.Bytes(), "before");
  EXPECT_NE(NetSNMP::set_snmp_var_value(varbind, &withoutStorage_), 0);
}

TEST_F(AValueOnItsWay, LeavesTheTypeOfAVarbindThatTakesItsBytesOnly) {
  const Varbind index(ASN_PRIV_IMPLIED_OCTET_STR, "before");
  EXPECT_EQ(NetSNMP::set_snmp_var_value(index, &stringValue_), 0);
  EXPECT_EQ(index->type, ASN_PRIV_IMPLIED_OCTET_STR);
  EXPECT_EQ(index.Bytes(), string_);
  const Varbind number = Varbind::Integer(42, ASN_TIMETICKS);
  EXPECT_EQ(NetSNMP::set_snmp_var_value(number, &unsignedInt_), 0);
  EXPECT_EQ(number->type, ASN_TIMETICKS);
  EXPECT_EQ(number.Bytes(), BytesOf(kLongOfCount));
}

TEST_F(AValueOnItsWay, IsAppendedToAListUnderItsName) {
  const Oid name = TestOid({1, 0});
  variable_list** end = &list_;
  for (const SentValue& each : kSent) {
    const variable_list* const added = Add(name, each.value);
    ASSERT_EQ(added, *end) << each.description;
    EXPECT_THAT(Oid(added->name, added->name + added->name_length),
                ElementsAreArray(name));
    EXPECT_EQ(added->type, each.type) << each.description;
    EXPECT_EQ(
        std::string(added->val.string, added->val.string + added->val_len),
        each.bytes)
        << each.description;
    end = &(*end)->next_variable;
  }
}

TEST_F(AValueOnItsWay, IsNotAppendedWithoutStorageOrUnderTooLongAName) {
  EXPECT_EQ(Add(TestOid({1, 0}), withoutStorage_), nullptr);
  EXPECT_EQ(Add(LongOid(129), int_), nullptr);
  EXPECT_EQ(Add(LongOid(256), int_), nullptr);
  EXPECT_EQ(list_, nullptr);
  EXPECT_NE(Add(LongOid(128), int_), nullptr);
}

struct LentValue {
  NetSNMPNodeData& value;
  unsigned char type;
  std::size_t size;
  const void* storage;
};

TEST_F(AValueOnItsWay, LendsItsStorageToAVarbind) {
  const LentValue lent[] = {
      {int_, ASN_INTEGER, 4, &number_},
      {unsignedInt_, ASN_UNSIGNED, 4, &count_},
      {stringValue_, ASN_OCTET_STR, 3, string_.data()},
      {charValue_, ASN_OCTET_STR, 5, text_},
      {trueValue_, ASN_INTEGER, 4, truth_value::Bytes(true)},
      {falseValue_, ASN_INTEGER, 4, truth_value::Bytes(false)},
      {byteValue_, ASN_OCTET_STR, 4, bytes_},
      {withoutStorage_, ASN_INTEGER, 4, nullptr},
      {untyped_, ASN_NULL, 0, &number_},  // It says that it is an int.
  };
  for (const LentValue& each : lent) {
    variable_list varbind = {};
    EXPECT_EQ(NetSNMP::set_snmp_variable_list(&varbind, &each.value), 0);
    EXPECT_EQ(varbind.type, each.type);
    EXPECT_EQ(varbind.val_len, each.size);
    EXPECT_EQ(varbind.val.string, each.storage);
  }
}

TEST_F(AValueOnItsWay, LendsNothingWithoutStorage) {
  NetSNMPStringNodeData string(nullptr, eNodeAccessReadOnly);
  NetSNMPBoolNodeData truth(nullptr, eNodeAccessReadOnly);
  NetSNMPNodeData* const values[] = {&string, &truth};
  for (NetSNMPNodeData* value : values) {
    variable_list varbind = {};
    EXPECT_EQ(NetSNMP::set_snmp_variable_list(&varbind, value), 0);
    EXPECT_EQ(varbind.val.string, nullptr);
  }
}

TEST_F(AValueOnItsWay, IsUnknownToALendersVarbindWithoutATypeFrom1To6) {
  variable_list varbind = {};
  EXPECT_EQ(NetSNMP::set_snmp_variable_list(&varbind, nullptr), 2);
  for (const int type : {0, 7, -1}) {
    untyped_.dataType_ = static_cast<eNodeDataType>(type);
    EXPECT_EQ(NetSNMP::set_snmp_variable_list(&varbind, &untyped_), 2) << type;
    EXPECT_EQ(varbind.type, ASN_NULL);
    EXPECT_EQ(varbind.val.string, nullptr);
  }
}

}  // namespace
