// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_STRESS_FUZZ_FUZZEDUSER_H_
#define SNMPSUBAGENT_TESTS_STRESS_FUZZ_FUZZEDUSER_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "Input.h"
#include "agentx/Session.h"

namespace snmpsubagent::agentx {

// The application behind a session: counts what it is told, and does some of
// what an application does from its callbacks.
class FuzzedUser : public SessionUser {
 public:
  static constexpr std::uint32_t kSessionId = 5;

  // All are borrowed.
  void Serve(Session& session, Input& input, Time& now);

  void Notify();

  bool IsOpen() const { return open_; }
  bool EveryOutcomeIsTheOnlyOne() const { return onlyOnes_; }
  // Of all that were told before Stop() returned.
  bool EachNotificationHasOneOutcome();

  void OnOpened() override;
  void OnEnded(std::string_view reason) override;
  void OnAttemptFailed(std::string_view reason) override;
  void OnRequest(const Request& request,
                 std::vector<std::uint8_t>& response) override;
  void OnRegistration(std::uint32_t id, Error error) override;
  void OnNotification(std::uint64_t id, NotificationOutcome outcome,
                      Error error) override;

 private:
  // What an application might do from a callback.
  void ActNow();

  Session* session_ = nullptr;
  Input* input_ = nullptr;
  Time* now_ = nullptr;
  bool open_ = false;
  bool onlyOnes_ = true;
  bool isTold_ = false;           // of a notification
  bool isQueued_ = false;         // another one meanwhile
  std::vector<int> outcomes_{0};  // by the notification's number
  std::uint64_t sent_ = 0;
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_TESTS_STRESS_FUZZ_FUZZEDUSER_H_
