// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Device.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <thread>
#include <utility>

#include "testkit/agentx/Text.h"

namespace {

using namespace std::chrono_literals;

// Bounds a test that fails, also on a machine under load.
constexpr std::chrono::seconds kPatience{60};

const wire::Oid& Base() {
  static const wire::Oid base = Id("");
  return base;
}

std::string NameOf(const wire::Oid& oid) {
  const bool isWithin = oid.size() > Base().size() &&
                        std::equal(Base().begin(), Base().end(), oid.begin());
  if (!isWithin) return "." + wire::Text(oid);
  return wire::Text(wire::Oid(
      oid.begin() + static_cast<std::ptrdiff_t>(Base().size()), oid.end()));
}

std::string ErrorName(std::uint16_t error) {
  static const std::map<std::uint16_t, std::string> kNames{
      {0, "noError"},
      {5, "genErr"},
      {6, "noAccess"},
      {7, "wrongType"},
      {8, "wrongLength"},
      {9, "wrongEncoding"},
      {10, "wrongValue"},
      {11, "noCreation"},
      {12, "inconsistentValue"},
      {13, "resourceUnavailable"},
      {14, "commitFailed"},
      {15, "undoFailed"},
      {17, "notWritable"},
      {18, "inconsistentName"}};
  const auto found = kNames.find(error);
  return found == kNames.end() ? std::to_string(error) : found->second;
}

wire::TestSet TestSetOf(const Assignments& assignments) {
  wire::TestSet test;
  for (const Assignment& assignment : assignments) {
    test.varbinds.push_back({Id(assignment.oid), assignment.value});
  }
  return test;
}

}  // namespace

wire::Oid Id(const std::string& oid) {
  if (oid == ".") return {};
  const bool isWhole = !oid.empty() && oid.front() == '.';
  const snmpsubagent::Oid id(isWhole       ? oid
                             : oid.empty() ? kBase
                                           : kBase + ("." + oid));
  return {id.begin(), id.end()};
}

wire::Value Int(std::int32_t number) { return {wire::Type::kInteger, number}; }
wire::Value Gauge(std::uint32_t number) {
  return {wire::Type::kGauge32, number};
}
wire::Value Ticks(std::uint32_t number) {
  return {wire::Type::kTimeTicks, number};
}
wire::Value Octets(std::string octets) {
  return {wire::Type::kOctetString, std::move(octets)};
}
wire::Value ObjectId(const std::string& oid) {
  return {wire::Type::kObjectId, Id(oid)};
}

wire::SearchRange After(const std::string& start, const std::string& end) {
  return {Id(start), false, end.empty() ? wire::Oid() : Id(end)};
}

wire::SearchRange From(const std::string& start, const std::string& end) {
  return {Id(start), true, end.empty() ? wire::Oid() : Id(end)};
}

std::string Text(const wire::Response& response, bool withNames) {
  if (response.error != 0) {
    return ErrorName(response.error) +
           (response.index == 0 ? "" : " " + std::to_string(response.index));
  }
  std::string text;
  for (const wire::Varbind& varbind : response.varbinds) {
    if (!text.empty()) text += ", ";
    if (withNames) text += NameOf(varbind.name) + " ";
    text += wire::Text(varbind.value);
  }
  return text.empty() ? "noError" : text;
}

bool Eventually(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return condition();
    std::this_thread::sleep_for(1ms);
  }
  return true;
}

snmpsubagent::AgentOptions Device::Options() {
  snmpsubagent::AgentOptions options;
  options.timeout = 60s;
  options.responseTimeout = kPatience;
  options.firstRetry = 1ms;
  options.lastRetry = 20ms;
  options.pingInterval = 0ms;
  return options;
}

Device::Device(snmpsubagent::AgentOptions options, wire::Listener listener)
    : listener_(std::move(listener)), agent("device", [&] {
        options.master = listener_.Address();
        options.log = [this](snmpsubagent::LogLevel, const std::string& line) {
          const std::lock_guard lock(logMutex_);
          log_.push_back(line);
        };
        return options;
      }()) {}

void Device::Connect(std::size_t registrations) {
  agent.Start();
  Accept(registrations);
}

void Device::Accept(std::size_t registrations) {
  session_ = std::make_unique<wire::MasterSession>(listener_.Accept(kPatience),
                                                   kPatience, ++sessions_);
  session_->Grant(session_->Next());  // Open
  session_->ServeUntil(
      [&] { return session_->Registered().size() == registrations; });
}

std::string Device::Get(const std::string& oid) { return GetAll({oid}); }

std::string Device::GetAll(const std::vector<std::string>& oids) {
  wire::Get get;
  for (const std::string& oid : oids) get.ranges.push_back({Id(oid), {}, {}});
  return Text(Master().Ask(get), false);
}

std::string Device::GetNext(const std::string& oid) {
  return GetNext({After(oid)});
}

std::string Device::GetNext(const std::vector<wire::SearchRange>& ranges) {
  return Text(Master().Ask(wire::GetNext{ranges}), true);
}

std::string Device::GetBulk(int nonRepeaters, int maxRepetitions,
                            const std::vector<wire::SearchRange>& ranges) {
  return Text(Master().Ask(wire::GetBulk{
                  static_cast<std::uint16_t>(nonRepeaters),
                  static_cast<std::uint16_t>(maxRepetitions), ranges}),
              true);
}

std::string Device::Walk(const std::string& oid) {
  std::string text;
  wire::SearchRange range = After(oid);
  while (true) {
    const wire::Response response = Master().Ask(wire::GetNext{{range}});
    if (response.error != 0) return text + "; " + Text(response, true);
    const wire::Varbind& found = response.varbinds.at(0);
    if (found.value.type == wire::Type::kEndOfMibView) return text;
    if (!text.empty()) text += ", ";
    text += Text(response, true);
    range.start = found.name;
  }
}

std::string Device::Set(const Assignments& assignments) {
  Phases phases(*this);
  std::string result = phases.Test(assignments);
  if (result != "noError") {
    phases.Cleanup();
    return result;
  }
  result = phases.Commit();
  if (result == "noError") {
    phases.Cleanup();
    return result;
  }
  const std::string undone = phases.Undo();
  return undone == "noError" ? result : undone;
}

std::uint32_t Device::Send(const wire::Body& request) {
  return Master().Send(request);
}

std::string Device::Receive(std::uint32_t packetId) {
  const wire::Pdu pdu = Master().Receive();
  if (pdu.header.packetId != packetId) {
    return "a response to packet " + std::to_string(pdu.header.packetId) +
           " instead of " + std::to_string(packetId);
  }
  return Text(std::get<wire::Response>(pdu.body), false);
}

std::vector<std::string> Device::Log() const {
  const std::lock_guard lock(logMutex_);
  return log_;
}

bool Device::HasLogged(const std::string& part) const {
  const std::vector<std::string> lines = Log();
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
    return line.find(part) != std::string::npos;
  });
}

std::string Phases::Test(const Assignments& assignments) {
  return Text(device_.Master().Ask(TestSetOf(assignments), transaction_),
              false);
}

std::string Phases::Commit() {
  return Text(device_.Master().Ask(wire::CommitSet{}, transaction_), false);
}

std::string Phases::Undo() {
  return Text(device_.Master().Ask(wire::UndoSet{}, transaction_), false);
}

void Phases::Cleanup() {
  device_.Master().Send(wire::CleanupSet{}, transaction_);
  device_.Sync();
}

std::uint32_t Phases::SendTest(const Assignments& assignments) {
  return device_.Master().Send(TestSetOf(assignments), transaction_);
}

std::uint32_t Phases::SendCommit() {
  return device_.Master().Send(wire::CommitSet{}, transaction_);
}

std::uint32_t Phases::SendUndo() {
  return device_.Master().Send(wire::UndoSet{}, transaction_);
}
