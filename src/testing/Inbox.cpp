// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Inbox.h"

#include <utility>

#include "snmpsubagent/testing/Manager.h"

namespace snmpsubagent::testing::internal {
namespace {

const Oid& SysUpTime() {
  static const Oid oid("1.3.6.1.2.1.1.3.0");
  return oid;
}

const Oid& SnmpTrapOid() {
  static const Oid oid("1.3.6.1.6.3.1.1.4.1.0");
  return oid;
}

Notification NotificationOf(const std::vector<Varbind>& varbinds) {
  Notification notification;
  for (const Varbind& varbind : varbinds) {
    if (varbind.name == SnmpTrapOid()) {
      notification.name = varbind.value.As<Oid>();
    } else if (varbind.name != SysUpTime()) {
      notification.varbinds.push_back(varbind);
    }
  }
  return notification;
}

}  // namespace

void Inbox::Put(const std::vector<Varbind>& varbinds) {
  const auto lock = monitor_.Lock();
  arrived_.push_back(NotificationOf(varbinds));
  monitor_.Changed();
}

Notification Inbox::Next() {
  auto lock = monitor_.Lock();
  if (!monitor_.WaitUntil(lock, [this] { return !arrived_.empty(); })) {
    throw TimedOut("no notification has arrived");
  }
  Notification oldest = std::move(arrived_.front());
  arrived_.pop_front();
  return oldest;
}

std::vector<Notification> Inbox::TakeAll() {
  const auto lock = monitor_.Lock();
  std::vector<Notification> all(arrived_.begin(), arrived_.end());
  arrived_.clear();
  return all;
}

}  // namespace snmpsubagent::testing::internal
