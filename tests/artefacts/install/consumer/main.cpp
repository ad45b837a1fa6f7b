// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A service that is built against the installed library. It uses each library
// whose types are in the headers, prints the platform's loopback address, and
// fails if a value is not what was set.

#include <IRunnable.h>
#include <LogXMessage.h>
#include <NetSNMP.h>
#include <NetSNMPAgentGuard.h>
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <NetworkInterfaces.h>
#include <SNMPSubAgent.h>

#include <iostream>

namespace {
class Service : public SNMPSubAgent {
 public:
  Service() : SNMPSubAgent("consumer") {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

unsigned long temperatureOID[] = {1, 3, 6, 1, 4, 1, 32473, 1, 0};

// Sets a served variable by the name of its node; false if that did not work.
bool SetTemperature() {
  int temperature = 20;
  new NetSNMPDataNode(temperatureOID, OID_LENGTH(temperatureOID), "temperature",
                      NetSNMPIntNodeData(&temperature, eNodeAccessReadWrite),
                      nullptr, "");
  NetSNMPDataNode::SetNodeData("temperature", 25);
  NetSNMPNode::DeleteNodes();
  return temperature == 25;
}
}  // namespace

int main() {
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  NetSNMPNode::NodeMsgLogger_ = LogXMessage;
  Service service;
  vela::IRunnable& task = service;
  boost::mutex mutex;
  boost::lock_guard<boost::mutex> lock(mutex);

  const bool works = SetTemperature() && !service.Connected() &&
                     !task.IsRunning() && NetSNMP::snmp_succeeded(0);
  NetSNMPNode::DeleteNodeMap();
  std::cout << NetworkInterfaces::loopbackIPv4() << std::endl;
  return works ? 0 : 1;
}
