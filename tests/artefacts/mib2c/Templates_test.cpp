// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the templates say to those who run mib2c.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "MibObjects.h"
#include "testkit/Command.h"
#include "testkit/ScratchDirectory.h"

using testing::HasSubstr;

namespace {

class ATemplate : public testing::Test {
 protected:
  // Runs mib2c with the template of that name over a node of TEMPLATE-TEST-MIB.
  testkit::CommandResult Make(const std::string& name,
                              const std::string& node) const {
    testkit::Command command(
        {"env", "-C", directory_.Path(), "mib2c", "-c",
         "mib2c.snmpsubagent-" + name + ".conf", "-f", "made", node},
        {{"MIB2C_DIR", TEMPLATES},
         {"MIBDIRS", MibFolders()},
         {"MIBS", "TEMPLATE-TEST-MIB"}});
    return command.Result();
  }

  bool HasMade(const std::string& file) const {
    return std::filesystem::exists(directory_.Path() / file);
  }

  testkit::ScratchDirectory directory_;
};

TEST_F(ATemplate, NamesWhatItLeavesOut) {
  const testkit::CommandResult result = Make("table", "testTables");
  EXPECT_TRUE(result.Succeeded()) << result;
  EXPECT_TRUE(HasMade("made.cpp"));
  for (const char* left :
       {"left out: testGapTruth: the first columns are the indexes\n",
        "left out: testMoreLost: the first columns are the indexes\n",
        "left out: testNamedTable: its index testNamedName is no integer\n"})
    EXPECT_THAT(result.error, HasSubstr(left));
}

TEST_F(ATemplate, FailsWhereThereIsNothingForIt) {
  for (const char* name : {"scalar", "notify"}) {
    const testkit::CommandResult result = Make(name, "testTables");
    EXPECT_FALSE(result.Succeeded()) << result;
    EXPECT_THAT(result.out, HasSubstr("at or below"));
    EXPECT_FALSE(HasMade("made.h"));
  }
  EXPECT_FALSE(Make("table", "testNamedTable").Succeeded());
  EXPECT_FALSE(HasMade("made.h"));
}

}  // namespace
