// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include "Reports.h"
#include "Service.h"
#include "check/CheckMib.h"

using check::Oid;
using check::Value;
using check::Varbind;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

check::MibOptions WithSets() {
  check::MibOptions options = CheckTestMib();
  options.set = true;
  return options;
}

check::Report ReportOf(const Service& service) {
  check::Peer peer;
  peer.address = service.Address();
  return check::CheckMib(peer, "CHECK-TEST-MIB", WithSets());
}

TEST(CheckOfSets, FindsNothingWrongInAServiceOnTheObjects) {
  const Service service;
  const check::Report report = ReportOf(service);
  EXPECT_THAT(Findings(report), IsEmpty());
  EXPECT_THAT(report.notes, IsEmpty());
}

TEST(CheckOfSets, CountsWhatItTries) {
  const Service service;
  const check::Totals totals = ReportOf(service).totals;
  // 5 + 3 + 4 + 3 + 3 + 3 + 1 of the scalars, 3 + 3 + 1 + 1 of the users.
  EXPECT_EQ(Numbers(totals.goodSets), "30 30 0 0");
  // 5 + 2 + 5 + 2 + 1 + 1 + 1 + 3 of the scalars, 2 + 1 + 1 of the ports and
  // keys, 3 + 3 + 1 + 2 + 2 of the users.
  EXPECT_EQ(Numbers(totals.refusedSets), "35 35 0 0");
  EXPECT_EQ(Numbers(totals.rows), "2 2 0 0");
}

TEST(CheckOfSets, LeavesAServiceAsItWas) {
  const Service service;
  std::vector<std::string> before = service.Shown();
  ReportOf(service);
  std::vector<std::string> after = service.Shown();
  // What only ever goes up.
  const auto isSerial = [](const std::string& line) {
    return line.find(".77.1.8.0 ") != std::string::npos;
  };
  before.erase(std::remove_if(before.begin(), before.end(), isSerial),
               before.end());
  after.erase(std::remove_if(after.begin(), after.end(), isSerial),
              after.end());
  EXPECT_EQ(after, before);
}

TEST(CheckOfSets, MakesARowForTheSetsOfATableWithoutAny) {
  Service service;
  service.UserTable().Erase("root");
  const check::Report report = ReportOf(service);
  EXPECT_THAT(Findings(report), IsEmpty());
  EXPECT_EQ(Numbers(report.totals.goodSets), "30 30 0 0");
  EXPECT_EQ(service.UserTable().Size(), 0u);
}

TEST(CheckOfSets, CannotDoWithoutWriteAccess) {
  const Service service("rocommunity looks 127.0.0.1\n");
  check::Peer peer;
  peer.address = service.Address();
  peer.community = "looks";
  EXPECT_THROW(check::CheckMib(peer, "CHECK-TEST-MIB", WithSets()),
               check::CannotCheck);
}

// An agent that is asked with SETs, and takes or refuses each.
struct CheckOfAFaultySet : ::testing::Test {
  CheckOfAFaultySet() { ServeAll(agent.objects); }

  // The findings about one object: what a SET of it gets.
  std::vector<std::string> FindingsAbout(const std::string& object) {
    agent.Start();
    const check::Report report = ReportOf(agent, WithSets());
    std::vector<std::string> findings;
    for (const check::Finding& finding : report.findings) {
      if (finding.object != object) continue;
      findings.push_back(std::string(NameOf(finding.fault)) + ": " +
                         finding.text);
    }
    return findings;
  }

  // Answers each SET of that object so.
  void Answer(const Oid& name, long status) {
    agent.error = [name, status](int command, const std::vector<Varbind>& set) {
      return command == SNMP_MSG_SET && set[0].name == name ? status : 0L;
    };
  }

  ScriptedAgent agent;
};

TEST_F(CheckOfAFaultySet, NamesWhatShouldHaveBeenRefused) {
  EXPECT_THAT(
      FindingsAbout("checkMode"),
      ElementsAre("refusedSet: a SET to OCTET STRING \"x\", though the type is "
                  "wrong, succeeds instead of wrongType",
                  "refusedSet: a SET to INTEGER 6, though the number is not "
                  "enumerated, succeeds instead of wrongValue"));
  EXPECT_EQ(agent.objects[ScalarName(2)], Integer(5));
}

TEST_F(CheckOfAFaultySet, NamesAReadOnlyObjectThatCanBeWritten) {
  EXPECT_THAT(FindingsAbout("checkTotal"),
              ElementsAre("refusedSet: a SET to Counter32 7, though it is "
                          "read-only, succeeds instead of notWritable"));
}

TEST_F(CheckOfAFaultySet, NamesAnotherErrorThanTheOneThatFits) {
  Answer(ScalarName(5), SNMP_ERR_GENERR);
  EXPECT_THAT(FindingsAbout("checkTotal"),
              ElementsAre("setError: a SET to Counter32 7, though it is "
                          "read-only, gets genErr instead of notWritable"));
}

TEST_F(CheckOfAFaultySet, TriesLengthsOutsideOfEachSize) {
  agent.error = [](int command, const std::vector<Varbind>& set) {
    return command == SNMP_MSG_SET && set[0].name == ScalarName(3) &&
                   set[0].value.Type() != ASN_OCTET_STR
               ? SNMP_ERR_WRONGTYPE
               : SNMP_ERR_NOERROR;
  };
  EXPECT_THAT(FindingsAbout("checkLabel"),
              ElementsAre(HasSubstr("OCTET STRING \"x\", though the length"),
                          HasSubstr("OCTET STRING 00 ff 78 78 78, though"),
                          HasSubstr("(and 1 more like this)")));
}

TEST_F(CheckOfAFaultySet, NamesAGoodSetThatIsRefused) {
  Answer(ScalarName(6), SNMP_ERR_WRONGTYPE);
  EXPECT_THAT(FindingsAbout("checkPointer"),
              ElementsAre(StartsWith("goodSet: a SET to the value that it has "
                                     "gets wrongType"),
                          StartsWith("goodSet: a SET to OBJECT IDENTIFIER 0.0"),
                          StartsWith("goodSet: ")));
}

TEST_F(CheckOfAFaultySet, LeavesARefusalForTheStateOfTheAgentUndecided) {
  agent.error = [](int command, const std::vector<Varbind>&) {
    return command == SNMP_MSG_SET ? SNMP_ERR_INCONSISTENTVALUE : 0L;
  };
  agent.Start();
  const check::Totals totals = ReportOf(agent, WithSets()).totals;
  EXPECT_EQ(totals.goodSets.undecided, totals.goodSets.expected);
  EXPECT_EQ(Numbers(totals.rows), "2 0 0 2");
}

TEST_F(CheckOfAFaultySet, NamesAValueThatIsNotTheOneSet) {
  agent.store = [this](const std::vector<Varbind>& set) {
    for (const Varbind& varbind : set) {
      const bool cut = varbind.name == ScalarName(3) &&
                       varbind.value.Type() == ASN_OCTET_STR;
      // As a C string is stored.
      agent.objects[varbind.name] =
          cut ? Text(varbind.value.Bytes().c_str()) : varbind.value;
    }
  };
  EXPECT_THAT(FindingsAbout("checkLabel"),
              Contains("storedValue: a SET to OCTET STRING 00 ff succeeds, and "
                       "then it has OCTET STRING \"\""));
}

TEST_F(CheckOfAFaultySet, NamesWhatCannotBeWrittenBack) {
  agent.store = [this](const std::vector<Varbind>& set) {
    for (const Varbind& varbind : set) {
      if (agent.objects[varbind.name] == Integer(5)) {
        agent.objects[varbind.name] = Integer(1);  // for good
      }
    }
  };
  EXPECT_THAT(FindingsAbout("checkMode"),
              Contains("restoration: it had INTEGER 5 and now has INTEGER 1: "
                       "writing it back gets noError"));
}

TEST_F(CheckOfAFaultySet, NamesARowThatCannotBeMade) {
  agent.error = [](int command, const std::vector<Varbind>& set) {
    return command == SNMP_MSG_SET && set[0].name.size() > 14
               ? SNMP_ERR_NOCREATION
               : SNMP_ERR_NOERROR;
  };
  EXPECT_THAT(
      FindingsAbout("checkUserTable"),
      ElementsAre("rowCreation: createAndGo with all columns gets noCreation",
                  "rowCreation: createAndWait gets noCreation"));
}

TEST_F(CheckOfAFaultySet, MakesARowWithoutValuesIfItsOwnDoNotFit) {
  agent.error = [](int command, const std::vector<Varbind>& set) {
    const bool isRow = set[0].name.size() > 13 && set[0].name[9] == 4;
    return command == SNMP_MSG_SET && isRow && set.size() > 1
               ? SNMP_ERR_INCONSISTENTVALUE
               : SNMP_ERR_NOERROR;
  };
  agent.store = [this](const std::vector<Varbind>& set) {
    const Varbind& last = set.back();
    if (last.value == Integer(6)) {
      agent.objects.erase(last.name);
    } else {
      agent.objects[last.name] = Integer(last.value == Integer(5) ? 3 : 1);
    }
  };
  agent.Start();
  EXPECT_EQ(Numbers(ReportOf(agent, WithSets()).totals.rows), "2 2 0 0");
}

// What a template without RowStatus makes: a cell that stores what it gets.
TEST_F(CheckOfAFaultySet, NamesARowStatusThatIsJustANumber) {
  EXPECT_THAT(
      FindingsAbout("checkUserStatus"),
      testing::AllOf(
          Contains("rowCreation: after createAndGo with all columns, RowStatus "
                   "has INTEGER 4"),
          Contains("rowDestruction: destroy gets noError, and RowStatus has "
                   "INTEGER 6")));
}

}  // namespace
