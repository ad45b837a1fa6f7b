// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_VALUEWRITER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_VALUEWRITER_H_

#include <chrono>
#include <cstdint>
#include <string_view>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/Oid.h"
#include "snmpsubagent/ValueView.h"

namespace snmpsubagent {

namespace agentx {
class VarbindWriter;
}
namespace detail {
class AgentState;
}

// Takes the value of a varbind on its way to the master agent. What writes a
// value of a type of its own, see Syntax, calls one of the operations once.
class SNMPSUBAGENT_OBJECTS_EXPORT ValueWriter {
 public:
  ValueWriter(agentx::VarbindWriter& varbinds, const detail::AgentState& agent)
      : varbinds_(varbinds), agent_(agent) {}

  void Integer(std::int32_t value);
  // Counter32, Gauge32 or TimeTicks.
  void Unsigned(ValueType type, std::uint32_t value);
  void Counter64(std::uint64_t value);
  // OctetString, IpAddress or Opaque.
  void Octets(ValueType type, std::string_view value);
  void ObjectIdentifier(OidView value);
  // TimeTicks: the master agent's sysUpTime at that moment, or 0 if it was not
  // up yet (TimeStamp, RFC 2579).
  void UpTimeAt(std::chrono::steady_clock::time_point moment);

 private:
  agentx::VarbindWriter& varbinds_;
  const detail::AgentState& agent_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_VALUEWRITER_H_
