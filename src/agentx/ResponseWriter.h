// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_RESPONSEWRITER_H_
#define SNMPSUBAGENT_AGENTX_RESPONSEWRITER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "agentx/Message.h"

namespace snmpsubagent::agentx {

// Writes one Response (RFC 2741, 6.2.16) behind what `out` has already: the
// header at once, then a name and a value for each varbind, then Finish().
//
//   ResponseWriter response(out, request.header);
//   response.Name(oid);
//   response.Integer(21);
//   response.Finish();
//
// Requires: each Name() is followed by one value; Finish() is called last.
class ResponseWriter {
 public:
  ResponseWriter(std::vector<std::uint8_t>& out, const Header& request);

  void Name(OidView name);

  void Integer(std::int32_t value);
  // Counter32, Gauge32, TimeTicks.
  void Unsigned(ValueType type, std::uint32_t value);
  void Counter64(std::uint64_t value);
  // OctetString, IpAddress, Opaque.
  void Octets(ValueType type, std::string_view value);
  void ObjectIdentifier(OidView value);
  // Null, NoSuchObject, NoSuchInstance, EndOfMibView.
  void Empty(ValueType type);

  // Where the next varbind begins, and its removal: what was written behind
  // such a place goes.
  std::size_t Place() const;
  void Rewind(std::size_t place);

  // Answers with an error instead: varbinds written so far go. `index` counts
  // varbinds from 1; 0 for none.
  void Refuse(Error error, std::uint16_t index);

  // Completes the header.
  void Finish();
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_RESPONSEWRITER_H_
