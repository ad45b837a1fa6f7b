// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "NetSNMP.h"
#include "support/Oid.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

Oid NameOf(const variable_list& var) {
  return {var.name, var.name + var.name_length};
}

// A list of integers, each named by its number.
class AVariableList : public testing::Test {
 protected:
  AVariableList() : three_(ListOf({1, 2, 3})) {}
  ~AVariableList() override {
    snmp_free_varbind(three_);
    snmp_free_varbind(list_);
  }

  static variable_list* ListOf(const std::vector<unsigned long>& numbers) {
    variable_list* list = nullptr;
    for (const unsigned long number : numbers) {
      const Oid name = TestOid({number});
      snmp_varlist_add_variable(&list, name.data(), name.size(), ASN_INTEGER,
                                &number, sizeof number);
    }
    return list;
  }

  static std::vector<unsigned long> NumbersIn(const variable_list* list) {
    std::vector<unsigned long> numbers;
    for (; list != nullptr; list = list->next_variable) {
      numbers.push_back(NameOf(*list).back());
    }
    return numbers;
  }

  // Appends an integer to list_.
  variable_list* Add(const Oid& name) {
    long number = 7;
    return NetSNMP::add_snmp_varlist_variable(
        &list_, name.data(), Length(name), ASN_INTEGER,
        reinterpret_cast<unsigned char*>(&number), sizeof number);
  }

  // Appends an object identifier to list_.
  variable_list* AddOid(Oid value) {
    const Oid name = TestOid({1});
    return NetSNMP::add_snmp_varlist_variable(
        &list_, name.data(), Length(name), ASN_OBJECT_ID,
        reinterpret_cast<unsigned char*>(value.data()),
        Length(value) * static_cast<unsigned int>(sizeof(oid)));
  }

  variable_list* three_;
  variable_list* list_ = nullptr;
};

TEST(AStatus, SucceededOnlyWhenItIsZero) {
  EXPECT_EQ(NetSNMP::snmp_succeeded(0), 1);
  for (const int status : {1, -1, -2, 3}) {
    EXPECT_EQ(NetSNMP::snmp_succeeded(status), 0) << status;
  }
}

TEST(TheOidOfSnmpTrapOid, IsThatOfItsInstance) {
  EXPECT_THAT(objid_snmptrap, ElementsAre(1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0));
}

TEST_F(AVariableList, IsCounted) {
  EXPECT_EQ(NetSNMP::count_snmp_variable_list(nullptr), 0);
  EXPECT_EQ(NetSNMP::count_snmp_variable_list(three_), 3);
  EXPECT_EQ(NetSNMP::count_snmp_variable_list(three_->next_variable), 2);
}

TEST_F(AVariableList, TakesAChainAtItsEnd) {
  NetSNMP::push_back_snmp_variable_list(three_, ListOf({4, 5}));
  EXPECT_THAT(NumbersIn(three_), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(AVariableList, TakesAVariableBehindItsOnlyOne) {
  list_ = ListOf({1});
  NetSNMP::push_back_snmp_variable_list(list_, ListOf({2}));
  EXPECT_THAT(NumbersIn(list_), ElementsAre(1, 2));
}

TEST_F(AVariableList, StaysAsItIsWhenThereIsNothingToLink) {
  NetSNMP::push_back_snmp_variable_list(three_, nullptr);
  NetSNMP::push_back_snmp_variable_list(nullptr, three_);
  EXPECT_THAT(NumbersIn(three_), ElementsAre(1, 2, 3));
}

TEST_F(AVariableList, GivesUpItsLastVariable) {
  EXPECT_EQ(NetSNMP::pop_back_snmp_variable_list(three_, &list_), 0);
  EXPECT_THAT(NumbersIn(list_), ElementsAre(3));
  EXPECT_THAT(NumbersIn(three_), ElementsAre(1, 2));
}

TEST_F(AVariableList, YieldsItsOnlyVariableAndKeepsIt) {
  list_ = ListOf({1});
  variable_list* last = nullptr;
  EXPECT_EQ(NetSNMP::pop_back_snmp_variable_list(list_, &last), 0);
  EXPECT_EQ(last, list_);
  EXPECT_THAT(NumbersIn(list_), ElementsAre(1));
}

TEST_F(AVariableList, ThatIsNullGivesUpNothing) {
  variable_list* last = three_;
  EXPECT_EQ(NetSNMP::pop_back_snmp_variable_list(nullptr, &last), 5);
  EXPECT_EQ(last, three_);
}

TEST_F(AVariableList, GrowsByAnEmptyVariableToWhichTheCursorMoves) {
  list_ = ListOf({1});
  variable_list* cursor = list_;
  EXPECT_EQ(NetSNMP::allocate_next_variable_list(&cursor), 0);
  EXPECT_EQ(cursor, list_->next_variable);
  const auto* const bytes = reinterpret_cast<const unsigned char*>(cursor);
  EXPECT_THAT(std::vector<unsigned char>(bytes, bytes + sizeof *cursor),
              testing::Each(0));
}

TEST_F(AVariableList, DoesNotGrowFromACursorThatIsNull) {
  variable_list* cursor = nullptr;
  EXPECT_EQ(NetSNMP::allocate_next_variable_list(&cursor), 5);
  EXPECT_EQ(cursor, nullptr);
}

TEST_F(AVariableList, IsNullOnceItIsDeleted) {
  NetSNMP::delete_snmp_variable_list(&three_);
  EXPECT_EQ(three_, nullptr);
  NetSNMP::delete_snmp_variable_list(&three_);
  EXPECT_EQ(three_, nullptr);
}

TEST_F(AVariableList, AppendsCopiesOfNameAndValue) {
  EXPECT_EQ(Add(TestOid({1})), list_);
  EXPECT_EQ(Add(TestOid({2})), list_->next_variable);
  EXPECT_THAT(NumbersIn(list_), ElementsAre(1, 2));
  EXPECT_EQ(list_->type, ASN_INTEGER);
  EXPECT_EQ(*list_->val.integer, 7);
}

TEST_F(AVariableList, RefusesWhatTheAgentLibraryRefuses) {
  const Oid name = TestOid({1});
  const unsigned char unknownType = 0xEE;
  EXPECT_EQ(NetSNMP::add_snmp_varlist_variable(
                &list_, name.data(), Length(name), unknownType, nullptr, 4),
            nullptr);
  EXPECT_EQ(list_, nullptr);
}

TEST_F(AVariableList, RefusesANameOfMoreThan128SubIdentifiers) {
  const Oid longest = LongOid(128);
  ASSERT_NE(Add(longest), nullptr);
  EXPECT_THAT(NameOf(*list_), ElementsAreArray(longest));
  for (const unsigned int length : {129U, 255U, 256U, 257U, 300U}) {
    EXPECT_EQ(Add(LongOid(length)), nullptr) << length;
  }
  EXPECT_EQ(list_->next_variable, nullptr);
}

TEST_F(AVariableList, RefusesAnObjectIdentifierOfMoreThan128) {
  ASSERT_NE(AddOid(LongOid(128)), nullptr);
  EXPECT_EQ(list_->val_len, 128 * sizeof(oid));
  for (const unsigned int length : {129U, 256U}) {
    EXPECT_EQ(AddOid(LongOid(length)), nullptr) << length;
  }
  EXPECT_EQ(list_->next_variable, nullptr);
}

}  // namespace
