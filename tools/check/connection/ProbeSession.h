// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_PROBESESSION_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_PROBESESSION_H_

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "agentx/Session.h"

namespace snmpsubagent::check {

// An AgentX session over a connection, which registers what it is told and has
// an INTEGER for each object that it is asked for.
//
// Threads: one, but for Asked().
class ProbeSession : private agentx::SessionUser {
 public:
  // The descriptor is borrowed.
  ProbeSession(int descriptor, std::chrono::milliseconds timeout);

  // Opens the session; why it fails, "" if the time is over without an answer.
  std::optional<std::string> Open();

  // Registers a subtree; the master agent's answer, nothing without one.
  std::optional<agentx::Error> Register(const snmpsubagent::Oid& subtree);
  void Unregister();

  // Answers requests until `done`.
  void Serve(const std::atomic<bool>& done);
  // Whether a manager's request has come through.
  bool Asked() const { return asked_; }

  // Ends the session in order.
  void Close();

 private:
  void OnOpened() override { open_ = true; }
  void OnEnded(std::string_view reason) override { failure_ = reason; }
  void OnAttemptFailed(std::string_view reason) override { failure_ = reason; }
  void OnRequest(const agentx::Request& request,
                 std::vector<std::uint8_t>& response) override;
  void OnRegistration(std::uint32_t id, agentx::Error error) override;
  void OnNotification(std::uint64_t, agentx::NotificationOutcome,
                      agentx::Error) override {}

  bool RunUntil(const std::function<bool()>& done, agentx::Time deadline);
  bool Step(std::chrono::milliseconds wait);
  void Flush();

  int descriptor_;
  std::chrono::milliseconds timeout_;
  agentx::Session session_;
  bool open_ = false;
  bool broken_ = false;
  std::string failure_;
  std::uint32_t registration_ = 0;
  std::optional<agentx::Error> answer_;
  std::atomic<bool> asked_{false};
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_PROBESESSION_H_
