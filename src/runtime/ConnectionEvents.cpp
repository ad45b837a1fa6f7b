// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <exception>

#include "ISNMPSubAgentCallback.h"
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "SNMPSubAgent.h"
#include "adapter/Containment.h"
#include "runtime/LivingSubAgents.h"

namespace {

// The agent library's log takes what the application throws: a receiver has no
// node to log on.
void LogToAgentLibrary(const std::string& what) {
  snmp_log(LOG_ERR, "SNMPSubAgent: %s\n", what.c_str());
}

template <typename Body>
void CallApplication(const Body& body) {
  containment::Contain(body, LogToAgentLibrary);
}

void SetConnected(SNMPSubAgent* subAgent, bool connected) {
  __atomic_store_n(&subAgent->connected_, connected, __ATOMIC_RELEASE);
}

void OnSessionStart(SNMPSubAgent* subAgent) {
  SetConnected(subAgent, true);
  CallApplication([&] { subAgent->OnSubAgentConnected(); });
  CallApplication([&] { subAgent->NotifySubAgentCallbacks(1); });
}

void OnSessionStop(SNMPSubAgent* subAgent) {
  if (subAgent->Connected()) {
    CallApplication([&] { subAgent->NotifySubAgentCallbacks(0); });
  }
  SetConnected(subAgent, false);
}

}  // namespace

void SNMPSubAgent::RegisterSubAgentCallback(const std::string& callbackName,
                                            ISNMPSubAgentCallback* callback) {
  callbacks_.emplace(callbackName, callback);
}

void SNMPSubAgent::UnregisterSubAgentCallback(const std::string& callbackName) {
  callbacks_.erase(callbackName);
}

void SNMPSubAgent::NotifySubAgentCallbacks(int state) {
  std::exception_ptr first;
  for (const auto& receiver : callbacks_) {
    if (receiver.second == nullptr) continue;
    try {
      receiver.second->SubAgentStateChanged(state);
    } catch (...) {
      if (first == nullptr) first = std::current_exception();
    }
  }
  if (first != nullptr) std::rethrow_exception(first);
}

int SNMPSubAgent::snmp_subagent_callback(int /*majorID*/, int minorID,
                                         void* /*serverArg*/, void* clientArg) {
  const NetSNMPAgentGuard guard;
  auto* const subAgent = static_cast<SNMPSubAgent*>(clientArg);
  if (!LivingSubAgents::Contains(subAgent)) return 0;
  if (minorID == SNMPD_CALLBACK_INDEX_START) {
    OnSessionStart(subAgent);
  } else if (minorID == SNMPD_CALLBACK_INDEX_STOP) {
    OnSessionStop(subAgent);
  }
  return 0;
}
