// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_SUBAGENT_OBJECTS_H_
#define SNMPSUBAGENT_BENCH_SUBAGENT_OBJECTS_H_

// Build the nodes of the benchmarks' objects, in the registry.
void BuildScalars(unsigned int count);
void BuildTable(unsigned int rows);
void BuildTraps();

#endif  // SNMPSUBAGENT_BENCH_SUBAGENT_OBJECTS_H_
