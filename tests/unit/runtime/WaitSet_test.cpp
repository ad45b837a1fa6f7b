// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/WaitSet.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <thread>

#include "CallJournal.h"
#include "NetSNMPAgentGuard.h"
#include "testkit/FileDescriptor.h"

namespace {

// A pipe that has something to read.
class FullPipe {
 public:
  FullPipe() {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    reading_ = testkit::FileDescriptor(ends[0]);
    writing_ = testkit::FileDescriptor(ends[1]);
    EXPECT_EQ(write(writing_.Number(), "x", 1), 1);
  }

  int Reading() const { return reading_.Number(); }

 private:
  testkit::FileDescriptor reading_;
  testkit::FileDescriptor writing_;
};

class AWaitSet : public testing::Test {
 protected:
  AWaitSet() { journal_.Clear(); }

  long SecondsOfTheWait() const { return journal_.Timeouts().back().tv_sec; }

  CallJournal& journal_ = CallJournal::Get();
  WaitSet set_{{5, 0}};
};

TEST_F(AWaitSet, WaitsForItsLongestWaitAlone) {
  set_.Wait();
  EXPECT_EQ(SecondsOfTheWait(), 5);
}

TEST_F(AWaitSet, WaitsNoLongerThanUntilTheAgentLibrarysDeadline) {
  netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID,
                         NETSNMP_DS_LIB_ALARM_DONT_USE_SIG, 1);
  snmp_alarm_register(
      2, 0, [](unsigned int, void*) {}, nullptr);
  set_.AskAgentLibrary();
  set_.Wait();
  EXPECT_LT(SecondsOfTheWait(), 3);
}

TEST_F(AWaitSet, DoesNotWaitWhenItIsToldSo) {
  set_.AskAgentLibrary();
  set_.DoNotWait();
  set_.Wait();
  EXPECT_EQ(SecondsOfTheWait(), 0);
  EXPECT_EQ(journal_.Timeouts().back().tv_usec, 0);
}

TEST_F(AWaitSet, IsWokenByADescriptorThatIsReadable) {
  const FullPipe pipe;
  set_.WakeBy(pipe.Reading());
  EXPECT_EQ(set_.Wait(), 1);
}

TEST_F(AWaitSet, TakesNoDescriptorThatItHasNoRoomFor) {
  rlimit limit;
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  const FullPipe pipe;
  // None where the hard limit is that low; then -1 is all that there is.
  const testkit::FileDescriptor beyond(
      fcntl(pipe.Reading(), F_DUPFD_CLOEXEC, FD_SETSIZE));
  set_.WakeBy(-1);
  set_.WakeBy(beyond.Number());
  EXPECT_EQ(set_.Wait(), 0);
  // What is written behind an fd_set is written into the set's other fields.
  EXPECT_EQ(journal_.Timeouts().size(), 1U);
}

TEST_F(AWaitSet, IsOutdatedOnceAnotherThreadUsedTheAgentLibrary) {
  set_.AskAgentLibrary();
  {
    const NetSNMPAgentGuard guard;
    EXPECT_FALSE(set_.Outdated());
  }
  std::thread([] { NetSNMPAgentGuard(); }).join();
  const NetSNMPAgentGuard guard;
  EXPECT_TRUE(set_.Outdated());
}

TEST_F(AWaitSet, MakesTheAgentLibraryRead) {
  set_.Read();
  EXPECT_EQ(journal_.Count("snmp_read"), 1);
}

}  // namespace
