#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <SNMPSubAgent.h>
#include <unistd.h>

class Service : public SNMPSubAgent {
 public:
  Service() : SNMPSubAgent("thermometer", "127.0.0.1", 1705) {}
  ~Service() override { Stop(); }
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override { NetSNMPNode::RegisterMibs(); }
};

int main() {
  int celsius = 21;
  unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 2, 1, 0};
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  new NetSNMPDataNode(oid, 10, "temperature",
                      NetSNMPIntNodeData(&celsius, eNodeAccessReadWrite),
                      nullptr, "");
  Service service;
  service.Start();
  pause();
}
