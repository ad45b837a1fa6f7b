// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_RESPONSEWRITER_H_
#define SNMPSUBAGENT_AGENTX_RESPONSEWRITER_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "agentx/Message.h"
#include "agentx/MessageWriter.h"
#include "agentx/VarbindWriter.h"

namespace snmpsubagent::agentx {

// Writes one Response (RFC 2741, 6.2.16) behind what `out` has already: the
// header at once, then varbinds, then Finish(). Without Finish() nothing is
// left of it.
//
//   ResponseWriter response(out, request.header);
//   response.Varbinds().Name(oid);
//   response.Varbinds().Integer(21);
//   response.Finish();
class ResponseWriter {
 public:
  ResponseWriter(std::vector<std::uint8_t>& out, const Header& request);

  VarbindWriter& Varbinds() { return varbinds_; }

  // Answers with an error instead: varbinds written so far go. `index` counts
  // varbinds from 1; 0 for none.
  void Refuse(Error error, std::uint16_t index);

  // Completes the header. Nothing is to be written behind it.
  void Finish() { message_.Finish(); }

 private:
  MessageWriter message_;
  VarbindWriter varbinds_;
  std::size_t payload_;  // where it begins
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_RESPONSEWRITER_H_
