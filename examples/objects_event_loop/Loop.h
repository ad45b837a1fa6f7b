// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_LOOP_H_
#define SNMPSUBAGENT_EXAMPLES_LOOP_H_

#include <sys/epoll.h>
#include <unistd.h>

#include <functional>
#include <map>
#include <utility>

// An event loop: one epoll_wait(2) for all descriptors of a service.
class Loop {
 public:
  ~Loop() { close(epoll_); }

  void Watch(int descriptor, std::function<void()> function) {
    functions_[descriptor] = std::move(function);
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    epoll_ctl(epoll_, EPOLL_CTL_ADD, descriptor, &event);
  }

  // Waits for the next event and serves it.
  void RunOnce() {
    epoll_event event{};
    if (epoll_wait(epoll_, &event, 1, -1) == 1) functions_[event.data.fd]();
  }

  // Readable when there is something to serve.
  int Descriptor() const { return epoll_; }

 private:
  const int epoll_ = epoll_create1(EPOLL_CLOEXEC);
  std::map<int, std::function<void()>> functions_;
};

#endif  // SNMPSUBAGENT_EXAMPLES_LOOP_H_
