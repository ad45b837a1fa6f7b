// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_BUS_H_
#define SNMPSUBAGENT_EXAMPLES_BUS_H_

#include <condition_variable>
#include <functional>
#include <mutex>
#include <queue>
#include <thread>
#include <utility>

// Does one thing after the other on a thread of its own.
class Bus {
 public:
  ~Bus() {
    Post({});
    thread_.join();
  }

  // What is empty ends it.
  void Post(std::function<void()> work) {
    const std::lock_guard<std::mutex> lock(mutex_);
    work_.push(std::move(work));
    posted_.notify_one();
  }

 private:
  std::function<void()> Next() {
    std::unique_lock<std::mutex> lock(mutex_);
    posted_.wait(lock, [this] { return !work_.empty(); });
    std::function<void()> next = std::move(work_.front());
    work_.pop();
    return next;
  }

  std::mutex mutex_;
  std::condition_variable posted_;
  std::queue<std::function<void()>> work_;
  std::thread thread_{[this] {
    while (const std::function<void()> work = Next()) work();
  }};
};

#endif  // SNMPSUBAGENT_EXAMPLES_BUS_H_
