// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/ExceptionBarrier.h"

#include <gmock/gmock.h>

#include <boost/thread.hpp>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ACallBehindTheBarrier : public testing::Test {
 protected:
  // Drops what a failed test may have left behind.
  ~ACallBehindTheBarrier() override { Interrupted(); }

  template <typename Body>
  bool RunGuarded(const Body& body) {
    return exception_barrier::Run(
        body, [this](const std::string& text) { log_.push_back(text); });
  }

  // Whether this thread has an interruption to raise again.
  static bool Interrupted() {
    try {
      exception_barrier::RaisePendingInterruption();
      return false;
    } catch (const boost::thread_interrupted&) {
      return true;
    }
  }

  std::vector<std::string> log_;
};

TEST_F(ACallBehindTheBarrier, RunsThrough) {
  int calls = 0;
  EXPECT_TRUE(RunGuarded([&] { ++calls; }));
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(log_, IsEmpty());
  EXPECT_FALSE(Interrupted());
}

TEST_F(ACallBehindTheBarrier, LogsWhatItThrows) {
  EXPECT_FALSE(RunGuarded([] { throw std::runtime_error("no fan"); }));
  EXPECT_FALSE(RunGuarded([] { throw 42; }));
  EXPECT_THAT(log_, ElementsAre("Exception in a callback: no fan",
                                "Exception of an unknown type in a callback."));
  EXPECT_FALSE(Interrupted());
}

TEST_F(ACallBehindTheBarrier, KeepsAnInterruptionToBeRaisedOnce) {
  EXPECT_FALSE(RunGuarded([] { throw boost::thread_interrupted(); }));
  EXPECT_THAT(log_, ElementsAre("Interrupted in a callback."));
  EXPECT_TRUE(Interrupted());
  EXPECT_FALSE(Interrupted());
}

TEST_F(ACallBehindTheBarrier, DropsWhatItsLogThrowsButForAnInterruption) {
  const auto body = [] { throw std::runtime_error("no fan"); };
  EXPECT_FALSE(exception_barrier::Run(
      body, [](const std::string&) { throw std::runtime_error("no disk"); }));
  EXPECT_FALSE(Interrupted());
  EXPECT_FALSE(exception_barrier::Run(
      body, [](const std::string&) { throw boost::thread_interrupted(); }));
  EXPECT_TRUE(Interrupted());
}

TEST_F(ACallBehindTheBarrier, InterruptsItsOwnThreadOnly) {
  RunGuarded([] { throw boost::thread_interrupted(); });
  bool other = true;
  std::thread([&] { other = Interrupted(); }).join();
  EXPECT_FALSE(other);
  EXPECT_TRUE(Interrupted());
}

}  // namespace
