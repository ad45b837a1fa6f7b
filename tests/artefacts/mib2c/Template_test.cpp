// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the template writes, keeps and says to those who run mib2c.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "testkit/Command.h"
#include "testkit/ScratchDirectory.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string Contents(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::ostringstream contents;
  contents << in.rdbuf();
  return contents.str();
}

class ATemplate : public testing::Test {
 protected:
  // Runs mib2c over a node of TEMPLATE-TEST-MIB.
  testkit::CommandResult Make(const std::vector<std::string>& arguments) const {
    std::vector<std::string> command{
        "env", "-C", directory_.Path(),         "mib2c",
        "-s",  "-c", "mib2c.snmpsubagent.conf", "-f",
        "made"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return testkit::Command(
               command, {{"MIB2C_DIR", TEMPLATES},
                         {"MIBDIRS", std::string(MIB_FOLDERS) + ":" +
                                         directory_.Path().string() + "/mibs"},
                         {"MIBS", "TEMPLATE-TEST-MIB"},
                         {"SNMPCONFPATH", "/nonexistent"}})
        .Result();
  }

  std::string Made(const std::string& file) const {
    return Contents(directory_.Path() / file);
  }
  bool HasMade(const std::string& file) const {
    return std::filesystem::exists(directory_.Path() / file);
  }

  // Has the module say `after` where it says `before`.
  void ChangeMib(const std::string& before, const std::string& after) const {
    std::filesystem::create_directory(directory_.Path() / "mibs");
    const auto file = directory_.Path() / "mibs/TEMPLATE-TEST-MIB.txt";
    std::string text =
        std::filesystem::exists(file) ? Contents(file) : Contents(TEST_MIB);
    ASSERT_NE(text.find(before), std::string::npos);
    text.replace(text.find(before), before.size(), after);
    std::ofstream(file) << text;
  }

  testkit::ScratchDirectory directory_;
};

TEST_F(ATemplate, KeepsTheFilesThatAreTheUsers) {
  ASSERT_TRUE(Make({"-S", "main=1", "testScalars"}).Succeeded());
  for (const char* file : {"madeService.h", "madeService.cpp", "main.cpp",
                           "CMakeLists.txt", "made.h", "made.cpp"}) {
    ASSERT_TRUE(HasMade(file)) << file;
    directory_.Write(file, "changed");
  }
  const testkit::CommandResult again = Make({"-S", "main=1", "testScalars"});
  EXPECT_TRUE(again.Succeeded()) << again;
  for (const char* file :
       {"madeService.h", "madeService.cpp", "main.cpp", "CMakeLists.txt"}) {
    EXPECT_EQ(Made(file), "changed");
    EXPECT_THAT(again.error, HasSubstr(std::string("keeping ") + file));
  }
  EXPECT_THAT(Made("made.h"), HasSubstr("class Objects"));
  EXPECT_THAT(Made("made.cpp"), HasSubstr("Objects::Objects("));
}

TEST_F(ATemplate, WritesAProgramOnlyWhenAskedTo) {
  ASSERT_TRUE(Make({"testScalars"}).Succeeded());
  EXPECT_TRUE(HasMade("madeService.cpp"));
  EXPECT_FALSE(HasMade("main.cpp"));
  EXPECT_FALSE(HasMade("CMakeLists.txt"));
}

TEST_F(ATemplate, SaysWhatIsNewInTheMib) {
  ASSERT_TRUE(Make({"templateTestMIB"}).Succeeded());
  EXPECT_THAT(Make({"templateTestMIB"}).error,
              AllOf(Not(HasSubstr("new: ")), Not(HasSubstr("changed: ")),
                    Not(HasSubstr("gone: "))));
  ChangeMib("(-5..5)", "(-5..6)");
  ChangeMib("testTruth OBJECT-TYPE", "testBelief OBJECT-TYPE");
  ChangeMib("linux(5)", "linux(6)");
  ChangeMib("linux(5)", "linux(6)");
  ChangeMib("DEFVAL      { -7 }", "DEFVAL      { 7 }");
  ChangeMib("SYNTAX      DisplayString\n    MAX-ACCESS  read-write",
            "SYNTAX      DisplayString\n    MAX-ACCESS  read-only");
  const testkit::CommandResult result = Make({"templateTestMIB"});
  EXPECT_TRUE(result.Succeeded()) << result;
  for (const char* line :
       {"\nnew: testBelief\n", "\ngone: testTruth\n",
        "\nchanged: testInteger\n", "\nchanged: TestState::Linux\n",
        "\nchanged: TestMadeEntry::testMadeNumber\n",
        "\nchanged: TestGapEntry::testGapName\n"}) {
    EXPECT_THAT(result.error, HasSubstr(line));
  }
  EXPECT_THAT(result.error, Not(HasSubstr("testGapCount")));
}

TEST_F(ATemplate, SaysWhatItLeavesOutForASyntaxThatNoModuleDefines) {
  ChangeMib("testTruth OBJECT-TYPE\n    SYNTAX      TruthValue",
            "testTruth OBJECT-TYPE\n    SYNTAX      TestUnknown");
  ChangeMib("testGapCount OBJECT-TYPE\n    SYNTAX      Counter32",
            "testGapCount OBJECT-TYPE\n    SYNTAX      TestUnknown");
  const testkit::CommandResult result = Make({"templateTestMIB"});
  EXPECT_TRUE(result.Succeeded()) << result;
  for (const char* line :
       {"\nleft out: testTruth: no type for a SYNTAX that no module defines\n",
        "\nleft out: testGapCount: no type for a SYNTAX that no module "
        "defines\n"}) {
    EXPECT_THAT("\n" + result.error, HasSubstr(line));
  }
  EXPECT_THAT(Made("made.h"), Not(HasSubstr("testTruth")));
}

TEST_F(ATemplate, FailsWhereThereIsNothing) {
  const testkit::CommandResult result =
      Make({"-S", "module=SNMPv2-TC", "templateTestMIB"});
  EXPECT_FALSE(result.Succeeded()) << result;
  EXPECT_THAT(result.error, HasSubstr("No scalar, table or notification"));
  EXPECT_FALSE(HasMade("made.h"));
}

TEST_F(ATemplate, FailsWhereItCannotWrite) {
  std::filesystem::create_directory(directory_.Path() / "made.h");
  const testkit::CommandResult result = Make({"testScalars"});
  EXPECT_FALSE(result.Succeeded()) << result;
  EXPECT_THAT(result.error, HasSubstr("made.h: "));
}

TEST_F(ATemplate, TakesOneModuleAlone) {
  ASSERT_TRUE(Make({"exampleEnterprise"}).Succeeded());
  EXPECT_THAT(Made("made.h"),
              AllOf(HasSubstr("> testInteger;"), HasSubstr("> oldLimit;")));
  ASSERT_TRUE(
      Make({"-S", "module=TEMPLATE-OLD-MIB", "exampleEnterprise"}).Succeeded());
  EXPECT_THAT(Made("made.h"), AllOf(Not(HasSubstr("> testInteger;")),
                                    HasSubstr("> oldLimit;")));
  EXPECT_THAT(Made("made.cpp"), HasSubstr("\"1.3.6.1.4.1.32473.97\""));
}

TEST_F(ATemplate, TakesTheFirstSentenceAndTheUnitsAsAComment) {
  ASSERT_TRUE(Make({"testScalars"}).Succeeded());
  EXPECT_THAT(Made("made.h"),
              HasSubstr("  // How far to go.\n"
                        "  // Integer32 (-5..5), steps, read-write.\n"
                        "  snmp::Scalar<std::int32_t> testInteger;\n"));
}

TEST_F(ATemplate, WritesLinesOfEightyColumns) {
  ASSERT_TRUE(Make({"-S", "main=1", "templateTestMIB"}).Succeeded());
  for (const char* file :
       {"made.h", "made.cpp", "madeService.cpp", "main.cpp"}) {
    std::istringstream lines(Made(file));
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(line.size(), 80U) << line;
    }
  }
}

}  // namespace
