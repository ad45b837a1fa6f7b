// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// A service on the objects.
//
//   bench_service KIND PORT COUNT
//
// KIND is what it publishes: scalars, table or traps. Ends on SIGTERM.
#include <snmpsubagent.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "objects/objects.h"

namespace snmp = snmpsubagent;

namespace {

constexpr char kRoot[] = "1.3.6.1.4.1.32473";

struct Values {
  int number;
  std::uint32_t count;
  std::string description;
  std::string label;
  bool enabled;
  std::array<std::uint8_t, 6> address;
};

Values ValuesOf(unsigned int k) {
  bench_values values;
  bench_values_of(k, &values);
  Values result{values.number, values.count,   values.description,
                values.label,  values.enabled, {}};
  for (std::size_t i = 0; i < result.address.size(); ++i) {
    result.address[i] = values.address[i];
  }
  return result;
}

// Objects live as long as the program.
template <typename T>
T& Kept(T* object) {
  return *object;
}

template <typename V>
void AddScalar(snmp::Module& module, unsigned int k, V& variable) {
  Kept(new snmp::Scalar<V>(module, std::to_string(k), variable,
                           snmp::ReadWrite()));
}

void PublishScalars(snmp::Module& module, unsigned int count) {
  auto& variables = Kept(new std::vector<Values>);
  variables.reserve(count);
  for (unsigned int k = 1; k <= count; ++k) {
    variables.push_back(ValuesOf(k));
    Values& values = variables.back();
    switch (bench_type_of_scalar(k)) {
      case BENCH_NUMBER:
        AddScalar(module, k, values.number);
        break;
      case BENCH_COUNT:
        AddScalar(module, k, values.count);
        break;
      case BENCH_DESCRIPTION:
        AddScalar(module, k, values.description);
        break;
      case BENCH_LABEL:
        AddScalar(module, k, values.label);
        break;
      case BENCH_ENABLED:
        AddScalar(module, k, values.enabled);
        break;
      default:
        AddScalar(module, k, values.address);
        break;
    }
  }
}

void PublishTable(snmp::Module& module, unsigned int rows) {
  auto& table =
      Kept(new snmp::Table<int, Values>(module, std::to_string(BENCH_TABLE)));
  table.Column(2, &Values::number)
      .Column(3, &Values::count)
      .Column(4, &Values::description)
      .Column(5, &Values::label)
      .Column(6, &Values::enabled)
      .Column(7, &Values::address);
  for (unsigned int k = 1; k <= rows; ++k) {
    table.Insert(static_cast<int>(k), ValuesOf(k));
  }
}

void PublishTraps(snmp::Module& module) {
  auto& number = Kept(new int(ValuesOf(1).number));
  auto& scalar = Kept(new snmp::Scalar<int>(module, "1", number));
  auto& trigger =
      Kept(new snmp::Scalar<int>(module, "2", 0, snmp::ReadWrite()));
  auto& notification = Kept(new snmp::Notification(module, "0.1"));
  trigger.Changed([&](int notifications) {
    for (int i = 0; i < notifications; ++i) notification.Send({scalar});
  });
}

snmp::AgentOptions OptionsFor(const char* master) {
  snmp::AgentOptions options;
  options.master = master;
  options.pingInterval = std::chrono::hours(1);
  return options;
}

void Publish(snmp::Agent& agent, const bench_order& order) {
  const std::string kind = order.kind;
  const auto below = [&](int arc) -> snmp::Module& {
    return Kept(new snmp::Module(agent, kRoot + ("." + std::to_string(arc))));
  };
  if (kind == "scalars") {
    PublishScalars(below(BENCH_SCALARS), order.count);
  } else if (kind == "table") {
    PublishTable(Kept(new snmp::Module(agent, kRoot)), order.count);
  } else if (kind == "traps") {
    PublishTraps(below(BENCH_TRAPS));
  } else {
    std::fprintf(stderr, "unknown kind of service: %s\n", order.kind);
    std::exit(2);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const bench_order order = bench_order_of(argc, argv);
  bench_expect_end();
  snmp::Agent agent("bench", OptionsFor(order.master));
  Publish(agent, order);
  agent.Start();
  bench_wait_for_end();
  // No orderly shutdown: the benchmark is over.
  std::_Exit(0);
}
