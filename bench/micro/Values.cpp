// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// Setting and reading a value, for each class, bound to a variable and with a
// copy.
#include <benchmark/benchmark.h>

#include <string>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"

namespace {

constexpr eNodeAccessMode kMode = eNodeAccessReadWrite;

// A variable of an application and what is written to it, for each class.
struct Int {
  int variable = 0;
  NetSNMPIntNodeData Value(bool copy) { return {&variable, kMode, copy}; }
  static int Written() { return 7; }
};

struct UnsignedInt {
  unsigned int variable = 0;
  NetSNMPUnsignedIntNodeData Value(bool copy) {
    return {&variable, kMode, copy};
  }
  static unsigned int Written() { return 7; }
};

struct String {
  std::string variable = "a text of ordinary length";
  NetSNMPStringNodeData Value(bool copy) { return {&variable, kMode, copy}; }
  static const std::string& Written() {
    static const std::string text = "another text of ordinary length";
    return text;
  }
};

struct Char {
  char variable[64] = "a text of ordinary length";
  NetSNMPCharNodeData Value(bool copy) { return {variable, kMode, copy}; }
  static const char* Written() { return "another text of ordinary length"; }
};

struct Bool {
  bool variable = false;
  NetSNMPBoolNodeData Value(bool copy) { return {&variable, kMode, copy}; }
  static bool Written() { return true; }
};

struct Byte {
  unsigned char variable[6] = {};
  NetSNMPByteNodeData Value(bool copy) {
    return {variable, sizeof variable, kMode, copy};
  }
  static const unsigned char* Written() {
    static const unsigned char bytes[6] = {1, 2, 3, 4, 5, 6};
    return bytes;
  }
};

template <typename Subject, bool kCopy>
void SetValue(benchmark::State& state) {
  Subject subject;
  auto value = subject.Value(kCopy);
  for (auto _ : state) value.NodeDataValue(Subject::Written(), true);
}

template <typename Subject, bool kCopy>
void ReadBytes(benchmark::State& state) {
  Subject subject;
  const auto value = subject.Value(kCopy);
  const NetSNMPNodeData& base = value;
  for (auto _ : state) {
    benchmark::DoNotOptimize(base.NodeByteValue());
    benchmark::DoNotOptimize(base.NodeValueSize());
  }
}

template <typename Subject, bool kCopy>
void CloneValue(benchmark::State& state) {
  Subject subject;
  const auto value = subject.Value(kCopy);
  for (auto _ : state) delete value.Clone();
}

template <typename Subject>
void Register(const std::string& name) {
  benchmark::RegisterBenchmark((name + "/set").c_str(),
                               SetValue<Subject, false>);
  benchmark::RegisterBenchmark((name + "/set/copy").c_str(),
                               SetValue<Subject, true>);
  benchmark::RegisterBenchmark((name + "/read").c_str(),
                               ReadBytes<Subject, false>);
  benchmark::RegisterBenchmark((name + "/read/copy").c_str(),
                               ReadBytes<Subject, true>);
  benchmark::RegisterBenchmark((name + "/clone").c_str(),
                               CloneValue<Subject, false>);
  benchmark::RegisterBenchmark((name + "/clone/copy").c_str(),
                               CloneValue<Subject, true>);
}

const bool registered = [] {
  Register<Int>("value/int");
  Register<UnsignedInt>("value/unsigned");
  Register<String>("value/string");
  Register<Char>("value/char");
  Register<Bool>("value/bool");
  Register<Byte>("value/byte");
  return true;
}();

}  // namespace
