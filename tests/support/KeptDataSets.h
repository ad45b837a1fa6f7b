// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_KEPTDATASETS_H_
#define SNMPSUBAGENT_TESTS_KEPTDATASETS_H_

// The datasets that stay with the agent library when their nodes are destroyed.
// At its end, which comes after theirs, it withdraws and frees them.
class KeptDataSets {
 public:
  KeptDataSets() = default;
  ~KeptDataSets();
  KeptDataSets(const KeptDataSets&) = delete;
  KeptDataSets& operator=(const KeptDataSets&) = delete;
};

#endif  // SNMPSUBAGENT_TESTS_KEPTDATASETS_H_
