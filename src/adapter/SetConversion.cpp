// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <algorithm>
#include <cstring>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPNodeData.h"
#include "NetSNMPSizedCharNodeData.h"
#include "values/TruthValue.h"

namespace {

// The first `size` bytes at `bytes` as an integer in native order; where fewer
// than a long has, the others are zero.
long NativeInteger(const unsigned char* bytes, std::size_t size) {
  long number = 0;
  const bool bigEndian = __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__;
  auto* const first = reinterpret_cast<unsigned char*>(&number) +
                      (bigEndian ? sizeof(number) - size : 0);
  std::memcpy(first, bytes, size);
  return number;
}

// The integer of a varbind, narrowed to 32 bits. The agent library stores
// integers in a long; an octet string of 4 bytes is treated as one, too.
int IntegerOf(const variable_list& var) {
  return static_cast<int>(NativeInteger(
      var.val.string, std::min<std::size_t>(var.val_len, sizeof(long))));
}

bool IsIntegerType(unsigned char type) {
  return type == ASN_INTEGER || type == ASN_COUNTER || type == ASN_UNSIGNED ||
         type == ASN_TIMETICKS || type == ASN_UINTEGER;
}

bool HasIntegerLength(const variable_list& var) {
  return var.val_len == 4 ||
         (var.val_len == sizeof(long) && IsIntegerType(var.type));
}

bool IsTruthValue(int number) {
  return number == truth_value::kTrue || number == truth_value::kFalse;
}

// The text of a varbind up to its first NUL. A SET's varbind may have none:
// reading stops at the end of its buffer.
std::string TextOf(const variable_list& var) {
  const auto* const text = reinterpret_cast<const char*>(var.val.string);
  const std::size_t owned =
      var.val.string == var.buf ? sizeof(var.buf) : var.val_len;
  return std::string(text, strnlen(text, owned));
}

// Whether `value` is a text with a size that the varbind's text exceeds.
bool IsTooLong(const variable_list& var, const NetSNMPNodeData& value) {
  const auto* const sized =
      dynamic_cast<const NetSNMPSizedCharNodeData*>(&value);
  return sized != nullptr && !sized->Fits(TextOf(var).size());
}

// The setter that takes a length does nothing in the library, so a byte buffer
// does not change. An application-defined override gets as many bytes as the
// value has.
void CommitBytes(const variable_list& var, NetSNMPNodeData& value) {
  const unsigned int size = value.NodeValueSize();
  if (var.val_len >= size) {
    value.NodeDataValue(var.val.string, size, true);
    return;
  }
  std::vector<unsigned char> padded(size);
  std::copy_n(var.val.string, var.val_len, padded.begin());
  value.NodeDataValue(padded.data(), size, true);
}

}  // namespace

int NetSNMP::set_snmp_validate(variable_list* var, NetSNMPNodeData* value) {
  if (value == nullptr) return SNMP_ERR_NOSUCHNAME;
  if (!value->NodeWritable()) return SNMP_ERR_NOTWRITABLE;
  const bool present = var->val.string != nullptr;
  bool acceptable = false;
  switch (value->dataType_) {
    case eNodeDataVoid:
      break;
    case eNodeDataInt:
    case eNodeDataUnsignedInt:
      acceptable = present && HasIntegerLength(*var);
      break;
    case eNodeDataBool:
      acceptable = present && IsTruthValue(IntegerOf(*var));
      break;
    case eNodeDataChar:
      if (present && IsTooLong(*var, *value)) return SNMP_ERR_WRONGLENGTH;
      acceptable = present;
      break;
    case eNodeDataString:
    case eNodeDataByte:
      acceptable = present;
      break;
    default:
      return SNMP_ERR_NOSUCHNAME;
  }
  return acceptable ? SNMP_ERR_NOERROR : SNMP_ERR_BADVALUE;
}

int NetSNMP::set_snmp_commit(variable_list* var, NetSNMPNodeData* value) {
  if (value == nullptr || value->dataType_ < eNodeDataInt ||
      value->dataType_ > eNodeDataByte) {
    return SNMP_ERR_NOSUCHNAME;
  }
  if (var->val.string == nullptr) return SNMP_ERR_BADVALUE;
  switch (value->dataType_) {
    case eNodeDataInt:
      value->NodeDataValue(IntegerOf(*var), true);
      break;
    case eNodeDataUnsignedInt:
      value->NodeDataValue(static_cast<unsigned int>(IntegerOf(*var)), true);
      break;
    case eNodeDataString:
      value->NodeDataValue(TextOf(*var), true);
      break;
    case eNodeDataChar:
      value->NodeDataValue(TextOf(*var).c_str(), true);
      break;
    case eNodeDataBool:
      value->NodeDataValue(IntegerOf(*var) == truth_value::kTrue, true);
      break;
    default:
      CommitBytes(*var, *value);
      break;
  }
  return SNMP_ERR_NOERROR;
}
