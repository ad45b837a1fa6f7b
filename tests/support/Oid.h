// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_OID_H_
#define SNMPSUBAGENT_TESTS_OID_H_

#include <vector>

// An OID of the tests, all of which stand under this one.
using Oid = std::vector<unsigned long>;

inline Oid TestOid(const Oid& tail) {
  Oid oid = {1, 3, 6, 1, 4, 1, 32473};
  oid.insert(oid.end(), tail.begin(), tail.end());
  return oid;
}

// An OID of `length` sub-identifiers.
inline Oid LongOid(unsigned int length) {
  Oid oid = TestOid({});
  oid.resize(length, 1);
  return oid;
}

inline unsigned int Length(const Oid& oid) {
  return static_cast<unsigned int>(oid.size());
}

#endif  // SNMPSUBAGENT_TESTS_OID_H_
