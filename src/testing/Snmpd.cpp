// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Snmpd.h"

#include "testing/Inbox.h"
#include "testing/SnmpClient.h"
#include "testing/UdpListener.h"
#include "testkit/Daemon.h"
#include "testkit/LoopbackPort.h"
#include "testkit/MasterAgent.h"

namespace snmpsubagent::testing {
namespace internal {
namespace {

// snmptrapd passes on what it gets.
std::string Forwarding(const std::string& address) {
  return "authCommunity log,net public\nforward default udp:" + address + "\n";
}

}  // namespace

// Notifications come from snmpd by way of snmptrapd.
class SnmpdState {
 public:
  SnmpdState(const std::string& configuration, Inbox& inbox)
      : received_([&inbox](const SnmpMessage& message, const sockaddr_in&) {
          if (message.tag == PduTag::Trap) inbox.Put(message.varbinds);
        }),
        trapDaemon_("snmptrapd", Forwarding(received_.Socket().Address())) {
    trapDaemon_.Start({"-X", "-n", "udp:" + trapPort_.Address()});
    master_ = std::make_unique<testkit::MasterAgent>(
        "trap2sink " + trapPort_.Address() + " public\n" + configuration);
  }

  testkit::MasterAgent& Master() { return *master_; }
  SnmpClient& Client() { return client_; }

 private:
  UdpListener received_;
  testkit::LoopbackPort trapPort_;
  testkit::Daemon trapDaemon_;
  std::unique_ptr<testkit::MasterAgent> master_;
  SnmpClient client_;
};

}  // namespace internal

Snmpd::Snmpd(const std::string& configuration)
    : state_(std::make_unique<internal::SnmpdState>(configuration,
                                                    Notifications())) {}
Snmpd::~Snmpd() = default;

std::string Snmpd::Address() const {
  return "tcp:127.0.0.1:" + std::to_string(state_->Master().AgentXPort());
}

std::string Snmpd::SnmpAddress() { return state_->Master().Address(); }

void Snmpd::GoDown() { state_->Master().End(); }
void Snmpd::ComeUp() { state_->Master().Start(); }
void Snmpd::Kill() { state_->Master().Kill(); }
void Snmpd::Freeze() { state_->Master().Freeze(); }
void Snmpd::Thaw() { state_->Master().Thaw(); }

Response Snmpd::Answer(const Request& request) {
  return state_->Client().Ask(request, state_->Master().SnmpPort());
}

}  // namespace snmpsubagent::testing
