// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_AGENTSTATE_H_
#define SNMPSUBAGENT_OBJECTS_AGENTSTATE_H_

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "agentx/Session.h"
#include "objects/AgentMutex.h"
#include "objects/Connection.h"
#include "objects/Log.h"
#include "objects/MasterAddress.h"
#include "objects/Requests.h"
#include "snmpsubagent/Agent.h"
#include "snmpsubagent/Notification.h"

namespace snmpsubagent::detail {

// What lies behind an Agent: the lock, the session and who runs it. Modules and
// objects keep it when the Agent is gone.
//
// Threads: under its lock, unless it says otherwise.
class AgentState final : public std::enable_shared_from_this<AgentState>,
                         private agentx::SessionUser {
 public:
  AgentState(std::string description, AgentOptions options);
  ~AgentState() override;

  AgentMutex& Mutex() const { return mutex_; }
  const AgentOptions& Options() const { return options_; }

  // Those of Agent. They take the lock.
  void Start();
  void Run();
  int Poll();
  void Dispatch();
  void Stop();
  // Stops it for good.
  void End();
  bool WaitUntilConnected(std::chrono::milliseconds time);

  bool IsConnected() const { return session_.IsOpen(); }
  void SetOnSession(std::function<void(const SessionEvent&)> function);
  void SetOnRefusal(std::function<void(const Refusal&)> function);
  std::vector<Refusal> Refusals() const;
  void AddCapability(const Oid& id, const std::string& description);
  std::uint32_t SysUpTimeAt(agentx::Time moment) const {
    return session_.SysUpTime(moment);
  }
  std::uint64_t DroppedNotifications() const {
    return session_.DroppedNotifications();
  }

  std::uint32_t Register(agentx::Registration registration);
  void Unregister(std::uint32_t id);
  bool IsRegistered(std::uint32_t id) const {
    return session_.IsRegistered(id);
  }

  class Requests& Requests() {
    return requests_;
  }
  void Respond(const agentx::Header& request, agentx::Error error,
               std::uint16_t index);
  void Respond(const agentx::Header& request,
               const std::vector<std::uint8_t>& response);
  // Changes when a session ends.
  std::uint64_t SessionEpoch() const { return epoch_; }

  void Notify(std::vector<std::uint8_t> varbinds, const std::string& context,
              NotificationFunction outcome);

  // Logs it if there was something to serve and nobody has.
  void ReportIfItNeverRan() noexcept;

  // Sends what has been queued and minds new deadlines. To be called by whoever
  // has changed something; within a request it is done at its end.
  void Update();

  void Log(LogLevel level, const std::string& line) { log_.Write(level, line); }
  // Logs the exception that is being handled; returns GenErr.
  SetError ReportException(OidView where) noexcept;
  // Log what the application has done to a request: dropped a Later without an
  // answer, or kept everybody waiting.
  void ReportLostAnswer(OidView where) noexcept;
  void ReportSlowFunction(OidView where) noexcept;

 private:
  enum class Mode { Stopped, Thread, Caller, Polled };
  // Of those that the application says: no clock runs over.
  static constexpr std::chrono::milliseconds kLongestTime =
      std::chrono::hours(24 * 365);

  void OnOpened() override;
  void OnEnded(std::string_view reason) override;
  void OnAttemptFailed(std::string_view reason) override;
  void OnRequest(const agentx::Request& request,
                 std::vector<std::uint8_t>& response) override;
  void OnRegistration(std::uint32_t id, agentx::Error error) override;
  void OnAgentCaps(const Oid& id, agentx::Error error) override;
  void OnNotification(std::uint64_t id, agentx::NotificationOutcome outcome,
                      agentx::Error error) override;

  void Open(Mode mode);
  template <typename Work>
  void Alone(const Work& work);
  void Loop(const std::shared_ptr<Connection>& connection);
  bool Serve(Connection& connection, const Connection::Events& events);
  void LookUp(std::function<void()> lookUp, std::function<void()> tell);
  template <typename Telling>
  void IfThereIsMemory(const Telling& tell) noexcept;
  void TellSession(bool connected, std::string_view reason);
  void TellRefusal(std::uint32_t id);
  // Logs it if the application has held the lock for long.
  std::unique_lock<AgentMutex> LockToServe();
  void ReportHeldLock() noexcept;

  mutable AgentMutex mutex_;
  const AgentOptions options_;
  const MasterAddress master_;
  class Log log_;
  agentx::Session session_;
  class Requests requests_;

  Mode mode_ = Mode::Stopped;
  std::shared_ptr<Connection> connection_;  // while it is not stopped
  std::thread thread_;
  bool ended_ = false;  // the Agent is being destroyed
  bool serving_ = false;
  bool hasRun_ = false;      // started, or dispatched
  bool hasModules_ = false;  // or had some
  std::uint64_t epoch_ = 0;
  std::condition_variable_any opened_;

  std::shared_ptr<std::function<void(const SessionEvent&)>> onSession_;
  std::shared_ptr<std::function<void(const Refusal&)>> onRefusal_;
  std::map<std::uint64_t, NotificationFunction> outcomes_;
  std::vector<std::uint8_t> scratch_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_AGENTSTATE_H_
