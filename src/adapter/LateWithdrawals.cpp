// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/LateWithdrawals.h"

#include <algorithm>
#include <list>
#include <memory>
#include <new>
#include <utility>

#include "NetSNMP.h"
#include "adapter/RequestHold.h"

namespace {

// The name under which a request carries its hold.
constexpr char kHoldName[] = "snmpsubagent_registration_hold";

struct RegistrationHold : RequestHold<RegistrationHold> {
  explicit RegistrationHold(const netsnmp_handler_registration* held)
      : registration(held) {}
  const netsnmp_handler_registration* registration;  // null once ended
};

struct Note {
  netsnmp_handler_registration* registration;
  netsnmp_iterator_info* iteratorInfo;  // owned; null for a scalar
};

const late_withdrawals::HandlerCall* innermost = nullptr;

// Never destroyed: a handler may run when the static objects go.
std::list<Note>& Notes() {
  static std::list<Note>& notes = *new std::list<Note>;
  return notes;
}

bool IsHeld(const netsnmp_handler_registration* registration) {
  const auto* hold = RegistrationHold::First();
  while (hold != nullptr && hold->registration != registration) {
    hold = hold->Next();
  }
  return hold != nullptr;
}

bool IsInHand(const netsnmp_handler_registration* registration) {
  return late_withdrawals::HandlerCall::Names(registration) ||
         IsHeld(registration);
}

void Make(const Note& note) {
  NetSNMP::unregister_snmp_handler(note.registration);
  NetSNMP::delete_snmp_table_iterator(note.iteratorInfo);
}

}  // namespace

namespace late_withdrawals {

HandlerCall::HandlerCall(const netsnmp_agent_request_info& requestInfo)
    : pdu_(requestInfo.asp), outer_(innermost) {
  innermost = this;
}

HandlerCall::~HandlerCall() { innermost = outer_; }

bool HandlerCall::Names(const netsnmp_handler_registration* registration) {
  for (const auto* call = innermost; call != nullptr; call = call->outer_) {
    if (call->pdu_ == nullptr || call->pdu_->treecache == nullptr) continue;
    const netsnmp_tree_cache* const named = call->pdu_->treecache;
    // The number is that of the last one.
    const netsnmp_tree_cache* const end = named + call->pdu_->treecache_num + 1;
    if (std::any_of(named, end, [&](const netsnmp_tree_cache& entry) {
          return entry.subtree != nullptr &&
                 entry.subtree->reginfo == registration;
        })) {
      return true;
    }
  }
  return false;
}

bool HoldForSet(netsnmp_agent_request_info* requestInfo,
                netsnmp_request_info* requests,
                const netsnmp_handler_registration* registration) {
  // Without a PDU the handler was called by others, who have nothing in hand.
  if (requestInfo->mode != MODE_SET_RESERVE1 || requestInfo->asp == nullptr) {
    return true;
  }
  std::unique_ptr<RegistrationHold> hold(new (std::nothrow)
                                             RegistrationHold(registration));
  if (KeepWithRequest(requests, kHoldName, std::move(hold))) return true;
  NetSNMP::set_snmp_request_error(requestInfo, requests,
                                  SNMP_ERR_RESOURCEUNAVAILABLE);
  return false;
}

void EndHolds() {
  for (auto* hold = RegistrationHold::First(); hold != nullptr;
       hold = hold->Next()) {
    hold->registration = nullptr;
  }
}

int Withdraw(netsnmp_handler_registration* registration,
             netsnmp_iterator_info** iteratorInfo) {
  if (!IsInHand(registration)) {
    return NetSNMP::unregister_snmp_handler(registration);
  }
  Note note = {registration, nullptr};
  if (iteratorInfo != nullptr && *iteratorInfo != nullptr) {
    note.iteratorInfo = *iteratorInfo;
    *iteratorInfo = nullptr;
    // The table's name, which the hooks find it by, goes with the node.
    note.iteratorInfo->myvoid = nullptr;
  }
  try {
    Notes().push_back(note);
  } catch (const std::bad_alloc&) {
    return SNMP_ERR_RESOURCEUNAVAILABLE;
  }
  return SNMP_ERR_NOERROR;
}

bool IsNoted(const unsigned long* oid, unsigned int oidLen) {
  const auto& notes = Notes();
  return std::any_of(notes.begin(), notes.end(), [&](const Note& note) {
    return netsnmp_oid_equals(note.registration->rootoid,
                              note.registration->rootoid_len, oid, oidLen) == 0;
  });
}

bool MakeNoted() {
  auto& notes = Notes();
  bool made = false;
  // Each withdrawal waits for the master agent, and requests served meanwhile
  // may add notes.
  while (true) {
    const auto due = std::find_if(
        notes.begin(), notes.end(),
        [](const Note& note) { return !IsInHand(note.registration); });
    if (due == notes.end()) return made;
    const Note note = *due;
    notes.erase(due);
    Make(note);
    made = true;
  }
}

void DropNoted() {
  for (const Note& note : Notes()) {
    NetSNMP::delete_snmp_table_iterator(note.iteratorInfo);
  }
  Notes().clear();
}

}  // namespace late_withdrawals
