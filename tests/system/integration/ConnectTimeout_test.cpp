// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Connections to a master agent that does not accept them.
#include <netinet/in.h>
#include <sys/socket.h>

#include <fstream>
#include <iomanip>
#include <set>
#include <sstream>

#include "FrozenMasterTest.h"
#include "NetSNMP.h"
#include "testkit/FileDescriptor.h"
#include "testkit/LoopbackPort.h"

using support::ScalarOid;

namespace {

// Connections that nobody accepts fill the queue of the port.
class AFullQueue {
 public:
  explicit AFullQueue(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<in_port_t>(port));
    for (int i = 0; i < 32; ++i) {
      connections_.emplace_back(
          socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
      connect(connections_.back().Number(),
              reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    }
  }

 private:
  std::vector<testkit::FileDescriptor> connections_;
};

// The local addresses of the connections to a port of this machine that wait to
// be accepted (SYN_SENT), as the system lists them.
std::set<std::string> PendingConnections(int port) {
  std::ostringstream remote;
  remote << ':' << std::uppercase << std::hex << std::setfill('0')
         << std::setw(4) << port;
  std::set<std::string> pending;
  std::ifstream table("/proc/net/tcp");
  std::string line;
  while (std::getline(table, line)) {
    std::istringstream words(line);
    std::string number, from, to, state;
    words >> number >> from >> to >> state;
    if (state == "02" && to.size() > 8 && to.substr(8) == remote.str()) {
      pending.insert(from);
    }
  }
  return pending;
}

// Waits until so many more connections to the port have been tried.
bool WaitForAttempts(int port, std::size_t count) {
  const std::set<std::string> before = PendingConnections(port);
  std::set<std::string> seen = before;
  return testkit::WaitFor(
      [&] {
        for (const std::string& each : PendingConnections(port)) {
          seen.insert(each);
        }
        return seen.size() >= before.size() + count;
      },
      testkit::Deadlines::Load());
}

class AConnectionAttempt : public FrozenMasterTest {};

TEST_F(AConnectionAttempt, HoldsUpNobodyWhenItIsNotAccepted) {
  ConnectAndFreeze();
  {
    const AFullQueue queue(session_.Master().AgentXPort());
    ASSERT_TRUE(session_.Receiver().WaitForStates({1, 0}));
    LongestWait wait;
    // Without a limit the first attempt would hold up the lock for minutes.
    EXPECT_TRUE(WaitForAttempts(session_.Master().AgentXPort(), 2));
    EXPECT_LT(wait.End(), kAnything);
  }
  ExpectServedAfterThaw({ScalarOid(1)});
}

TEST_F(AConnectionAttempt, SucceedsWhenAMasterFrozenFromTheStartThaws) {
  session_.Master().Freeze();
  ASSERT_TRUE(session_.SubAgent().StartAndInitialize());
  EXPECT_LT(TimeOf([] { NetSNMPAgentGuard(); }), kAnything);
  EXPECT_FALSE(session_.SubAgent().Connected());
  ExpectServedAfterThaw({ScalarOid(1)});
}

class AnApplicationsConnection : public FrozenMasterTest {};

// The agent library makes connections that are not the subagent's.
TEST_F(AnApplicationsConnection, IsMadeAsTheAgentLibraryMakesIt) {
  session_.Connect();
  const testkit::LoopbackPort port;
  const std::string address = "tcp:" + port.Address();
  const NetSNMPAgentGuard guard;
  netsnmp_transport* const server =
      netsnmp_tdomain_transport(address.c_str(), 1, nullptr);
  ASSERT_NE(server, nullptr);
  netsnmp_transport* const client =
      netsnmp_tdomain_transport(address.c_str(), 0, nullptr);
  ASSERT_NE(client, nullptr);
  EXPECT_EQ(client->domain_length, server->domain_length);
  EXPECT_EQ(client->f_fmtaddr, server->f_fmtaddr);
  for (netsnmp_transport* transport : {client, server}) {
    transport->f_close(transport);
    netsnmp_transport_free(transport);
  }
}

}  // namespace
