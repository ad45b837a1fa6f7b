// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_INUSE_H_
#define SNMPSUBAGENT_ADAPTER_INUSE_H_

struct netsnmp_agent_request_info_s;
struct netsnmp_agent_session_s;
struct netsnmp_handler_registration_s;
struct netsnmp_request_info_s;

// The registrations that Net-SNMP is using right now. It keeps bare pointers to
// a registration, and calls through them,
//
// - while it processes a PDU that addresses the registration,
// - from the first to the last phase of a SET that addresses it,
// - while it waits for the response to the registration itself, since it serves
//   requests during that wait.
//
// A callback may delete any node meanwhile, and so may another thread between
// the phases of a SET. What is to be done to such a registration is deferred;
// see Deferred.h.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace in_use {

// Whether Net-SNMP is using `registration`. The address is compared and never
// followed; false for null.
bool Contains(const netsnmp_handler_registration_s* registration);

// While one exists, every registration that the PDU addresses is in use.
class Call {
 public:
  explicit Call(const netsnmp_agent_request_info_s& requestInfo);
  ~Call();
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

 private:
  friend bool Contains(const netsnmp_handler_registration_s* registration);
  bool Addresses(const netsnmp_handler_registration_s* registration) const;

  const netsnmp_agent_session_s* const pdu_;  // null if not called by Net-SNMP
  const Call* const outer_;
};

// Tracks a SET by its phases: `registration` is in use from the first to the
// last. A handler calls it in each phase, and for other requests, with which it
// does nothing. Returns false if there is no memory for it, with the requests
// refused by resourceUnavailable.
bool TrackSet(netsnmp_agent_request_info_s* requestInfo,
              netsnmp_request_info_s* requests,
              const netsnmp_handler_registration_s* registration);

// Injects a handler at the head of a registered table's chain which tracks its
// SETs: handlers behind Net-SNMP's own do not see every phase. Without memory
// for it, the SETs of the table are not tracked.
void TrackSetsOf(netsnmp_handler_registration_s* registration);

// `registration` is in use between these two calls, which may be nested. They
// need no memory.
void BeginRegistering(const netsnmp_handler_registration_s* registration);
void EndRegistering(const netsnmp_handler_registration_s* registration);

// Forgets all SETs: those of a lost connection have no last phase.
void ForgetSets();

}  // namespace in_use

#endif  // SNMPSUBAGENT_ADAPTER_INUSE_H_
