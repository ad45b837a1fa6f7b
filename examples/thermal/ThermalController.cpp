// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ThermalController.h"

#include <algorithm>

namespace {

// In tenths of a degree.
constexpr int kWarmingPerSecond = 5;
constexpr int kCoolingPerSecond = 8;
constexpr int kTolerance = 100;

// In revolutions per minute.
constexpr int kIdleSpeed = 600;
constexpr int kFullSpeed = 2400;

}  // namespace

void ThermalController::Run(unsigned int seconds) {
  for (; seconds > 0; --seconds) {
    ++runTime;
    const bool cool = fansEnabled && temperature > targetTemperature;
    temperature += cool ? -kCoolingPerSecond : kWarmingPerSecond;
    temperature = std::clamp(temperature, kLowest, kHighest);
    RunFans(cool);
  }
  overheated = temperature > targetTemperature + kTolerance;
}

void ThermalController::RunFans(bool cool) {
  for (Fan& fan : fans) {
    const bool turns = fansEnabled && fan.enabled;
    fan.speed = turns ? (cool ? kFullSpeed : kIdleSpeed) : 0;
    if (turns) ++fan.runTime;
  }
}
