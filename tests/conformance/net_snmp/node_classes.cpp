// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The same as objects.cpp on the node classes, which take ADDRESS as
// "tcp:HOST:PORT" only.
#include <NetSNMPDataNode.h>
#include <NetSNMPIntNodeData.h>
#include <NetSNMPSmiNodeData.h>
#include <NetSNMPStringNodeData.h>
#include <NetSNMPTrapNode.h>
#include <SNMPSubAgent.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr const char* kAnswer = "life the universe and everything";

using Ids = std::vector<unsigned long>;

Ids IdsOf(const std::string& text) {
  Ids ids;
  std::size_t at = 0;
  while (at < text.size()) {
    std::size_t used = 0;
    ids.push_back(std::stoul(text.substr(at), &used));
    at += used + 1;
  }
  return ids;
}

class Service : public SNMPSubAgent {
 public:
  Service(const std::string& host, int port)
      : SNMPSubAgent("conformance", host, static_cast<unsigned int>(port)) {}
  ~Service() override { Stop(); }
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override {
    NetSNMPNode::RegisterMibs();
    std::puts("NET-SNMP version: none; SnmpSubAgent is served");
    std::fflush(stdout);
  }
};

NetSNMPDataNode* Scalar(const char* oid, const std::string& name,
                        const NetSNMPNodeData& value,
                        void (*callback)(NetSNMPDataNode*) = nullptr) {
  Ids ids = IdsOf(oid);
  return new NetSNMPDataNode(ids.data(), static_cast<unsigned int>(ids.size()),
                             name, value, callback, "");
}

NetSNMPTrapNode* Trap(const char* oid, const std::string& name) {
  Ids ids = IdsOf(oid);
  return new NetSNMPTrapNode(ids.data(), static_cast<unsigned int>(ids.size()),
                             name);
}

NetSNMPNode* Named(const char* name) { return NetSNMPNode::nodeMap_->at(name); }

// Sends the notification of the example.
void OnTriggerSet(NetSNMPDataNode*) {
  static_cast<NetSNMPTrapNode*>(Named("exampleTrap"))
      ->TriggerV2Trap(static_cast<NetSNMPDataNode*>(Named("exampleString")));
}

void Serve(Service& service, std::string contact) {
  unsigned int upTime = 1;
  std::string answer = kAnswer;
  std::string hello = "hello world";
  std::string again = "hello again world";
  int triggered = 0;
  Scalar("1.3.6.1.2.1.1.3.0", "sysUpTime",
         NetSNMPTimeTicksNodeData(&upTime, eNodeAccessReadOnly));
  Scalar("1.3.6.1.2.1.1.4.0", "sysContact",
         NetSNMPStringNodeData(&contact, eNodeAccessReadWrite));
  Trap("1.3.6.1.4.1.2021.254.0.1", "exampleTrap");
  Scalar("1.3.6.1.4.1.2021.254.1.0", "exampleString",
         NetSNMPStringNodeData(&answer, eNodeAccessReadOnly));
  Scalar("1.3.6.1.4.1.2021.254.8.0", "exampleTrigger",
         NetSNMPIntNodeData(&triggered, eNodeAccessReadWrite), OnTriggerSet);
  Scalar("1.3.6.1.4.1.8872.9999.9999.1.0", "hello",
         NetSNMPStringNodeData(&hello, eNodeAccessReadOnly));
  Scalar("1.3.6.1.4.1.8872.9999.9999.2.0", "again",
         NetSNMPStringNodeData(&again, eNodeAccessReadOnly));
  service.Start();
  pause();
}

bool Notify(Service& service, const char* oid, const char* varbind,
            std::string text) {
  NetSNMPTrapNode* const trap = Trap(oid, "trap");
  NetSNMPDataNode* const object = Scalar(
      varbind, "object", NetSNMPStringNodeData(&text, eNodeAccessReadOnly));
  service.Start();
  for (int i = 0; i < 1000; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (trap->TriggerV2Trap(object)) return true;
  }
  return false;
}

}  // namespace

int main(int argc, char* argv[]) {
  char host[64];
  int port = 0;
  if (argc < 4 || std::sscanf(argv[1], "tcp:%63[^:]:%d", host, &port) != 2) {
    std::fprintf(stderr, "the node classes connect over TCP only\n");
    return 2;
  }
  NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
  Service service(host, port);
  const std::string mode = argv[2];
  if (mode == "serve" && argc == 4) {
    Serve(service, argv[3]);
    return EXIT_SUCCESS;
  }
  if (mode != "notify" || argc != 6) return 2;
  const bool sent = Notify(service, argv[3], argv[4], argv[5]);
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  return sent ? EXIT_SUCCESS : EXIT_FAILURE;
}
