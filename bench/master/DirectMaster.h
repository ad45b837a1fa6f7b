// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
#define SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "master/Master.h"
#include "testkit/FileDescriptor.h"
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

  void Connect(const Expected& expected) override;
  testkit::agentx::Response Put(const testkit::agentx::Body& request) override;

  // Sends requests, up to `outstanding` at a time. Returns the responses in the
  // order of the requests.
  std::vector<Timed> PutAll(const std::vector<testkit::agentx::Body>& requests,
                            std::size_t outstanding);

 private:
  // The subagent's connection.
  virtual testkit::FileDescriptor Accept(std::chrono::milliseconds time) = 0;

  std::unique_ptr<testkit::agentx::MasterSession> session_;
};

class TcpMaster : public DirectMaster {
 public:
  std::string Address() const override {
    return "tcp:127.0.0.1:" + std::to_string(listener_.Port());
  }

 private:
  testkit::FileDescriptor Accept(std::chrono::milliseconds time) override {
    return listener_.Accept(time);
  }

  testkit::agentx::Listener listener_;
};

// Where the objects and Net-SNMP connect if they are not told: a Unix socket.
class UnixMaster : public DirectMaster {
 public:
  UnixMaster();
  std::string Address() const override { return "unix:" + Path(); }

 private:
  testkit::FileDescriptor Accept(std::chrono::milliseconds time) override;
  std::string Path() const { return directory_.Path() / "master"; }

  testkit::ScratchDirectory directory_;
  testkit::FileDescriptor socket_;
};

#endif  // SNMPSUBAGENT_BENCH_MASTER_DIRECTMASTER_H_
