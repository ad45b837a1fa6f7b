// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/Watch.h"

#include <mutex>

namespace {

// A store that no table serves may be changed without the lock of
// NetSNMPAgentGuard, and must not begin to wait for it.
std::mutex mutex;
Watch* first = nullptr;  // guarded by `mutex`

}  // namespace

Watch::Watch(const NetSNMPNode* node) : object_(node) { Begin(); }

Watch::Watch(const Row* row) : object_(row) { Begin(); }

Watch::~Watch() {
  if (object_ == nullptr) return;
  const std::lock_guard<std::mutex> lock(mutex);
  (previous_ == nullptr ? first : previous_->next_) = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
}

void Watch::Destroyed(const NetSNMPNode* node) { End(node); }

void Watch::Destroyed(const Row* row) { End(row); }

void Watch::Begin() {
  if (object_ == nullptr) return;
  const std::lock_guard<std::mutex> lock(mutex);
  next_ = first;
  if (next_ != nullptr) next_->previous_ = this;
  first = this;
}

void Watch::End(const void* object) {
  const std::lock_guard<std::mutex> lock(mutex);
  for (Watch* watch = first; watch != nullptr; watch = watch->next_) {
    if (watch->object_ == object) watch->alive_ = false;
  }
}
