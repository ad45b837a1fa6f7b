// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "World.h"

#include <mutex>
#include <utility>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPTrapNode.h"
#include "Turn.h"
#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/Text.h"

namespace agentx = testkit::agentx;

namespace {

constexpr std::chrono::seconds kTimeout{60};

// The tables of each way are followed by more scalars than any request reaches,
// so that what comes after the last row is the same for both.
constexpr unsigned int kFence = 20;
constexpr unsigned int kFenceNumber = 99;

std::mutex logMutex;
std::vector<std::string> logLines;

void KeepLine(unsigned int, const std::string& text) {
  const std::lock_guard<std::mutex> lock(logMutex);
  logLines.push_back(text);
}

// An unsigned value shows the address of its storage, which nothing repeats.
std::string WithoutAddress(std::string line) {
  const std::size_t address = line.find("0x");
  if (address != std::string::npos) {
    line.erase(address, line.find(';', address) - address);
  }
  return line;
}

std::vector<std::string> TakeLines() {
  const std::lock_guard<std::mutex> lock(logMutex);
  return std::exchange(logLines, {});
}

void BuildFence(Way way) {
  int number = 5;
  std::vector<unsigned long> oid = TableOid(way, kFenceNumber);
  for (unsigned int k = 1; k <= kFence; ++k) {
    std::vector<unsigned long> scalar = oid;
    scalar.insert(scalar.end(), {k, 0});
    new NetSNMPDataNode(scalar.data(), static_cast<unsigned int>(scalar.size()),
                        "fence" + std::to_string(static_cast<int>(way)) + "." +
                            std::to_string(k),
                        NetSNMPIntNodeData(&number, eNodeAccessReadOnly, true),
                        nullptr, "");
  }
}

void BuildTrap() {
  std::vector<unsigned long> oid{1, 3, 6, 1, 4, 1, 32473, 3, 0, 1};
  new NetSNMPTrapNode(oid.data(), static_cast<unsigned int>(oid.size()),
                      "trap");
}

bool IsRead(const agentx::Body& request) {
  return std::holds_alternative<agentx::Get>(request) ||
         std::holds_alternative<agentx::GetNext>(request) ||
         std::holds_alternative<agentx::GetBulk>(request);
}

// Values that are no numbers make poor indexes, and the agent library says so.
void IgnoreAgentLibraryLog() {
  const NetSNMPAgentGuard guard;
  snmp_disable_log();
  netsnmp_register_loghandler(NETSNMP_LOGHANDLER_NONE, LOG_DEBUG);
}

template <typename Deeds>
std::string TextOf(const Deeds& deeds) {
  std::string text;
  for (const auto& deed : deeds) text += "  " + deed.text + "\n";
  return text;
}

}  // namespace

World::World(const std::vector<Shape>& shapes, std::uint32_t seed)
    : random_(seed), requests_(tables_, random_) {
  BuildTrap();
  BuildFence(Way::kFast);
  BuildFence(Way::kPlain);
  for (const Shape& shape : shapes) {
    tables_.emplace_back(static_cast<std::uint32_t>(tables_.size() + 1), shape,
                         random_);
  }
  NetSNMPNode::NodeMsgLogger_ = KeepLine;
  const agentx::Listener listener;
  subAgent_ = std::make_unique<SubAgent>(listener.Port(), tables_);
  subAgent_->Start();
  master_ = std::make_unique<agentx::MasterSession>(
      listener.Accept(testkit::Deadlines::Session()), kTimeout);
  master_->ServeUntil([&] {
    return master_->Registered().size() == 2 * (kFence + tables_.size());
  });
  IgnoreAgentLibraryLog();
}

World::~World() {
  master_.reset();
  testkit::WaitFor([&] { return !subAgent_->Connected(); },
                   testkit::Deadlines::Session());
  subAgent_->Stop();
}

std::string World::Step() {
  Requests requests;
  {
    const NetSNMPAgentGuard guard;
    if (random_.OneIn(2)) random_.Element(tables_).Change(random_);
    requests = RandomExchange();
  }
  TakeLines();
  const std::vector<Deed> fast = Exchange(Way::kFast, requests);
  const std::vector<Deed> plain = Exchange(Way::kPlain, requests);
  const std::string difference =
      fast == plain ? CompareTraces()
                    : "fast:\n" + TextOf(fast) + "plain:\n" + TextOf(plain);
  if (difference.empty()) return "";
  std::string asked;
  for (const agentx::Body& request : requests) {
    asked += "  " + agentx::Text(request) + "\n";
  }
  return "asked:\n" + asked + difference;
}

World::Requests World::RandomExchange() {
  if (!random_.OneIn(4)) return {requests_.Read()};
  Requests requests{agentx::TestSet{requests_.Write()}};
  if (random_.OneIn(8)) requests.push_back(requests_.Read());
  if (!random_.OneIn(8)) {
    requests.push_back(agentx::CommitSet{});
    if (random_.OneIn(8)) requests.push_back(requests_.Read());
    if (random_.OneIn(8)) {
      requests.push_back(agentx::UndoSet{});
      return requests;
    }
  }
  requests.push_back(agentx::CleanupSet{});
  return requests;
}

std::vector<World::Deed> World::Exchange(Way way, const Requests& requests) {
  std::vector<Deed> deeds;
  const auto add = [&](const agentx::Body& message) {
    deeds.push_back({agentx::Encode({{}, {}, message}), agentx::Text(message)});
  };
  const std::uint32_t set = master_->NewTransaction();
  for (const agentx::Body& request : requests) {
    const agentx::Response answer =
        master_->Ask(Turned(request, way),
                     IsRead(request) ? master_->NewTransaction() : set);
    add(Normalised(answer));
    for (const agentx::Notify& notification : master_->TakeNotifications()) {
      add(Normalised(notification));
    }
    for (const std::string& line : TakeLines())
      deeds.push_back({{}, WithoutAddress(line)});
    if (std::holds_alternative<agentx::TestSet>(request) && answer.error != 0) {
      master_->Ask(agentx::CleanupSet{}, set);
      break;
    }
  }
  return deeds;
}

std::string World::CompareTraces() const {
  const NetSNMPAgentGuard guard;
  for (const TablePair& table : tables_) {
    const std::string name = "table " + std::to_string(table.Number());
    const std::string fast = table.CursorText(Way::kFast);
    const std::string plain = table.CursorText(Way::kPlain);
    if (fast != plain) {
      return name + ": cursor at " + fast + " (fast) and " + plain +
             " (plain)\n";
    }
    if (!(table.VariablesOf(Way::kFast) == table.VariablesOf(Way::kPlain))) {
      return name + ": the variables differ\n";
    }
  }
  return "";
}
