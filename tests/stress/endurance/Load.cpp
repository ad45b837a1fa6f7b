// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// An application with several threads that all use its objects.
//
//   load SECONDS
//
// Eight threads set values, add and remove rows, build and delete nodes, fire
// traps and call Connected(), while managers walk, read in bulk and set, and
// the master agent is killed and started. Nothing may be lost: in the end
// managers read exactly the objects that exist. Meant for the sanitizers.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <list>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "NetSNMPAgentGuard.h"
#include "NetSNMPTrapNode.h"
#include "support/NodeRegistry.h"
#include "support/Oid.h"
#include "support/Scalars.h"
#include "support/Tables.h"
#include "support/TestSubAgent.h"
#include "support/Values.h"
#include "testkit/Deadlines.h"
#include "testkit/MasterAgent.h"
#include "testkit/WaitFor.h"

using support::ScalarOid;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kTable = 1;
// Of these the master agent is away for one.
constexpr std::chrono::seconds kBetweenRestarts{5};
// No application takes the lock in a busy loop.
constexpr std::chrono::milliseconds kPause{1};

void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

// Threads that do their work again and again until they are destroyed.
class Workers {
 public:
  ~Workers() { End(); }

  void Add(const std::string& name, std::function<void()> work) {
    Worker& worker = workers_.emplace_back();
    worker.name = name;
    worker.thread = std::thread([this, &worker, work = std::move(work)] {
      try {
        for (; !ending_; ++worker.rounds) {
          work();
          std::this_thread::sleep_for(kPause);
        }
      } catch (const std::exception& error) {
        worker.error = error.what();
      }
    });
  }

  // Ends them; throws what one of them has thrown.
  void EndAndReport() {
    End();
    for (const Worker& worker : workers_) {
      std::printf("%s: %ld rounds\n", worker.name.c_str(), worker.rounds);
      Require(worker.error.empty(), worker.name + ": " + worker.error);
    }
  }

 private:
  struct Worker {
    std::string name;
    long rounds = 0;
    std::string error;
    std::thread thread;
  };

  void End() {
    ending_ = true;
    for (Worker& worker : workers_) {
      if (worker.thread.joinable()) worker.thread.join();
    }
  }

  std::atomic<bool> ending_{false};
  std::list<Worker> workers_;
};

class Load {
 public:
  Load() {
    support::AddScalar(1, "number",
                       NetSNMPIntNodeData(&number_, eNodeAccessReadWrite));
    support::AddScalar(2, "text",
                       NetSNMPStringNodeData(&text_, eNodeAccessReadWrite));
    fired_ = support::AddIntScalar(3, "fired", 3);
    store_ = support::AddStore(kTable, "row", 2, 4,
                               support::AddTable(kTable, "table"));
    AddRow(0, 0);
    Oid oid{1, 3, 6, 1, 4, 1, 32473, 99, 0, 1};
    trap_ = new NetSNMPTrapNode(oid.data(), Length(oid), "trap");
    Require(subAgent_.StartAndConnect(), "does not connect");
  }
  ~Load() { subAgent_.Stop(); }

  void RunFor(std::chrono::seconds duration) {
    const auto end = Clock::now() + duration;
    Workers workers;
    AddApplication(workers);
    AddManagers(workers);
    int restarts = 0;
    for (; Clock::now() < end; ++restarts) {
      std::this_thread::sleep_until(
          std::min(end, Clock::now() + kBetweenRestarts));
      master_.Kill();
      const int connections = subAgent_.Connections();
      master_.Start();
      Require(subAgent_.WaitForConnections(connections + 1),
              "does not connect again");
    }
    workers.EndAndReport();
    std::printf("%d restarts of the master agent\n", restarts);
  }

  // Requires that managers read exactly the objects that exist, except for
  // nodes that are built and deleted: one that is deleted while the subagent is
  // disconnected stays registered, and walks end before it.
  void RequireServed() {
    {
      const NetSNMPAgentGuard guard;
      number_ = 42;
      text_ = "settled";
    }
    RequireObjects(support::TableOid(kTable),
                   {support::CellOid(kTable, 3, "0.0") + " = INTEGER: 0",
                    support::CellOid(kTable, 4, "0.0") + " = STRING: \"row\""});
    RequireObjects(support::ScalarsOid(),
                   {ScalarOid(1) + " = INTEGER: 42",
                    ScalarOid(2) + " = STRING: \"settled\"",
                    ScalarOid(3) + " = INTEGER: 3"});
  }

 private:
  static constexpr int kBuilders = 2;

  // The eight threads of the application.
  void AddApplication(Workers& workers) {
    for (const char* text : {"one thread", "another thread"}) {
      workers.Add(std::string("sets values: ") + text, [this, text] {
        const NetSNMPAgentGuard guard;
        NetSNMPDataNode::SetNodeData("text", std::string(text));
        NetSNMPDataNode::SetNodeData("number", 1);
        Require(text_ == text && number_ == 1, "a value was not set");
      });
    }
    for (int unit : {1, 2}) {
      workers.Add("changes rows: " + std::to_string(unit), [this, unit] {
        for (int slot = 0; slot < 5; ++slot) AddRow(unit, slot);
        for (int slot = 0; slot < 5; ++slot) RemoveRow(unit, slot);
      });
    }
    for (int thread = 0; thread < kBuilders; ++thread) {
      workers.Add("builds and deletes: " + std::to_string(thread),
                  [thread] { BuildAndDelete(thread); });
    }
    workers.Add("fires traps", [this] { trap_->TriggerV2Trap(fired_); });
    workers.Add("asks for the connection", [this] { subAgent_.Connected(); });
  }

  // A session that is up may still be about to register everything again.
  void RequireObjects(const std::string& root,
                      const std::vector<std::string>& expected) const {
    std::vector<std::string> served;
    const bool all = testkit::WaitFor(
        [&] {
          served = master_.Manager().Objects(root);
          return served == expected;
        },
        testkit::Deadlines::Session());
    std::string text;
    for (const std::string& line : served) text += "\n  " + line;
    Require(all, "managers read something else:" + text);
  }

  // While the master agent is away, they get no response.
  void AddManagers(Workers& workers) {
    const testkit::Manager& manager = master_.Manager();
    workers.Add("walks", [&] { manager.Walk(support::ScalarsOid()); });
    workers.Add("reads in bulk",
                [&] { manager.BulkWalk(support::TableOid(kTable)); });
    workers.Add("sets", [&] {
      manager.Set({ScalarOid(1), "i", "30", ScalarOid(2), "s", "a manager"});
    });
  }

  void AddRow(int unit, int slot) {
    const NetSNMPAgentGuard guard;
    Require(store_->AddRow(Values(Index(Int(unit)), Index(Int(slot)), Int(unit),
                                  Text("row"))),
            "a row was refused");
  }

  void RemoveRow(int unit, int slot) {
    const NetSNMPAgentGuard guard;
    Require(store_->RemoveRow("row." + std::to_string(unit) + "." +
                              std::to_string(slot)),
            "a row was not there");
  }

  // The OIDs of these nodes are below all that managers request: the master
  // agent (Net-SNMP 5.9) fails when an object is withdrawn while it is in the
  // middle of a walk over it.
  static void BuildAndDelete(int thread) {
    std::vector<NetSNMPDataNode*> nodes;
    for (int number = 5 * thread; number < 5 * thread + 5; ++number) {
      Oid oid{1, 3, 6, 1, 4, 1, 32473, 97, static_cast<unsigned long>(number),
              0};
      nodes.push_back(new NetSNMPDataNode(oid.data(), Length(oid),
                                          "passing" + std::to_string(number),
                                          Int(number), nullptr, ""));
    }
    for (NetSNMPDataNode* node : nodes) delete node;
  }

  testkit::MasterAgent master_;
  support::TestSubAgent subAgent_{master_.AgentXPort()};
  support::NodeRegistry registry_;
  int number_ = 1;
  std::string text_ = "text";
  NetSNMPDataNode* fired_;        // the registry's
  NetSNMPTableEntryNode* store_;  // the registry's
  NetSNMPTrapNode* trap_;         // the registry's
};

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fprintf(stderr, "usage: load SECONDS\n");
    return 2;
  }
  try {
    Load load;
    load.RunFor(std::chrono::seconds(std::atol(words[1])));
    load.RequireServed();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "error: %s\n", error.what());
    return 1;
  }
}
