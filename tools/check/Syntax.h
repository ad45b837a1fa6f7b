// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_SYNTAX_H_
#define SNMPSUBAGENT_TOOLS_CHECK_SYNTAX_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "check/Report.h"
#include "check/Value.h"

namespace snmpsubagent::check {

struct Range {
  std::int64_t low;
  std::int64_t high;
};

struct NamedNumber {
  int number;
  std::string name;
};

enum class Base {
  Integer,
  Unsigned,
  Counter32,
  Counter64,
  TimeTicks,
  OctetString,
  Bits,
  ObjectIdentifier,
  IpAddress,
  Opaque,
  Unknown  // The parser does not know the textual convention.
};

struct Mismatch {
  Fault fault;
  std::string text;
};

// The SYNTAX of an object: what values it may have.
struct Syntax {
  Base base = Base::Unknown;
  std::string convention;  // "RowStatus"; empty if the SYNTAX names none
  // A NetworkAddress of SMIv1, which has its kind in front of it where it is an
  // index (RFC 1212, 4.1.6).
  bool hasKind = false;
  // Of the number, or of the length of octets. Empty for all.
  std::vector<Range> ranges;
  // Of an enumeration, or of BITS, upwards. Empty for all.
  std::vector<NamedNumber> names;

  bool IsNumber() const;
  bool IsOctets() const;
  // The one length that octets have, if so (RFC 2578, 7.7).
  std::optional<std::size_t> FixedLength() const;
  // Ranges with those of the type where SYNTAX has none.
  std::vector<Range> Allowed() const;
  u_char AsnType() const;

  // What is wrong with a value, if anything is.
  std::optional<Mismatch> Check(const Value& value) const;
  // The same for a number of whatever type, for octets and for a length.
  std::optional<Mismatch> CheckNumber(std::int64_t number) const;
  std::optional<Mismatch> CheckOctets(const std::string& octets) const;
};

// Of a node of Net-SNMP's MIB parser.
Syntax SyntaxOf(const struct tree& node);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_SYNTAX_H_
