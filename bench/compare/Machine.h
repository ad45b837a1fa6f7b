// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_MACHINE_H_
#define SNMPSUBAGENT_BENCH_COMPARE_MACHINE_H_

#include <string>

// Where the figures come from, in lines: machine, system, compiler and flags,
// and the load at the moment.
std::string MachineText();

#endif  // SNMPSUBAGENT_BENCH_COMPARE_MACHINE_H_
