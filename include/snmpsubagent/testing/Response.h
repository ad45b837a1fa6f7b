// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TESTING_RESPONSE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TESTING_RESPONSE_H_

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "snmpsubagent/Oid.h"
#include "snmpsubagent/testing/Value.h"

namespace snmpsubagent::testing {

// The error-status of a response. Names and numbers are those of RFC 3416.
enum class ErrorStatus : std::int32_t {
  NoError = 0,
  TooBig = 1,
  NoSuchName = 2,
  BadValue = 3,
  ReadOnly = 4,
  GenErr = 5,
  NoAccess = 6,
  WrongType = 7,
  WrongLength = 8,
  WrongEncoding = 9,
  WrongValue = 10,
  NoCreation = 11,
  InconsistentValue = 12,
  ResourceUnavailable = 13,
  CommitFailed = 14,
  UndoFailed = 15,
  AuthorizationError = 16,
  NotWritable = 17,
  InconsistentName = 18
};

// The name of an instance and its value.
struct Varbind {
  Oid name;
  Value value;
};
inline bool operator==(const Varbind& a, const Varbind& b) {
  return a.name == b.name && a.value == b.value;
}
inline bool operator!=(const Varbind& a, const Varbind& b) { return !(a == b); }

// What a manager gets for a request.
struct Response {
  ErrorStatus error = ErrorStatus::NoError;
  // The varbind that has failed, counted from 1; 0 for none.
  std::size_t index = 0;
  std::vector<Varbind> varbinds;

  bool Succeeded() const { return error == ErrorStatus::NoError; }
};

// A notification that has arrived.
struct Notification {
  // The value of snmpTrapOID.0.
  Oid name;
  // Its objects, without sysUpTime.0 and snmpTrapOID.0.
  std::vector<Varbind> varbinds;
};

// "wrongValue"; "1.3.6.1.4.1.32473.2.1.0 = INTEGER 21"; "wrongValue at 1"; the
// varbinds, one a line; "1.3.6.1.4.1.32473.2.0.1" and the varbinds.
std::string ToString(ErrorStatus error);
std::string ToString(const Varbind& varbind);
std::string ToString(const Response& response);
std::string ToString(const Notification& notification);
std::ostream& operator<<(std::ostream& stream, ErrorStatus error);
std::ostream& operator<<(std::ostream& stream, const Varbind& varbind);
std::ostream& operator<<(std::ostream& stream, const Response& response);
std::ostream& operator<<(std::ostream& stream,
                         const Notification& notification);

}  // namespace snmpsubagent::testing

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TESTING_RESPONSE_H_
