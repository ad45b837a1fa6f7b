// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_SERVEDPDU_H_
#define SNMPSUBAGENT_TESTS_SERVEDPDU_H_

#include "NetSNMP.h"
#include "adapter/InUse.h"
#include "support/Oid.h"

// A PDU that addresses what is registered at `oid`, while a handler works on
// it.
class ServedPdu {
 public:
  explicit ServedPdu(const Oid& oid) : call_(Addressing(oid)) {}
  ServedPdu(const ServedPdu&) = delete;
  ServedPdu& operator=(const ServedPdu&) = delete;

 private:
  const netsnmp_agent_request_info& Addressing(const Oid& oid) {
    addressed_.subtree =
        netsnmp_subtree_find(oid.data(), oid.size(), nullptr, "");
    session_.treecache = &addressed_;
    requestInfo_.asp = &session_;
    return requestInfo_;
  }

  netsnmp_tree_cache addressed_{};
  netsnmp_agent_session session_{};
  netsnmp_agent_request_info requestInfo_{};
  const in_use::Call call_;
};

#endif  // SNMPSUBAGENT_TESTS_SERVEDPDU_H_
