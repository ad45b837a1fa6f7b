// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/LivingSubAgents.h"

#include <mutex>
#include <set>

namespace {

struct Registry {
  std::mutex mutex;
  std::set<const ISNMPSubAgent*> living;
};

// Never destroyed: a subagent may be a static object of the application.
Registry& TheRegistry() {
  static Registry& registry = *new Registry;
  return registry;
}

}  // namespace

void LivingSubAgents::Add(const ISNMPSubAgent* subAgent) {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::mutex> lock(registry.mutex);
  registry.living.insert(subAgent);
}

void LivingSubAgents::Remove(const ISNMPSubAgent* subAgent) {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::mutex> lock(registry.mutex);
  registry.living.erase(subAgent);
}

bool LivingSubAgents::Contains(const ISNMPSubAgent* subAgent) {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::mutex> lock(registry.mutex);
  return registry.living.count(subAgent) != 0;
}
