// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/MasterAgent.h"

#include <signal.h>

namespace testkit {
namespace {

std::string Configuration(const LoopbackPort& snmp,
                          const LoopbackPort& agentX) {
  return "agentAddress udp:" + snmp.Address() +
         "\n"
         "rwcommunity public 127.0.0.1\n"
         "dontLogTCPWrappersConnects yes\n"
         "master agentx\n"
         "agentXSocket tcp:" +
         agentX.Address() + "\n";
}

}  // namespace

MasterAgent::MasterAgent(const std::string& configuration)
    : daemon_("snmpd", Configuration(snmpPort_, agentXPort_) + configuration),
      manager_(Address(), daemon_.Directory()) {
  Start();
}

// Of its modules it needs the one that knows the community.
void MasterAgent::Start() { daemon_.Start({"-I", "vacm_conf"}); }

void MasterAgent::Freeze() const { daemon_.Signal(SIGSTOP); }

void MasterAgent::Thaw() const { daemon_.Signal(SIGCONT); }

}  // namespace testkit
