// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/CheckMib.h"

#include <gmock/gmock.h>

#include "Reports.h"

using check::Oid;
using check::Value;
using check::Varbind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

// An agent that serves all as it should, but for what a test spoils.
struct CheckOfAnAgent : ::testing::Test {
  CheckOfAnAgent() { ServeAll(agent.objects); }

  check::Report Report() {
    agent.Start();
    return ReportOf(agent);
  }
  std::vector<std::string> FindingsHere() { return Findings(Report()); }

  ScriptedAgent agent;
};

TEST_F(CheckOfAnAgent, FindsNothingWrongInWhatConforms) {
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), IsEmpty());
  EXPECT_TRUE(report.Conformant());
  EXPECT_THAT(report.notes, IsEmpty());
}

TEST_F(CheckOfAnAgent, CountsWhatTheMibHas) {
  const check::Report report = Report();
  EXPECT_EQ(Numbers(report.totals.scalars), "8 8 0 0");
  EXPECT_EQ(Numbers(report.totals.tables), "4 4 0 0");
  EXPECT_EQ(Numbers(report.totals.columns), "9 9 0 0");
  EXPECT_EQ(Numbers(report.totals.instances), "20 20 0 0");
}

TEST_F(CheckOfAnAgent, NamesAScalarThatIsMissing) {
  agent.objects.erase(ScalarName(2));
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("missing checkMode 1.2"));
  EXPECT_EQ(Numbers(report.totals.scalars), "8 7 1 0");
}

TEST_F(CheckOfAnAgent, NamesAColumnThatNoRowHas) {
  agent.objects.erase(CellName(1, 2, {1}));
  agent.objects.erase(CellName(1, 2, {100}));
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("missing checkPortSpeed 2.1.1.2"));
  EXPECT_EQ(Numbers(report.totals.columns), "9 8 1 0");
  EXPECT_EQ(Numbers(report.totals.tables), "4 3 1 0");
}

TEST_F(CheckOfAnAgent, CannotTellATableWithoutRowsFromAMissingOne) {
  agent.objects.erase(CellName(1, 1, {1}));
  agent.objects.erase(CellName(1, 1, {100}));
  agent.objects.erase(CellName(1, 2, {1}));
  agent.objects.erase(CellName(1, 2, {100}));
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), IsEmpty());
  EXPECT_EQ(Numbers(report.totals.tables), "4 3 0 1");
  EXPECT_EQ(Numbers(report.totals.columns), "9 7 0 2");
}

TEST_F(CheckOfAnAgent, MissesObsoleteObjectsIfAsked) {
  agent.Start();
  check::MibOptions options = CheckTestMib();
  options.obsolete = true;
  const check::Report report = ReportOf(agent, options);
  EXPECT_THAT(Findings(report), ElementsAre("missing checkOld 1.9"));
}

TEST_F(CheckOfAnAgent, ChecksObsoleteObjectsThatThereAre) {
  agent.objects[ScalarName(9)] = Integer(1);
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("type checkOld 1.9.0"));
  EXPECT_EQ(Numbers(report.totals.scalars), "9 8 1 0");
}

TEST_F(CheckOfAnAgent, NamesForeignObjectsOnceEach) {
  agent.objects[ScalarName(33)] = Integer(1);
  agent.objects[CellName(1, 7, {1})] = Integer(1);
  agent.objects[CellName(1, 7, {100})] = Integer(1);
  const check::Report report = Report();
  EXPECT_THAT(Findings(report),
              ElementsAre("foreign  1.33", "foreign  2.1.1.7"));
  EXPECT_EQ(Numbers(report.totals.instances), "23 20 3 0");
}

TEST_F(CheckOfAnAgent, NamesAWrongType) {
  agent.objects[ScalarName(5)] = Number(ASN_GAUGE, 7);
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("type checkTotal 1.5.0"));
  EXPECT_EQ(TextAbout(report, "checkTotal"), "Unsigned32 instead of Counter32");
}

TEST_F(CheckOfAnAgent, NamesANumberBetweenTwoRanges) {
  agent.objects[ScalarName(1)] = Integer(6);
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("range checkLevel 1.1.0"));
  EXPECT_EQ(TextAbout(report, "checkLevel"), "6 is not in (-5..5 | 10..20)");
}

TEST_F(CheckOfAnAgent, NamesAnUnsignedNumberBeyondItsRange) {
  agent.objects[CellName(1, 2, {1})] = Number(ASN_GAUGE, 4000000001);
  EXPECT_THAT(FindingsHere(), ElementsAre("range checkPortSpeed 2.1.1.2.1"));
}

TEST_F(CheckOfAnAgent, NamesALengthBetweenTwoSizes) {
  agent.objects[ScalarName(3)] = Text("abcde");
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("length checkLabel 1.3.0"));
  EXPECT_EQ(TextAbout(report, "checkLabel"),
            "5 octets are not in SIZE (2..4 | 8)");
}

TEST_F(CheckOfAnAgent, NamesANumberThatIsNotEnumerated) {
  agent.objects[ScalarName(2)] = Integer(3);
  EXPECT_THAT(FindingsHere(), ElementsAre("enumeration checkMode 1.2.0"));
}

TEST_F(CheckOfAnAgent, NamesABitWithoutAName) {
  agent.objects[ScalarName(4)] = Text(std::string("\x80\x60", 2));
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("enumeration checkFlags 1.4.0"));
  EXPECT_EQ(TextAbout(report, "checkFlags"), "bit 10 has no name");
}

TEST_F(CheckOfAnAgent, NamesWhatOnlyNotificationsMayCarry) {
  agent.objects[ScalarName(10)] = Number(ASN_GAUGE, 1);
  EXPECT_THAT(FindingsHere(), ElementsAre("access checkSent 1.10.0"));
}

TEST_F(CheckOfAnAgent, NamesAReadableColumnThatIsNotAccessible) {
  agent.objects[CellName(4, 1, {4, 'r', 'o', 'o', 't'})] = Text("root");
  EXPECT_THAT(FindingsHere(),
              ElementsAre("access checkUserName 2.4.1.1.4.114.111.111.116"));
}

TEST_F(CheckOfAnAgent, NamesAScalarsInstanceThatIsNotZero) {
  agent.objects[kModule + Oid{1, 1, 1}] = Integer(0);
  EXPECT_THAT(FindingsHere(), ElementsAre("instance checkLevel 1.1.1"));
}

TEST_F(CheckOfAnAgent, NamesAnIndexColumnThatContradictsTheInstance) {
  agent.objects[CellName(1, 1, {100})] = Integer(99);
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("indexValue checkPortNumber "
                                            "2.1.1.1.100"));
}

TEST_F(CheckOfAnAgent, NamesAnIndexThatAugmentsAndIsOutOfRange) {
  agent.objects[CellName(2, 1, {101})] = Number(ASN_COUNTER, 1);
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("instance checkMoreErrors "
                                            "2.2.1.1.101"));
  EXPECT_THAT(TextAbout(report, "checkMoreErrors"),
              HasSubstr("checkPortNumber: 101 is not in (1..100)"));
}

TEST_F(CheckOfAnAgent, NamesAnInstanceThatGetDoesNotFind) {
  agent.get = [](const Oid& name) -> std::optional<Value> {
    if (name != CellName(1, 2, {100})) return std::nullopt;
    return Value::OfOctets(SNMP_NOSUCHINSTANCE, "");
  };
  const check::Report report = Report();
  EXPECT_THAT(Findings(report), ElementsAre("get checkPortSpeed 2.1.1.2.100"));
  EXPECT_EQ(TextAbout(report, "checkPortSpeed"),
            "GETNEXT shows Unsigned32, GET answers with noSuchInstance");
}

TEST_F(CheckOfAnAgent, NamesAWalkThatDoesNotGoUp) {
  agent.next = [](const Oid& name) -> std::optional<Varbind> {
    if (name != CellName(1, 2, {1})) return std::nullopt;
    return Varbind{CellName(1, 2, {1}), Number(ASN_GAUGE, 0)};
  };
  const std::vector<std::string> findings = FindingsHere();
  ASSERT_THAT(findings, ::testing::Not(IsEmpty()));
  EXPECT_EQ(findings[0], "order checkPortSpeed 2.1.1.2.1");
}

TEST_F(CheckOfAnAgent, NamesAWalkThatBeginsBehindTheFirstInstance) {
  agent.next = [](const Oid& name) -> std::optional<Varbind> {
    if (name != kModule + Oid{2, 1, 1, 2}) return std::nullopt;
    return Varbind{CellName(1, 2, {100}), Number(ASN_GAUGE, 0)};
  };
  EXPECT_THAT(FindingsHere(), ElementsAre("end checkPortSpeed 2.1.1.2.1"));
}

TEST_F(CheckOfAnAgent, GoesOnBehindAnObjectThatFails) {
  agent.error = [](int command, const std::vector<Varbind>& asked) {
    return command != SNMP_MSG_GET && asked[0].name == kModule
               ? SNMP_ERR_GENERR
               : SNMP_ERR_NOERROR;
  };
  const check::Report report = Report();
  EXPECT_THAT(Findings(report),
              ElementsAre("noAnswer  " + check::ToText(kModule)));
  EXPECT_EQ(Numbers(report.totals.scalars), "8 8 0 0");
}

TEST_F(CheckOfAnAgent, SaysHowManyFindingsAreAlike) {
  for (oid port = 1; port <= 40; ++port) {
    agent.objects[CellName(1, 2, {port})] = Integer(1);
  }
  const check::Report report = Report();
  ASSERT_THAT(report.findings, SizeIs(3));
  EXPECT_THAT(report.findings[2].text, HasSubstr("(and 37 more like this)"));
  EXPECT_EQ(Numbers(report.totals.instances), "59 19 40 0");
}

TEST_F(CheckOfAnAgent, AsksForFewerWhereAResponseIsTooBig) {
  agent.error = [](int command, const std::vector<Varbind>& asked) {
    return command == SNMP_MSG_GET && asked.size() > 2 ? SNMP_ERR_TOOBIG
                                                       : SNMP_ERR_NOERROR;
  };
  EXPECT_THAT(FindingsHere(), IsEmpty());
}

TEST_F(CheckOfAnAgent, CannotDoWithoutTheModule) {
  agent.Start();
  EXPECT_THROW(check::CheckMib(agent.Peer(), "NO-SUCH-MIB", CheckTestMib()),
               check::CannotCheck);
}

TEST_F(CheckOfAnAgent, CannotDoWithoutAFolderThatIsNamed) {
  check::MibOptions options = CheckTestMib();
  options.mibFolders.push_back("/nonexistent");
  EXPECT_THROW(ReportOf(agent, options), check::CannotCheck);
}

TEST_F(CheckOfAnAgent, CannotDoWithoutAnAgent) {
  check::Peer peer = agent.Peer();
  peer.timeout = std::chrono::milliseconds(50);
  EXPECT_THROW(check::CheckMib(peer, "CHECK-TEST-MIB", CheckTestMib()),
               check::CannotCheck);
}

TEST_F(CheckOfAnAgent, GivesUpOnAnAgentThatFallsSilent) {
  agent.error = [](int command, const std::vector<Varbind>&) {
    return command == SNMP_MSG_GETBULK ? -1L : 0L;
  };
  agent.Start();
  check::Peer peer = agent.Peer();
  peer.timeout = std::chrono::milliseconds(50);
  EXPECT_THROW(check::CheckMib(peer, "CHECK-TEST-MIB", CheckTestMib()),
               check::CannotCheck);
}

}  // namespace
