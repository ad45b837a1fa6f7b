// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "LogXMessage.h"

#include <sys/time.h>

#include <atomic>
#include <cstdio>
#include <ctime>

#include "LogSink.h"

namespace {
using LogSink = void (*)(unsigned int, const std::string&);

// Writes the line in one call, which the C library does not interleave.
void WriteToStderr(unsigned int level, const std::string& text) {
  timeval now{};
  gettimeofday(&now, nullptr);
  tm local{};
  localtime_r(&now.tv_sec, &local);
  char seconds[sizeof "2024-05-31 09:15:02"];
  strftime(seconds, sizeof seconds, "%F %T", &local);
  std::fprintf(stderr, "%s.%03ld [%u] %s\n", seconds,
               static_cast<long>(now.tv_usec / 1000), level, text.c_str());
}

std::atomic<LogSink> logSink{WriteToStderr};
}  // namespace

void SetLogSink(LogSink sink) { logSink = sink ? sink : WriteToStderr; }

void LogXMessage(unsigned int level, const std::string& text) {
  logSink.load()(level, text);
}
