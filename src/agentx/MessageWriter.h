// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_MESSAGEWRITER_H_
#define SNMPSUBAGENT_AGENTX_MESSAGEWRITER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "agentx/Encoder.h"
#include "agentx/Message.h"

namespace snmpsubagent::agentx {

// Writes one message behind what `out` has already: the header at once, its
// length with Finish(). Without Finish() nothing is left of it, so that an
// exception on the way does not leave half a message.
class MessageWriter {
 public:
  // `type` and the ids are taken from `header`; flags and length are made here.
  // A context other than "" is written behind the header.
  MessageWriter(std::vector<std::uint8_t>& out, const Header& header,
                std::string_view context = {});
  ~MessageWriter();
  MessageWriter(const MessageWriter&) = delete;
  MessageWriter& operator=(const MessageWriter&) = delete;

  Encoder& Payload() { return payload_; }
  void Finish();

 private:
  Encoder payload_;
  std::size_t start_;
  bool finished_ = false;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_MESSAGEWRITER_H_
