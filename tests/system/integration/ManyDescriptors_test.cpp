// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An application with more descriptors open than an fd_set has room for.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/select.h>

#include <vector>

#include "NetSNMPIntNodeData.h"
#include "NetSNMPTrapNode.h"
#include "support/AgentXConnection.h"
#include "support/Scalars.h"
#include "support/Session.h"
#include "testkit/FileDescriptor.h"

using support::AddIntScalar;
using support::AddScalar;
using support::AgentXConnection;
using support::ScalarOid;
using support::Session;

namespace {

constexpr int kDescriptors = FD_SETSIZE + 100;

// Takes all descriptors that an fd_set has room for.
class ManyDescriptors {
 public:
  ManyDescriptors() {
    rlimit limit;
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    while (descriptors_.empty() ||
           (descriptors_.back().Number() >= 0 &&
            descriptors_.back().Number() < kDescriptors)) {
      descriptors_.emplace_back(open("/dev/null", O_RDONLY | O_CLOEXEC));
    }
  }

  // Whether the system lets a process have so many.
  bool Granted() const { return descriptors_.back().Number() >= 0; }

 private:
  std::vector<testkit::FileDescriptor> descriptors_;
};

// Where the hard limit is lower, which only root can raise, a process cannot
// come into the situation that these tests are about.
constexpr char kNotGranted[] =
    "the hard limit of descriptors is below an fd_set";

TEST(AnApplicationWithManyDescriptors, IsServed) {
  int number = 7;
  Session session;
  AddIntScalar(1, "read", 1);
  AddScalar(2, "written", NetSNMPIntNodeData(&number, eNodeAccessReadWrite));
  const ManyDescriptors descriptors;
  if (!descriptors.Granted()) GTEST_SKIP() << kNotGranted;
  session.Connect();
  EXPECT_GE(AgentXConnection(session.Master().AgentXPort()).Descriptor(),
            FD_SETSIZE);
  for (int i = 0; i < 10; ++i) {
    EXPECT_TRUE(session.Manager().Get(ScalarOid(1)).Succeeded());
    EXPECT_TRUE(
        session.Set({ScalarOid(2), "i", std::to_string(i)}).Succeeded());
  }
  AddIntScalar(3, "late", 1);
  EXPECT_TRUE(session.Manager().Get(ScalarOid(3)).Succeeded());
  EXPECT_EQ(session.SubAgent().Stop(), 0);
}

TEST(AnApplicationWithManyDescriptors, IsServedAgainAfterTheLossOfItsMaster) {
  Session session;
  AddIntScalar(1, "read", 1);
  session.Connect();
  EXPECT_LT(AgentXConnection(session.Master().AgentXPort()).Descriptor(),
            FD_SETSIZE);
  const ManyDescriptors descriptors;
  if (!descriptors.Granted()) GTEST_SKIP() << kNotGranted;
  for (int connections = 2; connections <= 3; ++connections) {
    session.Master().End();
    session.Master().Start();
    ASSERT_TRUE(session.SubAgent().WaitForConnections(connections));
    EXPECT_TRUE(session.Manager().Get(ScalarOid(1)).Succeeded());
  }
}

}  // namespace
