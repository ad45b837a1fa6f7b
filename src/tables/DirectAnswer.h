// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TABLES_DIRECTANSWER_H_
#define SNMPSUBAGENT_TABLES_DIRECTANSWER_H_

#include <vector>

#include "tables/RowSelection.h"

struct netsnmp_agent_request_info_s;
struct netsnmp_handler_registration_s;
struct netsnmp_mib_handler_s;
struct netsnmp_request_info_s;

// GETs and GETNEXTs whose rows are known need no iterator: it would copy lists
// of indexes, build an OID for each candidate and compare, only to find them
// again, which is a tenth of the request.
namespace direct_answer {

using Choice = RowSelection::Choice;

// Whether `iterator` is the agent library's, over a table's own rows, and finds
// the same for the open requests, one choice each and none of them null. It
// does not for a column that the table lacks.
bool IsTheIterators(const netsnmp_mib_handler_s& iterator,
                    const netsnmp_handler_registration_s& registration,
                    const netsnmp_request_info_s* requests,
                    const std::vector<Choice>& choices);

// Does with them what the iterator does: the handler behind it is called for a
// GET of each row. Returns what the handler returns.
int Give(netsnmp_mib_handler_s* iterator,
         netsnmp_handler_registration_s* registration,
         netsnmp_agent_request_info_s* requestInfo,
         netsnmp_request_info_s* requests, const std::vector<Choice>& choices);

}  // namespace direct_answer

#endif  // SNMPSUBAGENT_TABLES_DIRECTANSWER_H_
