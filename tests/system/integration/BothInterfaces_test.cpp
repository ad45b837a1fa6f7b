// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A service that moves from the node classes to the objects one by one has both
// in its process for a while.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <snmpsubagent.h>

#include <chrono>
#include <string>

#include "support/Scalars.h"
#include "support/Session.h"

namespace snmp = snmpsubagent;
using support::AddIntScalar;
using support::ScalarOid;
using support::ScalarsOid;
using support::Session;
using testing::ElementsAre;

namespace {

// A subagent on the node classes, with the scalars 1 and 3, and an agent of the
// objects that has the subtree with the scalars 2 and 4.
class BothInterfaces : public testing::Test {
 protected:
  BothInterfaces() {
    AddIntScalar(1, "first", 10);
    AddIntScalar(3, "third", 30);
  }

  void SetUp() override {
    session_.Connect();
    agent_.Start();
    const auto deadline =
        std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!module_.IsRegistered()) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline);
      agent_.WaitUntilConnected(std::chrono::milliseconds(10));
    }
  }

  static snmp::AgentOptions OptionsFor(Session& session) {
    snmp::AgentOptions options;
    options.master =
        "tcp:127.0.0.1:" + std::to_string(session.Master().AgentXPort());
    return options;
  }

  Session session_;
  snmp::Agent agent_{"the same process", OptionsFor(session_)};
  snmp::Module module_{agent_, ScalarsOid().substr(1)};
  snmp::Scalar<int> second_{module_, "2", 20};
  snmp::Scalar<int> fourth_{module_, "4", 40, snmp::ReadWrite()};
};

TEST_F(BothInterfaces, ServeOneSubtreeInTheOrderOfItsOids) {
  EXPECT_THAT(session_.Manager().Objects(ScalarsOid()),
              ElementsAre(ScalarOid(1) + " = INTEGER: 10",
                          ScalarOid(2) + " = INTEGER: 20",
                          ScalarOid(3) + " = INTEGER: 30",
                          ScalarOid(4) + " = INTEGER: 40"));
}

TEST_F(BothInterfaces, AreEachLeftByWhatTheOtherOneLoses) {
  agent_.Stop();
  EXPECT_THAT(session_.Manager().Objects(ScalarsOid()),
              ElementsAre(ScalarOid(1) + " = INTEGER: 10",
                          ScalarOid(3) + " = INTEGER: 30"));
}

}  // namespace
