// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Log.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/StandingTime.h"

namespace {

using namespace std::chrono_literals;
using snmpsubagent::LogLevel;
using snmpsubagent::detail::Log;

struct ALog : testing::Test {
  void Write(const std::string& line) { log.Write(LogLevel::Warning, line); }
  std::string Take() { return std::exchange(said, {}); }

  StandingTime time;
  std::string said;
  Log log{"agent",
          [this](LogLevel, const std::string& line) { said += line + "\n"; }};
};

TEST_F(ALog, SaysALineOnceAMinute) {
  Write("full");
  Write("full");
  time.Pass(59s);
  Write("full");
  EXPECT_EQ(Take(), "full\n");
  time.Pass(1s);
  Write("full");
  EXPECT_EQ(Take(), "full (and 2 times since it was said last)\n");
  time.Pass(60s);
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
