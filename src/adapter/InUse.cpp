// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/InUse.h"

#include <algorithm>
#include <new>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"

namespace {

// A SET in progress that addresses `registration`. Net-SNMP keeps the requests
// in their place through all phases.
struct TrackedSet {
  const netsnmp_request_info* requests;
  const netsnmp_handler_registration* registration;
};

// A vector of the process. It is never destroyed, since a handler may run when
// the static objects go; it needs no memory until it is filled, and keeps that
// which it has.
template <typename Element>
std::vector<Element>& Kept() {
  using Vector = std::vector<Element>;
  alignas(Vector) static unsigned char place[sizeof(Vector)];
  static Vector& vector = *new (place) Vector;
  return vector;
}

std::vector<TrackedSet>& TrackedSets() { return Kept<TrackedSet>(); }

// The registrations whose AgentX response is outstanding, innermost last:
// requests are served during the wait, and their callbacks may register more.
std::vector<const netsnmp_handler_registration*>& Registering() {
  return Kept<const netsnmp_handler_registration*>();
}

// How many of the innermost ones there was no memory for.
unsigned int unrecorded = 0;

const in_use::Call* innermost = nullptr;

bool IsTracked(const netsnmp_handler_registration* registration) {
  const auto& sets = TrackedSets();
  return std::any_of(sets.begin(), sets.end(), [&](const TrackedSet& set) {
    return set.registration == registration;
  });
}

// Everything may be, while there is one that was not recorded.
bool IsRegistering(const netsnmp_handler_registration* registration) {
  const auto& all = Registering();
  return unrecorded > 0 ||
         std::find(all.begin(), all.end(), registration) != all.end();
}

void EndSet(const netsnmp_request_info* requests) {
  auto& sets = TrackedSets();
  sets.erase(std::remove_if(sets.begin(), sets.end(),
                            [&](const TrackedSet& set) {
                              return set.requests == requests;
                            }),
             sets.end());
}

bool BeginSet(netsnmp_agent_request_info* requestInfo,
              netsnmp_request_info* requests,
              const netsnmp_handler_registration* registration) {
  // Before a second handler of the chain, or a SET whose last phase was missed.
  EndSet(requests);
  try {
    TrackedSets().push_back({requests, registration});
    return true;
  } catch (const std::bad_alloc&) {
    NetSNMP::set_snmp_request_error(requestInfo, requests,
                                    SNMP_ERR_RESOURCEUNAVAILABLE);
    return false;
  }
}

int TrackTable(netsnmp_mib_handler* handler,
               netsnmp_handler_registration* registration,
               netsnmp_agent_request_info* requestInfo,
               netsnmp_request_info* requests) {
  const NetSNMPAgentGuard guard;
  const in_use::Call call(*requestInfo);
  if (!in_use::TrackSet(requestInfo, requests, registration)) {
    return SNMP_ERR_RESOURCEUNAVAILABLE;
  }
  return netsnmp_call_next_handler(handler, registration, requestInfo,
                                   requests);
}

}  // namespace

namespace in_use {

bool Contains(const netsnmp_handler_registration* registration) {
  if (registration == nullptr) return false;
  for (const Call* call = innermost; call != nullptr; call = call->outer_) {
    if (call->Addresses(registration)) return true;
  }
  return IsRegistering(registration) || IsTracked(registration);
}

Call::Call(const netsnmp_agent_request_info& requestInfo)
    : pdu_(requestInfo.asp), outer_(innermost) {
  innermost = this;
}

Call::~Call() { innermost = outer_; }

bool Call::Addresses(const netsnmp_handler_registration* registration) const {
  if (pdu_ == nullptr || pdu_->treecache == nullptr) return false;
  const netsnmp_tree_cache* const first = pdu_->treecache;
  // treecache_num is the index of the last entry, not a count.
  const netsnmp_tree_cache* const end = first + pdu_->treecache_num + 1;
  return std::any_of(first, end, [&](const netsnmp_tree_cache& entry) {
    return entry.subtree != nullptr && entry.subtree->reginfo == registration;
  });
}

bool TrackSet(netsnmp_agent_request_info* requestInfo,
              netsnmp_request_info* requests,
              const netsnmp_handler_registration* registration) {
  // Without a PDU the handler was not called by Net-SNMP, which then keeps
  // nothing.
  if (requestInfo->asp == nullptr) return true;
  switch (requestInfo->mode) {
    case MODE_SET_RESERVE1:
      return BeginSet(requestInfo, requests, registration);
    case MODE_SET_COMMIT:
    case MODE_SET_FREE:
    case MODE_SET_UNDO:
      EndSet(requests);
      return true;
    default:
      return true;
  }
}

void TrackSetsOf(netsnmp_handler_registration* registration) {
  netsnmp_mib_handler* const tracker =
      netsnmp_create_handler("snmpsubagent_set_tracker", TrackTable);
  if (tracker == nullptr) return;
  if (netsnmp_inject_handler(registration, tracker) != SNMPERR_SUCCESS) {
    netsnmp_handler_free(tracker);
  }
}

void BeginRegistering(const netsnmp_handler_registration* registration) {
  if (unrecorded == 0) {
    try {
      Registering().push_back(registration);
      return;
    } catch (const std::bad_alloc&) {
      // Counted instead.
    }
  }
  ++unrecorded;
}

void EndRegistering(const netsnmp_handler_registration* registration) {
  if (unrecorded > 0) {
    --unrecorded;
    return;
  }
  auto& all = Registering();
  if (!all.empty() && all.back() == registration) all.pop_back();
}

void ForgetSets() { TrackedSets().clear(); }

}  // namespace in_use
