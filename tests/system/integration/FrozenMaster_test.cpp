// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A master agent that does not respond, and a subagent with a reply timeout. By
// default each request waits for 6 seconds.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPTrapNode.h"
#include "support/AgentXConnection.h"
#include "support/Scalars.h"
#include "support/Session.h"
#include "testkit/Deadlines.h"
#include "testkit/FileDescriptor.h"
#include "testkit/LoopbackPort.h"
#include "testkit/WaitFor.h"

using support::AddIntScalar;
using support::ScalarOid;
using testkit::Deadlines;
using testkit::WaitFor;

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Long enough for a master agent on a busy machine. Nothing may take as long as
// a single request does by default, which leaves room for a ping and a new
// attempt of a second each.
constexpr milliseconds kReplyTimeout{1000};
constexpr milliseconds kAnything{5500};

template <typename Body>
milliseconds TimeOf(const Body& body) {
  const auto start = Clock::now();
  body();
  return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

// Takes the lock again and again, and remembers for how long it had to wait.
class LongestWait {
 public:
  LongestWait() : thread_([this] { Run(); }) {}
  ~LongestWait() {
    if (thread_.joinable()) End();
  }

  milliseconds End() {
    ended_ = true;
    thread_.join();
    return longest_;
  }

 private:
  void Run() {
    while (!ended_) {
      longest_ = std::max(longest_, TimeOf([] { NetSNMPAgentGuard(); }));
      std::this_thread::sleep_for(milliseconds(1));
    }
  }

  milliseconds longest_{0};
  std::atomic<bool> ended_{false};
  std::thread thread_;
};

class AFrozenMaster : public testing::Test {
 protected:
  AFrozenMaster() : session_("") {
    EXPECT_TRUE(session_.SubAgent().SetReplyTimeout(kReplyTimeout, 0));
    EXPECT_TRUE(session_.SubAgent().SetPingInterval(std::chrono::seconds(1)));
    AddIntScalar(1, "first", 1);
  }
  ~AFrozenMaster() override { session_.Master().Thaw(); }

  void ConnectAndFreeze() {
    session_.Connect();
    session_.Master().Freeze();
  }

  void ExpectServedAfterThaw(const std::vector<std::string>& oids) {
    const int before = session_.SubAgent().Connections();
    session_.Master().Thaw();
    ASSERT_TRUE(session_.SubAgent().WaitForConnections(before + 1));
    for (const std::string& oid : oids) {
      EXPECT_TRUE(
          WaitFor([&] { return session_.Manager().Get(oid).Succeeded(); },
                  Deadlines::Session()))
          << oid;
    }
  }

  support::Session session_;
};

TEST_F(AFrozenMaster, HoldsUpAllRegistrationsTogetherForOneReply) {
  ConnectAndFreeze();
  const milliseconds taken = TimeOf([] {
    // Keeps a ping from finding out in between.
    const NetSNMPAgentGuard guard;
    for (unsigned long i = 2; i <= 40; ++i) {
      AddIntScalar(i, "scalar" + std::to_string(i), 1);
    }
  });
  EXPECT_LT(taken, kAnything);
  ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  ExpectServedAfterThaw({ScalarOid(1), ScalarOid(2), ScalarOid(40)});
}

TEST_F(AFrozenMaster, IsFoundLostByAPingWithoutHoldingUpAnybody) {
  ConnectAndFreeze();
  LongestWait wait;
  ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  EXPECT_FALSE(session_.SubAgent().Connected());
  EXPECT_LT(wait.End(), kAnything);
  ExpectServedAfterThaw({ScalarOid(1)});
}

TEST_F(AFrozenMaster, HoldsUpNoTrapWhenItReadsNoneOfThem) {
  auto* const first = AddIntScalar(2, "second", 2);
  unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 9};
  auto* const trap = new NetSNMPTrapNode(oid, 8, "trap");
  session_.Connect();
  // Few traps are enough to fill it.
  const int size = 1;
  setsockopt(
      support::AgentXConnection(session_.Master().AgentXPort()).Descriptor(),
      SOL_SOCKET, SO_SNDBUF, &size, sizeof(size));
  session_.Master().Freeze();
  milliseconds longest{0};
  EXPECT_TRUE(WaitFor(
      [&] {
        for (int i = 0; i < 100; ++i) {
          longest =
              std::max(longest, TimeOf([&] { trap->TriggerV2Trap(first); }));
        }
        return !session_.SubAgent().Connected();
      },
      Deadlines::Load()));
  EXPECT_LT(longest, kAnything);
  ExpectServedAfterThaw({ScalarOid(1), ScalarOid(2)});
}

TEST_F(AFrozenMaster, DoesNotKeepTheSubAgentFromStopping) {
  ConnectAndFreeze();
  ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  EXPECT_LT(TimeOf([this] { session_.SubAgent().Stop(); }), kAnything);
}

// Connections that nobody accepts fill the queue of the port.
class AFullQueue {
 public:
  explicit AFullQueue(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    for (int i = 0; i < 32; ++i) {
      connections_.emplace_back(
          socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
      connect(connections_.back().Number(),
              reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    }
  }

 private:
  std::vector<testkit::FileDescriptor> connections_;
};

TEST_F(AFrozenMaster, ThatAcceptsNoConnectionHoldsUpNobodyEither) {
  ConnectAndFreeze();
  {
    const AFullQueue queue(session_.Master().AgentXPort());
    ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
    LongestWait wait;
    // The attempts of these seconds would hold up the lock for minutes.
    std::this_thread::sleep_for(std::chrono::seconds(3));
    EXPECT_LT(wait.End(), kAnything);
  }
  ExpectServedAfterThaw({ScalarOid(1)});
}

TEST_F(AFrozenMaster, FromTheBeginningIsConnectedToWhenItThaws) {
  session_.Master().Freeze();
  ASSERT_TRUE(session_.SubAgent().StartAndInitialize());
  EXPECT_LT(TimeOf([] { NetSNMPAgentGuard(); }), kAnything);
  EXPECT_FALSE(session_.SubAgent().Connected());
  ExpectServedAfterThaw({ScalarOid(1)});
}

class AnImpatientSubAgent : public AFrozenMaster {};

TEST_F(AnImpatientSubAgent, MayStartBeforeItsMasterAgent) {
  session_.Master().Kill();
  ASSERT_TRUE(session_.SubAgent().StartAndInitialize());
  EXPECT_FALSE(session_.SubAgent().Connected());
  session_.Master().Start();
  ASSERT_TRUE(session_.SubAgent().WaitForConnections(1));
  EXPECT_TRUE(
      WaitFor([&] { return session_.Manager().Get(ScalarOid(1)).Succeeded(); },
              Deadlines::Session()));
}

// The agent library makes connections that are not the subagent's.
TEST_F(AnImpatientSubAgent, LeavesTheApplicationsConnectionsAlone) {
  session_.Connect();
  const testkit::LoopbackPort port;
  const std::string address = "tcp:" + port.Address();
  const NetSNMPAgentGuard guard;
  netsnmp_transport* const server =
      netsnmp_tdomain_transport(address.c_str(), 1, nullptr);
  ASSERT_NE(server, nullptr);
  netsnmp_transport* const client =
      netsnmp_tdomain_transport(address.c_str(), 0, nullptr);
  ASSERT_NE(client, nullptr);
  EXPECT_EQ(client->domain_length, server->domain_length);
  EXPECT_EQ(client->f_fmtaddr, server->f_fmtaddr);
  for (netsnmp_transport* transport : {client, server}) {
    transport->f_close(transport);
    netsnmp_transport_free(transport);
  }
}

TEST(AReplyTimeout, IsTakenFromOneMillisecondTo30Minutes) {
  support::TestSubAgent subAgent(1);
  using std::chrono::minutes;
  EXPECT_FALSE(subAgent.SetReplyTimeout(milliseconds(0), 0));
  EXPECT_FALSE(subAgent.SetReplyTimeout(milliseconds(-1), 0));
  EXPECT_FALSE(subAgent.SetReplyTimeout(milliseconds(1), -1));
  EXPECT_FALSE(subAgent.SetReplyTimeout(minutes(30) + milliseconds(1), 0));
  EXPECT_EQ(subAgent.replyTimeout_, milliseconds(0));
  EXPECT_TRUE(subAgent.SetReplyTimeout(milliseconds(1), 0));
  EXPECT_TRUE(subAgent.SetReplyTimeout(minutes(30), 5));
  EXPECT_EQ(subAgent.replyTimeout_, minutes(30));
  EXPECT_EQ(subAgent.replyRetries_, 5);
}

TEST(APingInterval, IsTakenFromOneSecondToADay) {
  support::TestSubAgent subAgent(1);
  using std::chrono::hours;
  using std::chrono::seconds;
  EXPECT_FALSE(subAgent.SetPingInterval(seconds(0)));
  EXPECT_FALSE(subAgent.SetPingInterval(seconds(-1)));
  EXPECT_FALSE(subAgent.SetPingInterval(hours(24) + seconds(1)));
  EXPECT_EQ(subAgent.pingInterval_, seconds(0));
  EXPECT_TRUE(subAgent.SetPingInterval(seconds(1)));
  EXPECT_TRUE(subAgent.SetPingInterval(hours(24)));
  EXPECT_EQ(subAgent.pingInterval_, hours(24));
}

TEST_F(AFrozenMaster, IsWaitedForAsSetBeforeTheStartOnly) {
  session_.Connect();
  EXPECT_FALSE(session_.SubAgent().SetReplyTimeout(milliseconds(1), 0));
  EXPECT_FALSE(session_.SubAgent().SetPingInterval(std::chrono::seconds(5)));
  EXPECT_EQ(session_.SubAgent().replyTimeout_, kReplyTimeout);
}

}  // namespace
