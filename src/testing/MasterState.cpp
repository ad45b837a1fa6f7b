// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/MasterState.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "snmpsubagent/detail/Clock.h"
#include "testing/StartedRequest.h"
#include "testing/VirtualTime.h"
#include "testing/WireValues.h"

namespace snmpsubagent::testing::internal {
namespace {

// The errors of RFC 2741, 6.2.16, that it answers with.
constexpr std::uint16_t kNoError = 0;
constexpr std::uint16_t kNotOpen = 257;
constexpr std::uint16_t kDuplicateRegistration = 263;
constexpr std::uint16_t kUnknownRegistration = 264;
constexpr std::uint16_t kUnknownAgentCaps = 265;

testkit::FileDescriptor ListenerAt(const std::string& path) {
  testkit::FileDescriptor listener(
      socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw std::system_error(ENAMETOOLONG, std::generic_category(),
                            path + " (TMPDIR is too long for a socket)");
  }
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  if (bind(listener.Number(), reinterpret_cast<const sockaddr*>(&address),
           sizeof address) != 0 ||
      listen(listener.Number(), SOMAXCONN) != 0) {
    throw std::system_error(errno, std::generic_category(), path);
  }
  return listener;
}

// Whether the subagent has closed it, too; what it still says does not count.
bool HasEnded(const testkit::FileDescriptor& socket) {
  std::array<std::uint8_t, 4096> ignored;
  ssize_t size;
  do {
    size = recv(socket.Number(), ignored.data(), ignored.size(), MSG_DONTWAIT);
  } while (size > 0);
  return size == 0 || (errno != EAGAIN && errno != EINTR);
}

bool IsReadable(const testkit::FileDescriptor& descriptor) {
  pollfd poll{descriptor.Number(), POLLIN, 0};
  return ::poll(&poll, 1, 0) > 0;
}

}  // namespace

MasterState::MasterState(Inbox& inbox)
    : inbox_(inbox),
      path_(directory_.Path() / "master"),
      wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  Listen(Lock());
  VirtualTime::Instance().Add(*this);
  thread_ = std::thread([this] { Loop(); });
}

MasterState::~MasterState() {
  VirtualTime::Instance().Remove(*this);
  {
    const Guard lock = Lock();
    ending_ = true;
    Wake();
  }
  thread_.join();
}

void MasterState::WaitUntil(Guard& lock, const std::function<bool()>& condition,
                            const std::function<std::string()>& what) {
  if (!monitor_.WaitUntil(lock, condition)) throw TimedOut(what());
}

std::vector<Registration> MasterState::Registrations(const Guard&) const {
  std::vector<Registration> all;
  for (const Region& region : regions_.All()) {
    all.push_back({FromWire(region.registered.subtree),
                   region.registered.priority, region.context,
                   Find(region.session)->Description()});
  }
  return all;
}

std::vector<Capability> MasterState::Capabilities(const Guard&) const {
  std::vector<Capability> all;
  for (const AddedCapability& each : capabilities_) {
    all.push_back(each.capability);
  }
  return all;
}

std::vector<std::optional<wire::Response>> MasterState::Ask(
    Guard& lock, const std::vector<Question>& questions,
    std::uint32_t transaction) {
  std::vector<std::uint32_t> packets;
  for (const Question& question : questions) {
    Link* const link = Find(question.session);
    packets.push_back(
        link == nullptr
            ? 0
            : link->Ask(
                  {{1, wire::kNetworkByteOrder, 0, transaction, 0},
                   context_.empty() ? std::optional<std::string>() : context_,
                   question.body}));
  }
  Wake();
  StartedRequest::Sent();
  const auto isAnswered = [&](std::size_t i) {
    const Link* const link = Find(questions[i].session);
    return link == nullptr || link->HasResponse(packets[i]);
  };
  AwaitAnswers(lock, [&] {
    std::size_t answered = 0;
    while (answered < questions.size() && isAnswered(answered)) ++answered;
    return answered == questions.size();
  });
  std::vector<std::optional<wire::Response>> responses;
  for (std::size_t i = 0; i < questions.size(); ++i) {
    Link* const link = Find(questions[i].session);
    responses.emplace_back();
    if (link != nullptr) responses.back() = link->TakeResponse(packets[i]);
  }
  return responses;
}

// Others can see whether it goes on; it has the lock whenever it does.
void MasterState::AwaitAnswers(Guard& lock,
                               const std::function<bool()>& areThere) {
  const auto place = asking_.insert(asking_.end(), &areThere);
  const bool inTime = monitor_.WaitUntil(lock, areThere);
  asking_.erase(place);
  monitor_.Changed();
  if (!inTime) throw TimedOut("a subagent does not answer");
}

void MasterState::Tell(const Guard&, const Question& question,
                       std::uint32_t transaction) {
  Link* const link = Find(question.session);
  if (link == nullptr) return;
  link->Ask({{1, wire::kNetworkByteOrder, 0, transaction, 0},
             std::nullopt,
             question.body});
  Wake();
}

void MasterState::Listen(const Guard&) {
  if (listener_.IsOpen()) return;
  start_ = snmpsubagent::detail::Now();
  listener_ = ListenerAt(path_);
  Wake();
}

void MasterState::StopListening(const Guard&) {
  listener_ = testkit::FileDescriptor();
  unlink(path_.c_str());
  Wake();
}

void MasterState::Disconnect(const Guard&) {
  while (!links_.empty()) {
    leaving_.push_back(links_.back()->End());
    Remove(links_.back()->Id());
  }
  Wake();
}

// A subagent answers in the order in which it is asked: with the response to a
// question about nothing, all that it had to do before is done and has arrived.
void MasterState::Settle() {
  Guard lock = Lock();
  std::uint64_t handled = 0;
  do {
    WaitUntil(
        lock, [this] { return IsQuiet(); },
        [] {
          return "a subagent opens no session on its connection, or keeps one "
                 "that has ended";
        });
    handled = handled_;
    const auto questions = QuestionOfEach();
    Ask(lock, questions, NewTransaction(lock));
    handled += questions.size();
  } while (handled_ != handled || !IsQuiet());
}

bool MasterState::IsQuiet() {
  return !(listener_.IsOpen() && IsReadable(listener_)) && leaving_.empty() &&
         std::none_of(asking_.begin(), asking_.end(),
                      [](const auto* areThere) { return (*areThere)(); }) &&
         std::all_of(links_.begin(), links_.end(),
                     [](const auto& link) { return link->IsOpen(); });
}

std::vector<Question> MasterState::QuestionOfEach() const {
  std::vector<Question> questions;
  for (const auto& link : links_)
    questions.push_back({link->Id(), wire::Get{}});
  return questions;
}

void MasterState::Loop() {
  Guard lock = Lock();
  while (!ending_) {
    std::vector<pollfd> polled{{wake_.Number(), POLLIN, 0},
                               {listener_.Number(), POLLIN, 0}};
    std::vector<std::uint32_t> sessions;
    for (const auto& link : links_) {
      const int events = link->HasOutput() ? POLLIN | POLLOUT : POLLIN;
      polled.push_back({link->Descriptor(), static_cast<short>(events), 0});
      sessions.push_back(link->Id());
    }
    for (const auto& socket : leaving_) {
      polled.push_back({socket.Number(), POLLIN, 0});
    }
    lock.unlock();
    poll(polled.data(), polled.size(), -1);
    lock.lock();
    std::uint64_t ignored;
    [[maybe_unused]] const auto got =
        read(wake_.Number(), &ignored, sizeof ignored);
    if (listener_.IsOpen()) Accept();
    for (std::size_t i = 0; i < sessions.size(); ++i) {
      Link* const link = Find(sessions[i]);
      if (link != nullptr && polled[i + 2].revents != 0) Serve(*link);
    }
    leaving_.erase(std::remove_if(leaving_.begin(), leaving_.end(), HasEnded),
                   leaving_.end());
    monitor_.Changed();
  }
}

void MasterState::Serve(Link& link) {
  link.Flush();
  bool isThere = link.Receive();
  try {
    while (const auto message = link.TakeMessage()) {
      ++handled_;
      if (std::holds_alternative<wire::Close>(message->body)) isThere = false;
      Handle(link, *message);
    }
  } catch (const wire::Malformed&) {
    isThere = false;
  }
  if (!isThere) Remove(link.Id());
}

void MasterState::Handle(Link& link, const wire::Pdu& message) {
  if (const auto* response = std::get_if<wire::Response>(&message.body)) {
    link.Keep(message.header.packetId, *response);
    return;
  }
  wire::Response response;
  response.sysUpTime = UpTime();
  response.error = Grant(link, message);
  link.Answer(message, response);
  if (const auto* notify = std::get_if<wire::Notify>(&message.body)) {
    inbox_.Put(FromWire(notify->varbinds));
  }
}

// Returns the error of the response.
std::uint16_t MasterState::Grant(Link& link, const wire::Pdu& message) {
  const std::string context = message.context.value_or("");
  if (const auto* open = std::get_if<wire::Open>(&message.body)) {
    link.Open(open->description);
  } else if (!link.IsOpen()) {
    return kNotOpen;
  } else if (const auto* add = std::get_if<wire::Register>(&message.body)) {
    const bool isNew = regions_.Add({*add, context, link.Id()});
    return isNew ? kNoError : kDuplicateRegistration;
  } else if (const auto* gone = std::get_if<wire::Unregister>(&message.body)) {
    const bool wasThere = regions_.Remove(*gone, context, link.Id());
    return wasThere ? kNoError : kUnknownRegistration;
  } else if (const auto* caps =
                 std::get_if<wire::AddAgentCaps>(&message.body)) {
    capabilities_.push_back(
        {link.Id(), {FromWire(caps->id), caps->description}});
  } else if (const auto* old =
                 std::get_if<wire::RemoveAgentCaps>(&message.body)) {
    const auto found = std::find_if(
        capabilities_.begin(), capabilities_.end(), [&](const auto& each) {
          return each.session == link.Id() &&
                 each.capability.id == FromWire(old->id);
        });
    if (found == capabilities_.end()) return kUnknownAgentCaps;
    capabilities_.erase(found);
  }
  return kNoError;
}

// Each session has an ID that is different in every byte.
void MasterState::Accept() {
  while (true) {
    testkit::FileDescriptor socket(
        accept4(listener_.Number(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!socket.IsOpen()) return;
    lastSession_ += 0x01020304;
    links_.push_back(std::make_unique<Link>(std::move(socket), lastSession_));
  }
}

void MasterState::Remove(std::uint32_t session) {
  regions_.RemoveAll(session);
  const auto isOfIt = [session](const auto& each) {
    return each.session == session;
  };
  capabilities_.erase(
      std::remove_if(capabilities_.begin(), capabilities_.end(), isOfIt),
      capabilities_.end());
  links_.erase(std::remove_if(links_.begin(), links_.end(),
                              [session](const auto& link) {
                                return link->Id() == session;
                              }),
               links_.end());
  monitor_.Changed();
}

Link* MasterState::Find(std::uint32_t session) const {
  for (const auto& link : links_) {
    if (link->Id() == session) return link.get();
  }
  return nullptr;
}

std::uint32_t MasterState::UpTime() const {
  using Hundredths = std::chrono::duration<std::uint32_t, std::centi>;
  return std::chrono::duration_cast<Hundredths>(snmpsubagent::detail::Now() -
                                                start_)
      .count();
}

void MasterState::Wake() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = write(wake_.Number(), &one, sizeof one);
}

}  // namespace snmpsubagent::testing::internal
