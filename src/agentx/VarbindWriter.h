// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_VARBINDWRITER_H_
#define SNMPSUBAGENT_AGENTX_VARBINDWRITER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "agentx/Encoder.h"
#include "snmpsubagent/ValueView.h"

namespace snmpsubagent::agentx {

// Writes varbinds (RFC 2741, 5.4) behind what `out` has already, each a name
// and one value.
//
//   VarbindWriter varbinds(payload);
//   varbinds.Name(oid);
//   varbinds.Integer(21);
//
// Requires: each Name() is followed by one value, or by Rewind().
class VarbindWriter {
 public:
  explicit VarbindWriter(std::vector<std::uint8_t>& out) : encoder_(out) {}

  // Requires: at most Oid::kMaxSize sub-identifiers.
  void Name(OidView name);

  void Integer(std::int32_t value);
  // Counter32, Gauge32, TimeTicks.
  void Unsigned(ValueType type, std::uint32_t value);
  void Counter64(std::uint64_t value);
  // OctetString, IpAddress, Opaque.
  void Octets(ValueType type, std::string_view value);
  // Requires: at most Oid::kMaxSize sub-identifiers.
  void ObjectIdentifier(OidView value);
  // Null, NoSuchObject, NoSuchInstance, EndOfMibView.
  void Empty(ValueType type);

  // Where the next varbind begins, and its removal: what was written behind
  // such a place goes.
  std::size_t Place() const { return encoder_.Size(); }
  void Rewind(std::size_t place) { encoder_.Rewind(place); }

 private:
  void Type(ValueType type);

  Encoder encoder_;
  std::size_t varbind_ = 0;  // where the one begun last begins
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_VARBINDWRITER_H_
