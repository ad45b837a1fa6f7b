// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "support/LocalAgent.h"

namespace {

bool SetUp() {
  netsnmp_ds_set_boolean(NETSNMP_DS_APPLICATION_ID, NETSNMP_DS_AGENT_ROLE, 1);
  init_agent("nodes_test");
  return true;
}

// The OID of the next registration of the tests; empty if there is none.
Oid NextRegistered() {
  const Oid root = TestOid({});
  for (const netsnmp_subtree* subtree = netsnmp_subtree_find_first("");
       subtree != nullptr; subtree = subtree->next) {
    const netsnmp_handler_registration* const found = subtree->reginfo;
    if (found != nullptr &&
        snmp_oidsubtree_compare(root.data(), root.size(), found->rootoid,
                                found->rootoid_len) == 0) {
      return {found->rootoid, found->rootoid + found->rootoid_len};
    }
  }
  return {};
}

}  // namespace

LocalAgent::LocalAgent() {
  static const bool setUp = SetUp();
  static_cast<void>(setUp);
}

LocalAgent::~LocalAgent() {
  for (Oid oid = NextRegistered(); !oid.empty(); oid = NextRegistered()) {
    unregister_mib(oid.data(), oid.size());
  }
}

netsnmp_handler_registration* LocalAgent::RegistrationAt(const Oid& oid) {
  netsnmp_subtree* const subtree =
      netsnmp_subtree_find(oid.data(), oid.size(), nullptr, "");
  netsnmp_handler_registration* const found =
      subtree == nullptr ? nullptr : subtree->reginfo;
  const bool exact =
      found != nullptr && snmp_oid_compare(found->rootoid, found->rootoid_len,
                                           oid.data(), oid.size()) == 0;
  return exact ? found : nullptr;
}
