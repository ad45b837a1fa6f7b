// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/LiveSubAgents.h"

#include <mutex>
#include <set>

#include "ISNMPSubAgent.h"

namespace {

struct Registry {
  std::mutex mutex;
  std::set<const ISNMPSubAgent*> live;
};

// Never destroyed: a subagent may be a static object of the application.
Registry& TheRegistry() {
  static Registry& registry = *new Registry;
  return registry;
}

}  // namespace

void live_subagents::Add(const ISNMPSubAgent* subAgent) {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::mutex> lock(registry.mutex);
  registry.live.insert(subAgent);
}

void live_subagents::Remove(const ISNMPSubAgent* subAgent) {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::mutex> lock(registry.mutex);
  registry.live.erase(subAgent);
}

bool live_subagents::Contains(const ISNMPSubAgent* subAgent) {
  Registry& registry = TheRegistry();
  const std::lock_guard<std::mutex> lock(registry.mutex);
  return registry.live.count(subAgent) != 0;
}

// Every subagent enters itself, also one that is a copy.

ISNMPSubAgent::ISNMPSubAgent() { live_subagents::Add(this); }

ISNMPSubAgent::ISNMPSubAgent(const ISNMPSubAgent&) {
  live_subagents::Add(this);
}

ISNMPSubAgent::~ISNMPSubAgent() { live_subagents::Remove(this); }
