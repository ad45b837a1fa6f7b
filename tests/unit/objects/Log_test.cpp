// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Log.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "objects/Clock.h"

namespace {

using namespace std::chrono_literals;
using snmpsubagent::LogLevel;
using snmpsubagent::detail::Log;

// Stands until it is moved.
class Clock final : public snmpsubagent::detail::TestClock {
 public:
  snmpsubagent::detail::Time Now() const noexcept override { return now; }
  void Schedule(int, std::optional<snmpsubagent::detail::Time>) override {}

  snmpsubagent::detail::Time now = snmpsubagent::detail::Time() + 24h;
};

struct ALog : testing::Test {
  ALog() { snmpsubagent::detail::SetTestClock(&clock); }
  ~ALog() override { snmpsubagent::detail::SetTestClock(nullptr); }

  void Write(const std::string& line) { log.Write(LogLevel::Warning, line); }
  std::string Take() { return std::exchange(said, {}); }

  static Clock clock;
  std::string said;
  Log log{"agent",
          [this](LogLevel, const std::string& line) { said += line + "\n"; }};
};
Clock ALog::clock;

TEST_F(ALog, SaysALineOnceAMinute) {
  Write("full");
  Write("full");
  clock.now += 59s;
  Write("full");
  EXPECT_EQ(Take(), "full\n");
  clock.now += 1s;
  Write("full");
  EXPECT_EQ(Take(), "full (and 2 times since it was said last)\n");
  clock.now += 60s;
  Write("full");
  EXPECT_EQ(Take(), "full\n");
}

TEST_F(ALog, SaysOtherLinesMeanwhile) {
  Write("one");
  Write("two");
  Write("one");
  EXPECT_EQ(Take(), "one\ntwo\n");
}

TEST_F(ALog, OfManyLinesSaysEachOne) {
  for (int i = 0; i < 1000; ++i) {
    Write(std::to_string(i));
    EXPECT_EQ(Take(), std::to_string(i) + "\n");
  }
}

TEST_F(ALog, SurvivesAFunctionThatThrows) {
  Log log("agent", [](LogLevel, const std::string&) {
    throw std::runtime_error("no disk");
  });
  EXPECT_NO_THROW(log.Write(LogLevel::Error, "line"));
}

}  // namespace
