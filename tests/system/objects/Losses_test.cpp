// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A master agent or a connection that goes again and again, and a process that
// has many descriptors open.
#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <sys/resource.h>

#include <string>
#include <vector>

#include "Served.h"
#include "testkit/Deadlines.h"
#include "testkit/FileDescriptor.h"
#include "testkit/WaitFor.h"
#include "testkit/agentx/Master.h"

using testkit::Deadlines;

namespace {

TEST(AnAgent, IsServedAgainAfterEachOfManyRestartsOfSnmpd) {
  Served served;
  const snmp::Scalar scalar(served.module, "1", 7);
  served.Start();
  for (int i = 0; i < 10; ++i) {
    served.master.Kill();
    ASSERT_TRUE(testkit::WaitFor([&] { return !served.agent.Connected(); },
                                 Deadlines::Session()));
    served.master.Start();
    ASSERT_TRUE(WaitUntilRegistered(served.module));
    ASSERT_EQ(served.Shown("1"), "INTEGER: 7");
  }
}

TEST(AnAgent, IsServedAgainAfterEachOfManyLostConnections) {
  using namespace testkit::agentx;
  Master master;
  snmp::Agent agent("the tests", OptionsFor(AddressOf(master.Port())));
  std::vector<snmp::Module> modules;
  std::vector<snmp::Scalar<int>> scalars;
  std::vector<Oid> subtrees;
  for (std::uint32_t i = 1; i <= 5; ++i) {
    modules.emplace_back(agent, "1.3.6.1.4.1.32473.9." + std::to_string(i));
    subtrees.push_back({1, 3, 6, 1, 4, 1, 32473, 9, i});
    scalars.emplace_back(modules.back(), "1", static_cast<int>(i));
  }
  agent.Start();
  for (int i = 0; i < 100; ++i) {
    Master::Session session = master.AcceptServing(subtrees.size());
    ASSERT_EQ(Walk(*session, subtrees).size(), scalars.size());
    if (i % 2 == 0) session->Reset();
  }
}

// Opens descriptors until the next one is beyond what select() takes.
std::vector<testkit::FileDescriptor> OpenMany() {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  std::vector<testkit::FileDescriptor> open;
  do {
    open.emplace_back(eventfd(0, EFD_CLOEXEC));
  } while (open.back().IsOpen() && open.back().Number() < 2000);
  return open;
}

TEST(AnAgent, IsServedBesideMoreThan1024OpenDescriptors) {
  Served served;
  const snmp::Scalar scalar(served.module, "1", 7);
  const std::vector<testkit::FileDescriptor> open = OpenMany();
  ASSERT_EQ(open.back().Number(), 2000);
  served.Start();
  EXPECT_EQ(served.Shown("1"), "INTEGER: 7");
  served.master.Kill();
  ASSERT_TRUE(testkit::WaitFor([&] { return !served.agent.Connected(); },
                               Deadlines::Session()));
  served.master.Start();
  ASSERT_TRUE(WaitUntilRegistered(served.module));
  EXPECT_EQ(served.Shown("1"), "INTEGER: 7");
}

// The address sanitizer's build looks at virtual tables through a pipe, and
// takes objects for broken when it can open none.
#ifndef __SANITIZE_ADDRESS__
TEST(AnAgent, ConnectsOnceThereIsADescriptorForItAgain) {
  const testkit::MasterAgent master;
  Lines log;
  snmp::Agent agent("the tests", OptionsFor(AddressOf(master), &log));
  snmp::Module module(agent, Served::kSubtree);
  agent.Poll();
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  rlimit none = before;
  none.rlim_cur = 0;
  setrlimit(RLIMIT_NOFILE, &none);
  testkit::WaitFor(
      [&] {
        agent.Dispatch();
        return !log.All().empty();
      },
      Deadlines::Session());
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_TRUE(log.WaitFor("Too many open files"));
  EXPECT_TRUE(testkit::WaitFor(
      [&] {
        agent.Dispatch();
        return module.IsRegistered();
      },
      Deadlines::Session()));
}
#endif

}  // namespace
