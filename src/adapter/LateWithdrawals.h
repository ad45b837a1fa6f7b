// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_ADAPTER_LATEWITHDRAWALS_H_
#define SNMPSUBAGENT_ADAPTER_LATEWITHDRAWALS_H_

struct netsnmp_agent_request_info_s;
struct netsnmp_agent_session_s;
struct netsnmp_handler_registration_s;
struct netsnmp_iterator_info_s;
struct netsnmp_request_info_s;

// Registrations that are withdrawn while the agent library has them in hand. It
// keeps the addresses of those that a PDU names until it is done with the PDU,
// for a SET from its first phase to its last, and calls through them; and that
// of one it registers until the master agent has answered, serving requests. A
// callback may delete any node meanwhile, and another thread may between the
// phases of a SET; the registration is noted then, and withdrawn afterwards.
//
// Requires, for all: the lock of NetSNMPAgentGuard.
namespace late_withdrawals {

// Between these two the agent library asks the master agent for `registration`
// and waits for the response; see AgentEvents.
void BeginRegistering(const netsnmp_handler_registration_s* registration);
void EndRegistering(const netsnmp_handler_registration_s* registration);

// Stands around the work of a handler: what its PDU names is in hand.
class HandlerCall {
 public:
  explicit HandlerCall(const netsnmp_agent_request_info_s& requestInfo);
  ~HandlerCall();
  HandlerCall(const HandlerCall&) = delete;
  HandlerCall& operator=(const HandlerCall&) = delete;

  // Whether the PDU of one that is under way names `registration`.
  static bool Names(const netsnmp_handler_registration_s* registration);

 private:
  const netsnmp_agent_session_s* const pdu_;  // null if called by others
  const HandlerCall* const outer_;
};

// What the handler of a scalar calls in every phase of a SET: in the first it
// takes `registration` in hand, in the last it lets go. Returns false if there
// is no memory for it, with the requests refused by resourceUnavailable.
bool HoldForSet(netsnmp_agent_request_info_s* requestInfo,
                netsnmp_request_info_s* requests,
                const netsnmp_handler_registration_s* registration);

// Puts a handler before all others of a registered table that stands around
// their work and calls HoldForSet(): those behind the agent library's own do
// not see every phase. Without memory for it, the table does without.
void PutHoldBeforeAll(netsnmp_handler_registration_s* registration);

// Ends all holds: the SETs of a lost connection have no last phase.
void EndHolds();

// Withdraws `registration`, at once if it is not in hand; returns what the
// agent library returns. One that is noted takes `*iteratorInfo` with it, if
// there is one, and leaves null; its hooks find no table any more. Without
// memory for the note it stays registered, and answers with an error.
int Withdraw(netsnmp_handler_registration_s* registration,
             netsnmp_iterator_info_s** iteratorInfo = nullptr);

// Whether one noted has that OID, which cannot be registered again before.
bool IsNoted(const unsigned long* oid, unsigned int oidLen);

// Withdraws those noted that are no longer in hand; whether there was one.
bool MakeNoted();

// Drops all notes: the agent library is about to free its registrations.
void DropNoted();

}  // namespace late_withdrawals

#endif  // SNMPSUBAGENT_ADAPTER_LATEWITHDRAWALS_H_
