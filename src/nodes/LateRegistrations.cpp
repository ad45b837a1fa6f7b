// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/LateRegistrations.h"

#include <new>
#include <set>
#include <string>
#include <utility>

#include "NetSNMPNode.h"
#include "adapter/Containment.h"
#include "adapter/LateWithdrawals.h"
#include "nodes/NodeLookup.h"

namespace {

using Names = std::set<std::string>;

// Never destroyed: a node may be built when the static objects go.
Names& Waiting() {
  static Names& names = *new Names;
  return names;
}

}  // namespace

bool late_registrations::Await(const NetSNMPNode& node) {
  if (!late_withdrawals::IsNoted(node.nodeOID_, node.nodeOIDLen_)) return false;
  try {
    Waiting().insert(node.nodeName_);
    return true;
  } catch (const std::bad_alloc&) {
    // The agent library will refuse it.
    return false;
  }
}

void late_registrations::CatchUp() {
  if (!late_withdrawals::MakeNoted()) return;
  // One whose OID is still taken waits again.
  for (const std::string& name : std::exchange(Waiting(), {})) {
    auto* node = FindNode<NetSNMPNode>(name);
    if (node == nullptr) continue;
    containment::Contain([&] { node->RegisterNode(); },
                         [&](const std::string& what) {
                           // Looked up again: a request served meanwhile may
                           // have deleted it.
                           node = FindNode<NetSNMPNode>(name);
                           if (node != nullptr) node->NodeLogMessage(what);
                         });
  }
}
