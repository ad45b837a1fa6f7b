// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Service.h"

#include <stdexcept>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace {

constexpr char kSubtree[] = "1.3.6.1.4.1.32473.77";

enum class Mode { Off = 1, Slow = 2, Fast = 5 };
enum class Flag { First = 0, Second = 1, Tenth = 9 };

snmp::AgentOptions OptionsFor(const testkit::MasterAgent& master) {
  snmp::AgentOptions options;
  options.master = "tcp:127.0.0.1:" + std::to_string(master.AgentXPort());
  options.firstRetry = std::chrono::milliseconds(20);
  options.log = [](snmp::LogLevel, const std::string&) {};
  return options;
}

struct Valid {
  bool valid = true;
};

}  // namespace

struct Service::Objects {
  explicit Objects(const testkit::MasterAgent& master)
      : agent("the checks", OptionsFor(master)), module(agent, kSubtree) {
    ports.Index(1).Column(2, &Port::speed);
    more.Column(1, &Port::errors);
    keys.Column(6, &Valid::valid);
    users.Column(2, &User::shell, snmp::ReadCreate().Size(1, 64))
        .Column(3, &User::quota, snmp::ReadCreate().Range(10, 1000))
        .Column(4, &User::logins)
        .StorageType(5, &User::storage)
        .RowStatus(6);
    ports.Insert(1, {});
    ports.Insert(100, {});
    keys.Insert({"ab",
                 {'x', 'y', 'z'},
                 snmp::Oid("1.3"),
                 snmp::IpAddress(192, 0, 2, 1),
                 {"end"}},
                {});
    users.Insert("root", {});
  }

  snmp::Agent agent;
  snmp::Module module;
  snmp::Scalar<int> level{module, "1.1", 5,
                          snmp::ReadWrite().Range(-5, 5).Range(10, 20)};
  snmp::Scalar<Mode> mode{
      module, "1.2", Mode::Slow,
      snmp::ReadWrite().Values(Mode::Off, Mode::Slow, Mode::Fast)};
  snmp::Scalar<std::string> label{module, "1.3", std::string("abc"),
                                  snmp::ReadWrite().Size(2, 4).Size(8, 8)};
  snmp::Scalar<snmp::Bits<Flag>> flags{
      module, "1.4", snmp::Bits<Flag>{Flag::Second},
      snmp::ReadWrite().NamedBits(Flag::First, Flag::Second, Flag::Tenth)};
  snmp::Scalar<snmp::Counter32> total{module, "1.5", snmp::Counter32{7}};
  snmp::Scalar<snmp::Oid> pointer{module, "1.6", snmp::Oid("1.3.6"),
                                  snmp::ReadWrite()};
  snmp::Scalar<snmp::IpAddress> server{
      module, "1.7", snmp::IpAddress(127, 0, 0, 1), snmp::ReadWrite()};
  snmp::Scalar<snmp::TestAndIncr> serial{module, "1.8", snmp::TestAndIncr{3},
                                         snmp::ReadWrite()};
  snmp::Table<int, Port> ports{module, "2.1"};
  snmp::Table<int, Port> more{module, "2.2", ports};
  snmp::Table<Key, Valid> keys{module, "2.3"};
  Users users{module, "2.4"};
};

Service::Service(const std::string& configuration)
    : master_(configuration), objects_(std::make_unique<Objects>(master_)) {
  objects_->agent.Start();
  const bool registered =
      testkit::WaitFor([&] { return objects_->module.IsRegistered(); },
                       testkit::Deadlines::Session());
  if (!registered) throw std::runtime_error("the service is not registered");
}

Service::~Service() = default;

std::vector<std::string> Service::Shown() const {
  return master_.Manager().Objects(kSubtree);
}

Service::Users& Service::UserTable() { return objects_->users; }
