// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What becomes of a subagent whose master agent is away or does not take it.
#include <atomic>

#include "FakeMasterTest.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "support/Scalars.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace agentx = testkit::agentx;

using testing::ElementsAre;
using testing::SizeIs;
using testkit::Deadlines;
using testkit::WaitFor;
using testkit::agentx::Master;
using testkit::agentx::MasterSession;
using testkit::agentx::Pdu;
using testkit::agentx::Register;

namespace {

constexpr std::uint16_t kRequestDenied = 267;

// Waits for an answer as long as no machine is busy.
constexpr char kImpatient[] =
    "agentXPingInterval 1\n"
    "[snmp] timeout 5\n"
    "[snmp] retries 0\n";

// The numbers of all alarms of the agent library.
std::vector<unsigned int> Alarms() {
  const NetSNMPAgentGuard guard;
  std::vector<snmp_alarm*> found;
  // The next one that is not running: those found are marked as such meanwhile.
  while (snmp_alarm* const alarm = sa_find_next()) {
    found.push_back(alarm);
    alarm->flags |= SA_FIRED;
  }
  std::vector<unsigned int> numbers;
  for (snmp_alarm* const alarm : found) {
    alarm->flags &= ~static_cast<unsigned int>(SA_FIRED);
    numbers.push_back(alarm->clientreg);
  }
  return numbers;
}

class AReconnection : public FakeMasterTest {
 protected:
  using FakeMasterTest::FakeMasterTest;

  // Takes connections and hangs up after so many messages.
  void HangUp(int times, int messages) {
    for (int time = 0; time < times; ++time) {
      session_ = master_.Accept();
      for (int message = 0; message < messages; ++message) {
        session_->Grant(session_->Next());
      }
      session_.reset();
    }
  }

  void ExpectService() {
    session_ = master_.AcceptServing(Device::Subtrees().size());
    EXPECT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
  }

  // Waits until the agent library has so many alarms, while nobody listens.
  bool WaitForAlarms(std::size_t count) {
    master_.Refuse();
    const bool came =
        WaitFor([=] { return Alarms().size() == count; }, Deadlines::Session());
    master_.Listen();
    return came;
  }
};

TEST_F(AReconnection, IsTriedByOneAlarmHoweverOftenTheMasterAgentHangsUp) {
  Connect();
  session_.reset();
  for (const int messages : {0, 1, 2}) {
    SCOPED_TRACE(messages);
    HangUp(2, messages);
    EXPECT_TRUE(WaitForAlarms(1)) << Alarms().size();
  }
  ExpectService();
  EXPECT_THAT(Alarms(), SizeIs(1));  // the ping's
}

TEST_F(AReconnection, IsTriedByOneAlarmFromTheStart) {
  device_.Start();
  HangUp(3, 0);
  EXPECT_TRUE(WaitForAlarms(1)) << Alarms().size();
  ExpectService();
  EXPECT_THAT(Alarms(), SizeIs(1));  // the ping's
}

TEST_F(AReconnection, FollowsRefusedConnections) {
  Connect();
  for (int time = 0; time < 2; ++time) {
    master_.Refuse();
    session_.reset();
    ASSERT_TRUE(WaitFor([this] { return !device_.SubAgent().Connected(); },
                        Deadlines::Session()));
    master_.Listen();
    ExpectService();
  }
  EXPECT_THAT(device_.Receiver().States(), ElementsAre(1, 0, 1, 0, 1));
}

TEST_F(AReconnection, RegistersAllNodesThoughTheLastSessionEndedWhileItDid) {
  Connect();
  session_.reset();
  for (int messages = 1; messages <= 3; ++messages) {
    HangUp(1, messages);
    ExpectService();
    session_.reset();
  }
}

class ASilence : public AReconnection {
 protected:
  ASilence() : AReconnection(kImpatient) {}
};

// Everything else is answered, pings too.
TEST_F(ASilence, AtARegistrationIsFollowedByAReconnection) {
  device_.Start();
  session_ = master_.Accept();
  session_->ServeUntil([this] { return session_->Registered().size() == 1; });
  EXPECT_TRUE(std::holds_alternative<Register>(session_->Next().body));
  int granted = 0;
  EXPECT_THROW(session_->ServeUntil([&] { return ++granted == 20; }),
               agentx::NoSubAgent);
  ExpectService();
  EXPECT_THAT(device_.Receiver().States(), ElementsAre(1, 0, 1));
}

// The receivers learn of that session when all nodes have been registered.
TEST_F(AReconnection, IsToldInTurnThoughTheFirstSessionEndedWhileItRegistered) {
  device_.Start();
  HangUp(1, 2);
  ExpectService();
  EXPECT_THAT(device_.Receiver().States(), ElementsAre(1, 0, 1));
}

TEST_F(AReconnection, RegistersAgainWhatWasRefused) {
  device_.Start();
  session_ = master_.Accept();
  int refused = 0;
  while (refused < 3) {
    const Pdu message = session_->Next();
    const bool isRegistration = std::holds_alternative<Register>(message.body);
    session_->Answer(message, isRegistration ? kRequestDenied : 0);
    refused += isRegistration ? 1 : 0;
  }
  // The session is up, with nothing on it.
  ASSERT_TRUE(device_.Receiver().WaitForStates({1}));
  session_.reset();
  ExpectService();
}

TEST_F(AReconnection, KeepsWhatWasBuiltAndWrittenMeanwhile) {
  Connect();
  master_.Refuse();
  session_.reset();
  ASSERT_TRUE(device_.Receiver().WaitForStates({1, 0}));
  support::AddIntScalar(2, "late", 5);
  NetSNMPDataNode::SetNodeData("a level", 6);
  master_.Listen();
  session_ = master_.AcceptServing(Device::Subtrees().size() + 1);
  EXPECT_EQ(Walk(*session_, Device::Subtrees()), device_.Objects());
  EXPECT_EQ(std::get<std::int32_t>(device_.Objects().front().value.content), 6);
}

// Alarms that the application has given the agent library.
class AnAlarm : public AReconnection {
 protected:
  using AReconnection::AReconnection;

  struct Count {
    std::atomic<int> calls{0};
  };

  static void Increase(unsigned int, void* clientArg) {
    ++static_cast<Count*>(clientArg)->calls;
  }
  static void IncreaseOther(unsigned int, void*) { ++others_.calls; }

  // Like those for attempts: repeated at the ping interval, without argument.
  static unsigned int RegisterOther() {
    return snmp_alarm_register(1, SA_REPEAT, IncreaseOther, nullptr);
  }

  void AwaitCall(const Count& count) {
    const int before = count.calls;
    session_->ServeUntil([&] { return count.calls > before; });
  }

  static Count others_;
  Count count_;
};

AnAlarm::Count AnAlarm::others_;

TEST_F(AnAlarm, OfTheApplicationOutlivesFailedAttempts) {
  Connect();
  {
    const NetSNMPAgentGuard guard;
    snmp_alarm_register(1, SA_REPEAT, Increase, &count_);
    RegisterOther();
  }
  session_.reset();
  HangUp(2, 0);
  {
    const NetSNMPAgentGuard guard;
    RegisterOther();
  }
  HangUp(2, 1);
  ExpectService();
  // The ping's, two of the same kind and one more.
  EXPECT_THAT(Alarms(), SizeIs(4));
  AwaitCall(count_);
  AwaitCall(others_);
}

// An attempt that fails would end the alarm whose number is that of the
// session's security model.
TEST_F(AnAlarm, OfTheApplicationIsNotTakenForTheSessions) {
  {
    // Numbers go to whoever comes first.
    const NetSNMPAgentGuard guard;
    device_.Start();
  }
  session_ = master_.Accept();
  session_->Next();
  for (const unsigned int number : Alarms()) EXPECT_GT(number, 4U);
  session_.reset();
  HangUp(1, 0);
  ExpectService();
  for (const unsigned int number : Alarms()) EXPECT_GT(number, 4U);
}

// Receivers register alarms just where the agent library does.
class AnAlarmOfAReceiver : public AnAlarm {
 protected:
  struct Registering : ISNMPSubAgentCallback {
    void SubAgentStateChanged(int) override { RegisterOther(); }
  };

  AnAlarmOfAReceiver() : AnAlarm(kImpatient) {
    device_.SubAgent().RegisterSubAgentCallback("registering", &registering_);
    Connect();
  }
  ~AnAlarmOfAReceiver() override {
    session_.reset();
    master_.Refuse();
    WaitFor([this] { return !device_.SubAgent().Connected(); },
            Deadlines::Session());
    const NetSNMPAgentGuard guard;
    device_.SubAgent().UnregisterSubAgentCallback("registering");
  }

 private:
  Registering registering_;
};

TEST_F(AnAlarmOfAReceiver, IsNotTakenForAnAttemptAfterALoss) {
  session_.reset();
  HangUp(2, 0);
  ExpectService();
  // The ping's and those of three changes.
  EXPECT_THAT(Alarms(), SizeIs(4));
}

// The agent library then makes an attempt at once, without an alarm.
TEST_F(AnAlarmOfAReceiver, IsNotTakenForAnAttemptAfterASilence) {
  const Master::Session silent = std::move(session_);
  ExpectService();
  session_.reset();
  HangUp(2, 0);
  ExpectService();
  // The ping's and those of five changes.
  EXPECT_THAT(Alarms(), SizeIs(6));
}

}  // namespace
