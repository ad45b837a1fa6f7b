// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_EXPERIMENTS_H_
#define SNMPSUBAGENT_BENCH_COMPARE_EXPERIMENTS_H_

#include "compare/Report.h"

// The arguments of every experiment: how much time to take, and where to put
// the results.
struct Setup {
  bool quick;
  Report& report;

  // One of two numbers, according to `quick`.
  template <typename T>
  T Choose(T ifQuick, T otherwise) const {
    return quick ? ifQuick : otherwise;
  }
};

// CPU time per request: of scalars, of tables, of notifications, and of some of
// these behind snmpd.
void MeasureScalars(Setup& setup);
void MeasureTables(Setup& setup);
void MeasureNotifications(Setup& setup);
void MeasureBehindSnmpd(Setup& setup);

// Instructions per request, under callgrind.
void MeasureInstructions(Setup& setup);

// The CPU time per request of the objects.
void MeasureObjects(Setup& setup);

// The latency of many simultaneous requests after a pause.
void MeasureLatency(Setup& setup);

// Memory per scalar and per row.
void MeasureMemory(Setup& setup);

// CPU time from the start of the program until its scalars are registered.
void MeasureStart(Setup& setup);

#endif  // SNMPSUBAGENT_BENCH_COMPARE_EXPERIMENTS_H_
