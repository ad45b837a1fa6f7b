// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The thermal example as a service manager runs it.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <string>

#include "testkit/ChildProcess.h"
#include "testkit/Deadlines.h"
#include "testkit/FileDescriptor.h"
#include "testkit/LoopbackPort.h"
#include "testkit/MasterAgent.h"
#include "testkit/ScratchDirectory.h"
#include "testkit/WaitFor.h"

namespace {

using testkit::Deadlines;
using testkit::WaitFor;

constexpr char kObjects[] = "1.3.6.1.4.1.32473.1.1";

class Service {
 public:
  explicit Service(int agentXPort)
      : log_(open((directory_.Path() / "log").c_str(),
                  O_CREAT | O_RDWR | O_CLOEXEC, 0600)),
        process_({THERMAL_PROGRAM, "127.0.0.1", std::to_string(agentXPort)},
                 {{"MIBS", ""},
                  {"SNMPCONFPATH", directory_.Path()},
                  {"SNMP_PERSISTENT_DIR", directory_.Path()}},
                 {log_.Number(), log_.Number()}) {}

  // The exit code after SIGTERM, 137 if it had to be killed.
  int ExitCodeOnSigterm() {
    process_.Signal(SIGTERM);
    if (!process_.Wait(Deadlines::Stop())) process_.Kill();
    return *process_.Wait({});
  }

  bool HasLogged() const { return lseek(log_.Number(), 0, SEEK_END) > 0; }

 private:
  testkit::ScratchDirectory directory_;
  testkit::FileDescriptor log_;
  testkit::ChildProcess process_;
};

TEST(AService, TakesItsObjectsOffTheMasterAgentOnSigtermAndSucceeds) {
  testkit::MasterAgent master;
  Service service(master.AgentXPort());
  ASSERT_TRUE(
      WaitFor([&] { return !master.Manager().Objects(kObjects).empty(); },
              Deadlines::Session()));

  EXPECT_EQ(service.ExitCodeOnSigterm(), 0);
  EXPECT_TRUE(
      WaitFor([&] { return master.Manager().Objects(kObjects).empty(); },
              Deadlines::Pass()));
}

TEST(AService, SucceedsOnSigtermAlsoWithoutAMasterAgent) {
  const testkit::LoopbackPort nobodyListens;
  Service service(nobodyListens.Number());
  ASSERT_TRUE(
      WaitFor([&] { return service.HasLogged(); }, Deadlines::Session()));

  EXPECT_EQ(service.ExitCodeOnSigterm(), 0);
}

}  // namespace
