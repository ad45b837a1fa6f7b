// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Notification.h"

#include <cstdint>
#include <utility>

#include "agentx/VarbindWriter.h"
#include "objects/AgentState.h"
#include "objects/ModuleState.h"
#include "objects/ReadRequest.h"

namespace snmpsubagent {
namespace {

constexpr SubIdentifier kSnmpTrapOid[] = {1, 3, 6, 1, 6, 3, 1, 1, 4, 1, 0};

// Writes one varbind, or nothing.
void Append(agentx::VarbindWriter& varbinds, detail::AgentState& agent,
            const NotificationObject& object) {
  const std::size_t place = varbinds.Place();
  ValueWriter writer(varbinds, agent);
  const OidView name = object.Instance();
  try {
    varbinds.Name(name);
    if (object.Write(writer)) return;
    agent.Log(LogLevel::Warning,
              ToString(name) +
                  ": left out of a notification, since it has no "
                  "instance now");
  } catch (...) {
    agent.ReportException(name);
  }
  varbinds.Rewind(place);
}

// A whole OID may be anywhere: it is registered with nobody.
Oid NameOf(const detail::ModuleState& module, std::string_view oid) {
  const bool isWhole = oid.size() > 1 && oid.front() == '.';
  return isWhole ? Oid(oid) : module.Resolve(oid);
}

}  // namespace

Notification::Notification(Module& module, std::string_view oid)
    : module_(detail::Existing(module.State())), oid_(NameOf(*module_, oid)) {}

void Notification::Send(const std::vector<NotificationObject>& objects,
                        NotificationFunction outcome) {
  detail::AgentState& agent = *module_->Agent();
  const AgentLock lock(module_->Agent());
  std::vector<std::uint8_t> payload;
  agentx::VarbindWriter varbinds(payload);
  varbinds.Name(OidView(kSnmpTrapOid, std::size(kSnmpTrapOid)));
  varbinds.ObjectIdentifier(oid_);
  for (const NotificationObject& object : objects) {
    Append(varbinds, agent, object);
  }
  agent.Notify(std::move(payload), module_->Context(), std::move(outcome));
}

}  // namespace snmpsubagent
