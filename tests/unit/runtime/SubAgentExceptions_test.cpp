// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include <gmock/gmock.h>

#include <cstdio>
#include <functional>
#include <stdexcept>

#include "ISNMPSubAgentCallback.h"
#include "LoggedLines.h"
#include "NetSNMP.h"
#include "SNMPSubAgent.h"
#include "adapter/ExceptionBarrier.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// What the agent library logs while this lives. Into a file, as by the option
// -L of its programs: which lines a handler gets that snmp_enable_calllog()
// registers depends on the version.
class AgentLibraryLog {
 public:
  AgentLibraryLog() : file_(std::tmpfile()) {
    snmp_disable_log();
    std::string option = "f/proc/self/fd/" + std::to_string(fileno(file_));
    snmp_log_options(&option[0], 0, nullptr);
  }
  ~AgentLibraryLog() {
    snmp_disable_log();
    std::fclose(file_);
  }

  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    std::rewind(file_);
    char line[200];
    while (std::fgets(line, sizeof(line), file_) != nullptr) {
      lines.emplace_back(line);
    }
    return lines;
  }

 private:
  std::FILE* const file_;
};

class Receiver : public ISNMPSubAgentCallback {
 public:
  explicit Receiver(std::function<void(int)> act) : act_(std::move(act)) {}
  void SubAgentStateChanged(int state) override { act_(state); }

 private:
  std::function<void(int)> act_;
};

class ActingSubAgent : public SNMPSubAgent {
 public:
  ActingSubAgent() : SNMPSubAgent("acting") {}
  void ApplicationOperation() override {}
  void OnSubAgentConnected() override {
    if (onConnected_) onConnected_();
  }

  std::function<void()> onConnected_;
};

// What the application throws when the agent library reports an event.
class SessionEventThatThrows : public testing::Test {
 protected:
  void Raise(int event) {
    EXPECT_EQ(SNMPSubAgent::snmp_subagent_callback(SNMP_CALLBACK_APPLICATION,
                                                   event, nullptr, &subAgent_),
              0);
  }

  std::vector<int> told_;
  Receiver last_{[this](int state) { told_.push_back(state); }};
  ActingSubAgent subAgent_;
  AgentLibraryLog log_;
};

TEST_F(SessionEventThatThrows, IsCaughtWhenItComesFromTheConnectionHook) {
  subAgent_.onConnected_ = [] { throw std::runtime_error("no nodes"); };
  subAgent_.RegisterSubAgentCallback("last", &last_);
  Raise(SNMPD_CALLBACK_INDEX_START);
  EXPECT_TRUE(subAgent_.Connected());
  EXPECT_THAT(told_, ElementsAre(1));
  EXPECT_THAT(log_.Lines(), ElementsAre(HasSubstr("no nodes")));
}

TEST_F(SessionEventThatThrows, IsCaughtWhenItComesFromAReceiver) {
  Receiver runtime([](int) { throw std::runtime_error("pump lost"); });
  Receiver odd([](int) { throw 42; });
  subAgent_.RegisterSubAgentCallback("1", &runtime);
  subAgent_.RegisterSubAgentCallback("2", &odd);
  subAgent_.RegisterSubAgentCallback("last", &last_);
  Raise(SNMPD_CALLBACK_INDEX_START);
  EXPECT_TRUE(subAgent_.Connected());
  Raise(SNMPD_CALLBACK_INDEX_STOP);
  EXPECT_FALSE(subAgent_.Connected());
  EXPECT_THAT(told_, ElementsAre(1, 0));
  EXPECT_THAT(log_.Lines(),
              ElementsAre(HasSubstr("pump lost"), HasSubstr("pump lost")));
}

TEST_F(SessionEventThatThrows, LeavesNoLineInThePlatformsLog) {
  subAgent_.onConnected_ = [] { throw std::runtime_error("no nodes"); };
  Raise(SNMPD_CALLBACK_INDEX_START);
  EXPECT_THAT(LoggedLines(), IsEmpty());
}

TEST_F(SessionEventThatThrows, IsRememberedWhenItIsAnInterruption) {
  subAgent_.onConnected_ = [] { throw boost::thread_interrupted(); };
  subAgent_.RegisterSubAgentCallback("last", &last_);
  Raise(SNMPD_CALLBACK_INDEX_START);
  EXPECT_THAT(told_, ElementsAre(1));
  EXPECT_THROW(exception_barrier::RaisePendingInterruption(),
               boost::thread_interrupted);
  exception_barrier::RaisePendingInterruption();
}

TEST_F(SessionEventThatThrows, LeavesADirectCallAfterAllWereTold) {
  Receiver runtime([](int) { throw std::runtime_error("pump lost"); });
  subAgent_.RegisterSubAgentCallback("first", &runtime);
  subAgent_.RegisterSubAgentCallback("last", &last_);
  EXPECT_THROW(subAgent_.NotifySubAgentCallbacks(1), std::runtime_error);
  EXPECT_THAT(told_, ElementsAre(1));
}

}  // namespace
