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
enum class Base { kNodeClasses, kObjects, kAgentLibrary };

// A kind of bench_subagent, bench_service or bench_peer.
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

  // Anonymous memory of the process, in bytes.
  double AnonymousMemory() const;

  // Ends the process, and waits.
  void End() { process_.reset(); }

 private:
  std::filesystem::path Log() const { return directory_.Path() / "log"; }

  std::string name_;
  std::unique_ptr<Master> master_;
  testkit::ScratchDirectory directory_;
  std::unique_ptr<testkit::ChildProcess> process_;
};

#endif  // SNMPSUBAGENT_BENCH_COMPARE_SUBJECT_H_
