// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs whose Apply functions answer when they can.
#include <gtest/gtest.h>

#include <chrono>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;
using snmp::SetError;
using Reply = snmp::Later<SetError>;

class ASlowSet : public testing::Test {
 protected:
  explicit ASlowSet(snmp::AgentOptions options = Device::Options())
      : device(std::move(options)) {
    slow.Apply([this](int before, int after, Reply reply) {
      const std::lock_guard lock(mutex);
      calls += " " + std::to_string(before) + ">" + std::to_string(after);
      replies.push_back(std::move(reply));
    });
    first.Apply([this](int before, int after) {
      const std::lock_guard lock(mutex);
      calls += " first:" + std::to_string(before) + ">" + std::to_string(after);
      return SetError::None;
    });
    device.Connect();
  }

  Reply Take() {
    EXPECT_TRUE(Eventually([&] {
      const std::lock_guard lock(mutex);
      return !replies.empty();
    }));
    const std::lock_guard lock(mutex);
    Reply reply = std::move(replies.front());
    replies.pop_front();
    return reply;
  }
  // What managers read of the three.
  std::string Values() { return device.GetAll({"1.0", "2.0", "3.0"}); }
  std::string TakeCalls() {
    const std::lock_guard lock(mutex);
    return std::exchange(calls, {});
  }

  const Assignments kAll{{"1.0", Int(11)}, {"2.0", Int(12)}, {"3.0", Int(13)}};

  // A SET of all three, tested, whose CommitSet has been sent.
  struct Committing : Phases {
    explicit Committing(ASlowSet& test) : Phases(test.device) {
      Test(test.kAll);
      commit = SendCommit();
    }
    std::uint32_t commit;
  };

  std::mutex mutex;
  std::deque<Reply> replies;
  std::string calls;
  Device device;
  snmp::Module module{device.agent, kBase};
  snmp::Scalar<int> first{module, "1", 1, snmp::ReadWrite()};
  snmp::Scalar<int> slow{module, "2", 2, snmp::ReadWrite()};
  snmp::Scalar<int> last{module, "3", 3, snmp::ReadWrite()};
};

TEST_F(ASlowSet, IsCommittedWhenItIsAnswered) {
  Phases set(device);
  EXPECT_EQ(set.Test(kAll), "noError");
  const auto commit = set.SendCommit();
  const Reply reply = Take();
  EXPECT_EQ(device.Get("3.0"), "INTEGER 3");  // others are served meanwhile
  reply.Answer(SetError::None);
  EXPECT_EQ(device.Receive(commit), "noError");
  set.Cleanup();
  EXPECT_EQ(Values(), "INTEGER 11, INTEGER 12, INTEGER 13");
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12");
}

TEST_F(ASlowSet, IsUndoneWhenItIsRefused) {
  Committing set(*this);
  Take().Answer(SetError::ResourceUnavailable);
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 2");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2, INTEGER 3");
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12 first:11>1");
}

TEST_F(ASlowSet, ThatIsRefusedLeavesItsTransactionIdToAnother) {
  Committing set(*this);
  Take().Answer(SetError::ResourceUnavailable);
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 2");
  EXPECT_EQ(set.Test(kAll), "noError");
}

TEST_F(ASlowSet, IsRefusedWhenNobodyKeepsIt) {
  const Committing set(*this);
  Take();
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 2");
}

TEST_F(ASlowSet, ThatIsRefusedLeavesWhatTheApplicationHasStoredMeanwhile) {
  const Committing set(*this);
  const Reply reply = Take();
  slow.Set(77);
  reply.Answer(SetError::ResourceUnavailable);
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 2");
  EXPECT_EQ(device.GetAll({"1.0", "2.0"}), "INTEGER 1, INTEGER 77");
}

TEST_F(ASlowSet, CountsItsFirstAnswer) {
  const Committing set(*this);
  const Reply reply = Take();
  EXPECT_TRUE(reply.Answer(SetError::None));
  EXPECT_FALSE(reply.Answer(SetError::GenErr));
  EXPECT_EQ(device.Receive(set.commit), "noError");
  EXPECT_EQ(device.Get("2.0"), "INTEGER 12");
}

TEST_F(ASlowSet, IsUndoneSlowly) {
  Committing set(*this);
  Take().Answer(SetError::None);
  EXPECT_EQ(device.Receive(set.commit), "noError");
  const auto undo = set.SendUndo();
  const Reply reply = Take();
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12 12>2");
  reply.Answer(SetError::None);
  EXPECT_EQ(device.Receive(undo), "noError");
  EXPECT_EQ(TakeCalls(), " first:11>1");
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2, INTEGER 3");
}

TEST_F(ASlowSet, FailsToUndoWhenItIsRefused) {
  Committing set(*this);
  Take().Answer(SetError::None);
  device.Receive(set.commit);
  const auto undo = set.SendUndo();
  Take().Answer(SetError::GenErr);
  EXPECT_EQ(device.Receive(undo), "undoFailed");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
}

TEST_F(ASlowSet, IsUndoneBehindTheAnswerWhenTheMasterAgentGivesUp) {
  Committing set(*this);
  const Reply committed = Take();
  const auto undo = set.SendUndo();
  device.Sync();
  committed.Answer(SetError::None);
  const Reply undone = Take();
  undone.Answer(SetError::None);
  EXPECT_EQ(device.Receive(set.commit), "commitFailed");
  EXPECT_EQ(device.Receive(undo), "noError");
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12 12>2 first:11>1");
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2, INTEGER 3");
}

TEST_F(ASlowSet, IsUndoneWhenItIsCleanedUpBeforeItIsCommitted) {
  Committing set(*this);
  const Reply committed = Take();
  device.Master().Send(wire::CleanupSet{}, set.Transaction());
  device.Sync();
  committed.Answer(SetError::GenErr);
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 2");
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12 first:11>1");
}

TEST_F(ASlowSet, KeepsOthersFromItsObjects) {
  Committing set(*this);
  const Reply reply = Take();
  EXPECT_EQ(device.Set({{"2.0", Int(22)}}), "resourceUnavailable 1");
  EXPECT_EQ(device.Set({{"3.0", Int(33)}}), "resourceUnavailable 1");
  reply.Answer(SetError::None);
  device.Receive(set.commit);
  set.Cleanup();
  EXPECT_EQ(device.Set({{"3.0", Int(33)}}), "noError");
}

TEST_F(ASlowSet, AnswersEachRequestOfOnePhase) {
  Phases set(device);
  set.Test({{"1.0", Int(11)}});
  set.Test({{"2.0", Int(12)}});
  const auto one = set.SendCommit();
  const auto two = set.SendCommit();
  Take().Answer(SetError::None);
  EXPECT_EQ(device.Receive(one), "noError");
  EXPECT_EQ(device.Receive(two), "noError");
  const auto undoOne = set.SendUndo();
  const auto undoTwo = set.SendUndo();
  Take().Answer(SetError::None);
  EXPECT_EQ(device.Receive(undoOne), "noError");
  EXPECT_EQ(device.Receive(undoTwo), "noError");
}

TEST_F(ASlowSet, MayBeAnsweredWithinItsFunction) {
  slow.Apply([](int, int after, const Reply& reply) {
    reply.Answer(after == 12 ? SetError::None : SetError::WrongValue);
  });
  EXPECT_EQ(device.Set(kAll), "noError");
  EXPECT_EQ(device.Set({{"1.0", Int(1)}, {"2.0", Int(13)}}), "commitFailed 2");
  EXPECT_EQ(Values(), "INTEGER 11, INTEGER 12, INTEGER 13");
}

TEST_F(ASlowSet, IsUndoneWhenItsFunctionThrows) {
  std::vector<Reply> kept;
  slow.Apply([&](int, int, Reply reply) {
    kept.push_back(std::move(reply));
    throw std::runtime_error("no");
  });
  EXPECT_EQ(device.Set(kAll), "commitFailed 2");
  kept.at(0).Answer(SetError::None);
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2, INTEGER 3");
}

TEST_F(ASlowSet, IsNotAskedForByALaterWhoseFunctionHasThrown) {
  std::vector<Reply> kept;
  last.Apply([&](int, int, Reply reply) {
    kept.push_back(std::move(reply));
    throw std::runtime_error("no");
  });
  Committing set(*this);
  Take().Answer(SetError::None);
  Take().Answer(SetError::None);  // takes it back
  kept.clear();
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 3");
  EXPECT_FALSE(device.HasLogged("the last copy of a Later is gone"));
}

TEST_F(ASlowSet, IsUndoneAroundASetterThatThrows) {
  int stored = 5;
  bool broken = false;
  snmp::Scalar<int> fragile(module, "4",
                            snmp::GetSet([&] { return stored; },
                                         [&](int value) {
                                           if (broken) throw 1;
                                           stored = value;
                                         }),
                            snmp::ReadWrite());
  fragile.Apply([&](int, int, Reply reply) {
    broken = true;
    const std::lock_guard lock(mutex);
    replies.push_back(std::move(reply));
  });
  Phases set(device);
  set.Test({{"1.0", Int(11)}, {"4.0", Int(6)}});
  const auto commit = set.SendCommit();
  Take().Answer(SetError::GenErr);
  EXPECT_EQ(device.Receive(commit), "commitFailed 2");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
  {
    const auto lock = device.agent.Lock();
    broken = false;
    fragile.Apply([](int) {});
  }
  EXPECT_EQ(device.Set({{"4.0", Int(7)}}), "noError");
}

TEST_F(ASlowSet, IsUndoneBehindALostConnection) {
  const Committing set(*this);
  const Reply reply = Take();
  device.Lose();
  device.Accept();
  EXPECT_EQ(device.Set({{"2.0", Int(22)}}), "resourceUnavailable 1");
  reply.Answer(SetError::None);
  Take().Answer(SetError::None);  // takes it back
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12 12>2 first:11>1");
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2, INTEGER 3");
  EXPECT_EQ(device.Set({{"1.0", Int(22)}}), "noError");
}

// A master agent that starts anew counts its transactions from the beginning.
TEST_F(ASlowSet, IsNotTakenForOneOfTheNextSession) {
  Phases set(device, 4711);
  set.Test(kAll);
  set.SendCommit();
  const Reply reply = Take();
  device.Lose();
  snmp::Scalar other(module, "4", 4, snmp::ReadWrite());
  device.Accept();
  Phases same(device, 4711);
  EXPECT_EQ(same.Test({{"4.0", Int(5)}}), "noError");
  EXPECT_EQ(same.Commit(), "noError");
  reply.Answer(SetError::GenErr);
  same.Cleanup();
  EXPECT_EQ(device.GetAll({"1.0", "2.0", "3.0", "4.0"}),
            "INTEGER 1, INTEGER 2, INTEGER 3, INTEGER 5");
}

TEST_F(ASlowSet, IsUndoneAtOnceWhenTheAgentIsStopped) {
  const Committing set(*this);
  const Reply reply = Take();
  device.agent.Stop();
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12 first:11>1");
  EXPECT_EQ(slow.Get(), 2);
  reply.Answer(SetError::None);
  EXPECT_EQ(TakeCalls(), "");
  device.Connect();
  Phases again(device);
  EXPECT_EQ(again.Test(kAll), "noError");
  EXPECT_EQ(again.Undo(), "noError");
}

TEST_F(ASlowSet, IsOverWhenTheAgentIsStoppedBehindALostConnection) {
  const Committing set(*this);
  const Reply reply = Take();
  device.Lose();
  EXPECT_TRUE(Eventually([&] { return !device.agent.Connected(); }));
  device.agent.Stop();
  EXPECT_EQ(TakeCalls(), " first:1>11 2>12 first:11>1");
  reply.Answer(SetError::None);
  EXPECT_EQ(TakeCalls(), "");
}

TEST_F(ASlowSet, FailsWhenItsObjectIsGone) {
  const Committing set(*this);
  const Reply reply = Take();
  { const snmp::Scalar<int> gone(std::move(slow)); }
  reply.Answer(SetError::GenErr);
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 2");
  EXPECT_EQ(Values(), "INTEGER 1, noSuchObject, INTEGER 3");
}

snmp::AgentOptions Hasty() {
  snmp::AgentOptions options = Device::Options();
  options.timeout = 1s;
  return options;
}

class ALateSet : public ASlowSet {
 protected:
  ALateSet() : ASlowSet(Hasty()) {}
};

TEST_F(ALateSet, FailsBeforeTheTimeoutOfTheMasterAgent) {
  const Committing set(*this);
  EXPECT_EQ(device.Receive(set.commit), "commitFailed 2");
  EXPECT_TRUE(device.HasLogged("32473.7.2: a SET was not answered in time"));
  EXPECT_FALSE(Take().Answer(SetError::None));
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2, INTEGER 3");
}

TEST_F(ALateSet, FailsToUndoInTime) {
  Committing set(*this);
  Take().Answer(SetError::None);
  EXPECT_EQ(device.Receive(set.commit), "noError");
  const auto undo = set.SendUndo();
  EXPECT_EQ(device.Receive(undo), "undoFailed");
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2, INTEGER 3");
}

}  // namespace
