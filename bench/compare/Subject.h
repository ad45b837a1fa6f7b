// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_SUBJECT_H_
#define SNMPSUBAGENT_BENCH_COMPARE_SUBJECT_H_

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "master/Master.h"
#include "testkit/ChildProcess.h"
#include "testkit/ScratchDirectory.h"

// On what a subagent is built.
enum class Base { kNodeClasses, kObjects, kAgentLibrary, kSystemAlone };

// A kind of bench_subagent, bench_service, bench_peer or bench_loop.
struct Publisher {
  Base base;
  std::string kind;

  std::string Name() const;
};

// A subagent that is measured, in its own process and with its own master
// agent.
class Subject {
 public:
  // CPU time, user and system.
  using CpuTime = std::chrono::duration<double, std::micro>;

  // Starts the subagent with `count` scalars or rows and waits until it serves
  // them. `tool` is put in front of its command.
  Subject(const Publisher& publisher, unsigned int count,
          std::unique_ptr<Master> master,
          const std::vector<std::string>& tool = {});

  const std::string& Name() const { return name_; }

  testkit::agentx::Response Put(const testkit::agentx::Body& request) {
    return master_->Put(request);
  }

  // What all threads of the process have used since its start.
  CpuTime Used() const;

  // The part of it that loading the program has taken.
  CpuTime UsedForLoading() const;

  // Memory of the process in bytes: anonymous, and all that is resident.
  double AnonymousMemory() const { return Memory("Anonymous:"); }
  double ResidentMemory() const { return Memory("Rss:"); }

  // Ends the process, and waits.
  void End() { process_.reset(); }

 private:
  // One of the sums of its memory that the system has.
  double Memory(const std::string& sum) const;

  std::filesystem::path Log() const { return directory_.Path() / "log"; }

  std::string name_;
  std::unique_ptr<Master> master_;
  testkit::ScratchDirectory directory_;
  std::unique_ptr<testkit::ChildProcess> process_;
};

#endif  // SNMPSUBAGENT_BENCH_COMPARE_SUBJECT_H_
