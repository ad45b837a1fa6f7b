// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_MASTERSOCKET_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_MASTERSOCKET_H_

#include <chrono>
#include <optional>
#include <utility>

#include "check/connection/AgentXAddress.h"
#include "check/connection/CheckConnection.h"
#include "check/connection/SnmpdConfig.h"

namespace snmpsubagent::check {

// A connection to the master agent, not blocking, or why there is none.
class MasterSocket {
 public:
  MasterSocket(const AgentXAddress& address, const SnmpdConfig& config,
               std::chrono::milliseconds timeout);
  ~MasterSocket();
  MasterSocket(const MasterSocket&) = delete;
  MasterSocket& operator=(const MasterSocket&) = delete;

  // Nothing if it is connected.
  const std::optional<Diagnosis>& Failure() const { return failure_; }
  int Descriptor() const { return descriptor_; }

 private:
  int descriptor_ = -1;
  std::optional<Diagnosis> failure_;
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_MASTERSOCKET_H_
