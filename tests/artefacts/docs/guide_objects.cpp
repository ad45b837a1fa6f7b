// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
//
// What the code of docs/guide.md on the objects takes for granted. Compiled by
// code_compiles, which adds each block in a function of its own.
#include <gtest/gtest.h>
#include <poll.h>
#include <snmpsubagent.h>
#include <snmpsubagent/testing.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace snmp = snmpsubagent;

int celsius;
std::atomic<int> rotations;
std::atomic<std::uint64_t> received;
std::string status;

void Log(const std::string& line);
int ReadLoad();
bool HasFan();
int ReadFan();
std::uint32_t DiskUsage();
int ReadMode();
bool WriteMode(int mode);
bool WriteLimit(int limit);
void ReadSensor(std::function<void(int)> done);
void MoveValve(int percent, std::function<void(bool)> done);
int ProcessesOf(const std::string& user);

using snmp::testing::ErrorStatus;

class Boiler {
 public:
  explicit Boiler(snmp::Agent& agent);
  void Measured(int celsius);
};

struct User {
  std::string shell = "/bin/sh";
  std::uint32_t quota = 1000;
  snmp::Counter64 logins;
};

void TestYourService() {
#include "guide/objects-test-your-service-1.cpp"
}

void TestYourServiceInVirtualTime() {
#include "guide/objects-test-your-service-2.cpp"
}
