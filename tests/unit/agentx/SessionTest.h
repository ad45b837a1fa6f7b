// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_UNIT_AGENTX_SESSIONTEST_H_
#define SNMPSUBAGENT_TESTS_UNIT_AGENTX_SESSIONTEST_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "agentx/ResponseWriter.h"
#include "agentx/Session.h"
#include "support/AgentXReference.h"

namespace snmpsubagent::agentx {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

// A session with its driver and its user on one side and a master agent on the
// other, all in the test's hand: what the session tells is in `told`, and time
// goes on with Pass() only.
class SessionInHand : public SessionUser {
 public:
  static constexpr std::uint32_t kSessionId = 77;

  // `options` can be changed before.
  Session& session() {
    if (!session_) session_.emplace(options, *this);
    return *session_;
  }

  // What the session has told since the last call.
  std::vector<std::string> Told() { return std::exchange(told, {}); }

  void OnOpened() override { Tell("opened"); }
  void OnEnded(std::string_view reason) override {
    Tell("ended: " + std::string(reason));
  }
  void OnAttemptFailed(std::string_view reason) override {
    Tell("attempt failed: " + std::string(reason));
  }
  void OnRequest(const Request& request, Bytes& response) override {
    requests.push_back(request.header);
    Tell("request");
    if (request.header.type == PduType::CleanupSet) return;
    ResponseWriter writer(response, request.header);
    if (answerSize > 0) {
      writer.Varbinds().Name(Oid{1, 3});
      writer.Varbinds().Octets(ValueType::OctetString,
                               std::string(answerSize, 'x'));
    }
    writer.Finish();
  }
  void OnRegistration(std::uint32_t id, Error error) override {
    Tell("registration " + std::to_string(id) + ": " + ToString(error));
  }
  void OnAgentCaps(const Oid& id, Error error) override {
    Tell("caps " + ToString(id) + ": " + ToString(error));
  }
  void OnNotification(std::uint64_t id, NotificationOutcome outcome,
                      Error error) override {
    const char* const names[] = {"sent", "refused", "dropped", "unanswered"};
    Tell("notification " + std::to_string(id) + ": " +
         names[static_cast<int>(outcome)] +
         (error == Error::None ? "" : ", " + ToString(error)));
  }

  // The driver: time passes, and Advance() is called whenever it is due.
  // Returns whether the connection is to be kept.
  bool Pass(milliseconds time);

  // The messages of the output, which are sent with that.
  std::vector<reference::Pdu> Sent();
  // The only one, which has to be a `Body`.
  template <typename Body>
  Body SentOnly() {
    const auto sent = Sent();
    EXPECT_EQ(sent.size(), 1U);
    const Body* const body =
        sent.empty() ? nullptr : std::get_if<Body>(&sent.back().body);
    EXPECT_TRUE(body);
    return body ? *body : Body();
  }
  // The types of the messages of the output, as "Register".
  std::vector<std::string> SentTypes();

  // The master agent sends; returns whether the connection is to be kept.
  bool Receive(const Bytes& bytes);
  bool Receive(reference::Body body, std::uint32_t sessionId = kSessionId,
               std::uint32_t packetId = 1);
  // It answers a request of the session's.
  bool Answer(const reference::Pdu& request, Error error = Error::None,
              std::uint32_t sysUpTime = 0);
  // It answers whatever the session sends, until nothing comes any more.
  void AnswerAll();

  // Brings the session up to the place in question.
  void StartConnecting();
  void StartOpening();
  void StartOpen();

  std::uint64_t Notify(SubIdentifier last = 1) {
    return session().Notify(NotifyPayload(last), "", now);
  }
  static Bytes NotifyPayload(SubIdentifier last);
  std::uint32_t Register(const char* oid) {
    return session().Register({oid, "", 127, seconds(0)}, now);
  }
  // The last sub-identifiers of the notifications sent.
  static std::vector<SubIdentifier> LastOf(
      const std::vector<reference::Pdu>& sent);

  SessionOptions options;
  Time now = Time() + std::chrono::hours(1);
  std::vector<std::string> told;
  std::vector<Header> requests;
  // Octets in the answer to a request; without any it has no varbind.
  std::size_t answerSize = 0;
  // Run whenever something is told.
  std::function<void(const std::string&)> whenTold;

 private:
  void Tell(const std::string& what) {
    told.push_back(what);
    if (whenTold) whenTold(what);
  }

  std::optional<Session> session_;
};

class SessionTest : public testing::Test, public SessionInHand {};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_TESTS_UNIT_AGENTX_SESSIONTEST_H_
