// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_VALUES_TRUTHVALUE_H_
#define SNMPSUBAGENT_VALUES_TRUTHVALUE_H_

// A bool on the wire: TruthValue (RFC 2579), INTEGER 1 for true, 2 for false.
namespace truth_value {

constexpr int kTrue = 1;
constexpr int kFalse = 2;

// In bytes.
constexpr unsigned int kSize = sizeof(int);

// The number as kSize bytes in native order, in constant memory of the size of
// a long, because the agent library reads integers as long.
const unsigned char* Bytes(bool value);

}  // namespace truth_value

#endif  // SNMPSUBAGENT_VALUES_TRUTHVALUE_H_
