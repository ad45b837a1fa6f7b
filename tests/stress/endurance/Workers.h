// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_WORKERS_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_WORKERS_H_

#include <atomic>
#include <functional>
#include <list>
#include <string>
#include <thread>

// Threads that do their work again and again until they are destroyed.
class Workers {
 public:
  ~Workers();

  // `work` is called on a thread of its own, with a short pause after each
  // call, until it throws.
  void Add(const std::string& name, std::function<void()> work);

  // Ends them; throws what one of them has thrown. Prints how often each has
  // done its work.
  void EndAndReport();

 private:
  struct Worker {
    std::string name;
    long rounds = 0;
    std::string error;
    std::thread thread;
  };

  void End();

  std::atomic<bool> ending_{false};
  std::list<Worker> workers_;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_WORKERS_H_
