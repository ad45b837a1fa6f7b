// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "ISNMPSubAgentCallback.h"
#include "LoggedLines.h"
#include "NetSNMP.h"
#include "SNMPSubAgent.h"
#include "support/VirtualSlot.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Journal = std::vector<std::string>;

// Records the states, and whether the subagent was connected then.
class Receiver : public ISNMPSubAgentCallback {
 public:
  Receiver(const SNMPSubAgent& subAgent, Journal& journal,
           const std::string& name)
      : subAgent_(subAgent), journal_(journal), name_(name) {}

  void SubAgentStateChanged(int state) override {
    journal_.push_back(name_ + " " + std::to_string(state) +
                       (subAgent_.Connected() ? " connected" : ""));
  }

 private:
  const SNMPSubAgent& subAgent_;
  Journal& journal_;
  const std::string name_;
};

class JournalSubAgent : public SNMPSubAgent {
 public:
  explicit JournalSubAgent(Journal& journal)
      : SNMPSubAgent("journal"), journal_(journal) {}

  void ApplicationOperation() override {
    journal_.emplace_back("ApplicationOperation");
  }
  void OnSubAgentConnected() override {
    journal_.push_back(std::string("OnSubAgentConnected") +
                       (Connected() ? " connected" : ""));
  }

 private:
  Journal& journal_;
};

class SessionEvents : public testing::Test {
 protected:
  static void Raise(SNMPSubAgent& subAgent, int event) {
    EXPECT_EQ(SNMPSubAgent::snmp_subagent_callback(SNMP_CALLBACK_APPLICATION,
                                                   event, nullptr, &subAgent),
              0);
  }
  void Start() { Raise(subAgent_, 10); }
  void Stop() { Raise(subAgent_, 11); }

  Journal Events() { return std::exchange(journal_, {}); }

  Journal journal_;
  JournalSubAgent subAgent_{journal_};
  Receiver a_{subAgent_, journal_, "a"};
  Receiver b_{subAgent_, journal_, "b"};
};

TEST_F(SessionEvents, CallTheApplicationAndThenTheReceiversInOrder) {
  subAgent_.RegisterSubAgentCallback("b", &b_);
  subAgent_.RegisterSubAgentCallback("a", &a_);
  Start();
  EXPECT_TRUE(subAgent_.Connected());
  EXPECT_THAT(Events(), ElementsAre("OnSubAgentConnected connected",
                                    "a 1 connected", "b 1 connected"));
}

TEST_F(SessionEvents, TellOfALossBeforeTheSubagentCountsAsDisconnected) {
  subAgent_.RegisterSubAgentCallback("b", &b_);
  subAgent_.RegisterSubAgentCallback("a", &a_);
  Start();
  Events();
  Stop();
  EXPECT_FALSE(subAgent_.Connected());
  EXPECT_THAT(Events(), ElementsAre("a 0 connected", "b 0 connected"));
}

TEST_F(SessionEvents, AreSilentForALossWithoutASession) {
  subAgent_.RegisterSubAgentCallback("a", &a_);
  Stop();
  EXPECT_FALSE(subAgent_.Connected());
  EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(SessionEvents, TellOfALossOnce) {
  subAgent_.RegisterSubAgentCallback("a", &a_);
  Start();
  Stop();
  Events();
  Stop();
  EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(SessionEvents, TellOfEveryStart) {
  subAgent_.RegisterSubAgentCallback("a", &a_);
  Start();
  Start();
  EXPECT_THAT(Events(),
              ElementsAre("OnSubAgentConnected connected", "a 1 connected",
                          "OnSubAgentConnected connected", "a 1 connected"));
}

TEST_F(SessionEvents, FollowTheSessionComingGoingAndReturning) {
  subAgent_.RegisterSubAgentCallback("a", &a_);
  Start();
  Stop();
  Start();
  EXPECT_THAT(Events(),
              ElementsAre("OnSubAgentConnected connected", "a 1 connected",
                          "a 0 connected", "OnSubAgentConnected connected",
                          "a 1 connected"));
  EXPECT_TRUE(subAgent_.Connected());
}

TEST_F(SessionEvents, OfOtherKindsAreIgnored) {
  subAgent_.RegisterSubAgentCallback("a", &a_);
  for (const int event : {-1, 0, 1, 9, 12}) Raise(subAgent_, event);
  EXPECT_FALSE(subAgent_.Connected());
  Start();
  Events();
  for (const int event : {-1, 0, 1, 9, 12}) Raise(subAgent_, event);
  EXPECT_TRUE(subAgent_.Connected());
  EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(SessionEvents, CountWhateverTheirMajorNumberAndArgument) {
  int argument = 0;
  EXPECT_EQ(SNMPSubAgent::snmp_subagent_callback(42, 10, &argument, &subAgent_),
            0);
  EXPECT_TRUE(subAgent_.Connected());
}

TEST_F(SessionEvents, OfADestroyedSubagentAreIgnored) {
  auto brief = std::make_unique<JournalSubAgent>(journal_);
  void* const destroyed = brief.get();
  brief.reset();
  for (const int event : {10, 11, 42}) {
    EXPECT_EQ(SNMPSubAgent::snmp_subagent_callback(SNMP_CALLBACK_APPLICATION,
                                                   event, nullptr, destroyed),
              0);
  }
  EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(SessionEvents, ReachASubagentInThePlaceOfADestroyedOne) {
  alignas(JournalSubAgent) unsigned char place[sizeof(JournalSubAgent)];
  auto* subAgent = new (place) JournalSubAgent(journal_);
  subAgent->~JournalSubAgent();
  subAgent = new (place) JournalSubAgent(journal_);
  Raise(*subAgent, 10);
  EXPECT_THAT(Events(), ElementsAre("OnSubAgentConnected connected"));
  subAgent->~JournalSubAgent();
}

TEST_F(SessionEvents, KeepTheFirstReceiverOfAName) {
  subAgent_.RegisterSubAgentCallback("name", &a_);
  subAgent_.RegisterSubAgentCallback("name", &b_);
  subAgent_.NotifySubAgentCallbacks(1);
  EXPECT_THAT(Events(), ElementsAre("a 1"));
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

TEST_F(SessionEvents, NoLongerReachAReceiverThatWasUnregistered) {
  subAgent_.RegisterSubAgentCallback("a", &a_);
  subAgent_.RegisterSubAgentCallback("b", &b_);
  subAgent_.UnregisterSubAgentCallback("a");
  subAgent_.UnregisterSubAgentCallback("unknown");
  subAgent_.NotifySubAgentCallbacks(1);
  EXPECT_THAT(Events(), ElementsAre("b 1"));
  subAgent_.RegisterSubAgentCallback("a", &b_);
  subAgent_.NotifySubAgentCallbacks(0);
  EXPECT_THAT(Events(), ElementsAre("b 0", "b 0"));
}

TEST_F(SessionEvents, PassOverANullReceiverThatIsStored) {
  subAgent_.RegisterSubAgentCallback("b", &b_);
  subAgent_.RegisterSubAgentCallback("a", nullptr);
  subAgent_.RegisterSubAgentCallback("a", &a_);
  EXPECT_EQ(subAgent_.callbacks_.at("a"), nullptr);
  subAgent_.NotifySubAgentCallbacks(1);
  EXPECT_THAT(Events(), ElementsAre("b 1"));
}

TEST_F(SessionEvents, ReachReceiversInTheByteOrderOfTheirNames) {
  for (const char* name : {"b", "\xC3\xA4", "B", "a2", "a10", ""}) {
    subAgent_.RegisterSubAgentCallback(name, &b_);
  }
  subAgent_.UnregisterSubAgentCallback("a2");
  subAgent_.RegisterSubAgentCallback("a2", &a_);
  subAgent_.NotifySubAgentCallbacks(7);
  EXPECT_THAT(Events(), ElementsAre("b 7", "b 7", "b 7", "a 7", "b 7", "b 7"));
}

TEST_F(SessionEvents, DropReceiversUntoldWithTheirSubagent) {
  {
    JournalSubAgent brief(journal_);
    brief.RegisterSubAgentCallback("a", &a_);
    Raise(brief, 10);
    Events();
  }
  EXPECT_THAT(Events(), IsEmpty());
}

// Has an override of its own for telling the receivers.
class TellingSubAgent : public JournalSubAgent {
 public:
  explicit TellingSubAgent(Journal& journal)
      : JournalSubAgent(journal), journal_(journal) {}
  void NotifySubAgentCallbacks(int state) override {
    journal_.push_back("told " + std::to_string(state));
  }

 private:
  Journal& journal_;
};

TEST_F(SessionEvents, TellReceiversThroughTheVirtualOperation) {
  TellingSubAgent subAgent(journal_);
  Raise(subAgent, 10);
  Raise(subAgent, 11);
  EXPECT_THAT(Events(),
              ElementsAre("OnSubAgentConnected connected", "told 1", "told 0"));
}

TEST(AReceiver, HasSubAgentStateChangedAsItsFirstVirtualOperation) {
  EXPECT_EQ(VirtualSlot(&ISNMPSubAgentCallback::SubAgentStateChanged), 0);
  EXPECT_FALSE(std::has_virtual_destructor<ISNMPSubAgentCallback>::value);
}

}  // namespace
