// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_MODULESTATE_H_
#define SNMPSUBAGENT_OBJECTS_MODULESTATE_H_

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "snmpsubagent/Module.h"
#include "snmpsubagent/detail/ManagedObject.h"

namespace snmpsubagent::detail {

// What lies behind a Module; its objects keep it when that is gone.
//
// Threads: under the agent's lock, unless it says otherwise.
class ModuleState : public std::enable_shared_from_this<ModuleState> {
 public:
  ModuleState(std::shared_ptr<AgentState> agent, std::string_view subtree,
              ModuleOptions options);

  const std::shared_ptr<AgentState>& Agent() const { return agent_; }
  const std::string& Context() const { return options_.context; }

  // Registers one more subtree.
  void AddSubtree(Oid subtree);
  // Withdraws all, and the objects.
  void Close();
  bool IsRegistered() const;
  // How long an answer that comes later may take.
  std::chrono::milliseconds AnswerTime() const;

  // The whole OID of an object. Throws std::invalid_argument if it is none or
  // lies elsewhere.
  Oid Resolve(std::string_view oid) const;

  void Add(ManagedObject& object);
  void Remove(ManagedObject& object);

  void SetCheck(std::function<SetError(const SetChange&)> check);
  // What the application says to a SET that is staged.
  SetError AskCheck(const Transaction& transaction);

 private:
  using CheckFunction = std::function<SetError(const SetChange&)>;

  const std::shared_ptr<AgentState> agent_;
  const ModuleOptions options_;
  bool open_ = true;
  std::vector<Oid> subtrees_;
  std::vector<std::uint32_t> registrations_;
  std::shared_ptr<CheckFunction> check_;
};

// The same module. Throws std::logic_error for null, which a Module has that
// was moved elsewhere.
std::shared_ptr<ModuleState> Existing(std::shared_ptr<ModuleState> module);

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_MODULESTATE_H_
