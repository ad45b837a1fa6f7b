// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/testing/Response.h"

#include <array>

namespace snmpsubagent::testing {
namespace {

constexpr std::array<const char*, 19> kErrors{"noError",
                                              "tooBig",
                                              "noSuchName",
                                              "badValue",
                                              "readOnly",
                                              "genErr",
                                              "noAccess",
                                              "wrongType",
                                              "wrongLength",
                                              "wrongEncoding",
                                              "wrongValue",
                                              "noCreation",
                                              "inconsistentValue",
                                              "resourceUnavailable",
                                              "commitFailed",
                                              "undoFailed",
                                              "authorizationError",
                                              "notWritable",
                                              "inconsistentName"};

std::string Lines(const std::vector<Varbind>& varbinds) {
  std::string text;
  for (const Varbind& varbind : varbinds) text += "\n" + ToString(varbind);
  return text;
}

}  // namespace

std::string ToString(ErrorStatus error) {
  const auto number = static_cast<std::size_t>(error);
  return number < kErrors.size() ? kErrors[number]
                                 : "error " + std::to_string(number);
}

std::string ToString(const Varbind& varbind) {
  return snmpsubagent::ToString(varbind.name) + " = " + ToString(varbind.value);
}

std::string ToString(const Response& response) {
  return ToString(response.error) +
         (response.index == 0 ? "" : " at " + std::to_string(response.index)) +
         Lines(response.varbinds);
}

std::string ToString(const Notification& notification) {
  return snmpsubagent::ToString(notification.name) +
         Lines(notification.varbinds);
}

std::ostream& operator<<(std::ostream& stream, ErrorStatus error) {
  return stream << ToString(error);
}

std::ostream& operator<<(std::ostream& stream, const Varbind& varbind) {
  return stream << ToString(varbind);
}

std::ostream& operator<<(std::ostream& stream, const Response& response) {
  return stream << ToString(response);
}

std::ostream& operator<<(std::ostream& stream,
                         const Notification& notification) {
  return stream << ToString(notification);
}

}  // namespace snmpsubagent::testing
