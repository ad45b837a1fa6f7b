// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/ValueWriter.h"

#include "agentx/VarbindWriter.h"
#include "objects/AgentState.h"

namespace snmpsubagent {

void ValueWriter::Integer(std::int32_t value) { varbinds_.Integer(value); }

void ValueWriter::Unsigned(ValueType type, std::uint32_t value) {
  varbinds_.Unsigned(type, value);
}

void ValueWriter::Counter64(std::uint64_t value) { varbinds_.Counter64(value); }

void ValueWriter::Octets(ValueType type, std::string_view value) {
  varbinds_.Octets(type, value);
}

void ValueWriter::ObjectIdentifier(OidView value) {
  varbinds_.ObjectIdentifier(value);
}

void ValueWriter::UpTimeAt(std::chrono::steady_clock::time_point moment) {
  const bool never = moment == std::chrono::steady_clock::time_point();
  varbinds_.Unsigned(ValueType::TimeTicks,
                     never ? 0 : agent_.SysUpTimeAt(moment));
}

}  // namespace snmpsubagent
