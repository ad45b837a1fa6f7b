// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_VALUE_H_
#define SNMPSUBAGENT_TOOLS_CHECK_VALUE_H_

#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <cstdint>
#include <string>

#include "check/Oid.h"

namespace snmpsubagent::check {

// The value of a varbind as Net-SNMP's manager side has it. It can be sent
// again as it came, whatever its type.
class Value {
 public:
  Value() = default;  // the unSpecified value of a request
  explicit Value(const netsnmp_variable_list& variable);

  // ASN_INTEGER, or one of the unsigned types up to 32 bits.
  static Value OfNumber(u_char type, std::int64_t number);
  // ASN_OCTET_STR, ASN_IPADDRESS or ASN_OPAQUE.
  static Value OfOctets(u_char type, std::string octets);
  static Value OfOid(const Oid& oid);

  u_char Type() const { return type_; }
  const std::string& Bytes() const { return bytes_; }

  // noSuchObject, noSuchInstance or endOfMibView.
  bool IsException() const;
  // Of a number of up to 32 bits.
  std::int64_t Number() const;
  Oid ObjectId() const;

  friend bool operator==(const Value& a, const Value& b) {
    return a.type_ == b.type_ && a.bytes_ == b.bytes_;
  }
  friend bool operator!=(const Value& a, const Value& b) { return !(a == b); }

 private:
  Value(u_char type, std::string bytes)
      : type_(type), bytes_(std::move(bytes)) {}

  u_char type_ = ASN_NULL;
  std::string bytes_;  // in the agent library's own form
};

struct Varbind {
  Oid name;
  Value value;
};

// "INTEGER 5", "OCTET STRING \"abc\"", "OCTET STRING 00 ff", shortened.
std::string ToText(const Value& value);

// "INTEGER", "Counter32", "noSuchInstance"; "type 0x99" of an unknown one.
std::string TypeName(u_char type);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_VALUE_H_
