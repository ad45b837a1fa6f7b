// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Irrigation.h"

#include <iostream>
#include <vector>

namespace snmp = snmpsubagent;

namespace {

// The columns of irrigationPlanTable.
constexpr snmp::SubIdentifier kValve = 2;
constexpr snmp::SubIdentifier kOpens = 3;
constexpr snmp::SubIdentifier kCloses = 4;
constexpr snmp::SubIdentifier kRuns = 5;
constexpr snmp::SubIdentifier kStatus = 6;

// In place of the device's hardware. The fourth valve is stuck.
bool Answers(int valve) { return valve != 4; }

bool ClosesAfterItOpens(const Plan& plan) { return plan.opens < plan.closes; }

}  // namespace

Irrigation::Irrigation(snmp::Agent& agent)
    : module_(agent, "1.3.6.1.4.1.32473.4"),
      pressure_(module_, "1.1", 2400U),
      dailyLimit_(module_, "1.2", 500U, snmp::ReadWrite().Range(0, 5000)),
      plans_(module_, "1.3"),
      planStarted_(module_, "0.1") {
  plans_.Column(kValve, &Plan::valve, snmp::ReadCreate().Range(1, 4).Required())
      .Column(kOpens, &Plan::opens, snmp::ReadCreate().Range(0, 23))
      .Column(kCloses, &Plan::closes, snmp::ReadCreate().Range(1, 24))
      .Column(kRuns, &Plan::runs)
      .RowStatus(kStatus)
      .Index(snmp::NotAccessible().Size(1, 16))
      .Limit(20);

  // Refused before anything has changed: inconsistentValue.
  plans_.Check([](const PlanChange& change) {
    return !change.after || ClosesAfterItOpens(*change.after);
  });
  // Refused while the SET is being carried out: commitFailed, and all that it
  // has changed until then is undone.
  plans_.Apply([](const PlanChange& change) {
    return !change.after || Answers(change.after->valve);
  });
  // Final.
  dailyLimit_.Changed([](std::uint32_t litres) {
    std::cout << "the daily limit is " << litres << " litres" << std::endl;
  });
  plans_.Changed([this](const PlanChange& change) { Tell(change); });
}

void Irrigation::Tell(const PlanChange& change) {
  if (change.statusAfter == snmp::RowStatus::Active) {
    const Plan& plan = *change.after;
    std::cout << change.key << ": valve " << plan.valve << " from "
              << plan.opens << " to " << plan.closes << " o'clock" << std::endl;
    if (change.statusBefore != snmp::RowStatus::Active) {
      planStarted_.Send(
          {plans_.Cell(change.key, kValve), plans_.Cell(change.key, kCloses)});
    }
  } else if (change.statusBefore == snmp::RowStatus::Active) {
    std::cout << change.key << ": ended" << std::endl;
  }
}

void Irrigation::BeginHour(std::uint32_t hour) {
  std::vector<std::string> begun;
  plans_.ForEach([&](const std::string& name, const Plan& plan) {
    if (plan.opens == hour && plans_.Status(name) == snmp::RowStatus::Active) {
      begun.push_back(name);
    }
  });
  for (const std::string& name : begun) {
    plans_.Change(name, [](Plan& plan) { ++plan.runs; });
  }
}
