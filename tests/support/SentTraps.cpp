// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/SentTraps.h"

#include <utility>

namespace {

template <typename Value>
std::string BytesOf(const Value* values, std::size_t count) {
  return {reinterpret_cast<const char*>(values), count * sizeof(Value)};
}

}  // namespace

bool operator==(const TrapVariable& left, const TrapVariable& right) {
  return left.name == right.name && left.type == right.type &&
         left.bytes == right.bytes;
}

std::ostream& operator<<(std::ostream& stream, const TrapVariable& variable) {
  for (const unsigned long part : variable.name) stream << '.' << part;
  stream << " of type " << static_cast<int>(variable.type) << ":" << std::hex;
  for (const unsigned char byte : variable.bytes) {
    stream << ' ' << static_cast<int>(byte);
  }
  return stream << std::dec;
}

TrapVariable IntegerVariable(const Oid& name, long value, unsigned char type) {
  return {name, type, BytesOf(&value, 1)};
}

TrapVariable TextVariable(const Oid& name, const std::string& text) {
  return {name, ASN_OCTET_STR, text};
}

TrapVariable TrapOidVariable(const Oid& trap) {
  return {{1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0},
          ASN_OBJECT_ID,
          BytesOf(trap.data(), trap.size())};
}

TrapVariables VariablesOf(const variable_list* list) {
  TrapVariables variables;
  for (; list != nullptr; list = list->next_variable) {
    variables.push_back({{list->name, list->name + list->name_length},
                         list->type,
                         BytesOf(list->val.string, list->val_len)});
  }
  return variables;
}

SentTraps::SentTraps() {
  snmp_register_callback(SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_SEND_TRAP2,
                         Watch, this);
}

SentTraps::~SentTraps() {
  snmp_unregister_callback(SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_SEND_TRAP2,
                           Watch, this, 1);
}

std::vector<TrapVariables> SentTraps::Take() {
  return std::exchange(sent_, {});
}

int SentTraps::Watch(int /*major*/, int /*minor*/, void* pdu, void* self) {
  const variable_list* const upTime =
      static_cast<const netsnmp_pdu*>(pdu)->variables;
  static_cast<SentTraps*>(self)->sent_.push_back(
      VariablesOf(upTime->next_variable));
  return 0;
}
