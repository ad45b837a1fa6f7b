// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Log.h"

#include <syslog.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

#include "snmpsubagent/detail/Clock.h"

namespace snmpsubagent::detail {
namespace {

constexpr std::chrono::minutes kPause{1};
constexpr std::size_t kRemembered = 64;

int Priority(LogLevel level) {
  switch (level) {
    case LogLevel::Error:
      return LOG_ERR;
    case LogLevel::Warning:
      return LOG_WARNING;
    case LogLevel::Info:
      break;
  }
  return LOG_INFO;
}

}  // namespace

Log::Log(std::string agent, Function function)
    : agent_(std::move(agent)), function_(std::move(function)) {}

void Log::Write(LogLevel level, const std::string& line) noexcept try {
  const auto now = Now();
  if (said_.size() >= kRemembered) ForgetOld(now);
  const auto [place, isNew] = said_.try_emplace(line, Said{now, 0});
  Said& said = place->second;
  if (isNew) {
    Say(level, line);
  } else if (now - said.when < kPause) {
    ++said.unsaid;
  } else {
    const std::uint32_t unsaid = std::exchange(said.unsaid, 0);
    said.when = now;
    Say(level, unsaid == 0 ? line
                           : line + " (and " + std::to_string(unsaid) +
                                 " times since it was said last)");
  }
} catch (...) {
}

void Log::Say(LogLevel level, const std::string& line) const {
  if (function_) {
    function_(level, line);
    return;
  }
  syslog(LOG_DAEMON | Priority(level), "%s: %s", agent_.c_str(), line.c_str());
  if (isatty(STDERR_FILENO)) {
    std::fprintf(stderr, "%s: %s\n", agent_.c_str(), line.c_str());
  }
}

// All of them, if none is old: lines with a number in them are new each time.
void Log::ForgetOld(std::chrono::steady_clock::time_point now) {
  for (auto place = said_.begin(); place != said_.end();) {
    place = now - place->second.when >= kPause ? said_.erase(place)
                                               : std::next(place);
  }
  if (said_.size() >= kRemembered) said_.clear();
}

}  // namespace snmpsubagent::detail
