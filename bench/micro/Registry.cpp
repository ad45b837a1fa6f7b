// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Scalars found by their names, and the guard that requests run under.
#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPAgentGuard.h"
#include "NetSNMPDataNode.h"
#include "NetSNMPIntNodeData.h"

namespace {

// A registry with scalars.
class Registry {
 public:
  explicit Registry(long count) {
    NetSNMPNode::nodeMap_ = new std::map<std::string, NetSNMPNode*>;
    int number = 7;
    const NetSNMPIntNodeData value(&number, eNodeAccessReadWrite, true);
    for (unsigned long k = 1; k <= static_cast<unsigned long>(count); ++k) {
      unsigned long oid[] = {1, 3, 6, 1, 4, 1, 32473, 1, k, 0};
      names_.push_back("scalar" + std::to_string(k));
      new NetSNMPDataNode(oid, OID_LENGTH(oid), names_.back(), value, nullptr,
                          "");
    }
  }
  ~Registry() { NetSNMPNode::DeleteNodeMap(); }
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;

  // One name after the other, in a scattered order.
  std::string& NextName() {
    next_ = (next_ + 7919) % names_.size();
    return names_[next_];
  }

 private:
  std::vector<std::string> names_;
  std::size_t next_ = 0;
};

void FindScalar(benchmark::State& state) {
  Registry registry(state.range(0));
  for (auto _ : state) {
    benchmark::DoNotOptimize(NetSNMPDataNode::GetNodeData(registry.NextName()));
  }
}

void SetScalar(benchmark::State& state) {
  Registry registry(state.range(0));
  for (auto _ : state) NetSNMPDataNode::SetNodeData(registry.NextName(), 7);
}

// The handler as the agent library calls it for a GET.
void HandleGet(benchmark::State& state) {
  Registry registry(state.range(0));
  const oid name[] = {1, 3, 6, 1, 4, 1, 32473, 1, 1, 0};
  netsnmp_mib_handler handler{};
  netsnmp_agent_request_info info{};
  netsnmp_request_info request{};
  info.mode = MODE_GET;
  snmp_varlist_add_variable(&request.requestvb, name, OID_LENGTH(name),
                            ASN_NULL, nullptr, 0);
  for (auto _ : state) {
    handler.handler_name = registry.NextName().data();
    benchmark::DoNotOptimize(
        var_instance_handler(&handler, nullptr, &info, &request));
  }
  snmp_free_varbind(request.requestvb);
}

void TakeGuard(benchmark::State& state) {
  for (auto _ : state) NetSNMPAgentGuard guard;
}

void NestGuard(benchmark::State& state) {
  const NetSNMPAgentGuard outer;
  for (auto _ : state) NetSNMPAgentGuard guard;
}

BENCHMARK(FindScalar)->Name("registry/find")->Arg(100)->Arg(5000);
BENCHMARK(SetScalar)->Name("registry/set")->Arg(100)->Arg(5000);
BENCHMARK(HandleGet)->Name("registry/handle get")->Arg(100)->Arg(5000);
BENCHMARK(TakeGuard)->Name("guard/take");
BENCHMARK(NestGuard)->Name("guard/nest");

}  // namespace
