// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/VarbindWriter.h"

namespace snmpsubagent::agentx {

// The type stands before the name, but is known with the value only.
void VarbindWriter::Name(OidView name) {
  varbind_ = encoder_.Size();
  encoder_.ObjectIdentifier(name, 4);
}

void VarbindWriter::Type(ValueType type) {
  encoder_.NumberAt(varbind_, static_cast<std::uint16_t>(type));
}

void VarbindWriter::Integer(std::int32_t value) {
  Type(ValueType::Integer);
  encoder_.Number(value);
}

void VarbindWriter::Unsigned(ValueType type, std::uint32_t value) {
  Type(type);
  encoder_.Number(value);
}

void VarbindWriter::Counter64(std::uint64_t value) {
  Type(ValueType::Counter64);
  encoder_.Number(value);
}

void VarbindWriter::Octets(ValueType type, std::string_view value) {
  Type(type);
  encoder_.OctetString(value);
}

void VarbindWriter::ObjectIdentifier(OidView value) {
  Type(ValueType::ObjectIdentifier);
  encoder_.ObjectIdentifier(value);
}

void VarbindWriter::Empty(ValueType type) { Type(type); }

}  // namespace snmpsubagent::agentx
