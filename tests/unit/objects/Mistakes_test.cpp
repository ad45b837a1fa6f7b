// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the usual mistakes with the objects show: an exception, or one line in
// the log.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <chrono>
#include <cstdint>
#include <functional>
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
#include "testkit/FileDescriptor.h"
#include "testkit/LoopbackPort.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;
using snmp::SetError;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const std::string kWhole = kBase;

struct Row {
  int number = 0;
  std::string text;
};

// What `work` throws.
std::string Thrown(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::logic_error& error) {
    return error.what();
  }
  return "nothing";
}

// The lines of an agent without a session.
class QuietLog {
 public:
  snmp::AgentOptions Options(const std::string& master) {
    snmp::AgentOptions options = Device::Options();
    options.master = master;
    options.log = [this](snmp::LogLevel, const std::string& line) {
      const std::lock_guard lock(mutex_);
      lines_.push_back(line);
    };
    return options;
  }
  std::vector<std::string> Lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::string> lines_;
};

// A device whose log has only what is wrong.
class AMistake : public testing::Test {
 protected:
  // What is wrong. A machine under load may be slow without a mistake.
  std::vector<std::string> Log() const { return Lines(false); }
  std::vector<std::string> LogOfSlowness() const { return Lines(true); }

  template <typename V, typename A = snmp::ReadOnly>
  std::string BuildingAScalar(const char* oid, V value, const A& access = {}) {
    return Thrown([&] { snmp::Scalar(module, oid, value, access); });
  }

  Device device;
  snmp::Module module{device.agent, kBase};

 private:
  std::vector<std::string> Lines(bool ofSlowness) const {
    std::vector<std::string> lines;
    for (const std::string& line : device.Log()) {
      const bool isOfSlowness =
          line.find("more than a second") != std::string::npos;
      if (line.find("connected to") != 0 && isOfSlowness == ofSlowness) {
        lines.push_back(line);
      }
    }
    return lines;
  }
};

// The agent.

TEST(AnAgentsMistake, IsNoDescription) {
  EXPECT_THAT(Thrown([] { snmp::Agent agent(""); }),
              HasSubstr("an agent needs a description"));
}

TEST(AnAgentsMistake, IsADescriptionOfMoreThan255Octets) {
  EXPECT_THAT(Thrown([] { snmp::Agent agent(std::string(256, 'x')); }),
              HasSubstr("at most 255 octets"));
}

TEST(AnAgentsMistake, IsAMasterAgentThatIsNoAddress) {
  for (const char* master :
       {"", "localhost", "127.0.0.1:705", "tcp:localhost", "tcp:localhost:x",
        "tcp:localhost:0", "tcp:localhost:65536", "tcp:::1:705",
        "unix:", "udp:localhost:705", "/var/agentx/master"}) {
    snmp::AgentOptions options;
    options.master = master;
    EXPECT_THAT(Thrown([&] { snmp::Agent agent("device", options); }),
                AllOf(HasSubstr("'" + options.master + "'"),
                      HasSubstr("tcp:host:port")))
        << master;
  }
}

// It would run over the clock.
constexpr auto kEver = std::chrono::milliseconds::max();

TEST(AnAgentsMistake, IsATimeOutOfRange) {
  const auto with = [](void (*change)(snmp::AgentOptions&)) {
    snmp::AgentOptions options;
    change(options);
    return Thrown([&] { snmp::Agent agent("device", options); });
  };
  EXPECT_THAT(with([](auto& options) { options.timeout = 0s; }),
              HasSubstr("AgentOptions::timeout is 1 to 255"));
  EXPECT_THAT(with([](auto& options) { options.timeout = 256s; }),
              HasSubstr("AgentOptions::timeout is 1 to 255"));
  for (const auto change :
       {+[](snmp::AgentOptions& options) { options.firstRetry = 0ms; },
        +[](snmp::AgentOptions& options) { options.lastRetry = 1ms; },
        +[](snmp::AgentOptions& options) { options.responseTimeout = 0ms; },
        +[](snmp::AgentOptions& options) { options.pingInterval = -1ms; },
        +[](snmp::AgentOptions& options) { options.pingInterval = kEver; },
        +[](snmp::AgentOptions& options) { options.responseTimeout = kEver; },
        +[](snmp::AgentOptions& options) { options.lastRetry = kEver; }}) {
    EXPECT_THAT(with(change), HasSubstr("AgentOptions is out of range"));
  }
}

TEST(AnAgentsMistake, IsToBeRunTwice) {
  Device device;
  device.Connect(0);
  EXPECT_THAT(Thrown([&] { device.agent.Run(); }), HasSubstr("is running"));
  EXPECT_THAT(Thrown([&] { device.agent.Poll(); }), HasSubstr("is running"));
}

// Builds a service as an application does, and ends.
std::vector<std::string> LinesOf(const std::function<void(snmp::Agent&)>& run) {
  QuietLog log;
  {
    const testkit::LoopbackPort port;
    snmp::Agent agent("device", log.Options("tcp:127.0.0.1:" +
                                            std::to_string(port.Number())));
    snmp::Module module(agent, kBase);
    snmp::Scalar scalar(module, "1", 7);
    run(agent);
  }
  return log.Lines();
}

TEST(AnAgentsMistake, IsNeverToRun) {
  EXPECT_THAT(LinesOf([](snmp::Agent&) {}),
              ElementsAre(AllOf(HasSubstr("has never run"),
                                HasSubstr("call Start() or Run()"))));
}

TEST(AnAgentsMistake, IsNeverToBeDispatched) {
  EXPECT_THAT(LinesOf([](snmp::Agent& agent) { agent.Poll(); }),
              ElementsAre(HasSubstr("Dispatch() when Poll() says so")));
  EXPECT_THAT(LinesOf([](snmp::Agent& agent) { agent.Dispatch(); }),
              ElementsAre(HasSubstr("has never run")));
}

TEST(AnAgentsMistake, IsAWrongPort) {
  QuietLog log;
  const testkit::LoopbackPort port;
  const std::string master = "tcp:127.0.0.1:" + std::to_string(port.Number());
  snmp::Agent agent("device", log.Options(master));
  snmp::Module module(agent, kBase);
  agent.Start();
  EXPECT_TRUE(Eventually([&] { return !log.Lines().empty(); }));
  agent.Stop();
  EXPECT_THAT(log.Lines(),
              ElementsAre(AllOf(StartsWith("no connection to " + master),
                                HasSubstr("is snmpd running"))));
}

TEST(AnAgentsMistake, IsAPortOfSomethingElse) {
  QuietLog log;
  wire::Listener listener;
  const std::string master = listener.Address();
  snmp::Agent agent("device", log.Options(master));
  agent.Start();
  const testkit::FileDescriptor other = listener.Accept(60s);
  const std::string banner = "SSH-2.0-Server_1.0 and what follows\r\n";
  ASSERT_EQ(send(other.Number(), banner.data(), banner.size(), 0),
            static_cast<ssize_t>(banner.size()));
  EXPECT_TRUE(Eventually([&] { return !log.Lines().empty(); }));
  agent.Stop();
  EXPECT_THAT(
      log.Lines(),
      ElementsAre(AllOf(StartsWith("no session with " + master),
                        HasSubstr("is that the agentXSocket of snmpd?"))));
}

TEST(AnAgentsMistake, IsAPortWhereNobodyAnswers) {
  QuietLog log;
  wire::Listener listener;
  const std::string master = listener.Address();
  snmp::AgentOptions options = log.Options(master);
  options.responseTimeout = 20ms;
  snmp::Agent agent("device", options);
  agent.Start();
  EXPECT_TRUE(Eventually([&] { return !log.Lines().empty(); }));
  agent.Stop();
  EXPECT_THAT(log.Lines(),
              ElementsAre(AllOf(StartsWith("no session with " + master),
                                HasSubstr("has not answered for"))));
}

TEST(AnAgentsMistake, IsATooEarlyStopThatHarmsNothing) {
  Device device;
  snmp::Module module(device.agent, kBase);
  device.agent.Stop();
  device.Connect();
  EXPECT_TRUE(Eventually([&] { return module.IsRegistered(); }));
}

TEST_F(AMistake, IsALockThatIsHeldForLong) {
  const snmp::Scalar scalar(module, "1", 7);
  device.Connect();
  std::uint32_t get = 0;
  {
    const auto lock = device.agent.Lock();
    get = device.Send(wire::Get{{After("1.0")}});
    const auto end = std::chrono::steady_clock::now() + 1100ms;
    while (std::chrono::steady_clock::now() < end) std::this_thread::yield();
  }
  EXPECT_EQ(device.Receive(get), "INTEGER 7");
  EXPECT_THAT(LogOfSlowness(), Contains(HasSubstr("held the agent's lock")));
}

// Modules.

TEST_F(AMistake, IsASubtreeThatIsNoOid) {
  for (const char* subtree : {"", "x", "1.3.6.1.4.1.32473.", "1..3",
                              "1.3.6.1.4.1.4294967296", "iso.3.6"}) {
    EXPECT_THAT(
        Thrown([&] { snmp::Module other(device.agent, subtree); }),
        testing::AnyOf(HasSubstr("is no OID"), HasSubstr("needs an OID")))
        << subtree;
  }
}

TEST_F(AMistake, IsAPriorityOrTimeoutOfAModuleOutOfRange) {
  snmp::ModuleOptions options;
  options.priority = 0;
  EXPECT_THAT(Thrown([&] { snmp::Module other(device.agent, "1.3", options); }),
              HasSubstr("from 1 to 255"));
  options = {};
  options.timeout = 256s;
  EXPECT_THAT(Thrown([&] { snmp::Module other(device.agent, "1.3", options); }),
              HasSubstr("0 to 255 seconds"));
}

TEST_F(AMistake, IsAModuleThatWasMovedElsewhere) {
  snmp::Module moved = std::move(module);
  EXPECT_THAT(BuildingAScalar("1", 7), HasSubstr("has been moved elsewhere"));
  EXPECT_THAT(Thrown([&] { snmp::Table<int, Row> table(module, "2"); }),
              HasSubstr("has been moved elsewhere"));
  EXPECT_THAT(Thrown([&] { snmp::Notification sent(module, "0.1"); }),
              HasSubstr("has been moved elsewhere"));
  EXPECT_THAT(Thrown([&] { module.AddSubtree("1.3.6.1.4.1.32473.8"); }),
              HasSubstr("has been moved elsewhere"));
}

// The OID of an object.

TEST_F(AMistake, IsAnInstanceInTheOidOfAScalar) {
  EXPECT_THAT(BuildingAScalar("1.0", 7),
              AllOf(StartsWith(kWhole + ".1.0:"), HasSubstr("leave out")));
  EXPECT_THAT(BuildingAScalar("0", 7), HasSubstr("does not end in 0"));
}

TEST_F(AMistake, IsAWholeOidWithoutADot) {
  EXPECT_THAT(BuildingAScalar("1.3.6.1.4.1.32473.7.1", 7),
              HasSubstr("is a whole OID: put a dot in front"));
  EXPECT_THAT(BuildingAScalar("1.3.6.1.2.1.1.1", 7),
              HasSubstr("is a whole OID: put a dot in front"));
  EXPECT_EQ(BuildingAScalar("1.3.6.1", 7), "nothing");
  EXPECT_EQ(BuildingAScalar((".1.3.6.1.4.1.32473.7.1.3.6.1.4.1.2"), 7),
            "nothing");
}

TEST_F(AMistake, IsAnObjectOutsideOfItsModule) {
  EXPECT_THAT(BuildingAScalar(".1.3.6.1.4.1.32473.8.1", 7),
              AllOf(HasSubstr("'.1.3.6.1.4.1.32473.8.1'"),
                    EndsWith("within the module " + kWhole)));
  EXPECT_THAT(BuildingAScalar("", 7), HasSubstr("within the module"));
}

TEST_F(AMistake, IsASecondObjectInOnePlace) {
  const snmp::Scalar first(module, "1.2", 7);
  EXPECT_EQ(BuildingAScalar("1.2", 7),
            kWhole + ".1.2: there is an object at " + kWhole + ".1.2");
  EXPECT_EQ(BuildingAScalar("1", 7),
            kWhole + ".1: there is an object at " + kWhole + ".1.2");
  EXPECT_EQ(BuildingAScalar("1.2.3", 7),
            kWhole + ".1.2.3: there is an object at " + kWhole + ".1.2");
}

TEST_F(AMistake, IsAnOidOfMoreThan128Numbers) {
  std::string oid = "1";
  for (int i = 0; i < 128; ++i) oid += ".1";
  EXPECT_THAT(BuildingAScalar(oid.c_str(), 7), HasSubstr("128"));
}

// Values.

TEST_F(AMistake, IsARangeBeyondTheType) {
  const std::int64_t large = 4294967296;
  EXPECT_EQ(BuildingAScalar("1", 7, snmp::ReadWrite().Range(0, 2147483648)),
            kWhole +
                ".1: the range from 0 to 2147483648 is beyond the type's, "
                "-2147483648 to 2147483647");
  EXPECT_THAT(BuildingAScalar("1", 7U, snmp::ReadWrite().Range(-1, 5)),
              HasSubstr("is beyond the type's, 0 to 4294967295"));
  EXPECT_THAT(BuildingAScalar("1", 7U, snmp::ReadWrite().Range(0, large)),
              HasSubstr("is beyond the type's"));
  EXPECT_EQ(BuildingAScalar("1", 7U, snmp::ReadWrite().Range(0, large - 1)),
            "nothing");
  EXPECT_EQ(BuildingAScalar("1", 7,
                            snmp::ReadWrite().Range(-2147483648LL, 2147483647)),
            "nothing");
}

TEST_F(AMistake, IsARangeBeyondTheVariable) {
  const auto below = [](std::int64_t last) {
    return snmp::ReadWrite().Range(0, last);
  };
  EXPECT_EQ(BuildingAScalar("1", std::int16_t{7}, below(70000)),
            kWhole +
                ".1: the range from 0 to 70000 is beyond the type's, -32768 to "
                "32767");
  EXPECT_EQ(BuildingAScalar("1", std::int16_t{7}, below(32767)), "nothing");
  EXPECT_THAT(BuildingAScalar("1", std::uint8_t{7}, below(256)),
              HasSubstr("beyond the type's, 0 to 255"));
  EXPECT_EQ(BuildingAScalar("1", std::uint8_t{7}, below(255)), "nothing");
  // A TruthValue is 1 or 2.
  EXPECT_EQ(BuildingAScalar("1", true, snmp::ReadWrite().Range(1, 2)),
            "nothing");
}

enum class Mode { Off = 1, On = 2 };

TEST_F(AMistake, IsAnEnumerationThatManagersWriteWithoutItsValues) {
  EXPECT_EQ(
      BuildingAScalar("1", Mode::Off, snmp::ReadWrite()),
      kWhole + ".1: an enumeration that managers write needs its Values()");
  EXPECT_EQ(BuildingAScalar("1", Mode::Off, snmp::ReadOnly()), "nothing");
  EXPECT_EQ(BuildingAScalar("1", Mode::Off,
                            snmp::ReadWrite().Values(Mode::Off, Mode::On)),
            "nothing");
}

TEST_F(AMistake, IsARangeWhoseEndsAreExchanged) {
  EXPECT_THAT(Thrown([] { snmp::ReadWrite().Range(90, 0); }),
              HasSubstr("from 90 to 0: the lowest comes first"));
}

TEST_F(AMistake, IsARangeOfATextOrASizeOfANumber) {
  EXPECT_EQ(BuildingAScalar("1", std::string(), snmp::ReadWrite().Range(0, 64)),
            kWhole + ".1: Range() and Values() are for numbers");
  EXPECT_EQ(BuildingAScalar("1", 7, snmp::ReadWrite().Size(0, 64)),
            kWhole + ".1: Size() and NamedBits() are for octets");
}

TEST_F(AMistake, IsToSetOrReadWhatAFunctionTells) {
  snmp::Scalar told(module, "1", [] { return std::optional<int>(); });
  EXPECT_EQ(Thrown([&] { told.Set(7); }),
            kWhole + ".1: a function tells the value");
  EXPECT_EQ(Thrown([&] { static_cast<void>(told.Get()); }),
            kWhole + ".1: the scalar has no instance now");
}

TEST_F(AMistake, IsAnExceptionOfAFunction) {
  const snmp::Scalar broken(
      module, "1", []() -> int { throw std::runtime_error("no sensor"); });
  snmp::Scalar checked(module, "2", 7, snmp::ReadWrite());
  checked.Check([](int) -> bool { throw std::runtime_error("no rule"); });
  snmp::Scalar applied(module, "3", 7, snmp::ReadWrite());
  applied.Apply([](int) -> bool { throw 7; });
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "genErr 1");
  EXPECT_EQ(device.Set({{"2.0", Int(8)}}), "genErr 1");
  EXPECT_EQ(device.Set({{"3.0", Int(8)}}), "commitFailed 1");
  EXPECT_THAT(
      Log(),
      ElementsAre(AllOf(StartsWith(kWhole + ".1:"), EndsWith("no sensor")),
                  AllOf(StartsWith(kWhole + ".2:"), EndsWith("no rule")),
                  StartsWith(kWhole + ".3:")));
}

TEST_F(AMistake, IsToldOnceThoughManagersAskAgain) {
  const snmp::Scalar broken(
      module, "1", []() -> int { throw std::runtime_error("no sensor"); });
  device.Connect();
  for (int i = 0; i < 5; ++i) EXPECT_EQ(device.Get("1.0"), "genErr 1");
  EXPECT_EQ(Log().size(), 1U);
}

TEST_F(AMistake, IsAFunctionThatBlocks) {
  const snmp::Scalar slow(module, "1", [] {
    std::this_thread::sleep_for(1100ms);
    return 7;
  });
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "INTEGER 7");
  EXPECT_THAT(LogOfSlowness(),
              Contains(AllOf(StartsWith(kWhole + ".1:"),
                             HasSubstr("more than a second"),
                             EndsWith("answer with a Later"))));
}

TEST_F(AMistake, IsAnApplyThatBlocks) {
  snmp::Scalar slow(module, "1", 7, snmp::ReadWrite());
  slow.Apply([](int) { std::this_thread::sleep_for(1100ms); });
  device.Connect();
  EXPECT_EQ(device.Set({{"1.0", Int(8)}}), "noError");
  EXPECT_THAT(LogOfSlowness(),
              Contains(AllOf(StartsWith(kWhole + ".1:"),
                             HasSubstr("more than a second"))));
}

TEST_F(AMistake, IsALaterThatNobodyKeeps) {
  const snmp::Scalar lost(module, "1", [](snmp::Later<int>) {});
  snmp::Scalar written(module, "2", 7, snmp::ReadWrite());
  written.Apply([](int, int, snmp::Later<SetError>) {});
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "genErr 1");
  EXPECT_EQ(device.Set({{"2.0", Int(8)}}), "commitFailed 1");
  EXPECT_THAT(Log(), ElementsAre(AllOf(StartsWith(kWhole + ".1.0:"),
                                       HasSubstr("has not been answered")),
                                 AllOf(StartsWith(kWhole + ".2:"),
                                       HasSubstr("has not been answered"))));
}

TEST_F(AMistake, IsNoLaterThatIsAnsweredOrWhoseFunctionThrows) {
  const snmp::Scalar failed(module, "1",
                            [](const snmp::Later<int>& l) { l.Fail(); });
  const snmp::Scalar absent(module, "2",
                            [](const snmp::Later<int>& l) { l.NoInstance(); });
  const snmp::Scalar throwing(module, "3", [](snmp::Later<int>) {
    throw std::runtime_error("no sensor");
  });
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "genErr 1");
  EXPECT_EQ(device.Get("2.0"), "noSuchInstance");
  EXPECT_EQ(device.Get("3.0"), "genErr 1");
  EXPECT_THAT(Log(), ElementsAre(EndsWith("no sensor")));
}

TEST(AnAgentsMistake, IsALaterThatIsNeverAnswered) {
  snmp::AgentOptions options = Device::Options();
  options.timeout = 1s;
  Device device(options);
  snmp::Module module(device.agent, kBase);
  std::optional<snmp::Later<int>> kept;
  const snmp::Scalar slow(module, "1",
                          [&](snmp::Later<int> later) { kept = later; });
  device.Connect();
  EXPECT_EQ(device.Get("1.0"), "genErr 1");
  EXPECT_TRUE(device.HasLogged(kWhole + ".1.0: a request was not answered"));
}

// Tables.

TEST_F(AMistake, IsATableWithoutColumns) {
  snmp::Table<int, Row> table(module, "1");
  table.Insert(5, {});
  device.Connect();
  EXPECT_EQ(device.Walk("1"), "");
  EXPECT_THAT(Log(),
              ElementsAre(kWhole + ".1: the table has no columns yet; see "
                                   "Column()"));
}

TEST_F(AMistake, IsAColumnThatIsNoneOrThereTwice) {
  snmp::Table<int, Row> table(module, "1");
  table.Column(2, &Row::number).RowStatus(3);
  EXPECT_EQ(Thrown([&] { table.Column(0, &Row::text); }),
            kWhole + ".1: column 0 is none");
  EXPECT_EQ(Thrown([&] { table.Column(2, &Row::text); }),
            kWhole + ".1: column 2 is there twice");
  EXPECT_EQ(Thrown([&] { table.Index(3); }),
            kWhole + ".1: column 3 is there twice");
  EXPECT_EQ(Thrown([&] { table.RowStatus(4); }),
            kWhole + ".1 has a RowStatus already");
}

TEST_F(AMistake, IsARangeOfAColumnBeyondTheType) {
  struct Port {
    int number = 0;
    std::int8_t gain = 0;
  };
  snmp::Table<int, Port> table(module, "1");
  EXPECT_THAT(Thrown([&] {
                table.Column(2, &Port::number,
                             snmp::ReadWrite().Range(0, 1LL << 40));
              }),
              StartsWith(kWhole + ".1.1.2: the range from"));
  EXPECT_EQ(Thrown([&] {
              table.Column(3, &Port::gain, snmp::ReadCreate().Range(-9, 128));
            }),
            kWhole +
                ".1.1.3: the range from -9 to 128 is beyond the type's, -128 "
                "to 127");
}

TEST_F(AMistake, IsAColumnOfAnEnumerationWithoutItsValues) {
  struct Port {
    Mode mode = Mode::Off;
    std::optional<Mode> wanted;
  };
  const std::string lacks =
      ": an enumeration that managers write needs its Values()";
  snmp::Table<int, Port> table(module, "1");
  EXPECT_EQ(Thrown([&] { table.Column(2, &Port::mode, snmp::ReadWrite()); }),
            kWhole + ".1.1.2" + lacks);
  EXPECT_EQ(Thrown([&] { table.Column(3, &Port::wanted, snmp::ReadCreate()); }),
            kWhole + ".1.1.3" + lacks);
  EXPECT_EQ(Thrown([&] {
              table.Column(2, &Port::mode)
                  .Column(3, &Port::wanted,
                          snmp::ReadCreate().Values(Mode::Off, Mode::On));
            }),
            "nothing");
}

TEST_F(AMistake, IsAReadCreateColumnWithoutARowStatus) {
  snmp::Table<int, Row> table(module, "1");
  table.Column(2, &Row::number, snmp::ReadCreate());
  device.Connect();
  EXPECT_EQ(device.Set({{"1.1.2.5", Int(8)}}), "noCreation 1");
  EXPECT_THAT(Log(),
              ElementsAre(kWhole + ".1: managers make no rows, since the table "
                                   "has no RowStatus()"));
}

TEST_F(AMistake, IsToShareTheRowsOfAnotherAgentsTable) {
  snmp::Agent agent("other", Device::Options());
  snmp::Module elsewhere(agent, kBase);
  snmp::Table<int, Row> rows(elsewhere, "5");
  EXPECT_EQ(Thrown([&] { snmp::Table more(module, "6", rows); }),
            kWhole + ".6: the rows are those of another agent");
}

TEST_F(AMistake, IsAKeyThatNoOidCanHave) {
  snmp::Table<int, Row> numbers(module, "1");
  EXPECT_EQ(Thrown([&] { numbers.Insert(-1, {}); }),
            kWhole + ".1: a key that can't be an index");
  snmp::Table<std::string, Row> texts(module, "2");
  EXPECT_EQ(Thrown([&] { texts.Insert(std::string(200, 'x'), {}); }),
            kWhole + ".2: a key that can't be an index");
  EXPECT_EQ(Thrown([&] {
              texts.Replace({{std::string(200, 'x'), {}}});
            }),
            kWhole + ".2: a key that can't be an index");
}

TEST_F(AMistake, IsAKeyAfterAnotherThatIsNotBehindIt) {
  snmp::Table<int, Row> table(module, "1");
  table.Column(2, &Row::number);
  table.Virtual([](const int&) { return std::optional<Row>(Row()); },
                [](const int*) { return std::optional<int>(3); });
  device.Connect();
  EXPECT_EQ(device.GetNext("1.1.2.3"), "genErr 1");
  EXPECT_THAT(Log(), ElementsAre(AllOf(StartsWith(kWhole + ".1:"),
                                       EndsWith("is not behind it"))));
}

// Notifications.

TEST_F(AMistake, IsANotificationWithoutAName) {
  for (const char* none : {"", ".", ".1.3.x"}) {
    EXPECT_NE(Thrown([&] { snmp::Notification sent(module, none); }), "nothing")
        << none;
  }
}

// As linkDown is, which no module has in its subtree.
TEST_F(AMistake, IsNoNotificationElsewhere) {
  device.Connect();
  snmp::Notification(module, ".1.3.6.1.6.3.1.1.5.3").Send();
  device.Sync();
  const auto sent = device.Master().TakeNotifications();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(std::get<wire::Oid>(sent[0].varbinds.at(0).value.content),
            Id(".1.3.6.1.6.3.1.1.5.3"));
}

TEST_F(AMistake, IsACapabilityThatTheMasterAgentRefuses) {
  device.Connect();
  device.agent.AddCapability("1.3.6.1.4.1.32473.9", "thermometers");
  const wire::Pdu asked = device.Master().Next();
  device.Master().Answer(asked, 262);
  device.Sync();
  EXPECT_THAT(Log(), ElementsAre("1.3.6.1.4.1.32473.9: the master agent "
                                 "refuses this capability: "
                                 "unsupportedContext; it is tried again"));
}

TEST_F(AMistake, IsANotificationOfWhatIsNotThere) {
  const snmp::Scalar absent(module, "1", [] { return std::optional<int>(); });
  snmp::Table<int, Row> table(module, "2");
  table.Column(2, &Row::number);
  snmp::Notification sent(module, "0.1");
  sent.Send({absent, table.Cell(5, 2), table.Cell(5, 9)});
  EXPECT_THAT(
      Log(),
      ElementsAre(StartsWith(kWhole + ".1.0: left out of a notification"),
                  StartsWith(kWhole + ".2.1.2.5: left out of a notification"),
                  StartsWith(kWhole + ".2.1.9.5: left out of a notification")));
}

// Lives.

TEST_F(AMistake, IsNoneWhereObjectsAreDestroyedInAnyOrder) {
  auto agent = std::make_unique<snmp::Agent>("device");
  auto own = std::make_unique<snmp::Module>(*agent, kBase);
  snmp::Scalar scalar(*own, "1", 7);
  snmp::Table<int, Row> table(*own, "2");
  snmp::Notification sent(*own, "0.1");
  own.reset();
  agent.reset();
  scalar.Set(8);
  EXPECT_EQ(scalar.Get(), 8);
  EXPECT_TRUE(table.Insert(5, {}));
  sent.Send({scalar});
}

}  // namespace
