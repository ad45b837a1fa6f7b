// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/Answers.h"

namespace support {
namespace {

// What follows `key` in the text, up to the end of the word or line.
std::string After(const std::string& text, const std::string& key,
                  const char* end) {
  const std::size_t found = text.find(key);
  if (found == std::string::npos) return {};
  const std::size_t begin = found + key.size();
  return text.substr(begin, text.find_first_of(end, begin) - begin);
}

}  // namespace

std::string ShownAt(const testkit::Manager& manager, const std::string& name) {
  return After(manager.Get(name).out, name + " = ", "\n");
}

std::string SetAt(const testkit::Manager& manager,
                  const std::vector<std::string>& words) {
  const testkit::CommandResult result = manager.Set(words);
  if (result.Succeeded()) return "None";
  std::string reason = After(result.error, "Reason: ", " \n");
  if (reason == "(genError)") reason = "genErr";
  const std::string object = After(result.error, "Failed object: ", "\n");
  if (reason.empty()) return result.error;
  return object.empty() ? reason : reason + " " + object;
}

}  // namespace support
