// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "NetSNMP.h"
#include "support/AgentLibrarySettings.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kLibrary = NETSNMP_DS_LIBRARY_ID;
constexpr int kNoSignal = NETSNMP_DS_LIB_ALARM_DONT_USE_SIG;
constexpr int kApplication = NETSNMP_DS_APPLICATION_ID;

// ---- The default store ----

TEST(ASetting, IsStored) {
  constexpr int kPingInterval = NETSNMP_DS_AGENT_AGENTX_PING_INTERVAL;
  EXPECT_EQ(NetSNMP::set_snmp_int(kApplication, kPingInterval, 7), 0);
  EXPECT_EQ(netsnmp_ds_get_int(kApplication, kPingInterval), 7);
  for (const int value : {0, 1}) {
    EXPECT_EQ(NetSNMP::set_snmp_boolean(kLibrary, kNoSignal, value), 0);
    EXPECT_EQ(netsnmp_ds_get_boolean(kLibrary, kNoSignal), value);
  }
}

TEST(ASetting, OfAnUnknownStoreIsRefused) {
  EXPECT_EQ(NetSNMP::set_snmp_int(4711, 0, 7), SNMPERR_GENERR);
  EXPECT_EQ(NetSNMP::set_snmp_boolean(4711, 0, 1), SNMPERR_GENERR);
}

// ---- Callbacks ----

class AnAgentLibraryCallback : public testing::Test {
 protected:
  static constexpr int kMajor = SNMP_CALLBACK_APPLICATION;
  static constexpr int kMinor = 7;

  static int Note(int major, int minor, void* event, void* calls) {
    EXPECT_EQ(major, kMajor);
    EXPECT_EQ(minor, kMinor);
    static_cast<std::vector<int>*>(calls)->push_back(*static_cast<int*>(event));
    return 0;
  }

  static void Raise(int event) { snmp_call_callbacks(kMajor, kMinor, &event); }

  std::vector<int> first_;
  std::vector<int> second_;
};

TEST_F(AnAgentLibraryCallback, IsCalledUntilItIsUnregistered) {
  EXPECT_EQ(NetSNMP::register_snmp_callback(kMajor, kMinor, Note, &first_), 0);
  Raise(1);
  EXPECT_EQ(NetSNMP::unregister_snmp_callback(kMajor, kMinor, Note, &first_, 1),
            1);
  Raise(2);
  EXPECT_THAT(first_, ElementsAre(1));
}

TEST_F(AnAgentLibraryCallback, IsUnregisteredByItsArgumentOnlyIfAskedTo) {
  NetSNMP::register_snmp_callback(kMajor, kMinor, Note, &first_);
  NetSNMP::register_snmp_callback(kMajor, kMinor, Note, &second_);
  EXPECT_EQ(NetSNMP::unregister_snmp_callback(kMajor, kMinor, Note, &first_, 1),
            1);
  Raise(1);
  EXPECT_THAT(first_, IsEmpty());
  EXPECT_THAT(second_, ElementsAre(1));
  NetSNMP::register_snmp_callback(kMajor, kMinor, Note, &first_);
  EXPECT_EQ(NetSNMP::unregister_snmp_callback(kMajor, kMinor, Note, nullptr, 0),
            2);
}

TEST_F(AnAgentLibraryCallback, OfAnUnknownKindIsRefused) {
  EXPECT_EQ(NetSNMP::register_snmp_callback(4711, kMinor, Note, nullptr),
            SNMPERR_GENERR);
  EXPECT_EQ(NetSNMP::unregister_snmp_callback(4711, kMinor, Note, nullptr, 0),
            SNMPERR_GENERR);
}

// ---- Start and end ----

int signalSetting = -1;

// What the agent library's own setting is when it calls back. Takes no argument
// of its own: at its shutdown the agent library frees those.
int NoteSignalSetting(int, int, void*, void*) {
  signalSetting = netsnmp_ds_get_boolean(kLibrary, kNoSignal);
  return 0;
}

// The life of the agent library in an application without an SNMPSubAgent and
// without a master agent. It can be lived once per process: each test lives it
// in a child, before any other test (hence the name) has begun one here.
class AnAgentSetUpDeathTest : public testing::Test {
 protected:
  void StartAgent() {
    NetSNMP::set_snmp_boolean(kApplication, NETSNMP_DS_AGENT_ROLE, 1);
    netsnmp_ds_set_string(kApplication, NETSNMP_DS_AGENT_X_SOCKET,
                          "unix:/proc/self/no-master-agent");
    EXPECT_EQ(NetSNMP::init_snmp_agent("lonely"), 0);
  }

  // Ends the process, with 0 if nothing has failed in it.
  [[noreturn]] static void End() { std::_Exit(HasFailure() ? 1 : 0); }

  const support::AgentLibrarySettings settings_{"lonely",
                                                "agentXPingInterval 4711\n"};
};

TEST_F(AnAgentSetUpDeathTest, ReadsItsConfigurationAndLeavesAlarmsToTheLoop) {
  const auto life = [this] {
    StartAgent();
    NetSNMP::set_snmp_boolean(kLibrary, kNoSignal, 0);
    netsnmp_ds_set_string(kLibrary, NETSNMP_DS_LIB_APPTYPE, nullptr);
    NetSNMP::register_snmp_callback(SNMP_CALLBACK_LIBRARY,
                                    SNMP_CALLBACK_POST_READ_CONFIG,
                                    NoteSignalSetting, nullptr);
    EXPECT_EQ(NetSNMP::init_snmp_snmp("lonely"), 0);
    EXPECT_EQ(signalSetting, 1);
    EXPECT_STREQ(netsnmp_ds_get_string(kLibrary, NETSNMP_DS_LIB_APPTYPE),
                 "lonely");
    EXPECT_EQ(
        netsnmp_ds_get_int(kApplication, NETSNMP_DS_AGENT_AGENTX_PING_INTERVAL),
        4711);
    End();
  };
  EXPECT_EXIT(life(), testing::ExitedWithCode(0), "");
}

TEST_F(AnAgentSetUpDeathTest, IsTakenDownAgain) {
  const auto life = [this] {
    StartAgent();
    NetSNMP::init_snmp_snmp("lonely");
    NetSNMP::register_snmp_callback(SNMP_CALLBACK_LIBRARY,
                                    SNMP_CALLBACK_SHUTDOWN, NoteSignalSetting,
                                    nullptr);
    const auto backup =
        std::filesystem::path(std::getenv("SNMP_PERSISTENT_DIR")) /
        "lonely.0.conf";
    std::ofstream(backup).close();
    EXPECT_NE(netsnmp_subtree_find_first(""), nullptr);
    EXPECT_EQ(NetSNMP::shutdown_snmp("lonely"), 0);
    EXPECT_EQ(signalSetting, 1);
    EXPECT_FALSE(exists(backup));  // of the state kept under that name
    EXPECT_EQ(NetSNMP::shutdown_snmp_agent(), 0);
    EXPECT_EQ(netsnmp_subtree_find_first(""), nullptr);
    End();
  };
  EXPECT_EXIT(life(), testing::ExitedWithCode(0), "");
}

}  // namespace
