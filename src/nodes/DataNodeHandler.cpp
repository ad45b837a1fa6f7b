// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "adapter/ExceptionBarrier.h"
#include "adapter/InUse.h"
#include "nodes/NodeLookup.h"

int var_instance_handler(netsnmp_mib_handler_s* handler,
                         netsnmp_handler_registration_s* reginfo,
                         netsnmp_agent_request_info_s* reqinfo,
                         netsnmp_request_info_s* requests) {
  const NetSNMPAgentGuard guard;
  if (NetSNMPNode::nodeMap_ == nullptr) return SNMP_ERR_GENERR;
  if (requests == nullptr) return SNMP_ERR_NOERROR;
  const in_use::Call call(*reqinfo);
  if (!in_use::TrackSet(reqinfo, requests, reginfo)) {
    return SNMP_ERR_RESOURCEUNAVAILABLE;
  }
  // What stays when a callback or an override throws.
  int status = SNMP_ERR_GENERR;
  exception_barrier::Run(
      [&] {
        const auto* const node =
            node_lookup::Find<NetSNMPDataNode>(handler->handler_name);
        status = node == nullptr
                     ? SNMP_ERR_NOSUCHNAME
                     : NetSNMP::handle_snmp_request(
                           requests->requestvb, node->nodeData_, reqinfo->mode);
      },
      [&](const std::string& what) {
        // Looked up again: the callback may have deleted the node.
        const auto* const node =
            node_lookup::Find<NetSNMPDataNode>(handler->handler_name);
        if (node != nullptr) node->NodeLogMessage(what);
      });
  // Only the first request: the agent library passes a scalar one at a time.
  return NetSNMP::set_snmp_request_error(reqinfo, requests, status);
}
