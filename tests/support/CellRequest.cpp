// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/CellRequest.h"

#include "NetSNMPTableNode.h"

CellRequest::CellRequest(const Oid& oid, netsnmp_agent_session* pdu) {
  agentRequest_.asp = pdu;
  request_.agent_req_info = &agentRequest_;
  snmp_varlist_add_variable(&request_.requestvb, oid.data(), oid.size(),
                            ASN_NULL, nullptr, 0);
}

CellRequest::~CellRequest() {
  netsnmp_free_request_data_sets(&request_);
  netsnmp_free_agent_data_sets(&agentRequest_);
  snmp_free_varbind(request_.requestvb);
}

void CellRequest::SetInteger(long number) {
  snmp_set_var_typed_value(request_.requestvb, ASN_INTEGER, &number,
                           sizeof number);
}

void CellRequest::SetBytes(unsigned char type, const std::string& bytes) {
  snmp_set_var_typed_value(request_.requestvb, ASN_OCTET_STR, bytes.data(),
                           bytes.size());
  request_.requestvb->type = type;
}

void CellRequest::Choose(std::vector<NetSNMPNodeData*>* row,
                         unsigned int column) {
  tableInfo_.colnum = column;
  netsnmp_request_add_list_data(
      &request_,
      netsnmp_create_data_list(TABLE_HANDLER_NAME, &tableInfo_, nullptr));
  netsnmp_request_add_list_data(
      &request_, netsnmp_create_data_list(TABLE_ITERATOR_NAME, row, nullptr));
}

int CellRequest::HandleAs(std::string name, int mode) {
  netsnmp_mib_handler handler{};
  handler.handler_name = &name[0];
  agentRequest_.mode = mode;
  return var_table_handler(&handler, nullptr, &agentRequest_, &request_);
}

int CellRequest::Serve(netsnmp_handler_registration* registration, int mode) {
  agentRequest_.mode = mode;
  return netsnmp_call_handlers(registration, &agentRequest_, &request_);
}

Oid CellRequest::Name() const {
  const variable_list& varbind = *request_.requestvb;
  return {varbind.name, varbind.name + varbind.name_length};
}

std::string CellRequest::Text() const {
  const variable_list& varbind = *request_.requestvb;
  return {reinterpret_cast<const char*>(varbind.val.string), varbind.val_len};
}
