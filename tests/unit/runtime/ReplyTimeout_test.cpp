// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "runtime/ReplyTimeout.h"

#include <gmock/gmock.h>

#include <chrono>
#include <limits>

#include "LoggedLines.h"
#include "LonelySubAgent.h"
#include "NetSNMP.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// Raises the start of an AgentX session, as Net-SNMP would whose sessions have
// version SNMP_VERSION_2c instead of 0xC1.
void StartSessionOfAnUnknownVersion() {
  netsnmp_session settings;
  snmp_sess_init(&settings);
  settings.version = SNMP_VERSION_2c;
  char peer[] = "udp:127.0.0.1:1";
  settings.peername = peer;
  netsnmp_session* const session = snmp_open(&settings);
  ASSERT_NE(session, nullptr);
  snmp_call_callbacks(SNMP_CALLBACK_APPLICATION, SNMPD_CALLBACK_INDEX_START,
                      session);
  snmp_close(session);
}

TEST(AReplyTimeout, ThatCannotBeAppliedToTheSessionIsLogged) {
  LonelySubAgent subAgent;
  subAgent.SetReplyTimeout(std::chrono::seconds(1), 0);
  subAgent.initialize();
  StartSessionOfAnUnknownVersion();
  EXPECT_THAT(
      LoggedLines(),
      ElementsAre(Pair(3U,
                       "SNMPSubAgent: the reply timeout does not shorten that "
                       "of Net-SNMP, whose AgentX sessions have version 0x1, "
                       "not 0xC1")));
}

TEST(AReplyTimeout, WithRetriesForMoreThanADayIsRefused) {
  LonelySubAgent subAgent;
  EXPECT_FALSE(subAgent.SetReplyTimeout(std::chrono::seconds(1),
                                        std::numeric_limits<int>::max()));
  EXPECT_FALSE(subAgent.SetReplyTimeout(std::chrono::minutes(30), 47));
  EXPECT_TRUE(subAgent.SetReplyTimeout(std::chrono::minutes(30), 45));
  EXPECT_TRUE(subAgent.SetPingInterval(std::chrono::seconds(1)));
  subAgent.initialize();
  EXPECT_EQ(netsnmp_ds_get_int(NETSNMP_DS_APPLICATION_ID,
                               NETSNMP_DS_AGENT_AGENTX_PING_INTERVAL),
            30 * 60 * 47 + 1);
}

TEST(AReplyTimeout, ThatIsNotSetIsNotMissed) {
  LonelySubAgent subAgent;
  subAgent.initialize();
  StartSessionOfAnUnknownVersion();
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

}  // namespace
