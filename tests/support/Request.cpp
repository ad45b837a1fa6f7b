// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/Request.h"

#include "NetSNMPDataNode.h"

Request::Request(const Oid& oid, int mode) {
  agentRequest_.mode = mode;
  request_.agent_req_info = &agentRequest_;
  snmp_varlist_add_variable(&request_.requestvb, oid.data(), oid.size(),
                            ASN_NULL, nullptr, 0);
}

Request::~Request() { snmp_free_varbind(request_.requestvb); }

void Request::SetInteger(long value) {
  snmp_set_var_typed_value(request_.requestvb, ASN_INTEGER, &value,
                           sizeof value);
}

int Request::HandleAs(std::string name) {
  netsnmp_mib_handler handler{};
  handler.handler_name = &name[0];
  return var_instance_handler(&handler, nullptr, &agentRequest_, &request_);
}

int Request::Serve(netsnmp_handler_registration* registration) {
  return netsnmp_call_handlers(registration, &agentRequest_, &request_);
}

Oid Request::Name() const {
  return {Varbind().name, Varbind().name + Varbind().name_length};
}
