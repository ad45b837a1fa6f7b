// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/InUse.h"

#include <gtest/gtest.h>

#include <array>

#include "NetSNMP.h"

namespace {

class InUse : public testing::Test {
 protected:
  InUse() { requestInfo_.asp = &pdu_; }
  ~InUse() override { in_use::ForgetSets(); }

  // Makes the PDU address these two.
  void Address() {
    for (std::size_t i = 0; i < addressed_.size(); ++i) {
      addressed_[i].subtree = &subtrees_[i];
    }
    subtrees_[0].reginfo = &one_;
    subtrees_[1].reginfo = &other_;
    pdu_.treecache = addressed_.data();
    pdu_.treecache_num = 1;
  }

  bool Pass(int mode) { return Pass(mode, requests_, one_); }
  bool Pass(int mode, netsnmp_request_info& requests,
            const netsnmp_handler_registration& registration) {
    requestInfo_.mode = mode;
    return in_use::TrackSet(&requestInfo_, &requests, &registration);
  }

  netsnmp_handler_registration one_{};
  netsnmp_handler_registration other_{};
  std::array<netsnmp_subtree, 2> subtrees_{};
  std::array<netsnmp_tree_cache, 2> addressed_{};
  netsnmp_agent_session pdu_{};
  netsnmp_agent_request_info requestInfo_{};
  netsnmp_request_info requests_{};
};

TEST_F(InUse, IsWhateverThePduOfACallAddresses) {
  Address();
  netsnmp_handler_registration third{};
  {
    const in_use::Call call(requestInfo_);
    EXPECT_TRUE(in_use::Contains(&one_));
    EXPECT_TRUE(in_use::Contains(&other_));
    EXPECT_FALSE(in_use::Contains(&third));
    EXPECT_FALSE(in_use::Contains(nullptr));
  }
  EXPECT_FALSE(in_use::Contains(&one_));
}

TEST_F(InUse, IsWhatThePduOfAnOuterCallAddresses) {
  Address();
  const in_use::Call outer(requestInfo_);
  netsnmp_agent_session none{};
  netsnmp_agent_request_info ofNone{};
  ofNone.asp = &none;
  const in_use::Call inner(ofNone);
  const in_use::Call withoutPdu(netsnmp_agent_request_info{});
  EXPECT_TRUE(in_use::Contains(&other_));
}

TEST_F(InUse, IsTheRegistrationOfASetFromItsFirstPhaseToItsLast) {
  const int otherPhases[] = {MODE_SET_RESERVE2, MODE_SET_ACTION, MODE_GET};
  const int lastPhases[] = {MODE_SET_COMMIT, MODE_SET_FREE, MODE_SET_UNDO};
  for (const int last : lastPhases) {
    EXPECT_TRUE(Pass(MODE_SET_RESERVE1));
    for (const int other : otherPhases) {
      EXPECT_TRUE(Pass(other));
      EXPECT_TRUE(in_use::Contains(&one_));
    }
    EXPECT_FALSE(in_use::Contains(&other_));
    EXPECT_TRUE(Pass(last));
    EXPECT_FALSE(in_use::Contains(&one_));
  }
}

TEST_F(InUse, LastsAsLongAsOneOfTwoSets) {
  netsnmp_request_info others{};
  Pass(MODE_SET_RESERVE1);
  Pass(MODE_SET_RESERVE1, others, one_);
  Pass(MODE_SET_COMMIT);
  EXPECT_TRUE(in_use::Contains(&one_));
  Pass(MODE_SET_FREE, others, one_);
  EXPECT_FALSE(in_use::Contains(&one_));
}

TEST_F(InUse, IsOverForASetWhosePlaceAnotherTakes) {
  Pass(MODE_SET_RESERVE1);
  Pass(MODE_SET_RESERVE1, requests_, other_);
  EXPECT_FALSE(in_use::Contains(&one_));
  EXPECT_TRUE(in_use::Contains(&other_));
}

TEST_F(InUse, IsOverForTheSetsOfALostConnection) {
  Pass(MODE_SET_RESERVE1);
  in_use::ForgetSets();
  EXPECT_FALSE(in_use::Contains(&one_));
}

TEST_F(InUse, IsNothingThatOthersThanNetSnmpCallHandlersFor) {
  requestInfo_.asp = nullptr;
  EXPECT_TRUE(Pass(MODE_SET_RESERVE1));
  EXPECT_FALSE(in_use::Contains(&one_));
}

TEST_F(InUse, IsWhatIsBeingRegistered) {
  in_use::BeginRegistering(&one_);
  in_use::BeginRegistering(&other_);
  EXPECT_TRUE(in_use::Contains(&one_));
  EXPECT_TRUE(in_use::Contains(&other_));
  in_use::EndRegistering(&other_);
  EXPECT_TRUE(in_use::Contains(&one_));
  EXPECT_FALSE(in_use::Contains(&other_));
  in_use::EndRegistering(&one_);
  EXPECT_FALSE(in_use::Contains(&one_));
}

TEST_F(InUse, IsLeftAsItIsByAnEndWithoutABeginning) {
  in_use::EndRegistering(&one_);
  in_use::BeginRegistering(&one_);
  in_use::EndRegistering(&other_);
  EXPECT_TRUE(in_use::Contains(&one_));
  in_use::EndRegistering(&one_);
}

}  // namespace
