// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_DEFERREDCALL_H_
#define SNMPSUBAGENT_OBJECTS_DEFERREDCALL_H_

#include <exception>

#include "snmpsubagent/Later.h"

namespace snmpsubagent::detail {

// What every LaterCall is.
class DeferredCall : public LaterCall {
 public:
  // Nobody can answer any more: fails, and logs it if an answer is missing.
  // Takes the agent's lock.
  virtual void Lose() = 0;

 protected:
  // Whether that is worth a line: what the function throws has one of its own.
  static bool MissesAnswer(bool functionHasReturned) {
    return functionHasReturned || std::uncaught_exceptions() == 0;
  }
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_DEFERREDCALL_H_
