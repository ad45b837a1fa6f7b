// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/Output.h"

namespace snmpsubagent::agentx {
namespace {

// What is sent message by message keeps its memory; that of a rare burst is
// given back.
constexpr std::size_t kKeptCapacity = 256 * 1024;

}  // namespace

void Output::Sent(std::size_t count) {
  front_ += count;
  sent_ += count;
  if (front_ == bytes_.size() || front_ >= kKeptCapacity) ForgetSent();
}

// Moves what is left only when at least as much has been sent, so that each
// byte is moved once on average, however slowly they go.
void Output::ForgetSent() {
  if (size() > front_) return;
  bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<long>(front_));
  front_ = 0;
  if (bytes_.empty() && bytes_.capacity() > kKeptCapacity) {
    std::vector<std::uint8_t>().swap(bytes_);
  }
}

void Output::Clear() {
  front_ = bytes_.size();
  ForgetSent();
  sent_ = 0;
}

}  // namespace snmpsubagent::agentx
