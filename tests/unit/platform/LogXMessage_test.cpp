// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "LogXMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "LogSink.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Pair;

namespace {
const char kLine[] = "[0-9]+-[0-9][0-9]-[0-9][0-9] [0-9:]+\\.[0-9][0-9][0-9] ";

std::vector<std::pair<unsigned int, std::string>> collected;

void Collect(unsigned int level, const std::string& text) {
  collected.emplace_back(level, text);
}

std::atomic<int> linesSeen{0};

void CountLine(unsigned int, const std::string&) { ++linesSeen; }

// What `log` writes to stderr.
template <typename Log>
std::string StderrOf(Log log) {
  testing::internal::CaptureStderr();
  log();
  return testing::internal::GetCapturedStderr();
}

// Runs `work` on four threads at once.
template <typename Work>
void OnFourThreads(Work work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
}
}  // namespace

TEST(ALogLine, GoesToStderrWithTimeAndLevel) {
  EXPECT_THAT(StderrOf([] { LogXMessage(3, "fan 2 stopped"); }),
              MatchesRegex(std::string(kLine) + "\\[3\\] fan 2 stopped\n"));
}

TEST(ALogLine, KeepsPercentSignsAndTheHighestLevel) {
  EXPECT_THAT(
      StderrOf([] { LogXMessage(4294967295u, "100 %s %n"); }),
      MatchesRegex(std::string(kLine) + "\\[4294967295\\] 100 %s %n\n"));
}

TEST(ALogLine, IsWrittenWholeHoweverLong) {
  const std::string text(100000, 'x');
  EXPECT_THAT(StderrOf([&] { LogXMessage(1, text); }), HasSubstr(text + "\n"));
}

TEST(ALogLine, DoesNotMixWithThoseOfOtherThreads) {
  const std::string lines = StderrOf([] {
    OnFourThreads([] {
      for (int i = 0; i < 500; ++i) LogXMessage(3, "one line");
    });
  });

  std::istringstream stream(lines);
  std::string line;
  int count = 0;
  for (; std::getline(stream, line); ++count) {
    ASSERT_THAT(line, MatchesRegex(std::string(kLine) + "\\[3\\] one line"));
  }
  EXPECT_EQ(2000, count);
}

TEST(ALogSink, GetsEachLineInsteadOfStderr) {
  SetLogSink(Collect);

  EXPECT_THAT(StderrOf([] {
                LogXMessage(3, "first");
                LogXMessage(0, "");
              }),
              IsEmpty());
  EXPECT_THAT(collected, ElementsAre(Pair(3, "first"), Pair(0, "")));
}

TEST(ALogSink, IsLeftForStderrWhenNullIsSet) {
  SetLogSink(Collect);
  SetLogSink(nullptr);

  EXPECT_THAT(StderrOf([] { LogXMessage(3, "back again"); }),
              HasSubstr("[3] back again\n"));
  EXPECT_THAT(collected, IsEmpty());
}

TEST(ALogSink, MayBeSetWhileOtherThreadsLog) {
  SetLogSink(CountLine);

  OnFourThreads([] {
    for (int i = 0; i < 500; ++i) {
      LogXMessage(3, "counted");
      SetLogSink(CountLine);
    }
  });

  EXPECT_EQ(2000, linesSeen);
}
