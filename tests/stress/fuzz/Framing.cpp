// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Framing.h"

namespace agentx = testkit::agentx;

std::vector<agentx::Bytes> Framing::Split(const agentx::Bytes& bytes) {
  std::vector<agentx::Bytes> pieces(1);
  for (const std::uint8_t byte : bytes) {
    pieces.back().push_back(byte);
    message_.push_back(byte);
    if (message_.size() >= agentx::kHeaderSize &&
        message_.size() >= agentx::MessageSize(message_.data())) {
      message_.clear();
      pieces.emplace_back();
    }
  }
  return pieces;
}
