// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a SET writes.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "Untyped.h"
#include "support/Kinds.h"
#include "support/Varbind.h"

namespace {

using testing::ElementsAre;

// Counts how often it notifies.
template <typename Value>
class Notifying : public Value {
 public:
  using Value::Value;
  void OnSetNodeValue() const override { ++count_; }
  mutable int count_ = 0;
};

// Commits `varbind` to a value of the kind over a variable, and returns what
// the variable is then.
template <typename K>
typename K::Variable Committed(const Varbind& varbind) {
  typename K::Variable variable = {};
  const auto value = MakeValue<K, Notifying<typename K::Class>>(
      &variable, eNodeAccessReadWrite);
  EXPECT_EQ(NetSNMP::set_snmp_commit(varbind, value.get()), 0);
  EXPECT_EQ(value->count_, 1);
  return variable;
}

TEST(ACommit, WritesAnIntegerOf4BytesOrOfALongAndNotifies) {
  EXPECT_EQ(Committed<IntKind>(Varbind::Integer(-7)), -7);
  EXPECT_EQ(Committed<IntKind>(Varbind(ASN_INTEGER, BytesOf(-7))), -7);
  EXPECT_EQ(Committed<IntKind>(Varbind::Integer(0x100000007L)), 7);
  EXPECT_EQ(
      Committed<UnsignedIntKind>(Varbind::Integer(4294967295L, ASN_UNSIGNED)),
      4294967295U);
  EXPECT_EQ(
      Committed<UnsignedIntKind>(Varbind(ASN_UNSIGNED, BytesOf(4294967295U))),
      4294967295U);
}

TEST(ACommit, WritesAnOctetStringOf4BytesAsAnInteger) {
  EXPECT_EQ(Committed<IntKind>(Varbind::Text(BytesOf(42))), 42);
}

TEST(ACommit, WritesTrueFor1AndFalseForAnyOtherNumber) {
  EXPECT_TRUE(Committed<BoolKind>(Varbind::Integer(1)));
  EXPECT_TRUE(Committed<BoolKind>(Varbind(ASN_INTEGER, BytesOf(1))));
  EXPECT_TRUE(Committed<BoolKind>(Varbind(ASN_INTEGER, "\1")));
  EXPECT_FALSE(Committed<BoolKind>(Varbind::Integer(2)));
  EXPECT_FALSE(Committed<BoolKind>(Varbind::Integer(3)));
  EXPECT_FALSE(Committed<BoolKind>(Varbind(ASN_INTEGER, "")));
}

struct TextCase {
  std::string sent;
  std::string written;
};

// 40 bytes fill the inline buffer; 41 lie on the heap without a NUL.
TEST(ACommit, WritesATextUpToItsFirstNulOrItsEnd) {
  const TextCase cases[] = {
      {"", ""},
      {"front", "front"},
      {std::string("front\0rest", 10), "front"},
      {std::string("\0front", 6), ""},
      {std::string(39, 'x'), std::string(39, 'x')},
      {std::string(40, 'x'), std::string(40, 'x')},
      {std::string(41, 'x'), std::string(41, 'x')},
      {std::string(50, 'x') + '\0', std::string(50, 'x')},
      {std::string(50, 'x') + '\0' + "rest", std::string(50, 'x')},
      {std::string(5000, 'x'), std::string(5000, 'x')},
  };
  for (const TextCase& each : cases) {
    const Varbind varbind = Varbind::Text(each.sent);
    EXPECT_EQ(Committed<StringKind>(varbind), each.written);
    std::vector<char> text(each.written.size() + 1, '?');
    Notifying<NetSNMPCharNodeData> value(text.data(), eNodeAccessReadWrite);
    EXPECT_EQ(NetSNMP::set_snmp_commit(varbind, &value), 0);
    EXPECT_EQ(text.data(), each.written);
    EXPECT_EQ(value.count_, 1);
  }
}

TEST(ACommit, ReadsAnInlineTextToItsNulAndNotByItsLength) {
  const Varbind varbind = Varbind::Text("front");
  varbind->val_len = 2;
  EXPECT_EQ(Committed<StringKind>(varbind), "front");
}

TEST(ACommit, LeavesAByteBufferUnchangedAndSucceeds) {
  unsigned char bytes[] = {1, 2, 3, 4};
  Notifying<NetSNMPByteNodeData> value(bytes, 4U, eNodeAccessReadWrite);
  EXPECT_EQ(NetSNMP::set_snmp_commit(Varbind::Text("five!"), &value), 0);
  EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(value.count_, 0);
}

// A byte buffer of an application that takes SETs.
class TakingBuffer : public NetSNMPByteNodeData {
 public:
  explicit TakingBuffer(unsigned int size)
      : NetSNMPByteNodeData(nullptr, size, eNodeAccessReadWrite) {}

  using NetSNMPByteNodeData::NodeDataValue;
  void NodeDataValue(const unsigned char* value, unsigned int size,
                     bool notify) override {
    taken_.emplace_back(value, value + size);
    notified_ = notify;
  }

  std::vector<std::string> taken_;
  bool notified_ = false;
};

TEST(ACommit, GivesAnOverriddenSetterAsManyBytesAsTheValueHas) {
  const TextCase cases[] = {
      {"five!", "five!"},
      {"more than five", "more "},
      {std::string(100, 'x'), "xxxxx"},
      {"two", std::string("two\0\0", 5)},
      {"", std::string(5, '\0')},
  };
  for (const TextCase& each : cases) {
    TakingBuffer buffer(5);
    EXPECT_EQ(NetSNMP::set_snmp_commit(Varbind::Text(each.sent), &buffer), 0);
    EXPECT_THAT(buffer.taken_, ElementsAre(each.written));
    EXPECT_TRUE(buffer.notified_);
  }
  TakingBuffer larger(60);
  NetSNMP::set_snmp_commit(Varbind::Text(std::string(50, 'x')), &larger);
  EXPECT_THAT(larger.taken_,
              ElementsAre(std::string(50, 'x') + std::string(10, '\0')));
  TakingBuffer empty(0);
  NetSNMP::set_snmp_commit(Varbind::Text("five!"), &empty);
  EXPECT_THAT(empty.taken_, ElementsAre(""));
}

TEST(ACommit, FailsForNoValueAndForATypeNotFrom1To6) {
  const Varbind varbind = Varbind::Integer(1);
  EXPECT_EQ(NetSNMP::set_snmp_commit(varbind, nullptr), 2);
  for (const int type : {0, 7, 255, -1}) {
    EXPECT_EQ(NetSNMP::set_snmp_commit(varbind, Untyped(type).get()), 2)
        << type;
  }
}

}  // namespace
