// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ISNMPSubAgent.h"

#include "nodes/LiveSubAgents.h"

ISNMPSubAgent::ISNMPSubAgent() { live_subagents::Add(this); }

ISNMPSubAgent::ISNMPSubAgent(const ISNMPSubAgent&) {
  live_subagents::Add(this);
}

ISNMPSubAgent::~ISNMPSubAgent() { live_subagents::Remove(this); }
