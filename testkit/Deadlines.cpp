// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/Deadlines.h"

#include <cstdlib>
#include <string>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer) || __has_feature(address_sanitizer)
#define SNMPSUBAGENT_TESTS_SANITIZED
#endif
#elif defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
#define SNMPSUBAGENT_TESTS_SANITIZED
#endif

namespace testkit {
namespace {

constexpr std::chrono::milliseconds kSecond{1000};

#ifdef SNMPSUBAGENT_TESTS_SANITIZED
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

// valgrind shows itself by the library that it preloads.
bool UnderValgrind() {
  const char* preloaded = std::getenv("LD_PRELOAD");
  return preloaded != nullptr &&
         std::string(preloaded).find("vgpreload") != std::string::npos;
}

std::chrono::milliseconds Stretched(std::chrono::milliseconds deadline) {
  static const int factor = UnderValgrind() ? 10 : kSanitized ? 4 : 1;
  return deadline * factor;
}

}  // namespace

std::chrono::milliseconds Deadlines::Command() {
  return Stretched(20 * kSecond);
}

std::chrono::milliseconds Deadlines::Daemon() {
  return Stretched(15 * kSecond);
}

std::chrono::milliseconds Deadlines::Session() {
  return Stretched(20 * kSecond);
}

std::chrono::milliseconds Deadlines::Stop() { return Stretched(10 * kSecond); }

std::chrono::milliseconds Deadlines::Load() { return Stretched(30 * kSecond); }

std::chrono::milliseconds Deadlines::Pass() { return Stretched(10 * kSecond); }

}  // namespace testkit
