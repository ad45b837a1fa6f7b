// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <memory>
#include <string>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPIntNodeData.h"
#include "support/AgentXConnection.h"
#include "support/Scalars.h"
#include "support/Session.h"

using support::AddIntScalar;
using support::AddScalar;
using support::AgentXConnection;
using support::ScalarOid;
using support::Session;
using testing::HasSubstr;
using testkit::Command;

namespace {

// The session of the test that runs, for a callback.
Session* current = nullptr;

// Ends the master agent below a loop that must not read meanwhile, until the
// next write to it can only fail.
void BreakConnection(Session& session) {
  const AgentXConnection connection(session.Master().AgentXPort());
  session.Master().Kill();
  ASSERT_TRUE(connection.WaitUntilBroken());
}

// Writing to a master agent that is gone ends a process which does nothing
// about SIGPIPE, as this one.
class WritingToAMasterThatIsGone : public testing::Test {
 protected:
  WritingToAMasterThatIsGone() {
    signal(SIGPIPE, SIG_DFL);
    current = &session_;
    session_.Connect();
  }

  void ExpectRecovery() {
    session_.Master().Start();
    EXPECT_TRUE(session_.Receiver().WaitForStates({1, 0, 1}));
    AddIntScalar(9, "afterwards", 9);
    EXPECT_THAT(session_.Manager().Get(ScalarOid(9)).out,
                HasSubstr("INTEGER: 9"));
  }

  Session session_;
};

TEST_F(WritingToAMasterThatIsGone, DoesNotKillAThreadThatBuildsANode) {
  {
    const NetSNMPAgentGuard guard;
    BreakConnection(session_);
    AddIntScalar(1, "built", 1);
  }
  ExpectRecovery();
}

TEST_F(WritingToAMasterThatIsGone, DoesNotKillAThreadThatDeletesANode) {
  AddIntScalar(1, "deleted", 1);
  {
    const NetSNMPAgentGuard guard;
    BreakConnection(session_);
    NetSNMPNode::DeleteNodes();
  }
  ExpectRecovery();
}

TEST_F(WritingToAMasterThatIsGone, DoesNotKillTheSubAgentThread) {
  int number = 0;
  AddScalar(1, "breaking", NetSNMPIntNodeData(&number, eNodeAccessReadWrite),
            [](NetSNMPDataNode*) {
              BreakConnection(*current);
              AddIntScalar(2, "built", 2);
            });
  const std::unique_ptr<Command> set =
      session_.Manager().StartSet({ScalarOid(1), "i", "5"});
  ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
  ExpectRecovery();
}

TEST_F(WritingToAMasterThatIsGone, DoesNotKillTheThreadThatEndsTheProgram) {
  AddIntScalar(1, "left", 1);
  session_.SubAgent().Stop();
  BreakConnection(session_);
  NetSNMPNode::DeleteNodes();
}

TEST_F(WritingToAMasterThatIsGone, LeavesTheApplicationsOwnSigpipePending) {
  sigset_t sigpipe;
  sigemptyset(&sigpipe);
  sigaddset(&sigpipe, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &sigpipe, nullptr);
  pthread_kill(pthread_self(), SIGPIPE);
  {
    const NetSNMPAgentGuard guard;
    BreakConnection(session_);
    AddIntScalar(1, "built", 1);
  }
  const timespec noWait = {0, 0};
  EXPECT_EQ(sigtimedwait(&sigpipe, nullptr, &noWait), SIGPIPE);
  EXPECT_EQ(sigtimedwait(&sigpipe, nullptr, &noWait), -1);
}

}  // namespace
