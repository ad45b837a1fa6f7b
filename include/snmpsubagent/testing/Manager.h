// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MANAGER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MANAGER_H_

#include <cstddef>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "snmpsubagent/Oid.h"
#include "snmpsubagent/testing/Response.h"
#include "snmpsubagent/testing/Value.h"

namespace snmpsubagent::testing {

namespace internal {
class Inbox;
}

// What the test waits for does not come: no response, no notification.
struct TimedOut : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A request for one value was answered with an error.
struct RequestFailed : std::runtime_error {
  explicit RequestFailed(Response what);
  Response response;
};

// What a manager asks. The varbinds of all but a SET are names alone.
struct Request {
  enum class Kind { Get, GetNext, GetBulk, Set };
  Kind kind;
  std::vector<Varbind> varbinds;
  std::size_t nonRepeaters = 0;  // of a GETBULK, as RFC 3416 has them
  std::size_t maxRepetitions = 0;
};

// A request whose response is still to come.
class Pending {
 public:
  // `asking` ends when the request is over.
  Pending(std::future<Response> response, std::future<void> asking)
      : response_(std::move(response)), asking_(std::move(asking)) {}

  bool IsAnswered() const;
  // Waits for it. Throws TimedOut. To be called once.
  Response Result();

 private:
  std::future<Response> response_;
  std::future<void> asking_;
};

// What managers do. Each kind of master agent that a test has is one: it
// answers as if it was asked over the network.
//
//   EXPECT_EQ(master.Get("1.3.6.1.4.1.32473.2.1.0"), 21);
//   EXPECT_EQ(master.Set("1.3.6.1.4.1.32473.2.2.0", 100),
//             ErrorStatus::WrongValue);
//
// Every request throws TimedOut if there is no response. How long the kit waits
// only bounds a test that fails: 20 seconds, more under sanitizers and
// valgrind.
//
// Threads: any. The calling one is not to have the lock of an agent.
class Manager {
 public:
  virtual ~Manager();
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  // The value of one instance, or noSuchObject or noSuchInstance. Throws
  // RequestFailed if the response is an error.
  Value Get(const Oid& instance);
  // Several in one request.
  Response Get(const std::vector<Oid>& instances);

  // The instance behind that name; endOfMibView if there is none. Throws
  // RequestFailed.
  Varbind GetNext(const Oid& name);
  Response GetNext(const std::vector<Oid>& names);
  Response GetBulk(std::size_t nonRepeaters, std::size_t maxRepetitions,
                   const std::vector<Oid>& names);

  // All instances below that OID, asked for with GETNEXT. Throws RequestFailed,
  // and std::runtime_error if their names are in no order.
  std::vector<Varbind> Walk(const Oid& subtree);

  // Waits until there is an instance below that OID. Throws TimedOut.
  void WaitUntilServed(const Oid& subtree);

  // One SET, in all its phases. When it returns, the service has seen the last.
  ErrorStatus Set(const Oid& instance, const Value& value);
  Response Set(const std::vector<Varbind>& varbinds);

  // Without waiting for the response: the request is sent when they return.
  // While it is under way, the test may let time pass, or ask something else.
  Pending StartGet(const std::vector<Oid>& instances);
  Pending StartSet(const std::vector<Varbind>& varbinds);

  // Any of them.
  Response Ask(const Request& request) { return Answer(request); }
  Pending Start(const Request& request);

  // Where it answers managers over the network: "127.0.0.1:" and the port of
  // UDP, for SNMPv2c with the community "public".
  virtual std::string SnmpAddress() = 0;

  // The next notification that has arrived, in their order. Waits for it;
  // throws TimedOut.
  Notification NextNotification();
  // Those that have arrived and were not asked for yet. Does not wait.
  std::vector<Notification> TakeNotifications();

 protected:
  Manager();
  internal::Inbox& Notifications() { return *inbox_; }

 private:
  virtual Response Answer(const Request& request) = 0;

  std::unique_ptr<internal::Inbox> inbox_;
};

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_MANAGER_H_
