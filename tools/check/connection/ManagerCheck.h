// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_MANAGERCHECK_H_
#define SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_MANAGERCHECK_H_

#include <cstdint>
#include <optional>
#include <string>

#include "check/Oid.h"
#include "check/connection/CheckConnection.h"
#include "check/connection/SnmpdConfig.h"

namespace snmpsubagent::check {

// Below an OID, a sub-identifier that no service has: what the check registers
// for itself.
inline constexpr std::uint32_t kProbeSubtree = 2147483647;

// What a manager gets from the agent, and why it does not.
class ManagerCheck {
 public:
  ManagerCheck(const Peer& peer, const SnmpdConfig& config)
      : peer_(peer), config_(config) {}

  // Whether the agent answers: nothing if it does.
  std::optional<Diagnosis> Reach() const;

  // Asks with GET; what comes of it, the one who serves the object knows.
  void AsksFor(const Oid& name) const;
  // Whether GETNEXT finds anything below.
  bool HasObjectsBelow(const Oid& root) const;
  // Who has registered the subtree, or else a part of it, as the agent's
  // nsModuleTable names it; "" if it does not tell.
  std::string OwnerOf(const Oid& root) const;

  // That the community does not see what is there.
  Diagnosis ViewHides(const std::string& oid) const;

 private:
  Diagnosis Unanswered() const;

  const Peer& peer_;
  const SnmpdConfig& config_;
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_CONNECTION_MANAGERCHECK_H_
