// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/NodeRegistration.h"

#include <new>
#include <string>

#include "NetSNMPNode.h"
#include "adapter/Deferred.h"
#include "adapter/ExceptionBarrier.h"
#include "nodes/NodeLookup.h"

namespace {

// The node that waited may have been deleted meanwhile, or replaced by another
// of its name.
void Register(const std::string& name) {
  auto* node = node_lookup::Find<NetSNMPNode>(name);
  if (node == nullptr) return;
  exception_barrier::Run([&] { node->RegisterNode(); },
                         [&](const std::string& what) {
                           // Looked up again: a request served meanwhile may
                           // have deleted it.
                           node = node_lookup::Find<NetSNMPNode>(name);
                           if (node != nullptr) node->NodeLogMessage(what);
                         });
}

}  // namespace

bool node_registration::MustWait(const NetSNMPNode& node) {
  return deferred::WhenFree(node.nodeOID_, node.nodeOIDLen_, node.nodeName_,
                            Register);
}

void node_registration::Log(const NetSNMPNode& node, const char* line) {
  try {
    node.NodeLogMessage(line);
  } catch (const std::bad_alloc&) {
    // Nobody could be told.
  }
}
