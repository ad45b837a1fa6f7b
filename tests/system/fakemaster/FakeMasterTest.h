// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_FAKEMASTER_FAKEMASTERTEST_H_
#define SNMPSUBAGENT_TESTS_FAKEMASTER_FAKEMASTERTEST_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Device.h"
#include "testkit/agentx/Master.h"

// A device whose master agent is the test itself.
class FakeMasterTest : public testing::Test {
 protected:
  // `configuration` is that of the device's agent library.
  explicit FakeMasterTest(
      const std::string& configuration = support::kEagerSubAgent)
      : device_(master_.Port(), configuration) {}

  ~FakeMasterTest() override {
    session_.reset();
    master_.Refuse();
  }

  // Starts the device and serves it until all its nodes are registered.
  void Connect() {
    device_.Start();
    session_ = master_.AcceptServing(Device::Subtrees().size());
  }

  testkit::agentx::Master master_;
  Device device_;
  testkit::agentx::Master::Session session_;
};

#endif  // SNMPSUBAGENT_TESTS_FAKEMASTER_FAKEMASTERTEST_H_
