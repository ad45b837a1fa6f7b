// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/Session.h"

#include <stdexcept>

using testkit::CommandResult;

namespace support {

Session::Session(const std::string& configuration)
    : subAgent_(master_.AgentXPort(), configuration) {
  subAgent_.RegisterSubAgentCallback("session", &receiver_);
}

Session::~Session() { subAgent_.Stop(); }

void Session::Connect() {
  if (!subAgent_.StartAndConnect() || !receiver_.WaitForStates({1}))
    throw std::runtime_error("the subagent does not connect");
}

CommandResult Session::Set(const std::vector<std::string>& bindings) const {
  const CommandResult result = Manager().Set(bindings);
  Manager().Get(bindings.front());
  return result;
}

}  // namespace support
