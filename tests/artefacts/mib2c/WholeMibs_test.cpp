// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// The code made of the example's MIB and of those that Debian installs with
// Net-SNMP, against what snmptranslate says of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "MibObjects.h"
#include "NetSNMPDataNode.h"
#include "netSnmpScalars.h"
#include "netSnmpTables.h"
#include "support/Session.h"
#include "testkit/Command.h"
#include "thermalNotifications.h"
#include "thermalScalars.h"
#include "thermalTables.h"
#include "ucdScalars.h"
#include "ucdTables.h"

using testing::HasSubstr;
using testing::Not;

namespace {

// A table with one row, whose indexes are 0.
template <class Table, class Row>
struct Filled {
  Filled() { table.Add(row); }
  Row row;
  Table table;
};

struct Thermal {
  Thermal() { BuildThermalScalars(scalars); }
  ThermalScalars scalars;
  Filled<ThermalFanTable, ThermalFanEntry> fans;
  Filled<ThermalEventTable, ThermalEventEntry> events;
};

struct Ucd {
  Ucd() { BuildUcdScalars(scalars); }
  UcdScalars scalars;
  Filled<PrTable, PrEntry> processes;
  Filled<ExtTable, ExtEntry> commands;
  Filled<DskTable, DskEntry> disks;
  Filled<LaTable, LaEntry> loads;
  Filled<FileTable, FileEntry> files;
  Filled<LogMatchTable, LogMatchEntry> matches;
  Filled<DiskIOTable, DiskIOEntry> transfers;
  Filled<LmTempSensorsTable, LmTempSensorsEntry> temperatures;
  Filled<LmFanSensorsTable, LmFanSensorsEntry> fans;
  Filled<LmVoltSensorsTable, LmVoltSensorsEntry> voltages;
  Filled<LmMiscSensorsTable, LmMiscSensorsEntry> others;
};

struct NetSnmp {
  NetSnmp() { BuildNetSnmpScalars(scalars); }
  NetSnmpScalars scalars;
  Filled<NsTransactionTable, NsTransactionEntry> transactions;
};

// Builds all nodes of a MIB over variables that live as long as the result.
template <class Variables>
std::shared_ptr<void> Build() {
  return std::make_shared<Variables>();
}

struct WholeMib {
  std::string name;
  std::string modules;
  std::string node;
  std::shared_ptr<void> (*build)();
  // The beginnings of names of columns that the library does not serve: of
  // tables with other indexes than integers, and indexes themselves.
  std::vector<std::string> leftOut;
};

std::ostream& operator<<(std::ostream& stream, const WholeMib& mib) {
  return stream << mib.name;
}

class AWholeMib : public testing::TestWithParam<WholeMib> {
 protected:
  AWholeMib() {
    variables_ = GetParam().build();
    session_.Connect();
  }

  // What a manager sees who has the MIB.
  std::string Walk(const std::string& oid) {
    testkit::Command command(
        {"snmpwalk", "-v2c", "-c", "public", "-On", "-M", MibFolders(), "-m",
         GetParam().modules, session_.Master().Address(), oid},
        {});
    const testkit::CommandResult result = command.Result();
    EXPECT_TRUE(result.Succeeded()) << result;
    return result.out;
  }

  static std::vector<MibObject> Objects() {
    return ObjectsOf(GetParam().modules, GetParam().node);
  }

  static bool IsLeftOut(const MibObject& object) {
    for (const std::string& beginning : GetParam().leftOut) {
      if (object.name.rfind(beginning, 0) == 0) return true;
    }
    return !object.readable;
  }

  std::shared_ptr<void> variables_;  // what the session's nodes work on
  support::Session session_;
};

TEST_P(AWholeMib, IsServedWithItsTypes) {
  const std::string objects = Walk(GetParam().node);
  EXPECT_THAT(objects, Not(HasSubstr("Wrong Type")));
  for (const MibObject& object : Objects()) {
    const bool served = objects.find(object.oid + ".0") != std::string::npos;
    EXPECT_EQ(served, !IsLeftOut(object)) << object.name << " " << object.oid;
  }
}

TEST_P(AWholeMib, HasScalarsOfTheNamesAndAccessOfTheirObjects) {
  for (const MibObject& object : Objects()) {
    if (object.isColumn || !object.readable) continue;
    const NetSNMPNodeData* value = NetSNMPDataNode::GetNodeData(object.name);
    ASSERT_NE(value, nullptr) << object.name;
    EXPECT_EQ(value->NodeWritable(), object.writable) << object.name;
  }
}

INSTANTIATE_TEST_SUITE_P(
    MadeCode, AWholeMib,
    testing::Values(
        WholeMib{"OfTheExample",
                 "THERMAL-EXAMPLE-MIB",
                 "THERMAL-EXAMPLE-MIB::thermalExampleMIB",
                 Build<Thermal>,
                 {}},
        WholeMib{"OfUcd",
                 "UCD-SNMP-MIB:UCD-DISKIO-MIB:LM-SENSORS-MIB",
                 "UCD-SNMP-MIB::ucdavis",
                 Build<Ucd>,
                 {"prIndex", "extIndex", "dskIndex", "laIndex", "fileIndex",
                  "logMatchIndex", "diskIOIndex", "lmTempSensorsIndex",
                  "lmFanSensorsIndex", "lmVoltSensorsIndex",
                  "lmMiscSensorsIndex", "mr"}},
        WholeMib{"OfNetSnmp",
                 "NET-SNMP-AGENT-MIB:NET-SNMP-EXAMPLES-MIB",
                 "NET-SNMP-MIB::netSnmp",
                 Build<NetSnmp>,
                 {"nsModule", "nsCacheTimeout", "nsCacheStatus",
                  "nsDebugTokenStatus", "nsLog", "nsIETFWG", "netSnmpHost"}}),
    [](const auto& info) { return info.param.name; });

}  // namespace
