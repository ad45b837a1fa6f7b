// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/Message.h"

#include <cstddef>
#include <iterator>

namespace snmpsubagent::agentx {
namespace {

// By their numbers, the first of which is 0 (RFC 3416, section 3).
constexpr const char* kSnmpErrors[] = {"noError",
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

// The first is 256 (RFC 2741, 6.2.16).
constexpr const char* kAgentXErrors[] = {
    "openFailed",          "notOpen",
    "indexWrongType",      "indexAlreadyAllocated",
    "indexNoneAvailable",  "indexNotAllocated",
    "unsupportedContext",  "duplicateRegistration",
    "unknownRegistration", "unknownAgentCaps",
    "parseError",          "requestDenied",
    "processingError"};

// The first is 1 (RFC 2741, 6.2.2).
constexpr const char* kCloseReasons[] = {
    "reasonOther",    "reasonParseError", "reasonProtocolError",
    "reasonTimeouts", "reasonShutdown",   "reasonByManager"};

template <std::size_t Size>
std::string NameOr(const char* const (&names)[Size], unsigned int place,
                   const char* kind, unsigned int number) {
  // A number below the first one has wrapped around.
  if (place < Size) return names[place];
  return kind + std::to_string(number);
}

}  // namespace

std::string ToString(Error error) {
  const auto number = static_cast<unsigned int>(error);
  if (number < std::size(kSnmpErrors)) return kSnmpErrors[number];
  return NameOr(kAgentXErrors, number - 256U, "error ", number);
}

std::string ToString(CloseReason reason) {
  const auto number = static_cast<unsigned int>(reason);
  return NameOr(kCloseReasons, number - 1U, "reason ", number);
}

}  // namespace snmpsubagent::agentx
