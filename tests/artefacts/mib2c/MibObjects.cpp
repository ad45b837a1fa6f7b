// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "MibObjects.h"

#include <regex>
#include <stdexcept>

#include "testkit/Command.h"

namespace {

testkit::CommandResult Translate(const std::string& modules,
                                 const std::string& node,
                                 const std::string& form) {
  testkit::Command command(
      {"snmptranslate", "-M", MibFolders(), "-m", modules, form, node}, {});
  const testkit::CommandResult result = command.Result();
  if (!result.Succeeded()) throw std::runtime_error(node + ": " + result.error);
  return result;
}

}  // namespace

std::string MibFolders() { return MIB_FOLDERS; }

std::vector<MibObject> ObjectsOf(const std::string& modules,
                                 const std::string& node) {
  // "   |  +-- -RW- Integer32 name(3)" or "   |  +--name(3)": three more places
  // for each level.
  static const std::regex line(
      R"(([ |]*)\+--(?: (....) \S+ +)?([\w-]+)\((\d+)\))");
  std::vector<std::string> oids{Translate(modules, node, "-On").Lines().at(0)};
  std::vector<std::string> names{""};
  std::vector<MibObject> objects;
  for (const std::string& text : Translate(modules, node, "-Tp").Lines()) {
    std::smatch match;
    if (!std::regex_search(text, match, line)) continue;
    const std::size_t level = match.length(1) / 3;
    const std::string access = match[2];
    if (level > 0) {
      oids.resize(level);
      names.resize(level);
      oids.push_back(oids.back() + "." + match[4].str());
      names.push_back(match[3]);
    }
    if (access.empty()) continue;
    objects.push_back(
        {match[3], oids.back(),
         std::regex_search(names[level - 1], std::regex("Entry$")),
         access.find('R') != std::string::npos,
         access.find('W') != std::string::npos});
  }
  return objects;
}
