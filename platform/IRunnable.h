// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_IRUNNABLE_H_
#define SNMPSUBAGENT_IRUNNABLE_H_

#include "SnmpSubAgentExport.h"

namespace vela {

// A task that the platform starts and stops.
//
// Declared as on the device, slot for slot, and so without a destructor: a
// virtual one would add slots that the device's binaries do not have. A task is
// therefore never deleted through this interface.
class SNMPSUBAGENT_EXPORT IRunnable {
 public:
  // Starts the task and returns at once. What the result means, here and
  // below, is for the class that implements it to say.
  virtual int Start() = 0;

  // Ends the task and waits until it has ended.
  virtual int Stop() = 0;

  virtual bool IsRunning() const = 0;
};

}  // namespace vela

#endif  // SNMPSUBAGENT_IRUNNABLE_H_
