// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_MACHINE_H_
#define SNMPSUBAGENT_BENCH_COMPARE_MACHINE_H_

#include <string>

// The origin of the figures, in lines: machine, system, compiler, flags and
// current load.
std::string MachineText();

#endif  // SNMPSUBAGENT_BENCH_COMPARE_MACHINE_H_
