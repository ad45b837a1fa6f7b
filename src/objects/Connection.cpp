// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Connection.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/timerfd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "objects/Clock.h"

namespace snmpsubagent::detail {
namespace {

// What is read from the socket at once; a message may be longer.
constexpr std::size_t kReadSize = 65536;

// What tells one descriptor's events from another's.
constexpr std::uint64_t kWake = 0;
constexpr std::uint64_t kTimer = 1;
constexpr std::uint64_t kFirstSocket = 2;

void WatchForInput(const FileDescriptor& events,
                   const FileDescriptor& descriptor, std::uint64_t name) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.u64 = name;
  epoll_ctl(events.Number(), EPOLL_CTL_ADD, descriptor.Number(), &event);
}

FileDescriptor Opened(int number, const char* what) {
  if (number < 0) {
    throw std::system_error(errno, std::generic_category(), what);
  }
  return FileDescriptor(number);
}

}  // namespace

Connection::Connection(agentx::Session& session, const MasterAddress& master,
                       std::chrono::milliseconds patience, LookUp lookUp)
    : session_(session),
      master_(master),
      patience_(patience),
      lookUp_(std::move(lookUp)),
      events_(Opened(epoll_create1(EPOLL_CLOEXEC), "epoll_create1")),
      wake_(Opened(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "eventfd")),
      timer_(Opened(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK),
                    "timerfd_create")),
      received_(kReadSize) {
  WatchForInput(events_, wake_, kWake);
  WatchForInput(events_, timer_, kTimer);
}

void Connection::Wake() {
  const std::uint64_t one = 1;
  // Fails only if it is readable already.
  [[maybe_unused]] const auto written = write(wake_.Number(), &one, sizeof one);
  ScheduledByTest(timer_.Number(), Now());
}

Connection::Events Connection::Wait(bool atOnce) const {
  Events happened;
  happened.count =
      epoll_wait(events_.Number(), happened.events.data(),
                 static_cast<int>(happened.events.size()), atOnce ? 0 : -1);
  return happened;
}

bool Connection::Serve(const Events& happened) {
  bool mayBeTime = false;
  for (int i = 0; i < happened.count; ++i) {
    const epoll_event& event = happened.events[static_cast<std::size_t>(i)];
    if (event.data.u64 == kWake || event.data.u64 == kTimer) {
      const bool isTimer = event.data.u64 == kTimer;
      std::uint64_t ignored;
      [[maybe_unused]] const auto got =
          read((isTimer ? timer_ : wake_).Number(), &ignored, sizeof ignored);
      if (isTimer) timerSetTo_.reset();
      mayBeTime = true;
    } else if (event.data.u64 == kFirstSocket + socketCount_) {
      ServeSocket(event.events);
    }
  }
  if (mayBeTime) MeetDeadlines();
  return mayBeTime;
}

void Connection::MeetDeadlines() {
  const agentx::Time now = Now();
  if (connectDeadline_ && now >= *connectDeadline_) {
    GiveUpEndpoint(ETIMEDOUT);
  }
  const auto isDue = [&] {
    const auto deadline = session_.NextDeadline();
    return deadline && now >= *deadline;
  };
  if (!isDue()) return;
  // No response is overdue to what has not been sent, nor one that has come
  // since the events did.
  Flush();
  if (socket_.IsOpen() && !connecting_) Receive(false);
  if (isDue() && !session_.Advance(now)) {
    Flush();
    CloseSocket();
  }
}

void Connection::ServeSocket(std::uint32_t events) {
  if (!socket_.IsOpen()) return;
  if (connecting_) {
    FinishConnecting();
  } else if ((events & ~static_cast<std::uint32_t>(EPOLLOUT)) != 0) {
    Receive((events & ~static_cast<std::uint32_t>(EPOLLIN | EPOLLOUT)) != 0);
  }
}

void Connection::Update(std::optional<agentx::Time> deadline) {
  Flush();
  if (isClosed_) return;  // by whoever was told of a loss
  if (session_.WantsConnection()) {
    if (!connecting_ && !socket_.IsOpen()) Connect();
  } else if (connecting_ || !session_.HasConnection()) {
    CloseSocket();
  }
  for (const auto& other : {session_.NextDeadline(), connectDeadline_}) {
    if (other && (!deadline || *other < *deadline)) deadline = other;
  }
  SetTimer(deadline);
}

// What was too much for one call is told of anew, and so is the end behind it.
void Connection::Receive(bool mayHaveClosed) {
  const auto size =
      recv(socket_.Number(), received_.data(), received_.size(), 0);
  if (mayHaveClosed || size == static_cast<ssize_t>(received_.size())) {
    WatchAs(EPOLL_CTL_MOD, watched_);
  }
  if (size > 0) {
    if (!session_.Receive(received_.data(), static_cast<std::size_t>(size),
                          Now())) {
      Flush();
      CloseSocket();
    }
  } else if (size == 0) {
    Lose("the master agent has closed the connection");
  } else if (errno != EAGAIN && errno != EINTR) {
    Lose(std::error_code(errno, std::generic_category()).message());
  }
}

// Sends what the socket takes; the rest when it takes more.
void Connection::Flush() {
  if (connecting_ || !socket_.IsOpen()) return;
  agentx::Output& output = session_.Output();
  while (!output.empty()) {
    const auto sent = send(socket_.Number(), output.data(), output.size(),
                           MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent > 0) {
      output.Sent(static_cast<std::size_t>(sent));
    } else if (errno == EINTR) {
      continue;
    } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
      break;
    } else {
      Lose(std::error_code(errno, std::generic_category()).message());
      return;
    }
  }
  if (session_.HasNewRequests()) session_.Sent(Now());
  Watch(output.empty() ? EPOLLIN : EPOLLIN | EPOLLOUT);
}

void Connection::Lose(std::string_view reason) {
  CloseSocket();
  session_.Disconnected(Now(), reason);
}

// Whoever was interrupted here has not said when it is time to go on.
void Connection::Abort(const char* reason) {
  Lose(reason);
  session_.ConnectFailed(Now(), reason);
  Wake();
}

void Connection::Close() {
  Flush();
  isClosed_ = true;
  CloseSocket();
  Wake();
  ScheduledByTest(timer_.Number(), std::nullopt);
}

void Connection::CloseSocket() {
  ++*attempt_;
  connecting_ = false;
  connectDeadline_.reset();
  endpoints_.clear();
  // Virtual time stands still until the timer is set for what comes of this.
  if (socket_.IsOpen()) ScheduledByTest(timer_.Number(), Now());
  socket_.Close();
  watched_ = 0;
}

void Connection::Watch(std::uint32_t events) {
  if (events == watched_) return;
  WatchAs(watched_ == 0 ? EPOLL_CTL_ADD : EPOLL_CTL_MOD, events);
  watched_ = events;
}

// Told once of what has arrived, and not again while it is there: the kernel
// need not look before each wait.
void Connection::WatchAs(int operation, std::uint32_t events) {
  epoll_event event{};
  event.events = events | EPOLLRDHUP | EPOLLET;
  event.data.u64 = kFirstSocket + socketCount_;
  epoll_ctl(events_.Number(), operation, socket_.Number(), &event);
}

// Set anew only when it is to come earlier: a ping that has moved on costs
// nothing until its old time has come.
void Connection::SetTimer(std::optional<agentx::Time> deadline) {
  if (ScheduledByTest(timer_.Number(), deadline)) return;
  if (!deadline || (timerSetTo_ && *timerSetTo_ <= *deadline)) return;
  using std::chrono::nanoseconds;
  const auto at =
      std::chrono::duration_cast<nanoseconds>(deadline->time_since_epoch());
  itimerspec time{};
  time.it_value.tv_sec = static_cast<time_t>(at.count() / 1'000'000'000);
  time.it_value.tv_nsec =
      static_cast<decltype(time.it_value.tv_nsec)>(at.count() % 1'000'000'000);
  if (time.it_value.tv_sec == 0 && time.it_value.tv_nsec == 0) {
    time.it_value.tv_nsec = 1;
  }
  timerfd_settime(timer_.Number(), TFD_TIMER_ABSTIME, &time, nullptr);
  timerSetTo_ = deadline;
}

}  // namespace snmpsubagent::detail
