// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Values that take their time: a sensor on a slow bus, and a valve that needs a
// second to move. Both requests go to a thread of the service; managers are
// served meanwhile.
//
//   objects_later [host port]      where the master agent takes AgentX sessions
#include <signal.h>
#include <snmpsubagent.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <queue>
#include <string>
#include <thread>
#include <utility>

namespace snmp = snmpsubagent;

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

int main(int argc, char* argv[]) {
  using std::chrono::milliseconds;
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  // Before there is another thread, so that only this one gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);

  Bus bus;
  snmp::AgentOptions options;
  if (argc > 2) options.master = std::string("tcp:") + argv[1] + ":" + argv[2];
  snmp::Agent agent("objects_later", options);
  snmp::Module module(agent, "1.3.6.1.4.1.32473.3.23");

  snmp::Scalar pressure(module, "1", [&bus](const snmp::Later<int>& reply) {
    bus.Post([reply] {
      std::this_thread::sleep_for(milliseconds(200));  // the sensor's
      reply.Answer(1013);
    });
  });

  snmp::Scalar valve(module, "2", 0, snmp::ReadWrite().Range(0, 100));
  valve.Apply([&bus](int, int, const snmp::Later<snmp::SetError>& reply) {
    bus.Post([reply] {
      std::this_thread::sleep_for(milliseconds(1000));  // until it has moved
      reply.Answer(snmp::SetError::None);
    });
  });

  snmp::Scalar location(module, "3", "boiler room");

  agent.Start();
  int signal = 0;
  sigwait(&signals, &signal);
}
