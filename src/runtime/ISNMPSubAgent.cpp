// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ISNMPSubAgent.h"

#include "runtime/LivingSubAgents.h"

ISNMPSubAgent::ISNMPSubAgent() { LivingSubAgents::Add(this); }

ISNMPSubAgent::ISNMPSubAgent(const ISNMPSubAgent&) {
  LivingSubAgents::Add(this);
}

ISNMPSubAgent::~ISNMPSubAgent() { LivingSubAgents::Remove(this); }
