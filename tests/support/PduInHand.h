// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_PDUINHAND_H_
#define SNMPSUBAGENT_TESTS_PDUINHAND_H_

#include "NetSNMP.h"
#include "adapter/InUse.h"
#include "support/Oid.h"

// A PDU that names what is registered at `oid`, while a handler works on it.
class PduInHand {
 public:
  explicit PduInHand(const Oid& oid) : call_(Naming(oid)) {}
  PduInHand(const PduInHand&) = delete;
  PduInHand& operator=(const PduInHand&) = delete;

 private:
  const netsnmp_agent_request_info& Naming(const Oid& oid) {
    named_.subtree = netsnmp_subtree_find(oid.data(), oid.size(), nullptr, "");
    session_.treecache = &named_;
    requestInfo_.asp = &session_;
    return requestInfo_;
  }

  netsnmp_tree_cache named_{};
  netsnmp_agent_session session_{};
  netsnmp_agent_request_info requestInfo_{};
  const in_use::Call call_;
};

#endif  // SNMPSUBAGENT_TESTS_PDUINHAND_H_
