// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Master.h"

#include "testing/MasterState.h"
#include "testing/Reading.h"
#include "testing/Setting.h"
#include "testing/SnmpServer.h"
#include "testing/StartedRequest.h"

namespace snmpsubagent::testing {
namespace {

std::string ListOf(const std::vector<Registration>& registrations) {
  if (registrations.empty()) return "nothing is registered";
  std::string text = "registered are";
  for (const Registration& each : registrations) {
    text += " " + snmpsubagent::ToString(each.subtree);
  }
  return text;
}

}  // namespace

Master::Master()
    : state_(std::make_unique<internal::MasterState>(Notifications())) {}
Master::~Master() = default;

std::string Master::Address() const { return state_->Address(); }

std::string Master::SnmpAddress() {
  if (!server_) {
    server_ = std::make_unique<internal::SnmpServer>(
        [this](const Request& request) { return Answer(request); });
  }
  return server_->Address();
}

void Master::SetContext(const std::string& context) {
  state_->SetContext(state_->Lock(), context);
}

std::vector<Registration> Master::Registrations() const {
  return state_->Registrations(state_->Lock());
}

void Master::WaitForRegistrations(std::size_t count) {
  auto lock = state_->Lock();
  state_->WaitUntil(
      lock, [&] { return state_->Registrations(lock).size() >= count; },
      [&] { return ListOf(state_->Registrations(lock)); });
}

void Master::WaitUntilAlone() {
  auto lock = state_->Lock();
  state_->WaitUntil(
      lock, [&] { return state_->IsAlone(lock); },
      [] { return "a subagent is still connected"; });
}

std::vector<Capability> Master::Capabilities() const {
  return state_->Capabilities(state_->Lock());
}

void Master::GoDown() {
  const auto lock = state_->Lock();
  state_->StopListening(lock);
  state_->Disconnect(lock);
}

void Master::ComeUp() { state_->Listen(state_->Lock()); }

void Master::Disconnect() { state_->Disconnect(state_->Lock()); }

Response Master::Answer(const Request& request) {
  auto lock = state_->Lock();
  const Response response = request.kind == Request::Kind::Set
                                ? internal::Set(*state_, lock, request)
                                : internal::Read(*state_, lock, request);
  internal::StartedRequest::Answered(response);
  return response;
}

}  // namespace snmpsubagent::testing
