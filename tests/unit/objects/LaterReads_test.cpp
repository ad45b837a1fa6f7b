// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Values that the application answers when it can.
#include <gtest/gtest.h>

#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "Device.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;

struct Nothing {};  // a row

// What functions of a Later have been asked for and not answered yet.
class Pending {
 public:
  auto Function() {
    return [this](snmp::Later<int> reply) {
      const std::lock_guard lock(mutex_);
      replies_.push_back(std::move(reply));
    };
  }

  // Of a column.
  auto CellFunction() {
    return [this](int, const Nothing&, snmp::Later<int> reply) {
      const std::lock_guard lock(mutex_);
      replies_.push_back(std::move(reply));
    };
  }

  // The next one, once it is there.
  snmp::Later<int> Take() {
    EXPECT_TRUE(Eventually([&] { return Count() > 0; }));
    const std::lock_guard lock(mutex_);
    snmp::Later<int> reply = std::move(replies_.front());
    replies_.pop_front();
    return reply;
  }

  std::size_t Count() const {
    const std::lock_guard lock(mutex_);
    return replies_.size();
  }

 private:
  mutable std::mutex mutex_;
  std::deque<snmp::Later<int>> replies_;
};

class ALaterValue : public testing::Test {
 protected:
  explicit ALaterValue(snmp::AgentOptions options = Device::Options())
      : device(std::move(options)) {
    device.Connect();
  }

  wire::Get GetOf(const std::vector<std::string>& oids) {
    wire::Get get;
    for (const auto& oid : oids) get.ranges.push_back({Id(oid), false, {}});
    return get;
  }

  Pending pending;  // outlives what is served
  Device device;
  snmp::Module module{device.agent, kBase};
  snmp::Scalar<int> before{module, "1", 1};
  snmp::Scalar<int> slow{module, "2", pending.Function()};
  snmp::Scalar<int> behind{module, "3", 3};
};

TEST_F(ALaterValue, ComesWhenItIsAnswered) {
  const auto get = device.Send(GetOf({"1.0", "2.0", "3.0"}));
  const auto reply = pending.Take();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");  // others are served meanwhile
  reply.Answer(22);
  EXPECT_EQ(device.Receive(get), "INTEGER 1, INTEGER 22, INTEGER 3");
}

TEST_F(ALaterValue, MayHaveNoInstance) {
  const auto get = device.Send(GetOf({"2.0", "1.0"}));
  pending.Take().NoInstance();
  EXPECT_EQ(device.Receive(get), "noSuchInstance, INTEGER 1");
}

TEST_F(ALaterValue, MayFail) {
  const auto get = device.Send(GetOf({"1.0", "2.0"}));
  pending.Take().Fail();
  EXPECT_EQ(device.Receive(get), "genErr 2");
}

TEST_F(ALaterValue, FailsWhenNobodyKeepsIt) {
  const auto get = device.Send(GetOf({"2.0"}));
  {
    const auto reply = pending.Take();
    const auto copy = reply;  // NOLINT: a copy keeps it too
  }
  EXPECT_EQ(device.Receive(get), "genErr 1");
}

TEST_F(ALaterValue, CountsItsFirstAnswer) {
  const auto get = device.Send(GetOf({"2.0"}));
  const auto reply = pending.Take();
  reply.Answer(1);
  reply.Answer(2);
  reply.Fail();
  EXPECT_EQ(device.Receive(get), "INTEGER 1");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
}

TEST_F(ALaterValue, MayBeAnsweredWithinItsFunction) {
  const snmp::Scalar prompt(module, "4",
                            [](snmp::Later<int> reply) { reply.Answer(4); });
  const snmp::Scalar none(module, "5",
                          [](snmp::Later<int> reply) { reply.NoInstance(); });
  const snmp::Scalar fails(module, "6",
                           [](snmp::Later<int> reply) { reply.Fail(); });
  const snmp::Scalar forgets(module, "7", [](snmp::Later<int>) {});
  const snmp::Scalar last(module, "8", 8);
  EXPECT_EQ(device.GetAll({"4.0", "5.0", "4.0"}),
            "INTEGER 4, noSuchInstance, INTEGER 4");
  EXPECT_EQ(device.GetNext("3.0"), "4.0 INTEGER 4");
  EXPECT_EQ(device.GetAll({"4.0", "6.0"}), "genErr 2");
  EXPECT_EQ(device.Get("7.0"), "genErr 1");
  EXPECT_EQ(device.GetNext("4.0"), "genErr 1");  // 5 is absent, 6 fails
  EXPECT_EQ(device.GetNext("7.0"), "8.0 INTEGER 8");
}

void AnswerSeven(snmp::Later<int> reply) { reply.Answer(7); }

TEST_F(ALaterValue, IsAskedOfFunctionsOfEveryForm) {
  int asked = 0;
  const snmp::Scalar a(module, "4",
                       [](const snmp::Later<int>& reply) { reply.Answer(4); });
  const snmp::Scalar b(
      module, "5", [](snmp::Later<int> reply) noexcept { reply.Answer(5); });
  const snmp::Scalar c(module, "6", [asked](snmp::Later<int> reply) mutable {
    reply.Answer(++asked);
  });
  const snmp::Scalar d(module, "7", AnswerSeven);
  const snmp::Scalar<int> e(module, "8", [](auto reply) { reply.Answer(8); });
  EXPECT_EQ(device.GetAll({"4.0", "5.0", "6.0", "6.0", "7.0", "8.0"}),
            "INTEGER 4, INTEGER 5, INTEGER 1, INTEGER 2, INTEGER 7, INTEGER 8");
}

TEST_F(ALaterValue, MayComeTwiceInARequest) {
  const auto get = device.Send(GetOf({"2.0", "1.0", "2.0", "2.0", "3.0"}));
  pending.Take().Answer(10);
  pending.Take().Answer(11);
  pending.Take().Answer(12);
  EXPECT_EQ(device.Receive(get),
            "INTEGER 10, INTEGER 1, INTEGER 11, INTEGER 12, INTEGER 3");
}

TEST_F(ALaterValue, IsFoundByAGetNext) {
  const auto next = device.Send(wire::GetNext{{After("1.0"), After("2.0")}});
  pending.Take().Answer(5);
  EXPECT_EQ(device.Receive(next), "INTEGER 5, INTEGER 3");
}

TEST_F(ALaterValue, IsPassedOverByAGetNextWithoutInstance) {
  const auto next = device.Send(wire::GetNext{{After("1.0"), After("0")}});
  pending.Take().NoInstance();
  EXPECT_EQ(device.Receive(next), "INTEGER 3, INTEGER 1");
  const auto bounded = device.Send(wire::GetNext{{After("1.0", "3")}});
  pending.Take().NoInstance();
  EXPECT_EQ(device.Receive(bounded), "endOfMibView");
}

TEST_F(ALaterValue, IsRepeatedByAGetBulk) {
  snmp::Scalar second(module, "4", pending.Function());
  const auto bulk = device.Send(
      wire::GetBulk{1, 3, {After("1.0"), After("0"), After("3.0")}});
  pending.Take().Answer(20);    // the one that is not repeated
  pending.Take().Answer(40);    // 4.0 of the first round
  pending.Take().NoInstance();  // 2.0 of the second, so 3.0 is found
  pending.Take().Answer(41);    // 4.0 of the third
  const wire::Pdu response = device.Master().Receive();
  EXPECT_EQ(response.header.packetId, bulk);
  EXPECT_EQ(Text(std::get<wire::Response>(response.body), true),
            "2.0 INTEGER 20, 1.0 INTEGER 1, 4.0 INTEGER 40, 3.0 INTEGER 3, "
            "4.0 endOfMibView, 4.0 INTEGER 41, 4.0 endOfMibView");
}

TEST_F(ALaterValue, MayBeAnsweredByAnotherRequest) {
  snmp::Scalar answers(module, "4", [this] {
    pending.Take().Answer(7);
    return 4;
  });
  const auto first = device.Send(GetOf({"2.0", "1.0"}));
  const auto second = device.Send(GetOf({"4.0"}));
  EXPECT_EQ(device.Receive(first), "INTEGER 7, INTEGER 1");
  EXPECT_EQ(device.Receive(second), "INTEGER 4");
}

TEST_F(ALaterValue, IsAnsweredOutOfOrder) {
  const auto first = device.Send(GetOf({"2.0"}));
  const auto second = device.Send(GetOf({"2.0"}));
  const auto one = pending.Take();
  const auto two = pending.Take();
  two.Answer(2);
  EXPECT_EQ(device.Receive(second), "INTEGER 2");
  one.Answer(1);
  EXPECT_EQ(device.Receive(first), "INTEGER 1");
}

TEST_F(ALaterValue, IsAskedForOnceThoughTheRequestComesAgain) {
  const wire::Pdu get{
      {1, wire::kNetworkByteOrder, 1, 77, 78}, {}, GetOf({"2.0"})};
  device.Master().SendBytes(wire::Encode(get));
  device.Master().SendBytes(wire::Encode(get));
  const auto reply = pending.Take();
  device.Sync();
  EXPECT_EQ(pending.Count(), 0U);
  reply.Answer(1);
  EXPECT_EQ(device.Receive(78), "INTEGER 1");
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");  // and no second response
}

TEST_F(ALaterValue, IsIgnoredAfterItsFunctionHasThrown) {
  std::vector<snmp::Later<int>> kept;
  snmp::Scalar throws(module, "4", [&](snmp::Later<int> reply) {
    kept.push_back(std::move(reply));
    throw std::runtime_error("no");
  });
  EXPECT_EQ(device.GetAll({"1.0", "4.0"}), "genErr 2");
  // Answered while the next request, which may take the same memory, waits.
  const auto get = device.Send(GetOf({"1.0", "2.0", "3.0"}));
  const auto reply = pending.Take();
  kept.at(0).Answer(99);
  reply.Answer(2);
  EXPECT_EQ(device.Receive(get), "INTEGER 1, INTEGER 2, INTEGER 3");
  kept.at(0).Answer(99);
  EXPECT_EQ(device.GetAll({"1.0", "3.0"}), "INTEGER 1, INTEGER 3");
}

TEST_F(ALaterValue, IsIgnoredWhenTheSessionIsGone) {
  device.Send(GetOf({"2.0"}));
  const auto old = pending.Take();
  device.Lose();
  device.Accept();
  old.Answer(1);
  const auto get = device.Send(GetOf({"2.0"}));
  old.Answer(2);
  pending.Take().Answer(3);
  EXPECT_EQ(device.Receive(get), "INTEGER 3");
}

TEST_F(ALaterValue, IsIgnoredWhenTheAgentWasStopped) {
  device.Send(GetOf({"2.0"}));
  const auto old = pending.Take();
  device.agent.Stop();
  old.Answer(1);
  device.Connect();
  old.Answer(1);
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
}

TEST_F(ALaterValue, EndsTheRequestWhenTheAgentIsStoppedWithin) {
  snmp::Scalar stops(module, "4", [&](snmp::Later<int> reply) {
    device.agent.Stop();
    reply.Answer(4);
  });
  device.Send(GetOf({"4.0", "1.0"}));
  EXPECT_TRUE(Eventually([&] { return !device.agent.Connected(); }));
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 1");
}

TEST_F(ALaterValue, OutlivesItsScalar) {
  const auto get = device.Send(GetOf({"2.0", "2.0", "3.0"}));
  const auto reply = pending.Take();
  { const snmp::Scalar<int> gone(std::move(slow)); }
  reply.Answer(5);
  EXPECT_EQ(device.Receive(get), "INTEGER 5, noSuchObject, INTEGER 3");
}

TEST_F(ALaterValue, CannotBeReadAtOnce) {
  EXPECT_THROW((void)slow.Get(), std::logic_error);
  EXPECT_THROW(slow.Set(1), std::logic_error);
}

TEST(ALaterAnswer, OutlivesTheAgent) {
  Pending pending;
  auto device = std::make_unique<Device>();
  auto module = std::make_unique<snmp::Module>(device->agent, kBase);
  snmp::Scalar<int> slow(*module, "2", pending.Function());
  device->Connect();
  device->Send(wire::Get{{{Id("2.0"), false, {}}}});
  const auto reply = pending.Take();
  module.reset();
  device.reset();
  reply.Answer(1);
}

snmp::AgentOptions Hasty() {
  snmp::AgentOptions options = Device::Options();
  options.timeout = 1s;
  return options;
}

class ALateAnswer : public ALaterValue {
 protected:
  ALateAnswer() : ALaterValue(Hasty()) {}
};

TEST(ARequest, IsAnsweredOnceThoughTheLogOfAnotherAnswersIt) {
  const wire::Listener listener;
  std::optional<snmp::Later<int>> first;
  std::optional<snmp::Later<int>> second;
  snmp::AgentOptions options = Hasty();
  options.master = listener.Address();
  options.log = [&](snmp::LogLevel, const std::string& line) {
    if (line.find(": a request was not answered") != std::string::npos) {
      second->Answer(7);
    }
  };
  snmp::Agent agent("device", options);
  snmp::Module module(agent, kBase);
  const snmp::Scalar<int> one(
      module, "1", [&](const snmp::Later<int>& reply) { first = reply; });
  const snmp::Scalar<int> two(
      module, "2", [&](const snmp::Later<int>& reply) { second = reply; });
  agent.Start();
  wire::MasterSession master(listener.Accept(10s), 10s);
  master.Grant(master.Next());
  master.Grant(master.Next());
  {
    const auto lock = agent.Lock();  // both are overdue at once
    master.Send(wire::Get{{{Id("1.0"), false, {}}}});
    master.Send(wire::Get{{{Id("2.0"), false, {}}}});
  }
  const auto next = [&] {
    return Text(std::get<wire::Response>(master.Next().body), false);
  };
  EXPECT_EQ(next(), "INTEGER 7");
  EXPECT_EQ(next(), "genErr 1");
  master.Send(wire::Get{{{Id("3.0"), false, {}}}});
  EXPECT_EQ(next(), "noSuchObject");
}

TEST_F(ALateAnswer, IsGenErrBeforeTheTimeoutOfTheMasterAgent) {
  const auto start = std::chrono::steady_clock::now();
  const auto get = device.Send(GetOf({"1.0", "2.0"}));
  EXPECT_EQ(device.Receive(get), "genErr 2");
  EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms);
  EXPECT_TRUE(device.HasLogged(
      "1.3.6.1.4.1.32473.7.2.0: a request was not answered in time"));
  pending.Take().Answer(1);
  EXPECT_EQ(device.GetAll({"1.0", "3.0"}), "INTEGER 1, INTEGER 3");
}

TEST_F(ALateAnswer, KeepsTheTimeOfTheWholeRequest) {
  const auto start = std::chrono::steady_clock::now();
  const auto get = device.Send(GetOf({"2.0", "2.0"}));
  const auto first = pending.Take();
  std::thread slowly([&] {
    std::this_thread::sleep_until(start + 250ms);
    first.Answer(1);
  });
  EXPECT_EQ(device.Receive(get), "genErr 2");
  slowly.join();
}

TEST(ALateAnswerOfAModule, KeepsTheTimeoutOfItsRegistration) {
  Pending pending;
  Device device;  // which may take a minute
  snmp::ModuleOptions options;
  options.timeout = 1s;
  snmp::Module module(device.agent, kBase, options);
  snmp::Scalar<int> slow(module, "2", pending.Function());
  device.Connect();
  const auto get = device.Send(wire::Get{{{Id("2.0"), false, {}}}});
  EXPECT_EQ(device.Receive(get), "genErr 1");
  EXPECT_EQ(pending.Count(), 1U);
}

TEST(APatientModule, MayTakeLongerThanItsAgent) {
  Pending pending;
  Device device(Hasty());
  snmp::ModuleOptions options;
  options.timeout = 60s;
  snmp::Module patient(device.agent, kBase, options);
  snmp::Module hasty(device.agent, "1.3.6.1.4.1.32473.8");
  snmp::Scalar<int> slow(patient, "2", pending.Function());
  snmp::Scalar<int> other(hasty, "2", pending.Function());
  device.Connect(2);
  const auto get = device.Send(wire::Get{{{Id("2.0"), false, {}}}});
  const auto reply = pending.Take();
  const auto late =
      device.Send(wire::Get{{{Id(".1.3.6.1.4.1.32473.8.2.0"), false, {}}}});
  EXPECT_EQ(device.Receive(late), "genErr 1");
  reply.Answer(2);
  EXPECT_EQ(device.Receive(get), "INTEGER 2");
}

// Rows 1 to 3, with a cell each that is answered later and one behind it.
struct ALaterCell : ALaterValue {
  ALaterCell() {
    table.Column(1, pending.CellFunction())
        .Column(2, [](int key, const Nothing&) { return 10 * key; });
    for (int key = 1; key <= 3; ++key) table.Insert(key, {});
  }
  snmp::Table<int, Nothing> table{module, "5"};
};

TEST_F(ALaterCell, ComesWhenItIsAnswered) {
  const auto get = device.Send(GetOf({"5.1.1.2", "5.1.2.2", "5.1.1.9"}));
  const auto reply = pending.Take();
  EXPECT_EQ(device.Get("5.1.2.3"), "INTEGER 30");  // others meanwhile
  reply.Answer(22);
  EXPECT_EQ(device.Receive(get), "INTEGER 22, INTEGER 20, noSuchInstance");
}

void AnswerSevenFor(int, const Nothing&, snmp::Later<int> reply) noexcept {
  reply.Answer(7);
}

TEST_F(ALaterCell, IsAskedOfFunctionsThatThrowNothing) {
  table
      .Column(3, [](int, const Nothing&,
                    snmp::Later<int> reply) noexcept { reply.Answer(5); })
      .Column(4,
              [asked = 0](int, const Nothing&,
                          snmp::Later<int> reply) mutable noexcept {
                reply.Answer(++asked);
              })
      .Column(5, AnswerSevenFor);
  EXPECT_EQ(device.GetAll({"5.1.3.1", "5.1.4.1", "5.1.5.1"}),
            "INTEGER 5, INTEGER 1, INTEGER 7");
}

TEST_F(ALaterCell, IsPassedOverIfItIsNotThere) {
  const auto next = device.Send(wire::GetNext{{After("5")}});
  pending.Take().NoInstance();
  pending.Take().Answer(5);
  EXPECT_EQ(device.Receive(next), "INTEGER 5");
  const auto last = device.Send(wire::GetNext{{After("5.1.1.2")}});
  pending.Take().NoInstance();
  EXPECT_EQ(device.Receive(last), "INTEGER 10");
}

TEST_F(ALaterCell, IsOneOfManyInABulk) {
  const auto bulk = device.Send(wire::GetBulk{0, 4, {After("5")}});
  for (int value = 1; value <= 3; ++value) pending.Take().Answer(value);
  EXPECT_EQ(device.Receive(bulk),
            "INTEGER 1, INTEGER 2, INTEGER 3, INTEGER 10");
}

TEST_F(ALaterCell, FailsTheRequestIfItFails) {
  const auto get = device.Send(GetOf({"5.1.2.1", "5.1.1.1"}));
  pending.Take().Fail();
  EXPECT_EQ(device.Receive(get), "genErr 2");
}

TEST_F(ALaterCell, IsAnsweredThoughItsRowHasGone) {
  const auto get = device.Send(GetOf({"5.1.1.1", "5.1.2.1"}));
  const auto reply = pending.Take();
  table.Erase(1);
  reply.Answer(5);
  EXPECT_EQ(device.Receive(get), "INTEGER 5, noSuchInstance");
}

TEST_F(ALaterCell, IsLeftOutOfANotification) {
  snmp::Notification notification(module, "0.1");
  notification.Send({table.Cell(1, 1)});
  EXPECT_TRUE(device.HasLogged("a cell that is answered later is not here"));
}

}  // namespace
