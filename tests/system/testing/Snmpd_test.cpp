// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Snmpd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <snmpsubagent.h>

#include <limits>
#include <string>

#include "snmpsubagent/testing/Master.h"

namespace {

namespace snmp = snmpsubagent;
using snmp::ValueType;
using snmp::testing::ErrorStatus;
using snmp::testing::Manager;
using snmp::testing::Notification;
using snmp::testing::Response;
using snmp::testing::Value;
using snmp::testing::Varbind;
using testing::ElementsAre;

const std::string kSubtree = "1.3.6.1.4.1.32473.2";

std::string Instance(int object) {
  return kSubtree + "." + std::to_string(object) + ".0";
}

snmp::AgentOptions At(const std::string& master) {
  snmp::AgentOptions options;
  options.master = master;
  options.firstRetry = std::chrono::milliseconds(10);
  options.lastRetry = std::chrono::milliseconds(50);
  options.log = [](snmp::LogLevel, const std::string&) {};
  return options;
}

// A service with an object of each type.
class Service {
 public:
  explicit Service(const std::string& master)
      : agent_("service", At(master)), module_(agent_, kSubtree) {
    stuck_.Apply([](int) { return false; });
    agent_.Start();
  }

  snmp::Agent& Agent() { return agent_; }
  snmp::Notification& Told() { return told_; }

 private:
  template <typename T>
  using Scalar = snmp::Scalar<T>;

  snmp::Agent agent_;
  snmp::Module module_;
  Scalar<int> integer_{module_, "1", -5, snmp::ReadWrite().Range(-9, 9)};
  Scalar<std::uint32_t> gauge_{module_, "2", 4294967295U};
  Scalar<snmp::Counter64> counter_{
      module_, "3", snmp::Counter64{std::numeric_limits<std::uint64_t>::max()}};
  Scalar<std::string> text_{module_, "4", std::string("boiler room"),
                            snmp::ReadWrite().Size(0, 300)};
  Scalar<snmp::Oid> oid_{module_, "5", snmp::Oid("1.3.6.1.4.1.32473.200.70000"),
                         snmp::ReadWrite()};
  Scalar<snmp::IpAddress> address_{module_, "6", snmp::IpAddress(192, 0, 2, 1)};
  Scalar<snmp::TimeTicks> ticks_{module_, "7", snmp::TimeTicks(100)};
  Scalar<double> number_{module_, "8", 21.5, snmp::ReadWrite()};
  Scalar<int> stuck_{module_, "9", 1, snmp::ReadWrite()};
  Scalar<snmp::Counter32> count_{module_, "10", snmp::Counter32{7}};
  snmp::Notification told_{module_, "0.1"};
};

// Asks both master agents the same and expects the same response.
class BothMasters : public testing::Test {
 protected:
  BothMasters() {
    snmpd_.WaitUntilServed(kSubtree);
    master_.WaitUntilServed(kSubtree);
  }

  template <typename Ask>
  void ExpectTheSame(Ask ask) {
    EXPECT_EQ(testing::PrintToString(ask(static_cast<Manager&>(master_))),
              testing::PrintToString(ask(static_cast<Manager&>(snmpd_))));
  }

  snmp::testing::Snmpd snmpd_;
  snmp::testing::Master master_;
  Service served_{snmpd_.Address()};
  Service same_{master_.Address()};
};

TEST_F(BothMasters, GetTheSameValues) {
  ExpectTheSame([](Manager& manager) { return manager.Walk(kSubtree); });
  EXPECT_EQ(snmpd_.Get(Instance(1)), -5);
  EXPECT_EQ(snmpd_.Get(Instance(2)), 4294967295U);
  EXPECT_EQ(snmpd_.Get(Instance(3)),
            snmp::Counter64{std::numeric_limits<std::uint64_t>::max()});
  EXPECT_EQ(snmpd_.Get(Instance(4)), "boiler room");
  EXPECT_EQ(snmpd_.Get(Instance(8)), 21.5);
}

TEST_F(BothMasters, SayTheSameOfWhatIsNotThere) {
  ExpectTheSame([](Manager& manager) {
    return manager.Get({Instance(1), Instance(99), kSubtree + ".1.7",
                        snmp::Oid("1.3.6.1.4.1.32473.99.1.0")});
  });
}

TEST_F(BothMasters, AnswerTheSameToGetBulk) {
  ExpectTheSame([](Manager& manager) {
    return manager.GetBulk(1, 3, {kSubtree, Instance(2), Instance(4)});
  });
}

TEST_F(BothMasters, SetTheSame) {
  ExpectTheSame([](Manager& manager) {
    const Response response = manager.Set({{Instance(1), 9},
                                           {Instance(4), std::string(300, 'x')},
                                           {Instance(5), snmp::Oid("0.0")},
                                           {Instance(8), -1e300}});
    EXPECT_TRUE(response.Succeeded()) << response;
    return manager.Walk(kSubtree);
  });
}

TEST_F(BothMasters, RefuseTheSame) {
  for (const Varbind& varbind :
       {Varbind{Instance(1), 10}, Varbind{Instance(1), "no number"},
        Varbind{Instance(2), 1U}, Varbind{Instance(4), std::string(301, 'x')},
        Varbind{Instance(9), 2}, Varbind{Instance(99), 2},
        Varbind{kSubtree + ".1.7", 2},
        Varbind{"1.3.6.1.4.1.32473.99.1.0", 2}}) {
    ExpectTheSame([&](Manager& manager) {
      return manager.Set({{Instance(5), snmp::Oid("1.3")}, varbind});
    });
    ExpectTheSame([](Manager& manager) { return manager.Walk(kSubtree); });
  }
}

TEST_F(BothMasters, ReceiveTheSameNotification) {
  for (Service* service : {&served_, &same_}) {
    service->Told().Send({{snmp::Oid(Instance(3)), snmp::Counter64{1U << 31}},
                          {snmp::Oid(Instance(8)), 0.5}});
  }
  ExpectTheSame([](Manager& manager) {
    Notification next = manager.NextNotification();
    while (next.name != snmp::Oid(kSubtree + ".0.1")) {
      next = manager.NextNotification();  // snmpd's own
    }
    return next;
  });
}

class Snmpd : public testing::Test {
 protected:
  Snmpd() { snmpd_.WaitUntilServed(kSubtree); }

  snmp::testing::Snmpd snmpd_;
  Service service_{snmpd_.Address()};
};

TEST_F(Snmpd, IsFoundAgainAfterItWasDown) {
  snmpd_.Kill();
  snmpd_.ComeUp();
  snmpd_.WaitUntilServed(kSubtree);
  EXPECT_EQ(snmpd_.Get(Instance(1)), -5);
}

TEST_F(Snmpd, AnswersWhatItWasAskedWhenItGoesOn) {
  snmpd_.Freeze();
  auto pending = snmpd_.StartGet({Instance(1)});
  EXPECT_FALSE(pending.IsAnswered());
  snmpd_.Thaw();
  EXPECT_THAT(pending.Result().varbinds, ElementsAre(Varbind{Instance(1), -5}));
}

TEST(SnmpdConfiguration, TakesMoreLines) {
  snmp::testing::Snmpd snmpd("sysContact somebody\n");
  EXPECT_NE(snmpd.SnmpAddress(), "");
  EXPECT_EQ(snmpd.Get("1.3.6.1.4.1.32473.2.1.0"), ValueType::NoSuchObject);
}

}  // namespace
