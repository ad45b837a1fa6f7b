// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "FanTable.h"

#include <array>
#include <iostream>

#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTableNode.h"
#include "NetSNMPUnsignedIntNodeData.h"

namespace {

// Number of the last column, thermalFanEnabled.
constexpr unsigned int kColumns = 8;

// An index value has a copy, so that its row is found fast.
NetSNMPUnsignedIntNodeData Index(unsigned int number) {
  NetSNMPUnsignedIntNodeData index(&number, eNodeAccessReadOnly, true);
  index.isIndex_ = true;
  return index;
}

// The store has the rows; the table registers them with the agent library.
NetSNMPTableEntryNode* BuildTable() {
  std::array<unsigned long, 11> oid{1, 3, 6, 1, 4, 1, 32473, 1, 1, 2, 1};
  auto* const table = new NetSNMPTableNode(
      oid.data(), oid.size() - 1, "thermalFanTable",
      NetSNMPNodeData(eNodeDataVoid, eNodeAccessReadWrite, nullptr, nullptr),
      nullptr, "");
  auto unit = Index(0);
  auto slot = Index(0);
  return new NetSNMPTableEntryNode(oid.data(), oid.size(), "thermalFanEntry",
                                   "thermalFan", {&unit, &slot}, kColumns,
                                   table);
}

// Adds a row. Its values are bound to the fan's variables, so that the row is
// up to date without being added again.
void AddRow(NetSNMPTableEntryNode& rows, Fan& fan) {
  auto unit = Index(fan.unit);
  auto slot = Index(fan.slot);
  NetSNMPStringNodeData label(&fan.label, eNodeAccessReadWrite);
  NetSNMPCharNodeData model(fan.model, eNodeAccessReadOnly, true);
  NetSNMPByteNodeData serial(fan.serial, sizeof(fan.serial),
                             eNodeAccessReadOnly, true);
  NetSNMPIntNodeData speed(&fan.speed, eNodeAccessReadOnly);
  NetSNMPUnsignedIntNodeData runTime(&fan.runTime, eNodeAccessReadOnly);
  NetSNMPBoolNodeData enabled(&fan.enabled, eNodeAccessReadWrite);
  rows.AddRow(
      {&unit, &slot, &label, &model, &serial, &speed, &runTime, &enabled});
}

}  // namespace

FanTable::FanTable(ThermalController::Fans& fans) : fans_(fans) {
  NetSNMPTableEntryNode* const rows = BuildTable();
  for (Fan& fan : fans) {
    AddRow(*rows, fan);
    labels_.push_back(fan.label);
  }
}

void FanTable::TellNewLabels() {
  for (std::size_t i = 0; i < fans_.size(); ++i) {
    const Fan& fan = fans_[i];
    if (fan.label == labels_[i]) continue;
    labels_[i] = fan.label;
    std::cout << "Fan " << fan.unit << "." << fan.slot << " is now called "
              << fan.label << std::endl;
  }
}
