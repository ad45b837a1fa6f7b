// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "NetSNMPTrapTrigger.h"

NetSNMPTrapTrigger::NetSNMPTrapTrigger(void (*trapCallback)(NetSNMPDataNode*),
                                       const std::string& trapName)
    : trapCallback_(trapCallback), trapName_(trapName) {}

NetSNMPTrapTrigger::~NetSNMPTrapTrigger() = default;
