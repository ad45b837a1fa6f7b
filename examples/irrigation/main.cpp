// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A controller that waters a garden, whose plans managers make and change over
// SNMP.
//
//   irrigation [ADDRESS]
//
// ADDRESS is where the master agent takes AgentX sessions, without it
// unix:/var/agentx/master. scripts/demo runs both, with all that they need.
#include <snmpsubagent.h>

#include <chrono>
#include <csignal>
#include <ctime>

#include "Irrigation.h"

namespace {

std::uint32_t HourOfTheDay() {
  const std::time_t now = std::time(nullptr);
  return static_cast<std::uint32_t>(std::localtime(&now)->tm_hour);
}

}  // namespace

int main(int argc, char* argv[]) {
  // Before there is another thread, so that only this one gets them.
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  snmpsubagent::AgentOptions options;
  if (argc > 1) options.master = argv[1];
  snmpsubagent::Agent agent("irrigation", options);
  Irrigation irrigation(agent);
  agent.Start();

  // The device's own work, until a signal comes.
  const timespec aWhile = {20, 0};
  std::uint32_t hour = HourOfTheDay();
  while (sigtimedwait(&signals, nullptr, &aWhile) < 0) {
    if (HourOfTheDay() == hour) continue;
    hour = HourOfTheDay();
    irrigation.BeginHour(hour);
  }
}
