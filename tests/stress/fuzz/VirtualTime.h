// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FUZZ_VIRTUALTIME_H_
#define SNMPSUBAGENT_TESTS_FUZZ_VIRTUALTIME_H_

// Time as the agent library sees it in a program that has this: it passes
// in select() only, and when that waits for something that does not come, the
// whole wait is over at once. So a silent master agent costs nothing, and each
// run of an input is like the other.
class VirtualTime {
 public:
  // Has `work` called in every select(), before it looks what is readable: the
  // rest of the world at work.
  static void WorkInSelect(void (*work)());
};

#endif  // SNMPSUBAGENT_TESTS_FUZZ_VIRTUALTIME_H_
