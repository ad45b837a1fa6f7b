// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testkit/agentx/Text.h"

#include <array>
#include <cctype>
#include <map>

namespace testkit::agentx {
namespace {

std::string NameOf(Type type) {
  static const std::map<Type, std::string> kNames{
      {Type::kInteger, "INTEGER"},
      {Type::kOctetString, "OCTET STRING"},
      {Type::kNull, "NULL"},
      {Type::kObjectId, "OBJECT IDENTIFIER"},
      {Type::kIpAddress, "IpAddress"},
      {Type::kCounter32, "Counter32"},
      {Type::kGauge32, "Gauge32"},
      {Type::kTimeTicks, "TimeTicks"},
      {Type::kOpaque, "Opaque"},
      {Type::kCounter64, "Counter64"},
      {Type::kNoSuchObject, "noSuchObject"},
      {Type::kNoSuchInstance, "noSuchInstance"},
      {Type::kEndOfMibView, "endOfMibView"}};
  return kNames.at(type);
}

constexpr std::array<const char*, std::variant_size_v<Body>> kBodyNames{
    "Open",
    "Close",
    "Register",
    "Unregister",
    "Get",
    "GetNext",
    "GetBulk",
    "TestSet",
    "CommitSet",
    "UndoSet",
    "CleanupSet",
    "Notify",
    "Ping",
    "IndexAllocate",
    "IndexDeallocate",
    "AddAgentCaps",
    "RemoveAgentCaps",
    "Response"};

std::string Quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    result += std::isprint(byte) != 0 ? std::string(1, c)
                                      : "\\" + std::to_string(byte);
  }
  return result + "\"";
}

struct ContentText {
  std::string operator()(std::monostate) const { return ""; }
  std::string operator()(const std::string& text) const {
    return " " + Quoted(text);
  }
  std::string operator()(const Oid& oid) const { return " " + Text(oid); }
  template <typename Number>
  std::string operator()(Number number) const {
    return " " + std::to_string(number);
  }
};

std::string Ranges(const std::vector<SearchRange>& ranges) {
  std::string result;
  for (const SearchRange& range : ranges) {
    result += " [" + Text(range.start) + (range.include ? " included" : "") +
              " .. " + Text(range.end) + "]";
  }
  return result;
}

std::string Varbinds(const std::vector<Varbind>& varbinds) {
  std::string result;
  for (const Varbind& varbind : varbinds) {
    result += " [" + Text(varbind.name) + " = " + Text(varbind.value) + "]";
  }
  return result;
}

std::string Detail(const Get& get) { return Ranges(get.ranges); }
std::string Detail(const GetNext& getNext) { return Ranges(getNext.ranges); }
std::string Detail(const GetBulk& bulk) {
  return " " + std::to_string(bulk.nonRepeaters) + " " +
         std::to_string(bulk.maxRepetitions) + Ranges(bulk.ranges);
}
std::string Detail(const TestSet& set) { return Varbinds(set.varbinds); }
std::string Detail(const Notify& notify) { return Varbinds(notify.varbinds); }
std::string Detail(const Response& response) {
  return " error " + std::to_string(response.error) + " at " +
         std::to_string(response.index) + Varbinds(response.varbinds);
}
template <typename Other>
std::string Detail(const Other&) {
  return "";
}

}  // namespace

std::string Text(const Oid& oid) {
  std::string result;
  for (const std::uint32_t subid : oid) {
    result += (result.empty() ? "" : ".") + std::to_string(subid);
  }
  return result;
}

std::string Text(const Value& value) {
  return NameOf(value.type) + std::visit(ContentText{}, value.content);
}

const char* NameOf(const Body& body) { return kBodyNames.at(body.index()); }

std::string Text(const Body& body) {
  return NameOf(body) +
         std::visit([](const auto& message) { return Detail(message); }, body);
}

}  // namespace testkit::agentx
