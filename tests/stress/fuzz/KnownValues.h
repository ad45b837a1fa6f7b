// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNVALUES_H_
#define SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNVALUES_H_

#include <cstdint>

#include "Input.h"
#include "testkit/agentx/Pdu.h"

// What the reference knows of values: which a manager may write, and what
// becomes of them. They are those on the wire; nothing of the library is used.
namespace known {

namespace wire = testkit::agentx;

// The error of a response (RFC 2741, 6.2.16).
enum Error : std::uint16_t {
  kNone = 0,
  kGenErr = 5,
  kWrongType = 7,
  kWrongLength = 8,
  kWrongEncoding = 9,
  kWrongValue = 10,
  kNoCreation = 11,
  kInconsistentValue = 12,
  kResourceUnavailable = 13,
  kCommitFailed = 14,
  kUndoFailed = 15,
  kNotWritable = 17,
  kInconsistentName = 18
};

// Types with their constraints, as the objects of the fuzz targets have them.
enum class Kind {
  Percent,  // Integer32 (-10..90)
  Tiny,     // Integer32 of a std::int8_t
  Port,     // Unsigned32 of a std::uint16_t
  Gauge,    // Unsigned32 (0 | 5..4000000000)
  Mode,     // INTEGER { 1, 3, 7 }
  Truth,
  Lock,   // TestAndIncr
  Label,  // OCTET STRING (SIZE (1..8 | 12))
  Octets,
  Mac,
  Moment,  // DateAndTime
  Flags,   // BITS { 0, 1, 9 }
  Id,      // OBJECT IDENTIFIER
  Ip,
  Inet,
  Blob,  // Opaque (SIZE (0..5))
  Float,
  Double,
  Ticks,
  Storage,  // StorageType that managers may write: 1..3
  Status,   // RowStatus
  Count     // how many there are
};

wire::Type TypeOf(Kind kind);

// What a manager gets who writes `sent` to an object of that kind, whatever its
// value is.
Error Check(Kind kind, const wire::Value& sent);

// The value that it makes of `present`. Fails for a Lock that has another one.
// Requires: Check() has found nothing.
Error MakeNew(Kind kind, const wire::Value& sent, wire::Value& present);

bool AreSame(Kind kind, const wire::Value& a, const wire::Value& b);

// Mostly of that kind, and mostly one that a manager may write.
wire::Value SomeValue(Input& input, Kind kind);

}  // namespace known

#endif  // SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNVALUES_H_
