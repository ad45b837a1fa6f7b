// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/Deferred.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "NetSNMP.h"
#include "adapter/InUse.h"
#include "support/LocalAgent.h"
#include "support/Oid.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

int Handle(netsnmp_mib_handler*, netsnmp_handler_registration*,
           netsnmp_agent_request_info*, netsnmp_request_info*) {
  return SNMP_ERR_NOERROR;
}

std::vector<std::string> retried;

void Retry(const std::string& name) { retried.push_back(name); }

class Deferred : public testing::Test {
 protected:
  Deferred() { retried.clear(); }

  static netsnmp_handler_registration* Register(Oid oid) {
    netsnmp_handler_registration* registration = nullptr;
    NetSNMP::create_snmp_handler_registration(&registration, "test", Handle,
                                              oid.data(), Length(oid),
                                              HANDLER_CAN_RWRITE);
    EXPECT_EQ(NetSNMP::register_snmp_handler(registration), 0);
    return registration;
  }

  static bool IsRegistered(const Oid& oid) {
    return LocalAgent::RegistrationAt(oid) != nullptr;
  }

  static bool MustWait(const Oid& oid, const std::string& name) {
    return deferred::WhenFree(oid.data(), Length(oid), name, Retry);
  }

  // Withdraws what is registered at `oid` while it is in use.
  static netsnmp_handler_registration* Defer(const Oid& oid) {
    auto* const registration = LocalAgent::RegistrationAt(oid);
    in_use::BeginRegistering(registration);
    EXPECT_EQ(deferred::Withdraw(registration), 0);
    return registration;
  }

  const LocalAgent agent_;
  const Oid kOne = TestOid({1, 0});
  const Oid kOther = TestOid({2, 0});
};

TEST_F(Deferred, IsNoWithdrawalOfWhatIsNotInUse) {
  EXPECT_EQ(deferred::Withdraw(Register(kOne)), 0);
  EXPECT_FALSE(IsRegistered(kOne));
  EXPECT_FALSE(MustWait(kOne, "a"));
}

TEST_F(Deferred, IsTheWithdrawalOfWhatIsInUse) {
  Register(kOne);
  auto* const registration = Defer(kOne);
  deferred::Run();
  EXPECT_TRUE(IsRegistered(kOne));
  in_use::EndRegistering(registration);
  EXPECT_TRUE(IsRegistered(kOne));
  deferred::Run();
  EXPECT_FALSE(IsRegistered(kOne));
}

TEST_F(Deferred, IsEachUntilItIsNoLongerInUseItself) {
  const Oid oids[] = {kOne, kOther, TestOid({3, 0})};
  std::vector<netsnmp_handler_registration*> registrations;
  for (const Oid& oid : oids) Register(oid);
  for (const Oid& oid : oids) registrations.push_back(Defer(oid));
  for (int i = 2; i >= 0; --i) {
    deferred::Run();
    EXPECT_TRUE(IsRegistered(oids[i]));
    in_use::EndRegistering(registrations[i]);
    deferred::Run();
    EXPECT_FALSE(IsRegistered(oids[i]));
  }
}

TEST_F(Deferred, MakesTheNextAtItsOidWait) {
  Register(kOne);
  auto* const registration = Defer(kOne);
  EXPECT_TRUE(MustWait(kOne, "b"));
  EXPECT_TRUE(MustWait(kOne, "a"));
  EXPECT_TRUE(MustWait(kOne, "b"));
  EXPECT_FALSE(MustWait(kOther, "c"));
  deferred::Run();
  EXPECT_THAT(retried, IsEmpty());
  in_use::EndRegistering(registration);
  deferred::Run();
  EXPECT_THAT(retried, ElementsAre("a", "b"));
  EXPECT_FALSE(MustWait(kOne, "b"));
  deferred::Run();
  EXPECT_THAT(retried, ElementsAre("a", "b"));
}

TEST_F(Deferred, IsDroppedBeforeAShutdown) {
  auto* const kept = Register(kOne);
  auto* const registration = Defer(kOne);
  deferred::Drop();
  in_use::EndRegistering(registration);
  EXPECT_FALSE(MustWait(kOne, "a"));
  deferred::Run();
  EXPECT_TRUE(IsRegistered(kOne));
  EXPECT_EQ(deferred::Withdraw(kept), 0);
}

}  // namespace
