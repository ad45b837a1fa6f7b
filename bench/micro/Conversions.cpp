// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What a request does to a value, without the agent library.
#include <benchmark/benchmark.h>

#include <string>

#include "NetSNMP.h"
#include "NetSNMPBoolNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"

namespace {

constexpr eNodeAccessMode kMode = eNodeAccessReadWrite;

// A varbind that is used again and again, as the agent library does.
class Varbind {
 public:
  Varbind() {
    const oid name[] = {1, 3, 6, 1, 4, 1, 32473, 1, 0};
    snmp_varlist_add_variable(&list_, name, OID_LENGTH(name), ASN_NULL, nullptr,
                              0);
  }
  ~Varbind() { snmp_free_varbind(list_); }
  Varbind(const Varbind&) = delete;
  Varbind& operator=(const Varbind&) = delete;

  variable_list* Get() { return list_; }

 private:
  variable_list* list_ = nullptr;
};

template <typename Value>
void Run(benchmark::State& state, Value value, int mode) {
  Varbind varbind;
  NetSNMP::get_snmp_value(varbind.Get(), &value);
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        NetSNMP::handle_snmp_request(varbind.Get(), &value, mode));
  }
}

int number = 7;
bool truth = true;
std::string text = "a text of ordinary length";

void GetInt(benchmark::State& state) {
  Run(state, NetSNMPIntNodeData(&number, kMode), MODE_GET);
}
void ValidateInt(benchmark::State& state) {
  Run(state, NetSNMPIntNodeData(&number, kMode), MODE_SET_RESERVE1);
}
void CommitInt(benchmark::State& state) {
  Run(state, NetSNMPIntNodeData(&number, kMode), MODE_SET_COMMIT);
}
void GetBool(benchmark::State& state) {
  Run(state, NetSNMPBoolNodeData(&truth, kMode), MODE_GET);
}
void CommitBool(benchmark::State& state) {
  Run(state, NetSNMPBoolNodeData(&truth, kMode), MODE_SET_COMMIT);
}
void GetString(benchmark::State& state) {
  Run(state, NetSNMPStringNodeData(&text, kMode), MODE_GET);
}
void CommitString(benchmark::State& state) {
  Run(state, NetSNMPStringNodeData(&text, kMode), MODE_SET_COMMIT);
}

BENCHMARK(GetInt)->Name("request/int/get");
BENCHMARK(ValidateInt)->Name("request/int/validate");
BENCHMARK(CommitInt)->Name("request/int/commit");
BENCHMARK(GetBool)->Name("request/bool/get");
BENCHMARK(CommitBool)->Name("request/bool/commit");
BENCHMARK(GetString)->Name("request/string/get");
BENCHMARK(CommitString)->Name("request/string/commit");

}  // namespace
