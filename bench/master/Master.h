// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_MASTER_MASTER_H_
#define SNMPSUBAGENT_BENCH_MASTER_MASTER_H_

#include <cstddef>
#include <string>

#include "testkit/agentx/Pdu.h"

// The master agent of one subagent, through which the benchmarks send requests.
// Requests and responses are AgentX messages: Get, GetNext and TestSet, which
// means a whole SET.
class Master {
 public:
  Master() = default;
  virtual ~Master() = default;
  Master(const Master&) = delete;
  Master& operator=(const Master&) = delete;

  // Where the subagent is to connect: "tcp:127.0.0.1:1705", or "unix:/path".
  virtual std::string Address() const = 0;

  // What is known of a subagent: how many subtrees it registers, an object in
  // the last of them, and whether it responds to CleanupSet.
  struct Expected {
    std::size_t subtrees;
    testkit::agentx::Oid object;
    bool answersCleanup;
  };

  // Waits until the subagent has connected and registered its subtrees. Throws
  // std::runtime_error if it does not.
  virtual void Connect(const Expected& expected) = 0;

  // Sends a request and returns the response. Throws std::runtime_error if
  // there is none.
  virtual testkit::agentx::Response Put(
      const testkit::agentx::Body& request) = 0;
};

#endif  // SNMPSUBAGENT_BENCH_MASTER_MASTER_H_
