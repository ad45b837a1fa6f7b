// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_AGENT_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_AGENT_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "snmpsubagent/AgentLock.h"
#include "snmpsubagent/Export.h"
#include "snmpsubagent/Oid.h"

namespace snmpsubagent {

enum class LogLevel { Error, Warning, Info };

// How an agent reaches its master agent, and how long both wait: a year at
// most. The defaults suit a device whose snmpd.conf says `master agentx`.
struct AgentOptions {
  // "unix:/path", "tcp:host:port" or "tcp6:[address]:port".
  std::string master = "unix:/var/agentx/master";
  // How long the master agent is to wait for a response, whole seconds up to
  // 255. What takes longer (see Later) is answered with genErr, in a SET with
  // commitFailed, half a second before.
  std::chrono::seconds timeout{5};
  // How long this side waits for a response of the master agent; then the
  // session is given up and made anew.
  std::chrono::milliseconds responseTimeout{10000};
  // Between attempts to connect: at first, doubled with each, and at most.
  std::chrono::milliseconds firstRetry{100};
  std::chrono::milliseconds lastRetry{15000};
  // How often an idle session is pinged; 0 for never.
  std::chrono::milliseconds pingInterval{15000};
  // The context of all modules that name none (RFC 2741, 6.1.1).
  std::string context{};
  // Notifications that are kept while there is no session; then the oldest go.
  std::size_t notificationLimit = 1000;
  // Takes the log lines, from any thread, under the agent's lock. Without one
  // they go to syslog(3), and to stderr as well if that is a terminal.
  std::function<void(LogLevel, const std::string&)> log{};
};

// A registration that the master agent does not take, for the time being.
struct Refusal {
  Oid subtree;
  std::string context;
  std::string reason;  // "duplicateRegistration", say
};

// A change of the session.
struct SessionEvent {
  bool connected;
  std::string reason;  // why it is lost; empty when it has come up
};

// An AgentX session with one master agent (RFC 2741), and what is served over
// it. A process may have several, each with a master agent, a thread and a lock
// of its own.
//
//   snmp::Agent agent("thermometer");
//   snmp::Module module(agent, "1.3.6.1.4.1.32473.2");
//   snmp::Scalar temperature(module, "1", celsius);
//   agent.Run();
//
// It connects by itself, and again whenever the session is lost. Nothing waits
// for the master agent: connecting, registering and sending go on beside.
//
//   run by                                  until
//   Start()   a thread of its own           Stop() or the destructor
//   Run()     the calling thread            Stop(), by anybody
//   Poll()    the application's event loop  Stop() or the destructor
//
// Modules, scalars and all else may be built before and after that, and may
// outlive the agent.
//
// Threads: every operation from any thread, and from functions that the library
// calls. Those run one at a time under the agent's lock.
class SNMPSUBAGENT_OBJECTS_EXPORT Agent {
 public:
  // `description` is what the master agent may show of it (RFC 2741, 6.2.1), up
  // to 255 octets. Starts nothing. Throws std::invalid_argument for a master
  // that has no such form, or a value that is out of range.
  explicit Agent(std::string description, AgentOptions options = {});
  // Stops.
  ~Agent();
  Agent(const Agent&) = delete;
  Agent& operator=(const Agent&) = delete;

  // Returns at once; nothing happens if the agent is running. Throws
  // std::system_error without a thread or a descriptor to spare.
  void Start();

  // Serves on the calling thread until Stop(). Throws as Start() does, and
  // std::logic_error if the agent is running.
  void Run();

  // Serves within the application's own event loop: returns a descriptor;
  // whenever that is readable, call Dispatch(), which serves what there is and
  // never waits. The descriptor is the agent's, and valid until Stop(). Throws
  // as Run() does.
  int Poll();
  void Dispatch();

  // Closes the session, so that managers get noSuchObject at once and not a
  // timeout. Undoes the SETs that are under way and drops the notifications
  // that wait. When it returns, no application function runs or will
  // run, except the one that called it, or one for which the calling thread's
  // Lock() makes it wait. A SET whose function has called it is undone when
  // that function returns; of one that is final the other Changed functions are
  // called then. Start() works again afterwards, but not in the destructor.
  void Stop();

  // Whether the session with the master agent is up.
  bool Connected() const;
  // Waits until then, for at most `time`; returns whether it is. With the lock
  // held it does not wait.
  bool WaitUntilConnected(std::chrono::milliseconds time) const;

  // Called when the session has come up and when it is lost.
  void OnSession(std::function<void(const SessionEvent&)> function);
  // Called when the master agent refuses a registration. It is tried again by
  // itself, since its owner may leave.
  void OnRefusal(std::function<void(const Refusal&)> function);
  // Those that are refused now.
  std::vector<Refusal> Refusals() const;

  // A capability in the master agent's sysORTable (RFC 2741, 6.2.14), for as
  // long as the agent lives. One that is refused is logged and tried again.
  void AddCapability(const Oid& id, const std::string& description);

  // The master agent's sysUpTime in hundredths of a second; 0 if there was no
  // session yet.
  std::uint32_t SysUpTime() const;

  // Notifications that were never sent: too many waited for a session, or the
  // agent was stopped.
  std::uint64_t DroppedNotifications() const;

  // Keeps requests out while what it returns lives: for changes that managers
  // are to see in one piece. May be nested.
  [[nodiscard]] AgentLock Lock() const { return AgentLock(state_); }

  const std::shared_ptr<detail::AgentState>& State() const { return state_; }

 private:
  std::shared_ptr<detail::AgentState> state_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_AGENT_H_
