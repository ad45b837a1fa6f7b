// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_SERVICE_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_SERVICE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "testkit/Manager.h"

// What managers and the application have done so far.
struct Work {
  std::size_t sets = 0;     // that were to succeed, and did
  std::size_t refused = 0;  // SETs that were to be refused, and were
  std::size_t created = 0;  // rows, by managers
  std::size_t destroyed = 0;
  std::size_t notifications = 0;

  Work& operator+=(const Work& other);
};

// A service of a device that runs for long: a subagent, its objects, and a
// model of what managers are to see of them. What differs from the model is
// thrown as std::runtime_error.
//
// Threads: one; the subagent serves the objects meanwhile.
class Service {
 public:
  virtual ~Service() = default;

  // Connects.
  virtual void Start() = 0;
  // Both are for a restart of the master agent: the first returns when the
  // service knows that it is gone, the second when all is served again.
  virtual void AwaitLoss() = 0;
  virtual void AwaitSession() = 0;

  // The application's own changes: rows come and go, values change.
  virtual void Change() = 0;
  // Has a manager put SETs.
  virtual void Set(const testkit::Manager& manager) = 0;
  // Sends a notification with a number of its own.
  virtual void Notify() = 0;
  // Whether Notify() may be called without a session.
  virtual bool KeepsNotifications() const = 0;

  // Requires that managers read exactly what is known, by whatever request.
  virtual void RequireServed(const testkit::Manager& manager) const = 0;
  // Requires that exactly the notifications sent are among those received, in
  // their order.
  virtual void RequireNotified(
      const std::vector<std::string>& received) const = 0;

  virtual Work Done() const = 0;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_SERVICE_H_
