// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/VirtualTime.h"

#include <sys/timerfd.h>

#include <algorithm>
#include <stdexcept>

#include "snmpsubagent/testing/Clock.h"
#include "snmpsubagent/testing/Manager.h"

namespace snmpsubagent::testing {

Clock::Clock() { internal::VirtualTime::Instance().Stop(); }
Clock::~Clock() { internal::VirtualTime::Instance().GoOn(); }

std::chrono::steady_clock::time_point Clock::Now() const {
  return internal::VirtualTime::Instance().Now();
}

void Clock::Advance(std::chrono::steady_clock::duration time) {
  internal::VirtualTime::Instance().Advance(time);
}

namespace internal {

VirtualTime& VirtualTime::Instance() {
  static auto* const instance = new VirtualTime;  // agents may outlive all else
  return *instance;
}

void VirtualTime::Stop() {
  const auto lock = monitor_.Lock();
  if (isStopped_) throw std::logic_error("there is another Clock");
  isStopped_ = true;
  now_ = std::chrono::steady_clock::now().time_since_epoch().count();
  snmpsubagent::detail::SetTestClock(this);
}

// Each agent sets its timer anew, by the steady clock.
void VirtualTime::GoOn() {
  const auto lock = monitor_.Lock();
  snmpsubagent::detail::SetTestClock(nullptr);
  isStopped_ = false;
  for (const auto& [timer, time] : timers_) Fire(timer);
  timers_.clear();
}

void VirtualTime::Advance(Time::duration time) {
  const Time end = Now() + time;
  Settle();
  for (auto next = Next(); next && *next <= end; next = Next()) {
    SetTo(*next);
    Settle();
  }
  SetTo(end);
  Settle();
}

void VirtualTime::Schedule(int timer, std::optional<Time> time) {
  const auto lock = monitor_.Lock();
  if (!isStopped_) {  // the steady clock has just gone on
    Fire(timer);
    return;
  }
  timers_.erase(timer);
  if (time) timers_[timer] = *time;
  if (time && *time <= Now()) Fire(timer);
  monitor_.Changed();
}

void VirtualTime::Add(MasterState& master) {
  const auto lock = monitor_.Lock();
  masters_.push_back(&master);
}

void VirtualTime::Remove(MasterState& master) {
  const auto lock = monitor_.Lock();
  masters_.erase(std::remove(masters_.begin(), masters_.end(), &master),
                 masters_.end());
}

void VirtualTime::Settle() {
  std::optional<Time> next;
  do {
    AwaitAgents();
    for (MasterState* master : Masters()) master->Settle();
    next = Next();
  } while (next && *next <= Now());
}

void VirtualTime::AwaitAgents() {
  auto lock = monitor_.Lock();
  if (!monitor_.WaitUntil(lock, [this] { return !IsSomethingDue(); })) {
    throw TimedOut("an agent does not do what it is time for");
  }
}

std::vector<MasterState*> VirtualTime::Masters() {
  const auto lock = monitor_.Lock();
  return masters_;
}

std::optional<Time> VirtualTime::Next() {
  const auto lock = monitor_.Lock();
  return Earliest();
}

std::optional<Time> VirtualTime::Earliest() const {
  std::optional<Time> earliest;
  for (const auto& [timer, time] : timers_) {
    if (!earliest || time < *earliest) earliest = time;
  }
  return earliest;
}

bool VirtualTime::IsSomethingDue() const {
  const auto next = Earliest();
  return next && *next <= Now();
}

void VirtualTime::SetTo(Time time) {
  const auto lock = monitor_.Lock();
  now_ = std::max(now_.load(), time.time_since_epoch().count());
  for (const auto& [timer, due] : timers_) {
    if (due <= Now()) Fire(timer);
  }
}

void VirtualTime::Fire(int timer) {
  itimerspec atOnce{};
  atOnce.it_value.tv_nsec = 1;
  timerfd_settime(timer, 0, &atOnce, nullptr);
}

}  // namespace internal
}  // namespace snmpsubagent::testing
