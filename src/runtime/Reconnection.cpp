// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/Reconnection.h"

#include <sys/socket.h>

#include "NetSNMP.h"
#include "adapter/LateWithdrawals.h"

// Part of the agent library, though none of its headers declares it.
extern "C" snmp_alarm* sa_find_specific(unsigned int number);

namespace {

// All guarded by the lock of NetSNMPAgentGuard.

// The session that is up; null if none is.
netsnmp_session* session = nullptr;
// Whether a session was lost since all was put right.
bool lost = false;
// The agent library's own function that makes an attempt; null until the first
// alarm for it has been seen.
SNMPAlarmCallback* attempt = nullptr;
// The number of the alarm that the agent library registers next after a loss:
// one for attempts. 0 if something else may take it.
unsigned int nextAfterLoss = 0;
// All alarms for attempts have this number or a higher one.
unsigned int firstAttempt = 0;

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
  if (attempt != nullptr || nextAfterLoss == 0) return;
  const snmp_alarm* const alarm = sa_find_specific(nextAfterLoss);
  if (alarm != nullptr) attempt = alarm->thecallback;
}

bool IsAttempt(unsigned int number) {
  const snmp_alarm* const alarm = sa_find_specific(number);
  return alarm != nullptr && alarm->thecallback == attempt;
}

// Keeps the oldest alarm for attempts, and none while a session is up.
void EndSurplusAttempts() {
  LearnAttempt();
  const unsigned int end = NextAlarmNumber();
  if (attempt == nullptr || firstAttempt == 0) return;
  bool keep = session == nullptr;
  for (unsigned int number = firstAttempt; number < end; ++number) {
    if (!IsAttempt(number)) continue;
    if (keep) {
      firstAttempt = number;
    } else {
      snmp_alarm_unregister(number);
    }
    keep = false;
  }
}

int OnSessionStart(int /*majorID*/, int /*minorID*/, void* started,
                   void* /*clientArg*/) {
  session = static_cast<netsnmp_session*>(started);
  // From here on the application may register alarms of its own.
  LearnAttempt();
  nextAfterLoss = 0;
  return 0;
}

int OnSessionStop(int /*majorID*/, int /*minorID*/, void* /*stopped*/,
                  void* /*clientArg*/) {
  session = nullptr;
  late_withdrawals::EndHolds();
  EndSurplusAttempts();
  lost = true;
  const bool triesAgain =
      netsnmp_ds_get_int(NETSNMP_DS_APPLICATION_ID,
                         NETSNMP_DS_AGENT_AGENTX_PING_INTERVAL) > 0;
  nextAfterLoss = triesAgain ? NextAlarmNumber() : 0;
  if (firstAttempt == 0) firstAttempt = nextAfterLoss;
  return 0;
}

// Runs after the agent library has asked the master agent for the registration.
// Hanging up is what it takes for a loss; what else is to be registered on this
// session then fails at once.
int OnRegistration(int /*majorID*/, int /*minorID*/, void* /*registration*/,
                   void* /*clientArg*/) {
  // Null when the agent library was shut down, which raises no event.
  void* const open = session == nullptr ? nullptr : snmp_sess_pointer(session);
  if (open == nullptr || session->s_snmp_errno != SNMPERR_TIMEOUT) return 0;
  snmp_log(LOG_WARNING,
           "AgentX master agent failed to answer a registration. "
           "Attempting to reconnect.\n");
  shutdown(snmp_sess_transport(open)->sock, SHUT_RDWR);
  return 0;
}

}  // namespace

void WatchReconnection() {
  for (unsigned int next = 1; next != 0 && next <= SNMP_SEC_MODEL_TSM;) {
    next = NextAlarmNumber();
  }
  netsnmp_register_callback(SNMP_CALLBACK_APPLICATION,
                            SNMPD_CALLBACK_INDEX_START, OnSessionStart, nullptr,
                            NETSNMP_CALLBACK_HIGHEST_PRIORITY);
  netsnmp_register_callback(SNMP_CALLBACK_APPLICATION,
                            SNMPD_CALLBACK_INDEX_STOP, OnSessionStop, nullptr,
                            NETSNMP_CALLBACK_LOWEST_PRIORITY);
  netsnmp_register_callback(SNMP_CALLBACK_APPLICATION,
                            SNMPD_CALLBACK_REGISTER_OID, OnRegistration,
                            nullptr, NETSNMP_CALLBACK_LOWEST_PRIORITY);
}

void PutReconnectionRight() {
  if (!lost) return;
  lost = false;
  EndSurplusAttempts();
  if (session == nullptr) register_mib_detach();
}
