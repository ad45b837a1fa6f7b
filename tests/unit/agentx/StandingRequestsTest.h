// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_UNIT_AGENTX_STANDINGREQUESTSTEST_H_
#define SNMPSUBAGENT_TESTS_UNIT_AGENTX_STANDINGREQUESTSTEST_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "agentx/StandingRequests.h"

namespace snmpsubagent::agentx {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

// What is to be asked for, and the master agent, in the test's hand.
class StandingRequestsTest : public testing::Test {
 protected:
  static constexpr const char* kSubtree = "1.3.6.1.4.1.32473.1";
  static constexpr const char* kAnother = "1.3.6.1.4.1.32473.2";

  std::uint32_t Register(const std::string& subtree,
                         const std::string& context = "") {
    return requests.Add(Registration{subtree, context, 127, seconds(0)});
  }
  std::uint32_t AddCaps(const std::string& id,
                        const std::string& context = "") {
    return requests.Add(AgentCaps{id, "what it can do", context});
  }

  // All that is sent now, as "+1" for what is asked for and "-1" for what is
  // withdrawn.
  std::vector<std::string> Sent() {
    std::vector<std::string> sent;
    while (const auto step = requests.Next()) {
      sent.push_back((step->withdraws ? "-" : "+") + std::to_string(step->id));
      requests.NextIsWritten();
    }
    return sent;
  }

  // Whether the response is one to tell of.
  bool Take(std::uint32_t id) {
    return requests.Answered(id, false, Error::None, now) != nullptr;
  }
  bool Refuse(std::uint32_t id, Error error = Error::DuplicateRegistration) {
    return requests.Answered(id, false, error, now) != nullptr;
  }
  bool Leave(std::uint32_t id) {
    return requests.Answered(id, true, Error::None, now) != nullptr;
  }

  void Pass(milliseconds time) {
    now += time;
    requests.RetryDue(now);
  }

  std::vector<std::uint32_t> Refused() const {
    std::vector<std::uint32_t> ids;
    for (const RefusedRegistration& one : requests.Refused()) {
      ids.push_back(one.id);
    }
    return ids;
  }

  StandingRequests::Time now = StandingRequests::Time() + std::chrono::hours(1);
  StandingRequests requests{seconds(1), seconds(3)};
};

}  // namespace snmpsubagent::agentx

#endif  // SNMPSUBAGENT_TESTS_UNIT_AGENTX_STANDINGREQUESTSTEST_H_
