// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/MasterExchange.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

// A pipe that nobody reads, under the default action of SIGPIPE: writing to it
// ends the process of whoever is not spared the signal.
class ASigpipeBlock : public testing::Test {
 protected:
  ASigpipeBlock() : before_(std::signal(SIGPIPE, SIG_DFL)) {
    EXPECT_EQ(pipe(ends_), 0);
    close(ends_[0]);
    sigemptyset(&sigpipe_);
    sigaddset(&sigpipe_, SIGPIPE);
  }
  ~ASigpipeBlock() override {
    close(ends_[1]);
    std::signal(SIGPIPE, before_);
  }

  void ExpectBrokenPipe() const {
    EXPECT_EQ(write(ends_[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
  }

  static bool Pending() {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
  }

  static bool Blocked() {
    sigset_t blocked;
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    return sigismember(&blocked, SIGPIPE) == 1;
  }

  int ends_[2];
  sigset_t sigpipe_;
  void (*before_)(int);
};

TEST_F(ASigpipeBlock, SparesItsThreadTheSignalAndLeavesNoTrace) {
  {
    const SigpipeBlock block;
    ExpectBrokenPipe();
  }
  EXPECT_FALSE(Pending());
  EXPECT_FALSE(Blocked());
}

TEST_F(ASigpipeBlock, LastsAsLongAsTheOutermostOne) {
  const SigpipeBlock outer;
  { const SigpipeBlock inner; }
  EXPECT_TRUE(Blocked());
  ExpectBrokenPipe();
  { const SigpipeBlock inner; }
}

TEST_F(ASigpipeBlock, BlocksAgainAfterItsEnd) {
  { const SigpipeBlock first; }
  const SigpipeBlock second;
  ExpectBrokenPipe();
}

TEST_F(ASigpipeBlock, LeavesTheApplicationsOwnBlockAndPendingSignal) {
  pthread_sigmask(SIG_BLOCK, &sigpipe_, nullptr);
  {
    const SigpipeBlock block;
    ExpectBrokenPipe();
  }
  EXPECT_TRUE(Blocked());
  EXPECT_FALSE(Pending());
  std::raise(SIGPIPE);
  {
    const SigpipeBlock block;
    ExpectBrokenPipe();
  }
  EXPECT_TRUE(Pending());
  int taken = 0;
  sigwait(&sigpipe_, &taken);
  EXPECT_EQ(taken, SIGPIPE);
  pthread_sigmask(SIG_UNBLOCK, &sigpipe_, nullptr);
}

}  // namespace
