// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/objects.h"

#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

void bench_values_of(unsigned int k, struct bench_values* values) {
  values->number = -(int)(7 * k);
  values->count = 1000003U * k;
  snprintf(values->description, sizeof values->description,
           "description of object %u", k);
  snprintf(values->label, sizeof values->label, "unit-%u", k);
  values->enabled = k % 2 == 0;
  values->address[0] = 2;
  for (unsigned int i = 1; i < sizeof values->address; ++i)
    values->address[i] = (unsigned char)(k >> (8 * (i - 1) % 32));
}

enum bench_type bench_type_of_scalar(unsigned int k) {
  return (enum bench_type)(k % BENCH_TYPES);
}

static double used_cpu_time(void) {
  struct timespec used;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
  return 1e6 * (double)used.tv_sec + 1e-3 * (double)used.tv_nsec;
}

struct bench_order bench_order_of(int argc, char** argv) {
  printf("%.1f\n", used_cpu_time());
  fflush(stdout);
  if (argc != 4) {
    fprintf(stderr, "usage: %s KIND MASTER COUNT\n", argv[0]);
    exit(2);
  }
  return (struct bench_order){argv[1], argv[2],
                              (unsigned int)strtoul(argv[3], NULL, 10)};
}

static sigset_t end_signal(void) {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGTERM);
  return set;
}

void bench_expect_end(void) {
  const sigset_t set = end_signal();
  pthread_sigmask(SIG_BLOCK, &set, NULL);
}

void bench_wait_for_end(void) {
  const sigset_t set = end_signal();
  int received = 0;
  sigwait(&set, &received);
}
