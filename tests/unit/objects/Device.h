// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DEVICE_H_
#define SNMPSUBAGENT_TESTS_DEVICE_H_

#include <snmpsubagent.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"
#include "testkit/agentx/Pdu.h"

namespace wire = testkit::agentx;

// The subtree of the module that most tests have. OIDs of the tests are
// relative to it, those with a dot in front are whole.
constexpr char kBase[] = "1.3.6.1.4.1.32473.7";

wire::Oid Id(const std::string& oid);  // "." for the null OID

// Values as a manager sends them.
wire::Value Int(std::int32_t number);
wire::Value Gauge(std::uint32_t number);
wire::Value Ticks(std::uint32_t number);
wire::Value Octets(std::string octets);
wire::Value ObjectId(const std::string& oid);

struct Assignment {
  std::string oid;
  wire::Value value;
};
using Assignments = std::vector<Assignment>;

// An agent and the master agent that it is connected with, which the test
// plays. Responses come as text: values as "INTEGER 5"; of requests that find
// their own names, as "1.0 INTEGER 5"; several of them with commas between; an
// error as "genErr 2" with the number of the varbind.
class Device {
 public:
  explicit Device(snmpsubagent::AgentOptions options = Options(),
                  wire::Listener listener = wire::Listener());

  // Those of a test: attempts to connect follow each other soon.
  static snmpsubagent::AgentOptions Options();

  // Starts the agent and takes its session, with so many registrations.
  void Connect(std::size_t registrations = 1);
  // Takes the next session of an agent that is running.
  void Accept(std::size_t registrations = 1);
  // Ends the connection as a failure does.
  void Lose() { session_.reset(); }
  bool IsLost() const { return !session_; }

  wire::MasterSession& Master() { return *session_; }
  int Port() const { return listener_.Port(); }

  std::string Get(const std::string& oid);
  std::string GetAll(const std::vector<std::string>& oids);
  std::string GetNext(const std::string& oid);
  std::string GetNext(const std::vector<wire::SearchRange>& ranges);
  std::string GetBulk(int nonRepeaters, int maxRepetitions,
                      const std::vector<wire::SearchRange>& ranges);
  // All that GETNEXTs from `oid` on find.
  std::string Walk(const std::string& oid);
  // A whole SET, in all its phases: what the manager gets.
  std::string Set(const Assignments& assignments);

  // A request whose response comes later.
  std::uint32_t Send(const wire::Body& request);
  // The next response; the packet id is that of the request.
  std::string Receive(std::uint32_t packetId);

  // Returns when all that was sent before has been served.
  void Sync() { Get("0"); }

  std::vector<std::string> Log() const;
  bool HasLogged(const std::string& part) const;

 private:
  mutable std::mutex logMutex_;
  std::vector<std::string> log_;
  wire::Listener listener_;
  std::unique_ptr<wire::MasterSession> session_;
  std::uint32_t sessions_ = 0;

 public:
  snmpsubagent::Agent agent;
};

// The phases of one SET, one by one. Each returns "noError" or an error.
class Phases {
 public:
  explicit Phases(Device& device)
      : Phases(device, device.Master().NewTransaction()) {}
  Phases(Device& device, std::uint32_t transaction)
      : device_(device), transaction_(transaction) {}

  std::string Test(const Assignments& assignments);
  std::string Commit();
  std::string Undo();
  // Has no response; returns when it is done.
  void Cleanup();

  // Those that are answered later; see Device::Receive().
  std::uint32_t SendTest(const Assignments& assignments);
  std::uint32_t SendCommit();
  std::uint32_t SendUndo();

  std::uint32_t Transaction() const { return transaction_; }

 private:
  Device& device_;
  std::uint32_t transaction_;
};

std::string Text(const wire::Response& response, bool withNames);

// A range as a GETNEXT has it: behind `start`, or from there on.
wire::SearchRange After(const std::string& start, const std::string& end = "");
wire::SearchRange From(const std::string& start, const std::string& end = "");

// Waits for what another thread does; false if it does not happen in time.
bool Eventually(const std::function<bool()>& condition);

#endif  // SNMPSUBAGENT_TESTS_DEVICE_H_
