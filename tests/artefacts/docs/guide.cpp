// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The code of docs/guide.md, each block where it would stand in a service.
// Compiled by code_compiles, which adds those that need no more than `service`.
#include <LogXMessage.h>
#include <NetSNMPAgentGuard.h>
#include <NetSNMPBoolNodeData.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPDataSetTableNode.h>
#include <NetSNMPIntNodeData.h>
#include <NetSNMPSizedCharNodeData.h>
#include <NetSNMPSmiNodeData.h>
#include <NetSNMPStringNodeData.h>
#include <NetSNMPTableEntryNode.h>
#include <NetSNMPTableNode.h>
#include <NetSNMPTrapNode.h>
#include <NetSNMPUnsignedIntNodeData.h>
#include <SNMPSubAgent.h>

#include <chrono>

#include "guide/the-first-subagent-1.cpp"

int celsius;
int setPoint;
unsigned int received;
unsigned char address[4];
unsigned long oid[10];

void TheFirstSubagent() {
  int celsius = 21;
#include "guide/the-first-subagent-2.cpp"
}

void Values() {
#include "guide/counters-and-other-types-1.cpp"
#include "guide/scalars-1.cpp"
#include "guide/your-own-variables-or-copies-1.cpp"
#include "guide/your-own-variables-or-copies-2.cpp"
}

constexpr int kHighest = 100;

#include "guide/learning-of-a-set-1.cpp"

void LearningOfASet() {
#include "guide/learning-of-a-set-2.cpp"
}

struct Fan {
  std::string label;
  int speed;
  bool enabled;
};

void Tables(unsigned long* tableOid, unsigned long* entryOid, Fan& fan) {
#include "guide/tables-of-your-own-rows-1.cpp"
#include "guide/tables-of-your-own-rows-2.cpp"
#include "guide/tables-of-your-own-rows-3.cpp"
}

void Events(NetSNMPDataSetTableNode* events, unsigned int number,
            std::string text, std::vector<std::string>& unsent) {
#include "guide/tables-of-copied-rows-1.cpp"
}

void Notifications(unsigned long* alarmOid, NetSNMPDataNode* temperatureNode,
                   NetSNMPDataNode* limitNode) {
#include "guide/notifications-1.cpp"
}

void Threads(std::string& status, NetSNMPTableEntryNode* fans,
             const std::vector<NetSNMPNodeData*>& row) {
#include "guide/threads-1.cpp"
}
