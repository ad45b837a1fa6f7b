// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A subagent's session from beginning to end: what the driver, the application
// and the master agent do, in any order. Whatever it is, each notification has
// one outcome, a session that is stopped says nothing, deadlines are kept, and
// what is written are messages.
#include <cstdint>
#include <string>

#include "FuzzedUser.h"
#include "Input.h"
#include "agentx/Session.h"
#include "support/AgentXReference.h"

namespace snmpsubagent::agentx {
namespace {

SessionOptions OptionsFrom(Input& input) {
  SessionOptions options;
  options.notificationLimit = input.Below(6);
  options.pingInterval = std::chrono::seconds(input.Below(20));
  options.responseTimeout = std::chrono::seconds(1 + input.Below(20));
  return options;
}

// The driver, the application and the master agent of one session.
class Run {
 public:
  explicit Run(Input& input)
      : input_(input), session_(OptionsFrom(input), user_) {
    user_.Serve(session_, input, now_);
  }

  void Play() {
    while (!input_.AtEnd()) {
      Step();
      Check();
    }
    session_.Stop(now_);
    Require(user_.EachNotificationHasOneOutcome(), "an outcome is missing");
  }

 private:
  void Step();
  void DriverStep();
  void ApplicationStep();
  void TakeOutput(std::size_t most);
  void MasterStep();
  void Receive(const Bytes& bytes);
  void Check();

  Input& input_;
  Time now_ = Time() + std::chrono::hours(1);
  FuzzedUser user_;
  Session session_;
  bool connected_ = false;
  // What the connection has taken, and how much of it was read as messages.
  Bytes taken_;
  std::size_t read_ = 0;
  std::vector<reference::Pdu> requests_;  // of the session, not answered yet
};

void Run::Step() {
  switch (input_.Below(3)) {
    case 0:
      return DriverStep();
    case 1:
      return ApplicationStep();
    default:
      return MasterStep();
  }
}

void Run::DriverStep() {
  switch (input_.Below(6)) {
    case 0:
      if (!session_.WantsConnection()) return;
      session_.Connected(now_);
      connected_ = true;
      taken_.clear();
      read_ = 0;
      requests_.clear();
      return;
    case 1:
      return session_.ConnectFailed(now_, "refused");
    case 2:
      connected_ = false;
      return session_.Disconnected(now_, "gone");
    case 3:
      return TakeOutput(input_.U16());
    case 4:
      now_ += std::chrono::milliseconds(input_.U16());
      [[fallthrough]];
    default:
      if (!session_.Advance(now_)) connected_ = false;
  }
}

void Run::ApplicationStep() {
  switch (input_.Below(8)) {
    case 0:
      return session_.Start(now_);
    case 1:
      if (input_.Below(4) != 0) return;
      session_.Stop(now_);
      connected_ = false;
      return;
    case 2:
      session_.Register({Oid{1, 3, 6, 1, input_.Below(4)}, "", 127, {}}, now_);
      return;
    case 3:
      return session_.Unregister(input_.Below(16), now_);
    case 4:
      return session_.AddAgentCaps(Oid{1, 3, input_.Below(4)}, "what", "",
                                   now_);
    case 5:
      return session_.RemoveAgentCaps(Oid{1, 3, input_.Below(4)}, "", now_);
    default:
      return user_.Notify();
  }
}

void Run::TakeOutput(std::size_t most) {
  Output& output = session_.Output();
  const std::size_t count = std::min(most, output.size());
  taken_.insert(taken_.end(), output.data(), output.data() + count);
  output.Sent(count);
  while (taken_.size() - read_ >= kHeaderSize) {
    const std::size_t size = reference::MessageSize(&taken_[read_]);
    if (taken_.size() - read_ < size) return;
    reference::Pdu pdu = reference::Decode(&taken_[read_], size);
    if (pdu.body.index() + 1 != static_cast<std::size_t>(PduType::Response)) {
      requests_.push_back(std::move(pdu));
    }
    read_ += size;
  }
}

void Run::MasterStep() {
  if (!connected_) return;
  if (input_.Below(4) == 0) {
    const std::string bytes = input_.Bytes(200);
    return Receive({bytes.begin(), bytes.end()});
  }
  reference::Pdu pdu;
  pdu.header = {1, kNetworkByteOrder, FuzzedUser::kSessionId, 1,
                input_.Below(8)};
  if (input_.Below(2) == 0 && !requests_.empty()) {
    const auto chosen =
        requests_.begin() + input_.Below(static_cast<unsigned int>(
                                std::min<std::size_t>(requests_.size(), 256)));
    pdu.header.packetId = chosen->header.packetId;
    requests_.erase(chosen);
    const auto error = static_cast<std::uint16_t>(
        input_.Below(4) == 0 ? 256 + input_.Below(13) : 0);
    pdu.body = reference::Response{input_.U32(), error, 0, {}};
  } else {
    switch (input_.Below(4)) {
      case 0:
        pdu.body = reference::Get{};
        break;
      case 1:
        pdu.body = reference::CleanupSet{};
        break;
      case 2:
        pdu.body = reference::Close{input_.U8()};
        break;
      default:
        pdu.body = reference::TestSet{};
    }
  }
  Receive(reference::Encode(pdu));
}

// In one piece or two.
void Run::Receive(const Bytes& bytes) {
  const std::size_t first = std::min<std::size_t>(input_.U8(), bytes.size());
  connected_ = session_.Receive(bytes.data(), first, now_);
  if (!connected_) return;
  connected_ =
      session_.Receive(bytes.data() + first, bytes.size() - first, now_);
}

// A callback may have stopped the session, and started it again.
void Run::Check() {
  connected_ = connected_ && session_.HasConnection();
  Require(!session_.IsOpen() || connected_, "open without a connection");
  Require(user_.IsOpen() == session_.IsOpen(), "another state than was told");
  Require(!session_.WantsConnection() || !connected_,
          "a connection is wanted beside the one that there is");
  const auto deadline = session_.NextDeadline();
  Require(!deadline || !session_.WantsConnection(),
          "a deadline while the driver connects");
  Require(user_.EveryOutcomeIsTheOnlyOne(), "two outcomes of one");
}

}  // namespace
}  // namespace snmpsubagent::agentx

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  Input input(data, size);
  snmpsubagent::agentx::Run(input).Play();
  return 0;
}
