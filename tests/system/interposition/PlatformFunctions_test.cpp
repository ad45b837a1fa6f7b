// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// This program defines the platform's functions itself, and is linked with the
// shared library and, through it, with the platform library.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

#include "LogXMessage.h"
#include "NetSNMP.h"
#include "NetworkInterfaces.h"
#include "SNMPSubAgent.h"

using testing::ElementsAre;
using testing::Pair;

namespace {
std::vector<std::pair<unsigned int, std::string>> logged;

class SubAgent : public SNMPSubAgent {
 public:
  SubAgent() : SNMPSubAgent("interposition") {}
  SubAgent(const std::string& masterAddress, int masterPort)
      : SNMPSubAgent("interposition", masterAddress, masterPort) {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override {}
};

// Leaves the agent library with a descriptor that it cannot wait for.
void BreakTheAgentLibrarysWait() {
  netsnmp_session settings;
  snmp_sess_init(&settings);
  std::string address = "udp:127.0.0.1:9";
  settings.peername = &address[0];
  ASSERT_NE(nullptr, snmp_open(&settings));

  int count = 0;
  int block = 1;
  fd_set descriptors;
  timeval timeout{};
  FD_ZERO(&descriptors);
  snmp_select_info(&count, &descriptors, &timeout, &block);
  ASSERT_GT(count, 0);
  close(count - 1);
}
}  // namespace

void LogXMessage(unsigned int level, const std::string& text) {
  logged.emplace_back(level, text);
}

std::string NetworkInterfaces::loopbackIPv4() { return "192.0.2.7"; }

bool NetworkInterfaces::isLoopbackIPv4(const std::string& address) {
  return address == "192.0.2.7";
}

TEST(AnApplicationWithItsOwnPlatform, SaysWhereTheMasterAgentIs) {
  EXPECT_EQ("192.0.2.7", SubAgent().masterAddress_);
}

TEST(AnApplicationWithItsOwnPlatform, SaysWhichAddressIsLoopback) {
  SubAgent("192.0.2.7", 1).initialize();

  EXPECT_STREQ("tcp:localhost:1",
               netsnmp_ds_get_string(NETSNMP_DS_APPLICATION_ID,
                                     NETSNMP_DS_AGENT_X_SOCKET));
}

TEST(AnApplicationWithItsOwnPlatform, GetsTheLogLines) {
  BreakTheAgentLibrarysWait();

  SubAgent().process();

  EXPECT_THAT(logged, ElementsAre(Pair(3,
                                       "SNMPSubAgent::process(): Select error: "
                                       "Bad file descriptor")));
}
