// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Notifications: one with two objects that the service sends, and one that a
// scalar sends whenever its value is set.
//
//   traps [host port]      where the master agent takes AgentX sessions
#include <NetSNMPBoolNodeData.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <NetSNMPStringNodeData.h>
#include <NetSNMPTrapNode.h>

#include <string>

#include "../common/ExampleService.h"

// The tank 1.3.6.1.4.1.32473.3.5: its notifications are below 0, its objects
// below 1.
class Tank {
 public:
  Tank() {
    low_ = AddNotification(1, "tankLow");
    AddNotification(2, "tankLocked");
    levelNode_ = AddScalar(
        1, "tankLevel", NetSNMPIntNodeData(&level_, eNodeAccessReadOnly), "");
    placeNode_ =
        AddScalar(2, "tankPlace",
                  NetSNMPStringNodeData(&place_, eNodeAccessReadOnly), "");
    // Sends tankLocked when a manager sets it, twice, since a notification is
    // not confirmed. A scalar with a callback would send none.
    AddScalar(3, "tankLock", NetSNMPBoolNodeData(&lock_, eNodeAccessReadWrite),
              "tankLocked");
  }

  // The service's work: the tank leaks, and reports once that it is low.
  // Requires: a guard, as Run() has one.
  void Leak() {
    if (level_ > 0) --level_;
    if (level_ > 10 || told_) return;
    low_->AddDataObject(levelNode_);
    low_->AddDataObject(placeNode_);
    told_ = low_->TriggerV2Trap();  // false while the master agent is away
  }

 private:
  static NetSNMPTrapNode* AddNotification(unsigned long number,
                                          const std::string& name) {
    unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 3, 5, 0, number};
    return new NetSNMPTrapNode(oid, 11, name);
  }

  static NetSNMPDataNode* AddScalar(unsigned long number,
                                    const std::string& name,
                                    const NetSNMPNodeData& value,
                                    const std::string& notification) {
    unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 3, 5, 1, number, 0};
    return new NetSNMPDataNode(oid, 12, name, value, nullptr, notification);
  }

  int level_ = 12;  // in percent
  std::string place_ = "cellar";
  bool lock_ = false;
  bool told_ = false;
  NetSNMPTrapNode* low_;  // the nodes are the registry's
  NetSNMPDataNode* levelNode_;
  NetSNMPDataNode* placeNode_;
};

int main(int argc, char* argv[]) {
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  Tank tank;
  ExampleService service("traps", argc, argv);
  service.Run([&] { tank.Leak(); });
}
