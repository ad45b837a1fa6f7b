// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/detail/ManagedObject.h"

#include <mutex>
#include <utility>

#include "objects/AgentState.h"
#include "objects/ModuleState.h"

namespace snmpsubagent::detail {
ManagedObject::ManagedObject(std::shared_ptr<ModuleState> module,
                             std::string_view oid, OidView instance)
    : module_(Existing(std::move(module))),
      name_(module_->Resolve(oid) + instance),
      size_(static_cast<std::uint8_t>(name_.size() - instance.size())) {}

ManagedObject::~ManagedObject() = default;

const std::shared_ptr<AgentState>& ManagedObject::Agent() const {
  return module_->Agent();
}

void ManagedObject::Serve() {
  const std::lock_guard lock(Agent()->Mutex());
  module_->Add(*this);
}

void ManagedObject::Withdraw() {
  const std::lock_guard lock(Agent()->Mutex());
  module_->Remove(*this);
}

Change::~Change() = default;

}  // namespace snmpsubagent::detail
