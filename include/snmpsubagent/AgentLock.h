// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_AGENTLOCK_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_AGENTLOCK_H_

#include <memory>

#include "snmpsubagent/Export.h"

namespace snmpsubagent {

namespace detail {
class AgentState;
}

// Holds the lock of an agent while it lives: no request is served and no
// application function is called meanwhile, except by the thread that
// has it. May be nested; waits while another thread has it.
class SNMPSUBAGENT_OBJECTS_EXPORT AgentLock {
 public:
  explicit AgentLock(std::shared_ptr<detail::AgentState> state);
  ~AgentLock();
  AgentLock(const AgentLock&) = delete;
  AgentLock& operator=(const AgentLock&) = delete;

 private:
  std::shared_ptr<detail::AgentState> state_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_AGENTLOCK_H_
