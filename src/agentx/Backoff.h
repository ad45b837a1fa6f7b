// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_AGENTX_BACKOFF_H_
#define SNMPSUBAGENT_AGENTX_BACKOFF_H_

#include <algorithm>
#include <chrono>

namespace snmpsubagent::agentx {

// The time from one attempt to the next, which doubles up to a bound.
class Backoff {
 public:
  Backoff(std::chrono::milliseconds first, std::chrono::milliseconds last)
      : first_(std::max(first, std::chrono::milliseconds(1))),
        last_(std::max(last, first_)),
        next_(first_) {}

  std::chrono::milliseconds Next() {
    const std::chrono::milliseconds time = next_;
    next_ = std::min(last_, next_ > last_ / 2 ? last_ : next_ * 2);
    return time;
  }

  void Reset() { next_ = first_; }

 private:
  std::chrono::milliseconds first_;
  std::chrono::milliseconds last_;
  std::chrono::milliseconds next_;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_AGENTX_BACKOFF_H_
