// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_IRUNNABLE_H_
#define SNMPSUBAGENT_IRUNNABLE_H_

#include "SnmpSubAgentExport.h"

namespace vela {

// A task that the platform starts and stops.
//
// Its virtual table is that of the device's binaries, which has no destructor.
// A task is therefore never deleted through this interface.
class SNMPSUBAGENT_EXPORT IRunnable {
 public:
  // Starts the task and returns at once. The implementing class defines the
  // results, here and below.
  virtual int Start() = 0;

  // Ends the task and waits until it has ended.
  virtual int Stop() = 0;

  virtual bool IsRunning() const = 0;

 protected:
  ~IRunnable() = default;
};

}  // namespace vela

#endif  // SNMPSUBAGENT_IRUNNABLE_H_
