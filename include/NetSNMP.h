// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_NETSNMP_H_
#define SNMPSUBAGENT_NETSNMP_H_

// The agent library's headers need this order.
// clang-format off
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
#include <net-snmp/agent/net-snmp-agent-includes.h>
#include <net-snmp/agent/agent_callbacks.h>
#include <net-snmp/library/large_fd_set.h>
#include <net-snmp/library/snmpIPv4BaseDomain.h>
#include <net-snmp/library/snmpSocketBaseDomain.h>
#include <net-snmp/library/snmpTCPBaseDomain.h>
// clang-format on

#include <string>

#include "SnmpSubAgentExport.h"

class NetSNMPNodeData;

// snmpTrapOID.0 (RFC 3418), the first variable of every SNMPv2 notification.
extern SNMPSUBAGENT_EXPORT unsigned long objid_snmptrap[11];

// Wrappers of the agent library's calls, each naming the call that it makes,
// and the conversion between values and varbinds.
//
// Results are the agent library's unless a line says otherwise. Lengths of OIDs
// are in sub-identifiers, those of values in bytes. Pointers are borrowed
// unless a line says otherwise; strings are copied.
//
// Threads: any. Each wrapper that reaches the agent library's own state takes
// the lock of NetSNMPAgentGuard.
namespace NetSNMP {

// ---- Status and variable lists ----

// 1 if `status` is 0, else 0: the test of every result below.
SNMPSUBAGENT_EXPORT int snmp_succeeded(int status);

// Number of variables; 0 for a null list.
SNMPSUBAGENT_EXPORT int count_snmp_variable_list(variable_list* list);

// Appends `var`, with the chain behind it, to `list`. Does nothing if either is
// null.
SNMPSUBAGENT_EXPORT void push_back_snmp_variable_list(variable_list* list,
                                                      variable_list* var);

// Removes the last variable and stores it in `*var`; the caller then owns it. A
// list of one yields its head and is unchanged. Returns 0, or 5 (genErr) for a
// null list.
SNMPSUBAGENT_EXPORT int pop_back_snmp_variable_list(variable_list* list,
                                                    variable_list** var);

// Links a new, empty variable behind `*cursor`, in place of what was there, and
// moves the cursor to it. Returns 0, or 5 (genErr) if the cursor is null or
// there is no memory.
SNMPSUBAGENT_EXPORT int allocate_next_variable_list(variable_list** cursor);

// snmp_free_varbind: frees the whole chain; `*list` is null afterwards.
SNMPSUBAGENT_EXPORT void delete_snmp_variable_list(variable_list** list);

// snmp_varlist_add_variable: appends a variable with a copy of the value, which
// the list owns. Returns it, or null on failure: also for a name or an object
// identifier of more than 128 sub-identifiers.
SNMPSUBAGENT_EXPORT variable_list* add_snmp_varlist_variable(
    variable_list** list, const unsigned long* name, unsigned int nameLen,
    unsigned char type, unsigned char* value, unsigned int valueLen);

// ---- Agent set-up, for applications without an SNMPSubAgent ----

// init_agent
SNMPSUBAGENT_EXPORT int init_snmp_agent(const std::string& name);
// init_snmp, with the alarms run by the event loop instead of a signal. Returns
// 0.
SNMPSUBAGENT_EXPORT int init_snmp_snmp(const std::string& name);
// snmp_shutdown. Nodes are disconnected afterwards. Returns 0.
SNMPSUBAGENT_EXPORT int shutdown_snmp(const std::string& name);
// shutdown_agent. Nodes are disconnected afterwards. Returns 0.
SNMPSUBAGENT_EXPORT int shutdown_snmp_agent();
// snmp_register_callback. The agent library frees an `arg` that is still
// registered when it shuts down: it must be null, from malloc, or unregistered
// before.
SNMPSUBAGENT_EXPORT int register_snmp_callback(
    int major, int minor, int (*fn)(int, int, void*, void*), void* arg);
// snmp_unregister_callback
SNMPSUBAGENT_EXPORT int unregister_snmp_callback(int major, int minor,
                                                 int (*fn)(int, int, void*,
                                                           void*),
                                                 void* arg, int matchArg);
// netsnmp_ds_set_int
SNMPSUBAGENT_EXPORT int set_snmp_int(int storeId, int which, int value);
// netsnmp_ds_set_boolean
SNMPSUBAGENT_EXPORT int set_snmp_boolean(int storeId, int which, int value);

// ---- Transport domains ----

// Gives the domain its OID, which is not copied, and the one prefix "tcp".
// Returns 0.
SNMPSUBAGENT_EXPORT int init_snmp_tdomain(netsnmp_tdomain* domain,
                                          const unsigned long* name,
                                          unsigned int nameLen);
// netsnmp_tdomain_register
SNMPSUBAGENT_EXPORT int register_snmp_tdomain(netsnmp_tdomain* domain);
// netsnmp_tdomain_unregister, then free(domain), which must come from malloc.
// The list of prefixes is freed if the domain was registered, else not at all.
SNMPSUBAGENT_EXPORT int unregister_snmp_tdomain(netsnmp_tdomain* domain);

// ---- Handlers and registrations ----

// netsnmp_create_handler_registration: stores the new registration, or null, in
// `*reg`. Returns 0, or 3 (badValue) for null: also for an OID of more than 128
// sub-identifiers.
SNMPSUBAGENT_EXPORT int create_snmp_handler_registration(
    netsnmp_handler_registration** reg, const char* name,
    int (*handler)(netsnmp_mib_handler*, netsnmp_handler_registration*,
                   netsnmp_agent_request_info*, netsnmp_request_info*),
    unsigned long* oid, unsigned int oidLen, int modes);
// netsnmp_register_instance, which frees the registration if it fails.
SNMPSUBAGENT_EXPORT int register_snmp_handler(
    netsnmp_handler_registration* reg);
// netsnmp_unregister_handler, which frees the registration.
SNMPSUBAGENT_EXPORT int unregister_snmp_handler(
    netsnmp_handler_registration* reg);
// netsnmp_handler_registration_free, if `reg` is not null. Returns 0.
SNMPSUBAGENT_EXPORT int free_register_snmp_handler(
    netsnmp_handler_registration* reg);
// unregister_mib
SNMPSUBAGENT_EXPORT int unregister_snmp_mib(unsigned long* oid,
                                            unsigned int oidLen);
// netsnmp_set_request_error, if `error` is above 0. Returns `error`.
SNMPSUBAGENT_EXPORT int set_snmp_request_error(
    netsnmp_agent_request_info* reqinfo, netsnmp_request_info* request,
    int error);
// send_v2trap. Returns 0.
SNMPSUBAGENT_EXPORT int send_trap(variable_list* vars);

// ---- Iterator tables ----

// snmp_varlist_add_variable: appends an index of that ASN.1 type. Returns 0.
SNMPSUBAGENT_EXPORT int add_index_snmp_table(
    netsnmp_table_registration_info* info, unsigned char type);
// netsnmp_register_table_iterator
SNMPSUBAGENT_EXPORT int register_snmp_table_iterator(
    netsnmp_handler_registration* reg, netsnmp_iterator_info* info);
// netsnmp_iterator_delete_table, if `info` is not null. Returns 0.
SNMPSUBAGENT_EXPORT int delete_snmp_table_iterator(netsnmp_iterator_info* info);
// netsnmp_table_registration_info_free. Returns 0.
SNMPSUBAGENT_EXPORT int free_table_registration_info(
    netsnmp_table_registration_info* info);
// netsnmp_extract_iterator_context, stored in `*context`. Returns 0.
SNMPSUBAGENT_EXPORT int extract_snmp_iterator_context(
    void** context, netsnmp_request_info* request);
// netsnmp_extract_table_info, stored in `*info`. Returns 0.
SNMPSUBAGENT_EXPORT int extract_snmp_table_info(
    netsnmp_table_request_info** info, netsnmp_request_info* request);

// ---- Dataset tables ----

// netsnmp_create_table_data_set with one index of that ASN.1 type, stored in
// `*set`. Returns 0, also when there is no memory and `*set` is null.
SNMPSUBAGENT_EXPORT int create_snmp_dataset(netsnmp_table_data_set** set,
                                            const char* name, int allowCreation,
                                            unsigned char indexType);
// netsnmp_table_set_add_default_row
SNMPSUBAGENT_EXPORT int define_snmp_dataset_column(netsnmp_table_data_set* set,
                                                   unsigned int column,
                                                   int type, int writable);
// netsnmp_register_table_data_set
SNMPSUBAGENT_EXPORT int register_snmp_dataset_table(
    netsnmp_handler_registration* reg, netsnmp_table_data_set* set);
// netsnmp_create_table_data_row, stored in `*row`. Returns 0.
SNMPSUBAGENT_EXPORT int create_snmp_dataset_row(netsnmp_table_row** row);
// snmp_varlist_add_variable: appends an index value to the row. Returns 0.
SNMPSUBAGENT_EXPORT int add_index_snmp_dataset(netsnmp_table_row* row,
                                               unsigned char type,
                                               const unsigned char* value,
                                               unsigned int valueLen);
// netsnmp_set_row_column and, if that succeeded,
// netsnmp_mark_row_column_writable. Returns the result of the first. A column
// that has a value is to be cleared first, with type SNMP_NOSUCHINSTANCE.
SNMPSUBAGENT_EXPORT int set_snmp_dataset_row_col(
    netsnmp_table_row* row, unsigned int column, unsigned char type,
    const char* value, unsigned int valueLen, int writable);
// netsnmp_table_dataset_add_row, which owns the row then. Returns 0.
SNMPSUBAGENT_EXPORT int add_snmp_dataset_row(netsnmp_table_row* row,
                                             netsnmp_table_data_set* set);
// netsnmp_table_dataset_remove_and_delete_row. Returns 0.
SNMPSUBAGENT_EXPORT int delete_remove_snmp_dataset_row(
    netsnmp_table_row* row, netsnmp_table_data_set* set);
// netsnmp_table_data_set_get_first_row, stored in `*row`. Returns 0.
SNMPSUBAGENT_EXPORT int get_snmp_dataset_first_row(netsnmp_table_row** row,
                                                   netsnmp_table_data_set* set);

// ---- Values and varbinds; results are SNMP error numbers (RFC 3416) ----

// snmp_set_var_typed_value: type and a copy of the bytes of `value`.
SNMPSUBAGENT_EXPORT int get_snmp_value(variable_list* var,
                                       NetSNMPNodeData* value);

// snmp_set_var_value: a copy of the bytes of `value`; the type stays.
SNMPSUBAGENT_EXPORT int set_snmp_var_value(variable_list* var,
                                           NetSNMPNodeData* value);

// Appends a variable with type and bytes of `value`, as the overload above.
SNMPSUBAGENT_EXPORT variable_list* add_snmp_varlist_variable(
    variable_list** list, const oid* name, unsigned int nameLen,
    NetSNMPNodeData* value);

// Points the varbind at the storage of `value` without copying: the varbind
// must neither outlive nor free it. Returns 0, or 2 (noSuchName) if `value` is
// null or has no type from 1 to 6.
SNMPSUBAGENT_EXPORT int set_snmp_variable_list(variable_list* var,
                                               NetSNMPNodeData* value);

// Whether a SET may write the varbind into `value`: 0, or 2 (noSuchName) if
// `value` is null or of an unknown type, 17 (notWritable), 3 (badValue) for an
// integer of the wrong length, a truth value other than 1 and 2, an untyped
// value, or a varbind without a value, 8 (wrongLength) for a text too long for
// a NetSNMPSizedCharNodeData. ASN.1 types are not compared, and other texts
// have no limit.
SNMPSUBAGENT_EXPORT int set_snmp_validate(variable_list* var,
                                          NetSNMPNodeData* value);

// Writes the varbind into `value` with notification; a text ends at its first
// NUL. Returns 0, 2 (noSuchName) if `value` is null or has no type from 1 to 6,
// or 3 (badValue) if the varbind has no value.
SNMPSUBAGENT_EXPORT int set_snmp_commit(variable_list* var,
                                        NetSNMPNodeData* value);

// Serves one request: GET and GETNEXT copy the value into the varbind, RESERVE1
// and RESERVE2 validate, COMMIT writes. Any other mode returns 3 (badValue),
// also FREE and UNDO: what COMMIT wrote stays.
SNMPSUBAGENT_EXPORT int handle_snmp_request(variable_list* var,
                                            NetSNMPNodeData* value, int mode);

}  // namespace NetSNMP

#endif  // SNMPSUBAGENT_NETSNMP_H_
