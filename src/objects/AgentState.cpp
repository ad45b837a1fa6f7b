// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/AgentState.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "snmpsubagent/detail/Clock.h"

namespace snmpsubagent::detail {
namespace {

AgentOptions Checked(AgentOptions options,
                     std::chrono::milliseconds longestTime) {
  if (options.timeout.count() < 1 || options.timeout.count() > 255) {
    throw std::invalid_argument("AgentOptions::timeout is 1 to 255 seconds");
  }
  if (options.responseTimeout.count() <= 0 || options.firstRetry.count() <= 0 ||
      options.lastRetry < options.firstRetry ||
      options.pingInterval.count() < 0 ||
      std::max({options.responseTimeout, options.lastRetry,
                options.pingInterval}) > longestTime) {
    throw std::invalid_argument("a time in AgentOptions is out of range");
  }
  return options;
}

agentx::SessionOptions SessionOptionsOf(std::string description,
                                        const AgentOptions& options) {
  if (description.empty()) {
    throw std::invalid_argument(
        "an agent needs a description, with which its log lines begin");
  }
  if (description.size() > 255) {
    throw std::invalid_argument("a description has at most 255 octets");
  }
  agentx::SessionOptions session;
  session.description = std::move(description);
  session.timeout = options.timeout;
  session.responseTimeout = options.responseTimeout;
  session.pingInterval = options.pingInterval;
  session.firstRetry = options.firstRetry;
  session.lastRetry = options.lastRetry;
  session.notificationLimit = options.notificationLimit;
  return session;
}

}  // namespace

AgentState::AgentState(std::string description, AgentOptions options)
    : options_(Checked(std::move(options), kLongestTime)),
      master_(options_.master),
      log_(description, options_.log),
      session_(SessionOptionsOf(std::move(description), options_), *this),
      requests_(*this) {}

// Whoever owned it last has stopped it, or never started. What was to be sent
// since then is told that it is dropped.
AgentState::~AgentState() { session_.Stop(Now()); }

void AgentState::AddCapability(const Oid& id, const std::string& description) {
  session_.AddAgentCaps(id, description, options_.context, Now());
  Update();
}

std::uint32_t AgentState::Register(agentx::Registration registration) {
  const std::uint32_t id = session_.Register(std::move(registration), Now());
  hasModules_ = true;
  Update();
  return id;
}

void AgentState::Unregister(std::uint32_t id) {
  session_.Unregister(id, Now());
  Update();
}

void AgentState::Respond(const agentx::Header& request, agentx::Error error,
                         std::uint16_t index) {
  scratch_.clear();
  agentx::ResponseWriter writer(scratch_, request);
  if (error != agentx::Error::None) writer.Refuse(error, index);
  writer.Finish();
  session_.Send(request, scratch_, Now());
}

void AgentState::Respond(const agentx::Header& request,
                         const std::vector<std::uint8_t>& response) {
  session_.Send(request, response, Now());
}

void AgentState::Notify(std::vector<std::uint8_t> varbinds,
                        const std::string& context,
                        NotificationFunction outcome) {
  const std::uint64_t id = session_.NextNotification();
  if (outcome) outcomes_[id] = std::move(outcome);  // may be told at once
  try {
    session_.Notify(std::move(varbinds), context, Now());
  } catch (...) {
    outcomes_.erase(id);
    throw;
  }
  Update();
}

void AgentState::OnRequest(const agentx::Request& request,
                           std::vector<std::uint8_t>& response) {
  requests_.Serve(request, response);
}

}  // namespace snmpsubagent::detail
