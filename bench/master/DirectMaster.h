// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
#define SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "master/Master.h"
#include "testkit/ScratchDirectory.h"
#include "testkit/agentx/Listener.h"
#include "testkit/agentx/MasterSession.h"

// A master agent that only sends requests, so that the figures are those of the
// subagent alone.
class DirectMaster : public Master {
 public:
  // A response and its latency.
  struct Timed {
    testkit::agentx::Response response;
    std::chrono::duration<double, std::milli> latency;
  };

  std::string Address() const override { return listener_.Address(); }
  void Connect(const Expected& expected) override;
  testkit::agentx::Response Put(const testkit::agentx::Body& request) override;

  // Sends requests, up to `outstanding` at a time. Returns the responses in the
  // order of the requests.
  std::vector<Timed> PutAll(const std::vector<testkit::agentx::Body>& requests,
                            std::size_t outstanding);

 protected:
  explicit DirectMaster(testkit::agentx::Listener listener)
      : listener_(std::move(listener)) {}

 private:
  testkit::agentx::Listener listener_;
  std::unique_ptr<testkit::agentx::MasterSession> session_;
};

class TcpMaster : public DirectMaster {
 public:
  TcpMaster() : DirectMaster(testkit::agentx::Listener()) {}
};

// Where the objects and Net-SNMP connect if they are not told: a Unix socket.
class UnixMaster : private testkit::ScratchDirectory, public DirectMaster {
 public:
  UnixMaster()
      : DirectMaster(
            testkit::agentx::Listener(std::string(Path() / "master"))) {}
};

#endif  // SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
