// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ServedAgent.h"

#include <poll.h>

#include <chrono>
#include <string>
#include <utility>

#include "Input.h"

namespace wire = testkit::agentx;

namespace {

using namespace std::chrono_literals;

// Bounds a run that fails, also on a machine under load.
constexpr std::chrono::seconds kPatience{50};
constexpr std::uint32_t kReads = 1000;  // the transaction of what Ask() sends

const wire::Listener& TheListener() {
  static const wire::Listener listener;
  return listener;
}

snmpsubagent::AgentOptions Options() {
  snmpsubagent::AgentOptions options;
  options.master = TheListener().Address();
  options.timeout = ServedAgent::kTimeout;
  options.responseTimeout = kPatience;
  options.firstRetry = ServedAgent::kRetry;
  options.lastRetry = ServedAgent::kRetry;
  options.pingInterval = 0ms;
  options.log = [](snmpsubagent::LogLevel, const std::string&) {};
  return options;
}

bool IsReadable(int descriptor, std::chrono::milliseconds time) {
  pollfd waiting{descriptor, POLLIN, 0};
  return poll(&waiting, 1, static_cast<int>(time.count())) == 1;
}

}  // namespace

ServedAgent::ServedAgent() : agent("fuzzed", Options()) {}

// What there is to do, which the agent knows before long.
void ServedAgent::Dispatch() {
  Require(IsReadable(descriptor_, kPatience), "the agent sees no message");
  do {
    agent.Dispatch();
  } while (IsReadable(descriptor_, 0ms));
}

void ServedAgent::Connect() {
  if (running_) {
    Pass(kRetry);
  } else {
    descriptor_ = agent.Poll();
    running_ = true;
    Dispatch();
  }
  testkit::FileDescriptor connection = TheListener().Accept(kPatience);
  const int number = connection.Number();
  session_.emplace(std::move(connection), kPatience);
  for (int requests = 0; requests < 2; ++requests) {  // Open and Register
    while (!IsReadable(number, 0ms)) Dispatch();
    session_->Grant(session_->Next());
    Dispatch();
  }
}

// With a reset, which leaves no port behind that is in use for a while.
void ServedAgent::Lose() {
  if (!session_) return;
  session_->Reset();
  session_.reset();
  Require(IsReadable(descriptor_, kPatience), "the agent sees no loss");
  agent.Dispatch();
}

std::uint32_t ServedAgent::Send(const wire::Body& request,
                                std::uint32_t transaction) {
  const std::uint32_t packet = session_->Send(request, transaction);
  Dispatch();
  return packet;
}

wire::Response ServedAgent::Ask(const wire::Body& request) {
  const std::uint32_t packet = Send(request, kReads);
  const wire::Pdu pdu = Receive();
  Require(pdu.header.packetId == packet, "another response than expected");
  return std::get<wire::Response>(pdu.body);
}

void ServedAgent::Pass(std::chrono::milliseconds time) {
  time_.Pass(time);
  do {
    agent.Dispatch();
  } while (IsReadable(descriptor_, 0ms));
}
