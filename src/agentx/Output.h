// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_OUTPUT_H_
#define SNMPSUBAGENT_AGENTX_OUTPUT_H_

#include <cstddef>
#include <cstdint>
#include <vector>

namespace snmpsubagent::agentx {

// Bytes that are to be sent: messages are appended at the end of Bytes(), the
// driver of the session takes them from the front.
//
//   const ssize_t sent = send(socket, output.data(), output.size(), 0);
//   if (sent > 0) output.Sent(sent);
class Output {
 public:
  const std::uint8_t* data() const { return bytes_.data() + front_; }
  std::size_t size() const { return bytes_.size() - front_; }
  bool empty() const { return size() == 0; }

  // The first `count` have been sent. Requires: no more than size(), and nobody
  // is appending.
  void Sent(std::size_t count);

  // For whoever appends, as ResponseWriter does; what is in front is not
  // theirs.
  std::vector<std::uint8_t>& Bytes() { return bytes_; }

  // All bytes ever appended, and all ever sent: a place in the stream from the
  // one on has not begun to be sent while it is not below the other.
  std::uint64_t End() const { return sent_ + size(); }
  std::uint64_t SentSoFar() const { return sent_; }

  // Begins a stream anew: what has not been sent goes.
  void Clear();

 private:
  void ForgetSent();

  std::vector<std::uint8_t> bytes_;
  std::size_t front_ = 0;  // of bytes_, sent already
  std::uint64_t sent_ = 0;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_OUTPUT_H_
