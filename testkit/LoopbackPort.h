// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTKIT_LOOPBACKPORT_H_
#define SNMPSUBAGENT_TESTKIT_LOOPBACKPORT_H_

#include <string>

#include "testkit/FileDescriptor.h"

namespace testkit {

// A port of 127.0.0.1 free for TCP and UDP, which no other test takes as long
// as this object lives.
//
// A free port alone could be taken by somebody else before the daemon binds it.
// So it lies below the range from which the system serves outgoing connections,
// and is claimed with an abstract Unix socket named after it, which the system
// withdraws when the process ends, however it ends.
class LoopbackPort {
 public:
  LoopbackPort();

  int Number() const { return number_; }

  // As "127.0.0.1:" and the number.
  std::string Address() const;

 private:
  int number_;
  FileDescriptor claim_;
};

}  // namespace testkit

#endif  // SNMPSUBAGENT_TESTKIT_LOOPBACKPORT_H_
