// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_EXAMPLES_IRRIGATION_IRRIGATION_H_
#define SNMPSUBAGENT_EXAMPLES_IRRIGATION_IRRIGATION_H_

#include <snmpsubagent.h>

#include <cstdint>
#include <string>

// When a valve is open: from one hour of the day to another.
struct Plan {
  int valve = 0;
  std::uint32_t opens = 6;
  std::uint32_t closes = 8;
  snmpsubagent::Counter32 runs;
};

// A controller that waters a garden, with the objects of
// IRRIGATION-EXAMPLE-MIB.
class Irrigation {
 public:
  explicit Irrigation(snmpsubagent::Agent& agent);

  // Opens the valves of the plans that begin at this hour of the day.
  void BeginHour(std::uint32_t hour);

 private:
  using PlanChange = snmpsubagent::RowChange<std::string, Plan>;

  void Tell(const PlanChange& change);

  snmpsubagent::Module module_;
  snmpsubagent::Scalar<std::uint32_t> pressure_;
  snmpsubagent::Scalar<std::uint32_t> dailyLimit_;
  snmpsubagent::Table<std::string, Plan> plans_;
  snmpsubagent::Notification planStarted_;
};

#endif  // SNMPSUBAGENT_EXAMPLES_IRRIGATION_IRRIGATION_H_
