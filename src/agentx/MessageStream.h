// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_MESSAGESTREAM_H_
#define SNMPSUBAGENT_AGENTX_MESSAGESTREAM_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "agentx/Message.h"

namespace snmpsubagent::agentx {

struct Message {
  Header header;
  const std::uint8_t* payload = nullptr;  // header.payloadLength bytes
};

// Makes messages of bytes that arrive in pieces of any size. Only a message
// that arrives in several pieces is copied, and memory is taken for what has
// arrived, not for what a header announces.
class MessageStream {
 public:
  // `bytes` is borrowed until Next() returns nothing or the stream is broken.
  void Add(const std::uint8_t* bytes, std::size_t size);

  // The next whole message, which is valid until the next call; nothing if more
  // bytes are needed or the stream is broken.
  std::optional<Message> Next();

  // A header came that can't be trusted: no message can be found any more.
  bool Broken() const { return broken_; }

  // Begins anew, with another connection.
  void Reset();

 private:
  std::optional<Message> NextInParts();
  bool FillTo(std::size_t size);
  void Keep();
  std::optional<Header> HeaderAt(const std::uint8_t* bytes);
  const std::uint8_t* TakeBytes(std::size_t size);

  const std::uint8_t* next_ = nullptr;
  std::size_t left_ = 0;
  std::vector<std::uint8_t> part_;  // the beginning of a message
  bool partIsWhole_ = false;        // it has been returned
  bool broken_ = false;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_MESSAGESTREAM_H_
