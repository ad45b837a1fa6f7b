// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_SETERROR_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_SETERROR_H_

#include <cstdint>

namespace snmpsubagent {

// What a manager is told when a SET is refused (RFC 3416, section 4.2.5). Names
// and numbers are those of SNMP.
enum class SetError : std::uint8_t {
  None = 0,
  GenErr = 5,
  NoAccess = 6,
  WrongType = 7,
  WrongLength = 8,
  WrongEncoding = 9,
  WrongValue = 10,           // a value that the object can never have
  NoCreation = 11,           // an instance that there can never be
  InconsistentValue = 12,    // a value that it cannot have now
  ResourceUnavailable = 13,  // no memory, no room, in use by another SET
  CommitFailed = 14,
  UndoFailed = 15,
  NotWritable = 17,
  InconsistentName = 18  // an instance that there cannot be now
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_SETERROR_H_
