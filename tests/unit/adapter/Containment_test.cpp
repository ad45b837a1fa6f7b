// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/Containment.h"

#include <gmock/gmock.h>

#include <boost/thread.hpp>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AContainedCall : public testing::Test {
 protected:
  // Drops what a failed test may have left behind.
  ~AContainedCall() override { Interrupted(); }

  template <typename Body>
  bool Contain(const Body& body) {
    return containment::Contain(
        body, [this](const std::string& text) { log_.push_back(text); });
  }

  // Whether this thread has an interruption to raise again.
  static bool Interrupted() {
    try {
      containment::RaisePendingInterruption();
      return false;
    } catch (const boost::thread_interrupted&) {
      return true;
    }
  }

  std::vector<std::string> log_;
};

TEST_F(AContainedCall, RunsThrough) {
  int calls = 0;
  EXPECT_TRUE(Contain([&] { ++calls; }));
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(log_, IsEmpty());
  EXPECT_FALSE(Interrupted());
}

TEST_F(AContainedCall, LogsWhatItThrows) {
  EXPECT_FALSE(Contain([] { throw std::runtime_error("no fan"); }));
  EXPECT_FALSE(Contain([] { throw 42; }));
  EXPECT_THAT(log_, ElementsAre("Exception in a callback: no fan",
                                "Exception of an unknown type in a callback."));
  EXPECT_FALSE(Interrupted());
}

TEST_F(AContainedCall, KeepsAnInterruptionToBeRaisedOnce) {
  EXPECT_FALSE(Contain([] { throw boost::thread_interrupted(); }));
  EXPECT_THAT(log_, ElementsAre("Interrupted in a callback."));
  EXPECT_TRUE(Interrupted());
  EXPECT_FALSE(Interrupted());
}

TEST_F(AContainedCall, DropsWhatItsLogThrowsButForAnInterruption) {
  const auto body = [] { throw std::runtime_error("no fan"); };
  EXPECT_FALSE(containment::Contain(
      body, [](const std::string&) { throw std::runtime_error("no disk"); }));
  EXPECT_FALSE(Interrupted());
  EXPECT_FALSE(containment::Contain(
      body, [](const std::string&) { throw boost::thread_interrupted(); }));
  EXPECT_TRUE(Interrupted());
}

TEST_F(AContainedCall, InterruptsItsOwnThreadOnly) {
  Contain([] { throw boost::thread_interrupted(); });
  bool other = true;
  std::thread([&] { other = Interrupted(); }).join();
  EXPECT_FALSE(other);
  EXPECT_TRUE(Interrupted());
}

}  // namespace
