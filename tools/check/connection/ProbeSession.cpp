// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/connection/ProbeSession.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>

#include "agentx/ResponseWriter.h"

namespace snmpsubagent::check {
namespace {

// How long at most until Serve() sees that it is done.
constexpr std::chrono::milliseconds kStep{20};

agentx::SessionOptions OptionsFor(std::chrono::milliseconds timeout) {
  agentx::SessionOptions options;
  options.description = "snmpsubagent-check";
  // Ours ends first, so that silence is told from a session that is lost.
  options.responseTimeout = 2 * timeout;
  options.pingInterval = std::chrono::milliseconds(0);
  return options;
}

}  // namespace

ProbeSession::ProbeSession(int descriptor, std::chrono::milliseconds timeout)
    : descriptor_(descriptor),
      timeout_(timeout),
      session_(OptionsFor(timeout), *this) {}

std::optional<std::string> ProbeSession::Open() {
  const agentx::Time now = agentx::Clock::now();
  session_.Start(now);
  session_.Connected(now);
  RunUntil([this] { return open_ || !failure_.empty(); }, now + timeout_);
  if (open_) return std::nullopt;
  return failure_;
}

std::optional<agentx::Error> ProbeSession::Register(
    const snmpsubagent::Oid& subtree) {
  const agentx::Time now = agentx::Clock::now();
  answer_.reset();
  agentx::Registration registration;
  registration.subtree = subtree;
  registration_ = session_.Register(registration, now);
  RunUntil([this] { return answer_ || !failure_.empty(); }, now + timeout_);
  return answer_;
}

void ProbeSession::Unregister() {
  session_.Unregister(registration_, agentx::Clock::now());
}

void ProbeSession::Serve(const std::atomic<bool>& done) {
  while (!done && Step(kStep)) continue;
}

void ProbeSession::Close() {
  session_.Stop(agentx::Clock::now());
  Flush();
}

void ProbeSession::OnRequest(const agentx::Request& request,
                             std::vector<std::uint8_t>& response) {
  if (request.header.type == agentx::PduType::CleanupSet) return;
  asked_ = true;
  agentx::ResponseWriter writer(response, request.header);
  if (!request.ranges) {
    writer.Refuse(agentx::Error::NotWritable, 1);
  } else {
    const bool isGet = request.header.type == agentx::PduType::Get;
    for (const agentx::SearchRange& range : *request.ranges) {
      writer.Varbinds().Name(range.start);
      if (isGet) {
        writer.Varbinds().Integer(1);
      } else {
        writer.Varbinds().Empty(ValueType::EndOfMibView);
      }
    }
  }
  writer.Finish();
}

void ProbeSession::OnRegistration(std::uint32_t, agentx::Error error) {
  answer_ = error;
}

bool ProbeSession::RunUntil(const std::function<bool()>& done,
                            agentx::Time deadline) {
  while (!done() && agentx::Clock::now() < deadline) {
    if (!Step(kStep)) break;
  }
  return done();
}

// Sends what there is, and takes what comes within a time; false when the
// connection has ended.
bool ProbeSession::Step(std::chrono::milliseconds wait) {
  Flush();
  pollfd readable{descriptor_, POLLIN, 0};
  if (poll(&readable, 1, static_cast<int>(wait.count())) <= 0) return !broken_;
  std::array<std::uint8_t, 4096> bytes;
  const ssize_t size = recv(descriptor_, bytes.data(), bytes.size(), 0);
  const agentx::Time now = agentx::Clock::now();
  if (size <= 0) {
    session_.Disconnected(now, "the connection was closed");
    broken_ = true;
  } else if (!session_.Receive(bytes.data(), static_cast<std::size_t>(size),
                               now)) {
    broken_ = true;
  }
  Flush();
  return !broken_;
}

void ProbeSession::Flush() {
  agentx::Output& output = session_.Output();
  while (!output.empty()) {
    const ssize_t sent =
        send(descriptor_, output.data(), output.size(), MSG_NOSIGNAL);
    if (sent <= 0) return;
    output.Sent(static_cast<std::size_t>(sent));
  }
}

}  // namespace snmpsubagent::check
