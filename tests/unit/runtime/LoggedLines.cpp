// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "LoggedLines.h"

#include <mutex>

#include "LogXMessage.h"

namespace {

std::mutex mutex;

std::vector<LoggedLine>& Lines() {
  static std::vector<LoggedLine>& lines = *new std::vector<LoggedLine>;
  return lines;
}

}  // namespace

void LogXMessage(unsigned int level, const std::string& text) {
  const std::lock_guard<std::mutex> lock(mutex);
  Lines().emplace_back(level, text);
}

std::vector<LoggedLine> LoggedLines() {
  const std::lock_guard<std::mutex> lock(mutex);
  return Lines();
}
