// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMP.h"
#include "NetSNMPNodeData.h"
#include "values/TruthValue.h"

int NetSNMP::get_snmp_value(variable_list* var, NetSNMPNodeData* value) {
  const unsigned char* const bytes = value->NodeByteValue();
  const unsigned int size = value->NodeValueSize();
  // The agent library refuses it too, but only after it has made the varbind an
  // integer with a null value, which it dereferences when it sends the
  // response.
  if (bytes == nullptr && size > 0) return SNMP_ERR_TOOBIG;
  return snmp_set_var_typed_value(var, value->NodeASNDataType(), bytes, size);
}

int NetSNMP::set_snmp_var_value(variable_list* var, NetSNMPNodeData* value) {
  return snmp_set_var_value(var, value->NodeByteValue(),
                            value->NodeValueSize());
}

variable_list* NetSNMP::add_snmp_varlist_variable(variable_list** list,
                                                  const oid* name,
                                                  unsigned int nameLen,
                                                  NetSNMPNodeData* value) {
  return add_snmp_varlist_variable(
      list, name, nameLen, value->NodeASNDataType(),
      const_cast<unsigned char*>(value->NodeByteValue()),
      value->NodeValueSize());
}

int NetSNMP::set_snmp_variable_list(variable_list* var,
                                    NetSNMPNodeData* value) {
  if (value == nullptr) return SNMP_ERR_NOSUCHNAME;
  var->type = value->NodeASNDataType();
  var->val_len = value->NodeValueSize();
  void* const storage = value->NodeDataValue();
  switch (value->dataType_) {
    case eNodeDataInt:
    case eNodeDataUnsignedInt:
    case eNodeDataChar:
    case eNodeDataByte:
      var->val.string = static_cast<unsigned char*>(storage);
      return SNMP_ERR_NOERROR;
    case eNodeDataString: {
      auto* const text = static_cast<std::string*>(storage);
      var->val.string = text == nullptr
                            ? nullptr
                            : reinterpret_cast<unsigned char*>(text->data());
      return SNMP_ERR_NOERROR;
    }
    case eNodeDataBool: {
      const auto* const truth = static_cast<const bool*>(storage);
      var->val.string =
          truth == nullptr
              ? nullptr
              : const_cast<unsigned char*>(truth_value::Bytes(*truth));
      return SNMP_ERR_NOERROR;
    }
    default:
      return SNMP_ERR_NOSUCHNAME;
  }
}

int NetSNMP::set_snmp_request_error(netsnmp_agent_request_info* reqinfo,
                                    netsnmp_request_info* request, int error) {
  if (error > 0) netsnmp_set_request_error(reqinfo, request, error);
  return error;
}

int NetSNMP::handle_snmp_request(variable_list* var, NetSNMPNodeData* value,
                                 int mode) {
  if (value == nullptr) return SNMP_ERR_BADVALUE;
  switch (mode) {
    case MODE_SET_RESERVE1:
    case MODE_SET_RESERVE2:
      return set_snmp_validate(var, value);
    case MODE_SET_ACTION:
      return SNMP_ERR_NOERROR;
    case MODE_SET_COMMIT:
      return set_snmp_commit(var, value);
    case MODE_GET:
    case MODE_GETNEXT:
      return get_snmp_value(var, value);
    default:
      // FREE and UNDO too: there is no undo; what COMMIT wrote stays.
      return SNMP_ERR_BADVALUE;
  }
}
