// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_PEER_H_
#define SNMPSUBAGENT_BENCH_PEER_H_

// clang-format off
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
#include <net-snmp/agent/net-snmp-agent-includes.h>
// clang-format on

#include "objects/objects.h"

// How one publishes the objects with the agent library alone: one way in each
// source.

void register_scalars(unsigned int count);  // instance handlers
void register_traps(void);                  // instance handlers

// Tables.
void register_iterator(unsigned int rows);
void register_sorted_iterator(unsigned int rows);
void register_container(unsigned int rows);
void register_tdata(unsigned int rows);
void register_dataset(unsigned int rows);

// Writes one of the values, with its type, into the variable.
void write_value(netsnmp_variable_list* variable,
                 const struct bench_values* values, enum bench_type type);

// A registration of the table under its OID.
netsnmp_handler_registration* table_registration(const char* name,
                                                 Netsnmp_Node_Handler* handler);

// The table's one index, a signed integer, and its columns.
netsnmp_table_registration_info* table_columns(void);

// Answers the requests for cells of the rows that `values_of_row` finds; it
// returns null where there is no row.
int answer_cells(
    netsnmp_agent_request_info* info, netsnmp_request_info* requests,
    const struct bench_values* (*values_of_row)(netsnmp_request_info*));

// calloc(), ending the program when there is no memory.
void* allocate(size_t count, size_t size);

#endif  // SNMPSUBAGENT_BENCH_PEER_H_
