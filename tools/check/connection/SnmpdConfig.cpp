// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/connection/SnmpdConfig.h"

#include <strings.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace snmpsubagent::check {
namespace {

constexpr char kDefaultSocket[] = "/var/agentx/master";
constexpr int kMostIncludes = 8;  // one in another

bool IsWord(const std::string& word, const char* other) {
  return strcasecmp(word.c_str(), other) == 0;
}

std::vector<std::string> WordsOf(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  if (!words.empty()) {
    std::transform(words[0].begin(), words[0].end(), words[0].begin(),
                   [](unsigned char c) { return std::tolower(c); });
  }
  return words;
}

std::vector<std::string> FilesIn(const std::string& folder) {
  std::set<std::string> files;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".conf") files.insert(entry.path());
  }
  return {files.begin(), files.end()};
}

bool SaysAgentX(const SnmpdConfig::Line& line) {
  static const std::set<std::string> kYes = {"agentx", "all", "yes", "on"};
  std::string value = line.words.size() > 1 ? line.words[1] : "";
  std::transform(value.begin(), value.end(), value.begin(),
                 [](unsigned char c) { return std::tolower(c); });
  return kYes.count(value) != 0;
}

}  // namespace

SnmpdConfig::SnmpdConfig(const std::string& file) : file_(file) {
  Read(file, 0);
}

void SnmpdConfig::Read(const std::string& file, int depth) {
  std::ifstream in(file);
  if (!in || depth > kMostIncludes) return;
  if (depth == 0) isKnown_ = true;
  int number = 0;
  for (std::string text; std::getline(in, text);) {
    Line line{file + ":" + std::to_string(++number), text, {}};
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string::npos) continue;
    if (text[begin] == '#') {
      line.words = WordsOf(text.substr(begin + 1));
      comments_.push_back(line);
      continue;
    }
    line.words = WordsOf(text);
    lines_.push_back(line);
    if (line.words.size() < 2) continue;
    if (IsWord(line.words[0], "includeFile")) Read(line.words[1], depth + 1);
    if (!IsWord(line.words[0], "includeDir")) continue;
    for (const std::string& more : FilesIn(line.words[1])) {
      Read(more, depth + 1);
    }
  }
}

std::optional<SnmpdConfig::Line> SnmpdConfig::Last(
    const std::string& word) const {
  const auto found =
      std::find_if(lines_.rbegin(), lines_.rend(),
                   [&](const Line& line) { return line.words[0] == word; });
  return found == lines_.rend() ? std::nullopt : std::optional(*found);
}

bool SnmpdConfig::TakesSubagents() const {
  return std::any_of(lines_.begin(), lines_.end(), [](const Line& line) {
    return line.words[0] == "master" && SaysAgentX(line);
  });
}

std::optional<SnmpdConfig::Line> SnmpdConfig::AlmostTakesSubagents() const {
  if (const auto line = Last("master")) return line;
  const auto found =
      std::find_if(comments_.begin(), comments_.end(), [](const Line& line) {
        return line.words.size() == 2 && line.words[0] == "master" &&
               SaysAgentX(line);
      });
  return found == comments_.end() ? std::nullopt : std::optional(*found);
}

std::optional<SnmpdConfig::Line> SnmpdConfig::SocketLine() const {
  return Last("agentxsocket");
}

std::vector<AgentXAddress> SnmpdConfig::Sockets() const {
  const std::optional<Line> line = SocketLine();
  std::istringstream in(line && line->words.size() > 1 ? line->words[1]
                                                       : kDefaultSocket);
  std::vector<AgentXAddress> sockets;
  for (std::string word; std::getline(in, word, ',');) {
    if (const auto address = AgentXAddress::Parse(word)) {
      sockets.push_back(*address);
    }
  }
  return sockets;
}

std::optional<SnmpdConfig::Line> SnmpdConfig::CommunityLine(
    const std::string& community) const {
  static const std::set<std::string> kWords = {"rocommunity", "rwcommunity",
                                               "rocommunity6", "rwcommunity6"};
  for (const Line& line : lines_) {
    const bool names = kWords.count(line.words[0]) && line.words.size() > 1 &&
                       line.words[1] == community;
    const bool maps = line.words[0].compare(0, 7, "com2sec") == 0 &&
                      line.words.back() == community;
    if (names || maps) return line;
  }
  return std::nullopt;
}

// "rocommunity NAME SOURCE -V VIEW", or over "com2sec SECURITY SOURCE NAME",
// "group GROUP MODEL SECURITY" and
// "access GROUP CONTEXT MODEL LEVEL MATCH VIEW ...".
std::string SnmpdConfig::ViewOf(const Line& community) const {
  const std::vector<std::string>& words = community.words;
  if (words[0].compare(0, 7, "com2sec") != 0) {
    return words.size() > 4 && words[3] == "-V" ? words[4] : "";
  }
  const std::size_t name = words[1] == "-Cn" ? 3 : 1;  // behind a context
  if (words.size() <= name) return "";
  const std::vector<std::string> group = Find("group", 3, words[name]);
  if (group.empty()) return "";
  const std::vector<std::string> access = Find("access", 1, group[1]);
  return access.size() > 6 ? access[6] : "";
}

// The words of the first line that begins with one word and has another in a
// place; none without such a line.
std::vector<std::string> SnmpdConfig::Find(const std::string& word,
                                           std::size_t place,
                                           const std::string& value) const {
  for (const Line& line : lines_) {
    if (line.words[0] == word && line.words.size() > place &&
        line.words[place] == value) {
      return line.words;
    }
  }
  return {};
}

}  // namespace snmpsubagent::check
