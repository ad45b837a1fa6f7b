// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "CallJournal.h"

#include <sys/select.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace {

constexpr long kLongestRealWait = 20'000'000;  // nanoseconds

}  // namespace

CallJournal& CallJournal::Get() {
  static CallJournal& journal = *new CallJournal;
  return journal;
}

std::vector<std::string> CallJournal::Calls() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return calls_;
}

int CallJournal::Count(const std::string& name) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return static_cast<int>(std::count(calls_.begin(), calls_.end(), name));
}

void CallJournal::Clear() {
  const std::lock_guard<std::mutex> lock(mutex_);
  calls_.clear();
  timeouts_.clear();
}

std::vector<timeval> CallJournal::Timeouts() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return timeouts_;
}

bool CallJournal::LastThreadExists() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return lastThread_ == 0 ||
         std::filesystem::exists("/proc/self/task/" +
                                 std::to_string(lastThread_));
}

void CallJournal::AnswerSelect(int result, int error) {
  const std::lock_guard<std::mutex> lock(mutex_);
  answers_.push_back({result, error});
}

void CallJournal::SetHook(std::function<void(const std::string&)> hook) {
  const std::lock_guard<std::mutex> lock(mutex_);
  hook_ = std::move(hook);
}

bool CallJournal::WaitForPasses(int count) const {
  const int enough = Count("select") + count;
  return testkit::WaitFor([&] { return Count("select") >= enough; },
                          testkit::Deadlines::Pass());
}

void CallJournal::Begin(const std::string& name) {
  const std::lock_guard<std::mutex> lock(mutex_);
  calls_.push_back(name);
}

void CallJournal::End(const std::string& name) {
  std::function<void(const std::string&)> hook;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    hook = hook_;
  }
  if (hook) hook(name);
}

int CallJournal::Select(int count, fd_set* readable, timeval* timeout) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    timeouts_.push_back(*timeout);
    lastThread_ = gettid();
    if (!answers_.empty()) {
      const Answer answer = answers_.front();
      answers_.pop_front();
      errno = answer.error;
      return answer.result;
    }
  }
  const bool wait = timeout->tv_sec > 0 || timeout->tv_usec > 0;
  const timespec limit = {0, wait ? kLongestRealWait : 0};
  return pselect(count, readable, nullptr, nullptr, &limit, nullptr);
}
