// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Text.h"

#include <gtest/gtest.h>

#include "support/Samples.h"

namespace testkit::agentx {
namespace {

TEST(TheTextOfAnOid, IsItsDottedForm) {
  EXPECT_EQ(Text(Oid{1, 3, 6, 1, 4294967295}), "1.3.6.1.4294967295");
  EXPECT_EQ(Text(Oid{}), "");
}

TEST(TheTextOfAnAgentXValue, NamesItsTypeAndContent) {
  EXPECT_EQ(Text(Value{Type::kInteger, std::int32_t{-5}}), "INTEGER -5");
  EXPECT_EQ(Text(Value{Type::kOctetString, std::string("a\2")}),
            "OCTET STRING \"a\\2\"");
  EXPECT_EQ(Text(Value{Type::kObjectId, Oid{1, 3}}), "OBJECT IDENTIFIER 1.3");
  EXPECT_EQ(Text(Value{Type::kNoSuchInstance, {}}), "noSuchInstance");
}

TEST(TheTextOfAMessage, TellsWhatItAsksFor) {
  EXPECT_EQ(Text(Body{GetNext{{{{1, 3}, true, {1, 4}}, {{1, 5}, false, {}}}}}),
            "GetNext [1.3 included .. 1.4] [1.5 .. ]");
  EXPECT_EQ(Text(Body{GetBulk{1, 10, {{{1, 3}, false, {}}}}}),
            "GetBulk 1 10 [1.3 .. ]");
}

TEST(TheTextOfAMessage, TellsWhatItAnswers) {
  EXPECT_EQ(Text(Body{Response{4711, 5, 1, {{{1, 3}, {Type::kNull, {}}}}}}),
            "Response error 5 at 1 [1.3 = NULL]");
}

TEST(TheTextOfAMessage, IsThereForEveryOne) {
  for (const Body& body : Samples()) EXPECT_FALSE(Text(body).empty());
}

}  // namespace
}  // namespace testkit::agentx
