// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/TrapReceiver.h"

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace testkit {
namespace {

// snmpTrapOID.0 (RFC 3418) of a notification under the tests' OIDs.
constexpr char kTestTrap[] =
    ".1.3.6.1.6.3.1.1.4.1.0 = OID: .1.3.6.1.4.1.32473.";

}  // namespace

TrapReceiver::TrapReceiver()
    : daemon_("snmptrapd", "authCommunity log public\n") {
  daemon_.Start(
      {"-X", "-n", "-On", "-Oe", "-F", "%V; %v\\n", "udp:" + port_.Address()});
}

std::string TrapReceiver::SinkConfiguration() const {
  return "trap2sink " + port_.Address() + " public\n";
}

std::vector<std::string> TrapReceiver::Received() const {
  std::vector<std::string> notifications;
  for (const std::string& line : daemon_.Log()) {
    if (line.find(kTestTrap) != std::string::npos)
      notifications.push_back(line);
  }
  return notifications;
}

bool TrapReceiver::WaitForCount(std::size_t count) const {
  return WaitFor([&] { return Received().size() >= count; },
                 Deadlines::Command());
}

}  // namespace testkit
