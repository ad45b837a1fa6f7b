// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "support/Scalars.h"
#include "support/Session.h"

using support::AddIntScalar;
using support::AddScalar;
using support::ScalarOid;
using support::Session;
using testing::Contains;
using testing::HasSubstr;
using testkit::CommandResult;

namespace {

// What the application's callback saw. A callback is a plain function, so this
// is process-wide.
std::atomic<int> calls{0};
std::atomic<int> valueSeen{0};
std::atomic<std::thread::id> callingThread{};

void RecordCall(NetSNMPDataNode* node) {
  valueSeen = *static_cast<int*>(node->nodeData_->NodeDataValue());
  callingThread = std::this_thread::get_id();
  ++calls;
}

void DeleteTheOther(NetSNMPDataNode*) {
  delete NetSNMPNode::nodeMap_->at("other");
  ++calls;
}

void Throw(NetSNMPDataNode*) { throw std::runtime_error("not today"); }

// The log of the nodes, guarded by NetSNMPAgentGuard.
std::vector<std::string> lines;

void RecordLine(unsigned int, const std::string& text) {
  lines.push_back(text);
}

class ACallback : public testing::Test {
 protected:
  ACallback() {
    NetSNMPNode::NodeMsgLogger_ = RecordLine;
    session_.Connect();
  }

  void Serve(void (*callback)(NetSNMPDataNode*)) {
    AddScalar(1, "called", NetSNMPIntNodeData(&number_, eNodeAccessReadWrite),
              callback);
  }

  CommandResult Set(int number) {
    return session_.Set({ScalarOid(1), "i", std::to_string(number)});
  }

  int number_ = 0;
  Session session_;
};

TEST_F(ACallback, RunsOnceWithTheNewValueForEachWrite) {
  Serve(RecordCall);
  for (int number : {5, 5, 6}) {
    const int before = calls;
    const CommandResult result = Set(number);
    EXPECT_TRUE(result.Succeeded()) << result;
    EXPECT_EQ(calls, before + 1);
    EXPECT_EQ(valueSeen, number);
  }
}

TEST_F(ACallback, RunsOnTheSubAgentThreadWhenAManagerWrites) {
  Serve(RecordCall);
  Set(5);
  EXPECT_EQ(callingThread.load(), session_.SubAgent().SessionThread());
  EXPECT_NE(callingThread.load(), std::this_thread::get_id());
}

TEST_F(ACallback, RunsOnTheApplicationsThreadWhenTheApplicationWrites) {
  Serve(RecordCall);
  NetSNMPDataNode::SetNodeData("called", 9);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(callingThread.load(), std::this_thread::get_id());
}

TEST_F(ACallback, DoesNotRunForAReadOrARefusedWrite) {
  Serve(RecordCall);
  session_.Manager().Get(ScalarOid(1));
  session_.Manager().GetNext(ScalarOid(1));
  session_.Set({ScalarOid(1), "s", "no number"});
  EXPECT_EQ(calls, 0);
}

TEST_F(ACallback, DoesNotRunForCopiedText) {
  std::string text = "initial";
  AddScalar(1, "text", NetSNMPStringNodeData(&text, eNodeAccessReadWrite, true),
            [](NetSNMPDataNode*) { ++calls; });
  EXPECT_TRUE(session_.Set({ScalarOid(1), "s", "changed"}).Succeeded());
  EXPECT_EQ(calls, 0);
}

// The master agent passes no error of the last phase of a SET on to the
// manager, and the value is written by then.
TEST_F(ACallback, ThatThrowsIsLoggedAndHarmsNothing) {
  Serve(Throw);
  Set(5);
  EXPECT_THAT(session_.Manager().Get(ScalarOid(1)).out,
              HasSubstr("INTEGER: 5"));
  const NetSNMPAgentGuard guard;
  EXPECT_THAT(lines, Contains(HasSubstr("not today")));
}

TEST_F(ACallback, MayBuildAndDeleteNodes) {
  Serve(DeleteTheOther);
  AddIntScalar(2, "other", 2);
  EXPECT_TRUE(Set(5).Succeeded());
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(session_.Manager().Get(ScalarOid(2)).out, HasSubstr("No Such"));
}

}  // namespace
