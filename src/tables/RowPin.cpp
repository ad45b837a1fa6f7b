// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "tables/RowPin.h"

#include <mutex>
#include <set>

namespace {

// One for each cell of a SET under way. Never destroyed: the agent library may
// hold requests when the static objects go.
struct Pins {
  std::mutex mutex;
  std::set<RowPin*> all;
};

Pins& ThePins() {
  static Pins& pins = *new Pins;
  return pins;
}

}  // namespace

RowPin::RowPin(const Row* row) : row_(row) {
  Pins& pins = ThePins();
  const std::lock_guard<std::mutex> lock(pins.mutex);
  pins.all.insert(this);
}

RowPin::~RowPin() {
  Pins& pins = ThePins();
  const std::lock_guard<std::mutex> lock(pins.mutex);
  pins.all.erase(this);
}

void RowPin::Discarded(const Row* row) {
  Pins& pins = ThePins();
  const std::lock_guard<std::mutex> lock(pins.mutex);
  for (RowPin* pin : pins.all) {
    if (pin->row_ == row) pin->row_ = nullptr;
  }
}
