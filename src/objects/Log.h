// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_LOG_H_
#define SNMPSUBAGENT_OBJECTS_LOG_H_

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "snmpsubagent/Agent.h"

namespace snmpsubagent::detail {

// Log lines of an agent. One that is said again within a minute is only
// counted.
//
// Threads: under the agent's lock.
class Log {
 public:
  using Function = std::function<void(LogLevel, const std::string&)>;

  // Without a function lines go to syslog(3), and to a terminal on stderr.
  Log(std::string agent, Function function);

  // Never throws: a line for which there is no memory is lost.
  void Write(LogLevel level, const std::string& line) noexcept;

 private:
  struct Said {
    std::chrono::steady_clock::time_point when;
    std::uint32_t unsaid;
  };

  void Say(LogLevel level, const std::string& line) const;
  void ForgetOld(std::chrono::steady_clock::time_point now);

  std::string agent_;
  Function function_;
  std::map<std::string, Said> said_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_LOG_H_
