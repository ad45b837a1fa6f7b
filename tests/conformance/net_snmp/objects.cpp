// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the AgentX tests of Net-SNMP ask a subagent for, on the objects. The
// tests prescribe the OIDs.
//
//   objects ADDRESS serve CONTACT
//   objects ADDRESS notify OID OID TEXT
//
// Says so on the standard output when it is served, in the words for which
// those tests wait.
#include <snmpsubagent.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;

constexpr const char* kAnswer = "life the universe and everything";

snmp::AgentOptions OptionsFor(const char* address) {
  snmp::AgentOptions options;
  options.master = address;
  options.log = [](snmp::LogLevel, const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
  };
  return options;
}

void WaitUntilServed(const snmp::Agent& agent, const snmp::Module& module) {
  agent.WaitUntilConnected(10s);
  for (int i = 0; i < 500 && !module.IsRegistered(); ++i) {
    std::this_thread::sleep_for(10ms);
  }
}

void Serve(const char* address, const std::string& contact) {
  snmp::Agent agent("conformance", OptionsFor(address));
  snmp::Module system(agent, "1.3.6.1.2.1.1");
  snmp::Scalar upTime(system, "3",
                      [&] { return snmp::TimeTicks{agent.SysUpTime()}; });
  snmp::Scalar sysContact(system, "4", contact, snmp::ReadWrite().Size(0, 255));

  snmp::Module example(agent, "1.3.6.1.4.1.2021.254");
  snmp::Scalar text(example, "1", std::string(kAnswer));
  snmp::Notification sent(example, "0.1");
  snmp::Scalar trigger(example, "8", 0, snmp::ReadWrite());
  trigger.Changed([&](int) { sent.Send({text}); });

  snmp::Module hello(agent, "1.3.6.1.4.1.8872.9999.9999");
  snmp::Scalar first(hello, "1", "hello world");
  snmp::Scalar second(hello, "2", "hello again world");

  agent.Start();
  for (const snmp::Module* module : {&system, &example, &hello}) {
    WaitUntilServed(agent, *module);
  }
  std::puts("NET-SNMP version: none; SnmpSubAgent is served");
  std::fflush(stdout);
  pause();
}

// Returns whether the master agent has taken it.
bool Notify(const char* address, const char* oid, const char* varbind,
            const char* text) {
  snmp::Agent agent("conformance", OptionsFor(address));
  snmp::Module module(agent, oid);
  snmp::Notification notification(module, std::string(".") + oid);
  std::atomic<int> outcome{-1};
  notification.Send({{varbind, text}}, [&](const snmp::NotificationResult& r) {
    outcome = r.outcome;
  });
  agent.Start();
  for (int i = 0; i < 1000 && outcome < 0; ++i) {
    std::this_thread::sleep_for(10ms);
  }
  return outcome == snmp::NotificationResult::Sent;
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string mode = argc > 2 ? argv[2] : "";
  if (mode == "serve" && argc == 4) {
    Serve(argv[1], argv[3]);
    return EXIT_SUCCESS;
  }
  if (mode == "notify" && argc == 6) {
    return Notify(argv[1], argv[3], argv[4], argv[5]) ? EXIT_SUCCESS
                                                      : EXIT_FAILURE;
  }
  return 2;
}
