// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_MODULE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_MODULE_H_

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "snmpsubagent/Agent.h"
#include "snmpsubagent/Export.h"
#include "snmpsubagent/Oid.h"
#include "snmpsubagent/SetChange.h"
#include "snmpsubagent/SetError.h"

namespace snmpsubagent {

namespace detail {
class ModuleState;
}

// How a module is registered (RFC 2741, 6.2.3).
struct ModuleOptions {
  // Empty for that of the agent.
  std::string context;
  // 1 to 255. Of several subagents that register one subtree, the one with the
  // lowest number serves it.
  std::uint8_t priority = 127;
  // How long the master agent is to wait for a response, up to 255 s; 0 for
  // what the agent says.
  std::chrono::seconds timeout{0};
};

// One or several subtrees of the OID space and the objects in them. Each
// subtree is one registration with the master agent, however many objects it
// has.
//
//   snmp::Module module(agent, "1.3.6.1.4.1.32473.2");
//   snmp::Scalar temperature(module, "1", celsius); // 1.3.6.1.4.1.32473.2.1.0
//
// May be built before and after the agent is started, and destroyed at any
// time: its objects, which may outlive it, are then no longer served. Destroy
// modules seldom: Net-SNMP's master agent 5.9 may crash when a registration is
// withdrawn in the middle of a walk over it. The agent connects again. Of
// objects that come and go in a module it learns nothing.
//
// Threads: any. The destructor waits for an application function that runs on
// another thread.
class SNMPSUBAGENT_OBJECTS_EXPORT Module {
 public:
  // Throws std::invalid_argument if `subtree` is no OID or options are out of
  // range.
  Module(Agent& agent, std::string_view subtree, ModuleOptions options = {});
  ~Module();
  Module(Module&&) noexcept;
  Module& operator=(Module&&) noexcept;

  // One more subtree. Objects in it are named by their whole OID, with a dot in
  // front: ".1.3.6.1.2.1.99.1".
  void AddSubtree(std::string_view subtree);

  // Asked in TestSet, when all varbinds of a PDU that concern this module have
  // been staged: sees all objects as they would be. Its error is told with the
  // first of these varbinds. Runs under the agent's lock.
  void Check(std::function<SetError(const SetChange&)> check);

  // Whether the master agent has taken all registrations of this module.
  bool IsRegistered() const;

  const std::shared_ptr<detail::ModuleState>& State() const { return state_; }

 private:
  std::shared_ptr<detail::ModuleState> state_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_MODULE_H_
