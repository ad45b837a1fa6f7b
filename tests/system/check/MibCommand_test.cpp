// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include "Reports.h"
#include "testkit/Command.h"

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

// The program, asked about an agent.
struct MibCommand : ::testing::Test {
  MibCommand() { ServeAll(agent.objects); }

  testkit::CommandResult Run(const std::vector<std::string>& more = {}) {
    agent.Start();
    std::vector<std::string> command{
        CHECK_PROGRAM, "mib", "-M",
        std::string(IMPORTED_MIBS) + ":" + SHARED_MIBS + ":" + TEST_MIBS};
    command.insert(command.end(), more.begin(), more.end());
    command.insert(command.end(), {"CHECK-TEST-MIB", agent.Peer().address});
    return testkit::Command(command, {}).Result();
  }

  ScriptedAgent agent;
};

TEST_F(MibCommand, SucceedsWithAnAgentThatConforms) {
  const testkit::CommandResult result = Run();
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_THAT(result.out, StartsWith("CHECK-TEST-MIB at 127.0.0.1:"));
  EXPECT_THAT(result.out, HasSubstr(": conformant\n"));
  EXPECT_THAT(result.out, HasSubstr("scalars                8       8       0"
                                    "          0\n"));
}

TEST_F(MibCommand, EndsWithOneIfThereAreFindings) {
  agent.objects[ScalarName(1)] = Integer(6);
  const testkit::CommandResult result = Run();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.out, HasSubstr(": 1 finding\n"));
  EXPECT_THAT(result.out,
              HasSubstr("  range: checkLevel 1.3.6.1.4.1.32473.77.1.1.0: 6 is "
                        "not in (-5..5 | 10..20)\n"));
}

TEST_F(MibCommand, ReportsAsJson) {
  agent.objects[ScalarName(3)] = Text("\"\x01\xff\\...");
  const testkit::CommandResult result = Run({"--json"});
  const testkit::CommandResult parsed =
      testkit::Command({"python3", "-c",
                        "import json, sys; report = json.loads(sys.argv[1]);"
                        "print(report['module'], report['conformant'],"
                        "      report['totals']['scalars'], report['notes'],"
                        "      [f['fault'] + ' ' + f['object'] + ' ' + f['oid']"
                        "       for f in report['findings']])",
                        result.out},
                       {})
          .Result();
  EXPECT_EQ(parsed.out,
            "CHECK-TEST-MIB False {'expected': 8, 'right': 7, 'wrong': 1, "
            "'undecided': 0} [] "
            "['length checkLabel 1.3.6.1.4.1.32473.77.1.3.0']\n")
      << parsed.error;
}

TEST_F(MibCommand, WritesOnlyIfAsked) {
  agent.error = [](int command, const std::vector<check::Varbind>&) {
    return command == SNMP_MSG_SET ? SNMP_ERR_GENERR : SNMP_ERR_NOERROR;
  };
  EXPECT_EQ(Run().exitCode, 0);
}

TEST_F(MibCommand, WritesIfAsked) {
  agent.error = [](int command, const std::vector<check::Varbind>&) {
    return command == SNMP_MSG_SET ? SNMP_ERR_GENERR : SNMP_ERR_NOERROR;
  };
  const testkit::CommandResult result = Run({"--set"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.out, HasSubstr("gets genErr instead of notWritable"));
}

TEST_F(MibCommand, EndsWithTwoIfItCannotCheck) {
  const testkit::CommandResult result = Run({"-M", "/nonexistent"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.error, HasSubstr("/nonexistent: the folder"));
}

TEST(Command, EndsWithTwoAndItsUsageForWordsThatItDoesNotKnow) {
  for (const std::vector<std::string>& words : {std::vector<std::string>{},
                                                {"mib"},
                                                {"mib", "A"},
                                                {"look"},
                                                {"mib", "--no", "A", "B"},
                                                {"mib", "-t", "x", "A", "B"},
                                                {"connection", "a", "b"}}) {
    std::vector<std::string> command{CHECK_PROGRAM};
    command.insert(command.end(), words.begin(), words.end());
    const testkit::CommandResult result =
        testkit::Command(command, {}).Result();
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.error, HasSubstr("usage: snmpsubagent-check mib"));
  }
}

TEST(Command, TellsItsUsage) {
  const testkit::CommandResult result =
      testkit::Command({CHECK_PROGRAM, "--help"}, {}).Result();
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.out, HasSubstr("usage: snmpsubagent-check connection"));
}

}  // namespace
