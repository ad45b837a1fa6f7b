// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
// A subagent in C on the agent library alone.
//
//   bench_peer KIND PORT COUNT
//
// KIND is what it publishes and how: scalars, traps, iterator, sorted,
// container, tdata or dataset. Ends on SIGTERM.
#include <pthread.h>
#include <stdlib.h>
#include <string.h>
#include <sys/select.h>

#include "peers/peer.h"

static void register_objects(const struct bench_order* order) {
  if (strcmp(order->kind, "scalars") == 0) {
    register_scalars(order->count);
  } else if (strcmp(order->kind, "traps") == 0) {
    register_traps();
  } else if (strcmp(order->kind, "iterator") == 0) {
    register_iterator(order->count);
  } else if (strcmp(order->kind, "sorted") == 0) {
    register_sorted_iterator(order->count);
  } else if (strcmp(order->kind, "container") == 0) {
    register_container(order->count);
  } else if (strcmp(order->kind, "tdata") == 0) {
    register_tdata(order->count);
  } else if (strcmp(order->kind, "dataset") == 0) {
    register_dataset(order->count);
  } else {
    fprintf(stderr, "unknown kind of peer: %s\n", order->kind);
    exit(2);
  }
}

static void set_up(const struct bench_order* order) {
  netsnmp_ds_set_boolean(NETSNMP_DS_APPLICATION_ID, NETSNMP_DS_AGENT_ROLE, 1);
  netsnmp_ds_set_string(NETSNMP_DS_APPLICATION_ID, NETSNMP_DS_AGENT_X_SOCKET,
                        order->master);
  init_agent("bench");
  register_objects(order);
  init_snmp("bench");
}

// One pass of the event loop, as the agent library's own manual shows it.
static void serve(void) {
  struct timeval timeout = {5, 0};
  fd_set descriptors;
  int count = 0;
  int block = 0;
  int ready;
  FD_ZERO(&descriptors);
  snmp_select_info(&count, &descriptors, &timeout, &block);
  ready = select(count, &descriptors, NULL, NULL, &timeout);
  if (ready > 0) {
    snmp_read(&descriptors);
  } else if (ready == 0) {
    snmp_timeout();
  }
  snmp_store_if_needed();
  run_alarms();
  netsnmp_check_outstanding_agent_requests();
}

static void* run(void* argument) {
  set_up(argument);
  for (;;) serve();
  return NULL;
}

int main(int argc, char** argv) {
  struct bench_order order = bench_order_of(argc, argv);
  pthread_t thread;
  bench_expect_end();
  if (pthread_create(&thread, NULL, run, &order) != 0) return 1;
  bench_wait_for_end();
  // No orderly shutdown: the benchmark is over.
  _Exit(0);
}
