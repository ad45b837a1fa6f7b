// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An snmpd whose configuration says no more of AgentX than `master agentx`, as
// on a device that nobody has set up for it.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "Served.h"
#include "testkit/Daemon.h"
#include "testkit/LoopbackPort.h"

namespace {

void Write(const std::string& file, const std::string& text) {
  std::ofstream(file) << text;
}

void Require(bool succeeded, const char* what) {
  if (!succeeded) {
    throw std::system_error(errno, std::generic_category(), what);
  }
}

// Makes this process root among users of its own. Whoever is root already needs
// that not, and may not do it below a changed root directory.
void BecomeRoot() {
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  if (user == "0") return;
  Require(unshare(CLONE_NEWUSER) == 0, "unshare");
  Write("/proc/self/setgroups", "deny");
  Write("/proc/self/uid_map", "0 " + user + " 1");
  Write("/proc/self/gid_map", "0 " + group + " 1");
}

// From here on this process and its children are root in a system of their own,
// whose /var is empty. Requires: one thread.
void EnterSystemWithEmptyVar() {
  BecomeRoot();
  Require(unshare(CLONE_NEWNS) == 0, "unshare");
  // Nobody else sees what is mounted: below a changed root directory, which is
  // no mount of its own, /var has to be made one first.
  Require(mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 ||
              errno == EINVAL,
          "mount");
  Require(mount("/var", "/var", "none", MS_BIND, nullptr) == 0, "mount");
  Require(mount("none", "/var", "none", MS_PRIVATE, nullptr) == 0, "mount");
  Require(mount("tmpfs", "/var", "tmpfs", 0, nullptr) == 0, "mount");
}

mode_t ModeOf(const char* path) {
  struct stat status {};
  stat(path, &status);
  return status.st_mode & 0777;
}

TEST(AnAgentWithoutOptions, IsServedByAnSnmpdThatIsOnlyToldMasterAgentx) {
  EnterSystemWithEmptyVar();
  const testkit::LoopbackPort port;
  testkit::Daemon snmpd("snmpd", "agentAddress udp:" + port.Address() +
                                     "\n"
                                     "rocommunity public 127.0.0.1\n"
                                     "master agentx\n");
  const testkit::Manager manager(port.Address(), snmpd.Directory());
  snmpd.Start({});
  snmp::Agent agent("thermometer");
  snmp::Module module(agent, Served::kSubtree);
  const snmp::Scalar scalar(module, "1", 7);
  agent.Start();
  ASSERT_TRUE(WaitUntilRegistered(module));
  EXPECT_EQ(ShownAt(manager, Served::Name("1")), "INTEGER: 7");
  // So nobody but the user of snmpd gets there.
  EXPECT_EQ(ModeOf("/var/agentx"), 0700U);
}

}  // namespace
