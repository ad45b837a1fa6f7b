// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/CheckMib.h"

#include <chrono>
#include <future>
#include <map>
#include <stdexcept>

#include "testing/LoopsOfThread.h"
#include "testkit/Command.h"
#include "testkit/Deadlines.h"

namespace snmpsubagent::testing {
namespace {

// Its exit status.
enum ExitStatus { kConforms = 0, kFindings = 1 };

std::string Joined(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) {
    joined += (joined.empty() ? "" : ":") + word;
  }
  return joined;
}

std::vector<std::string> CommandLine(const std::string& address,
                                     const std::string& module,
                                     const CheckOptions& options) {
  std::vector<std::string> words{"snmpsubagent-check", "mib"};
  if (!options.mibs.empty())
    words.insert(words.end(), {"-M", Joined(options.mibs)});
  if (!options.modules.empty()) {
    words.insert(words.end(), {"-m", Joined(options.modules)});
  }
  if (options.set) words.emplace_back("--set");
  words.insert(words.end(), {module, address});
  return words;
}

// The loops of this thread go on meanwhile.
testkit::CommandResult Run(const std::vector<std::string>& words) {
  const std::map<std::string, std::string> environment;
  auto result = std::async(std::launch::async, [&] {
    return testkit::Command(words, environment)
        .Result(testkit::Deadlines::Load());
  });
  internal::LoopsOfThread& loops = internal::LoopsOfThread::Here();
  while (result.wait_for(std::chrono::milliseconds(1)) !=
         std::future_status::ready) {
    loops.Run();
  }
  return result.get();
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Conformance& conformance) {
  return stream << conformance.report;
}

Conformance CheckMib(Manager& manager, const std::string& module,
                     const CheckOptions& options) {
  const testkit::CommandResult result =
      Run(CommandLine(manager.SnmpAddress(), module, options));
  if (result.exitCode != kConforms && result.exitCode != kFindings) {
    throw std::runtime_error(result.error);
  }
  return {result.exitCode == kConforms, result.out};
}

}  // namespace snmpsubagent::testing
