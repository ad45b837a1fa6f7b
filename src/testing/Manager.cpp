// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Manager.h"

#include <chrono>
#include <utility>

#include "testing/Inbox.h"
#include "testing/LoopsOfThread.h"
#include "testing/StartedRequest.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace snmpsubagent::testing {
namespace {

using std::chrono::milliseconds;

Request NamesOnly(Request::Kind kind, const std::vector<Oid>& names) {
  Request request{kind, {}};
  for (const Oid& name : names) request.varbinds.push_back({name, {}});
  return request;
}

const Varbind& OnlyOne(const Response& response) {
  if (!response.Succeeded()) throw RequestFailed(response);
  if (response.varbinds.size() != 1) {
    throw std::runtime_error("one varbind was asked for, not " +
                             std::to_string(response.varbinds.size()));
  }
  return response.varbinds.front();
}

bool Is(const std::future<Response>& response, milliseconds after) {
  return response.wait_for(after) == std::future_status::ready;
}

}  // namespace

RequestFailed::RequestFailed(Response what)
    : std::runtime_error("the response is " + ToString(what)),
      response(std::move(what)) {}

bool Pending::IsAnswered() const { return Is(response_, milliseconds(0)); }

// The thread that asks bounds the time.
Response Pending::Result() {
  internal::LoopsOfThread& loops = internal::LoopsOfThread::Here();
  while (!loops.IsEmpty() && !Is(response_, milliseconds(1))) loops.Run();
  return response_.get();
}

Manager::Manager() : inbox_(std::make_unique<internal::Inbox>()) {}
Manager::~Manager() = default;

Value Manager::Get(const Oid& instance) {
  return OnlyOne(Get(std::vector<Oid>{instance})).value;
}

Response Manager::Get(const std::vector<Oid>& instances) {
  return Ask(NamesOnly(Request::Kind::Get, instances));
}

Varbind Manager::GetNext(const Oid& name) {
  return OnlyOne(GetNext(std::vector<Oid>{name}));
}

Response Manager::GetNext(const std::vector<Oid>& names) {
  return Ask(NamesOnly(Request::Kind::GetNext, names));
}

Response Manager::GetBulk(std::size_t nonRepeaters, std::size_t maxRepetitions,
                          const std::vector<Oid>& names) {
  Request request = NamesOnly(Request::Kind::GetBulk, names);
  request.nonRepeaters = nonRepeaters;
  request.maxRepetitions = maxRepetitions;
  return Ask(request);
}

std::vector<Varbind> Manager::Walk(const Oid& subtree) {
  std::vector<Varbind> found;
  Varbind next = GetNext(subtree);
  while (next.value.Type() != ValueType::EndOfMibView &&
         next.name.View().StartsWith(subtree)) {
    if (!found.empty() && next.name.View() <= found.back().name.View()) {
      throw std::runtime_error("behind " + ToString(found.back()) + " comes " +
                               ToString(next));
    }
    found.push_back(next);
    next = GetNext(next.name);
  }
  return found;
}

void Manager::WaitUntilServed(const Oid& subtree) {
  const auto isServed = [&] {
    internal::LoopsOfThread::Here().Run();
    const Varbind next = GetNext(subtree);
    return next.value.Type() != ValueType::EndOfMibView &&
           next.name.View().StartsWith(subtree);
  };
  if (!testkit::WaitFor(isServed, testkit::Deadlines::Session())) {
    throw TimedOut("nothing is served below " +
                   snmpsubagent::ToString(subtree));
  }
}

ErrorStatus Manager::Set(const Oid& instance, const Value& value) {
  return Set({{instance, value}}).error;
}

Response Manager::Set(const std::vector<Varbind>& varbinds) {
  return Ask({Request::Kind::Set, varbinds});
}

Pending Manager::StartGet(const std::vector<Oid>& instances) {
  return Start(NamesOnly(Request::Kind::Get, instances));
}

Pending Manager::StartSet(const std::vector<Varbind>& varbinds) {
  return Start({Request::Kind::Set, varbinds});
}

Pending Manager::Start(const Request& request) {
  const auto started = std::make_shared<internal::StartedRequest>();
  auto sent = started->FirstMessage();
  Pending pending(started->Result(),
                  std::async(std::launch::async, [this, request, started] {
                    started->Run([&] { return Answer(request); });
                  }));
  sent.wait();
  return pending;
}

Notification Manager::NextNotification() { return inbox_->Next(); }

std::vector<Notification> Manager::TakeNotifications() {
  return inbox_->TakeAll();
}

}  // namespace snmpsubagent::testing
