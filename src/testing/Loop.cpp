// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Loop.h"

#include <poll.h>

#include <algorithm>
#include <utility>

#include "testing/LoopsOfThread.h"

namespace snmpsubagent::testing {
namespace {

bool IsReadable(int descriptor) {
  pollfd poll{descriptor, POLLIN, 0};
  return ::poll(&poll, 1, 0) > 0;
}

}  // namespace

Loop::Loop() { internal::LoopsOfThread::Here().Add(*this); }

Loop::Loop(Agent& agent) : Loop() { Serve(agent); }

Loop::~Loop() { internal::LoopsOfThread::Here().Remove(*this); }

void Loop::Serve(Agent& agent) {
  Watch(agent.Poll(), [&agent] { agent.Dispatch(); });
}

void Loop::Watch(int descriptor, std::function<void()> function) {
  watched_.push_back({descriptor, std::move(function)});
}

void Loop::RunOnce() {
  const std::vector<Watched> watched = watched_;  // a function may add to them
  for (const Watched& each : watched) {
    if (IsReadable(each.descriptor)) each.function();
  }
}

namespace internal {

LoopsOfThread& LoopsOfThread::Here() {
  thread_local LoopsOfThread loops;
  return loops;
}

void LoopsOfThread::Remove(const Loop& loop) {
  loops_.erase(std::remove(loops_.begin(), loops_.end(), &loop), loops_.end());
}

void LoopsOfThread::Run() {
  if (std::exchange(running_, true)) return;
  try {
    for (Loop* loop : loops_) loop->RunOnce();
  } catch (...) {
    running_ = false;
    throw;
  }
  running_ = false;
}

}  // namespace internal
}  // namespace snmpsubagent::testing
