// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// SETs of which the master agent does not say how they go on.
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <utility>

#include "Device.h"
#include "support/StandingTime.h"

namespace snmp = snmpsubagent;

namespace {

using namespace std::chrono_literals;
using snmp::SetError;

class AForgottenSet : public testing::Test {
 protected:
  AForgottenSet() {
    Watch(first);
    Watch(second);
    device.Connect();
  }

  void Watch(snmp::Scalar<int>& scalar) {
    scalar
        .Apply([this](int before, int after) {
          calls += " " + std::to_string(before) + ">" + std::to_string(after);
        })
        .Changed([this](int) { calls += " final"; });
  }

  // When it returns, what is due has been done.
  void Pass(std::chrono::milliseconds passed) {
    time.Pass(passed);
    device.Sync();
  }
  std::string Values() { return device.GetAll({"1.0", "2.0"}); }
  std::string TakeCalls() {
    const auto lock = device.agent.Lock();
    return std::exchange(calls, {});
  }

  const Assignments kBoth{{"1.0", Int(11)}, {"2.0", Int(12)}};

  StandingTime time;
  std::string calls;
  Device device;
  snmp::Module module{device.agent, kBase};
  snmp::Scalar<int> first{module, "1", 1, snmp::ReadWrite()};
  snmp::Scalar<int> second{module, "2", 2, snmp::ReadWrite()};
};

TEST_F(AForgottenSet, IsUndoneAMinuteAfterItsCommitSet) {
  Phases set(device);
  EXPECT_EQ(set.Test(kBoth), "noError");
  Pass(40s);
  EXPECT_EQ(set.Commit(), "noError");
  EXPECT_EQ(TakeCalls(), " 1>11 2>12");
  Pass(59s);
  EXPECT_EQ(Values(), "INTEGER 11, INTEGER 12");
  Pass(1s);
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2");
  set.Cleanup();
  EXPECT_EQ(TakeCalls(), " 12>2 11>1");
}

TEST_F(AForgottenSet, IsDroppedAMinuteAfterItsTestSet) {
  Phases set(device);
  EXPECT_EQ(set.Test(kBoth), "noError");
  Pass(59s);
  EXPECT_EQ(device.Set({{"1.0", Int(21)}}), "resourceUnavailable 1");
  Pass(1s);
  EXPECT_EQ(device.Set({{"1.0", Int(21)}}), "noError");
  EXPECT_EQ(set.Commit(), "commitFailed");
  EXPECT_EQ(set.Undo(), "noError");
  EXPECT_EQ(Values(), "INTEGER 21, INTEGER 2");
}

TEST_F(AForgottenSet, IsNotKeptByATestSetThatComesTooLate) {
  Phases set(device);
  set.Test(kBoth);
  set.Commit();
  Pass(59s);
  EXPECT_EQ(set.Test(kBoth), "genErr");
  Pass(1s);
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2");
}

TEST_F(AForgottenSet, IsAnsweredInTimeAlthoughATestSetComesTooLate) {
  std::optional<snmp::Later<SetError>> kept;
  second.Apply(
      [&](int, int, snmp::Later<SetError> reply) { kept = std::move(reply); });
  Phases set(device);
  set.Test(kBoth);
  const auto commit = set.SendCommit();
  device.Sync();
  time.Pass(Device::Options().timeout - 1s);
  EXPECT_EQ(set.Test(kBoth), "genErr");
  time.Pass(1s);
  EXPECT_EQ(device.Receive(commit), "commitFailed 2");
  EXPECT_EQ(Values(), "INTEGER 1, INTEGER 2");
}

}  // namespace
