// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_CHECK_SERVICE_H_
#define SNMPSUBAGENT_TESTS_CHECK_SERVICE_H_

#include <snmpsubagent.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "testkit/MasterAgent.h"

namespace snmp = snmpsubagent;

// snmpd, and a service that serves all of CHECK-TEST-MIB as it should be.
class Service {
 public:
  struct Port {
    std::uint32_t speed = 4000000000;
    snmp::Counter32 errors;
  };
  struct User {
    std::string shell = "/bin/sh";
    std::uint32_t quota = 100;
    snmp::Counter32 logins;
    snmp::StorageType storage = snmp::StorageType::NonVolatile;
  };
  using Key = std::tuple<std::string, std::array<std::uint8_t, 3>, snmp::Oid,
                         snmp::IpAddress, snmp::Implied<std::string>>;
  using Users = snmp::Table<std::string, User>;

  // `configuration` is added to snmpd's. Throws std::runtime_error if the
  // service is not registered in time.
  explicit Service(const std::string& configuration = "");
  ~Service();

  // Where managers ask.
  std::string Address() const { return master_.Address(); }
  // All that they see, a line each.
  std::vector<std::string> Shown() const;

  Users& UserTable();

 private:
  struct Objects;

  testkit::MasterAgent master_;
  std::unique_ptr<Objects> objects_;
};

#endif  // SNMPSUBAGENT_TESTS_CHECK_SERVICE_H_
