// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_OBJECTS_H_
#define SNMPSUBAGENT_BENCH_OBJECTS_H_

// The objects that every subagent of the benchmarks publishes, with the same
// OIDs, types and values.
//
//   ROOT.1.K.0     scalars, K counting from 1; writable
//   ROOT.2.1.C.R   a table: columns C from 2 to 7, rows R counting from 1;
//                  read-only
//   ROOT.3.1.0     a scalar; ROOT.3.2.0 sends as many notifications
//                  ROOT.3.0.1 with it as are written to it
//
// The values of scalar K and row R are computed from their number. A row has
// one of each type, a scalar that of bench_type_of_scalar().

#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

#define BENCH_ROOT 1, 3, 6, 1, 4, 1, 32473
enum { BENCH_ROOT_LENGTH = 7 };

enum { BENCH_SCALARS = 1, BENCH_TABLE = 2, BENCH_TRAPS = 3 };
enum { BENCH_FIRST_COLUMN = 2, BENCH_LAST_COLUMN = 7 };

// The types of values, in the order of the table's columns.
enum bench_type {
  BENCH_NUMBER,       // INTEGER
  BENCH_COUNT,        // Unsigned32
  BENCH_DESCRIPTION,  // OCTET STRING, a text
  BENCH_LABEL,        // OCTET STRING, a text in a buffer
  BENCH_ENABLED,      // TruthValue
  BENCH_ADDRESS,      // OCTET STRING, bytes
  BENCH_TYPES
};

// The sizes of buffers for a DisplayString of up to 63 and of up to 31
// characters.
struct bench_values {
  int number;
  unsigned int count;
  char description[64];
  char label[32];
  bool enabled;
  unsigned char address[6];
};

// The values of scalar or row `k`.
void bench_values_of(unsigned int k, struct bench_values* values);

enum bench_type bench_type_of_scalar(unsigned int k);

// The arguments of a subagent: KIND MASTER COUNT.
struct bench_order {
  const char* kind;    // what to publish, and how
  const char* master;  // its address, "tcp:127.0.0.1:1705" or "unix:/path"
  unsigned int count;  // of scalars or rows
};

// Called first of all: prints the CPU time that loading the program has taken,
// in microseconds. Ends the program, with a message, if the arguments are
// invalid.
struct bench_order bench_order_of(int argc, char** argv);

// Blocks SIGTERM in every thread created afterwards, for bench_wait_for_end().
void bench_expect_end(void);

// Returns on SIGTERM.
void bench_wait_for_end(void);

#ifdef __cplusplus
}
#endif

#endif  // SNMPSUBAGENT_BENCH_OBJECTS_H_
