// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_INDEXDECODER_H_
#define SNMPSUBAGENT_TOOLS_CHECK_INDEXDECODER_H_

#include <string>
#include <vector>

#include "check/MibModule.h"

namespace snmpsubagent::check {

// An instance identifier by the INDEX clause of its table (RFC 2578, 7.7).
struct DecodedIndex {
  // One for each index that could be decoded.
  std::vector<Value> values;
  // What is wrong with the identifier; empty if nothing is.
  std::string error;
};

// Requires that the table's indexes are known.
DecodedIndex DecodeIndex(const MibTable& table, const Oid& identifier);

// The other way round: what stands behind a column's OID. Requires a value of
// its type for each index.
Oid EncodeIndex(const MibTable& table, const std::vector<Value>& values);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_INDEXDECODER_H_
