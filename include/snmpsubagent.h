// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_ALL_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_ALL_H_

// All that an application needs to publish its management data over SNMP.
#include "snmpsubagent/Access.h"
#include "snmpsubagent/Agent.h"
#include "snmpsubagent/Later.h"
#include "snmpsubagent/Module.h"
#include "snmpsubagent/Notification.h"
#include "snmpsubagent/Oid.h"
#include "snmpsubagent/Scalar.h"
#include "snmpsubagent/SetChange.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/Table.h"
#include "snmpsubagent/Types.h"
#include "snmpsubagent/ValueSources.h"

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_ALL_H_
