// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/ReconnectWorkarounds.h"

#include <sys/socket.h>

#include "NetSNMP.h"
#include "runtime/AgentSession.h"

// Exported by Net-SNMP, though none of its headers declares it.
extern "C" snmp_alarm* sa_find_specific(unsigned int number);

namespace {

auto& attempts = agentSession.attempts;

void DoNothing(unsigned int /*number*/, void* /*clientArg*/) {}

// Alarms are numbered in the order of their registration. 0 if memory has run
// out.
unsigned int NextAlarmNumber() {
  const unsigned int number = snmp_alarm_register(1, 0, DoNothing, nullptr);
  if (number == 0) return 0;
  snmp_alarm_unregister(number);
  return number + 1;
}

void LearnAttempt() {
  if (attempts.function != nullptr || attempts.nextAfterLoss == 0) return;
  const snmp_alarm* const alarm = sa_find_specific(attempts.nextAfterLoss);
  if (alarm != nullptr) attempts.function = alarm->thecallback;
}

bool IsAttempt(unsigned int number) {
  const snmp_alarm* const alarm = sa_find_specific(number);
  return alarm != nullptr && alarm->thecallback == attempts.function;
}

// Keeps the oldest alarm for attempts, and none while a session is up.
void CancelSurplusAttempts() {
  LearnAttempt();
  const unsigned int end = NextAlarmNumber();
  if (attempts.function == nullptr || attempts.first == 0) return;
  bool keep = agentSession.open == nullptr;
  for (unsigned int number = attempts.first; number < end; ++number) {
    if (!IsAttempt(number)) continue;
    if (keep) {
      attempts.first = number;
    } else {
      snmp_alarm_unregister(number);
    }
    keep = false;
  }
}

}  // namespace

void reconnect_workarounds::ConsumeAlarmNumbers() {
  for (unsigned int next = 1; next != 0 && next <= SNMP_SEC_MODEL_TSM;) {
    next = NextAlarmNumber();
  }
}

void reconnect_workarounds::SessionStarted() {
  // From here on the application may register alarms of its own.
  LearnAttempt();
  attempts.nextAfterLoss = 0;
}

void reconnect_workarounds::SessionLost() {
  CancelSurplusAttempts();
  agentSession.repairDue = true;
  const bool triesAgain =
      netsnmp_ds_get_int(NETSNMP_DS_APPLICATION_ID,
                         NETSNMP_DS_AGENT_AGENTX_PING_INTERVAL) > 0;
  attempts.nextAfterLoss = triesAgain ? NextAlarmNumber() : 0;
  if (attempts.first == 0) attempts.first = attempts.nextAfterLoss;
}

// Closing the connection is what makes Net-SNMP notice a loss; what else is to
// be registered on this session then fails at once.
void reconnect_workarounds::RegistrationRequested() {
  netsnmp_session* const session = agentSession.open;
  // Null when the agent library was shut down, which raises no event.
  auto* const open = session == nullptr ? nullptr : snmp_sess_pointer(session);
  if (open == nullptr || session->s_snmp_errno != SNMPERR_TIMEOUT) return;
  snmp_log(LOG_WARNING,
           "AgentX master agent failed to answer a registration. "
           "Attempting to reconnect.\n");
  shutdown(snmp_sess_transport(open)->sock, SHUT_RDWR);
}

void reconnect_workarounds::RepairAfterLoss() {
  if (!agentSession.repairDue) return;
  agentSession.repairDue = false;
  CancelSurplusAttempts();
  if (agentSession.open == nullptr) register_mib_detach();
}
