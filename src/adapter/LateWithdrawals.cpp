// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/LateWithdrawals.h"

#include <algorithm>
#include <list>
#include <new>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"

namespace {

// That a SET has `registration` in hand. The agent library keeps the requests
// at their place through all phases.
struct Hold {
  const netsnmp_request_info* requests;
  const netsnmp_handler_registration* registration;
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

// Keeps its memory: a SET need not ask for any.
std::vector<Hold>& Holds() {
  static std::vector<Hold>& holds = *new std::vector<Hold>;
  return holds;
}

bool IsHeld(const netsnmp_handler_registration* registration) {
  const auto& holds = Holds();
  return std::any_of(holds.begin(), holds.end(), [&](const Hold& hold) {
    return hold.registration == registration;
  });
}

// What the agent library registers: the last one while it waits for the master
// agent's answer, the others while callbacks of requests that it serves
// meanwhile register more.
std::vector<const netsnmp_handler_registration*>& BeingRegistered() {
  static auto& registrations =
      *new std::vector<const netsnmp_handler_registration*>;
  return registrations;
}

bool IsBeingRegistered(const netsnmp_handler_registration* registration) {
  const auto& all = BeingRegistered();
  return std::find(all.begin(), all.end(), registration) != all.end();
}

bool IsInHand(const netsnmp_handler_registration* registration) {
  return late_withdrawals::HandlerCall::Names(registration) ||
         IsBeingRegistered(registration) || IsHeld(registration);
}

void Make(const Note& note) {
  NetSNMP::unregister_snmp_handler(note.registration);
  NetSNMP::delete_snmp_table_iterator(note.iteratorInfo);
}

int HoldTable(netsnmp_mib_handler* handler,
              netsnmp_handler_registration* registration,
              netsnmp_agent_request_info* requestInfo,
              netsnmp_request_info* requests) {
  const NetSNMPAgentGuard guard;
  const late_withdrawals::HandlerCall call(*requestInfo);
  if (!late_withdrawals::HoldForSet(requestInfo, requests, registration)) {
    return SNMP_ERR_RESOURCEUNAVAILABLE;
  }
  return netsnmp_call_next_handler(handler, registration, requestInfo,
                                   requests);
}

}  // namespace

namespace late_withdrawals {

void BeginRegistering(const netsnmp_handler_registration* registration) {
  try {
    BeingRegistered().push_back(registration);
  } catch (const std::bad_alloc&) {
    // The wait goes unwatched.
  }
}

void EndRegistering(const netsnmp_handler_registration* registration) {
  auto& all = BeingRegistered();
  if (!all.empty() && all.back() == registration) all.pop_back();
}

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
  if (requestInfo->asp == nullptr) return true;
  auto& holds = Holds();
  switch (requestInfo->mode) {
    case MODE_SET_RESERVE1:
      try {
        holds.push_back({requests, registration});
      } catch (const std::bad_alloc&) {
        NetSNMP::set_snmp_request_error(requestInfo, requests,
                                        SNMP_ERR_RESOURCEUNAVAILABLE);
        return false;
      }
      return true;
    case MODE_SET_COMMIT:
    case MODE_SET_FREE:
    case MODE_SET_UNDO:
      holds.erase(std::remove_if(holds.begin(), holds.end(),
                                 [&](const Hold& hold) {
                                   return hold.requests == requests;
                                 }),
                  holds.end());
      return true;
    default:
      return true;
  }
}

void PutHoldBeforeAll(netsnmp_handler_registration* registration) {
  netsnmp_mib_handler* const hold =
      netsnmp_create_handler("snmpsubagent_hold", HoldTable);
  if (hold == nullptr) return;
  if (netsnmp_inject_handler(registration, hold) != SNMPERR_SUCCESS) {
    netsnmp_handler_free(hold);
  }
}

void EndHolds() { Holds().clear(); }

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
