// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_NOTIFICATION_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_NOTIFICATION_H_

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/Module.h"
#include "snmpsubagent/Oid.h"
#include "snmpsubagent/Scalar.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/ValueWriter.h"

namespace snmpsubagent {

// What came of a notification.
struct NotificationResult {
  enum Outcome {
    Sent,        // the master agent has taken it
    Refused,     // it answered with an error
    Dropped,     // never sent: too many were waiting, or the agent was stopped
    Unanswered,  // sent, and the session was lost before the response
  };
  Outcome outcome;
  std::string reason;  // of a refusal: the error's name
};
using NotificationFunction = std::function<void(const NotificationResult&)>;

// One varbind of a notification: a scalar or a cell of a table with its present
// value, or any OID with a value.
class NotificationObject {
 public:
  // Writes the value; false if there is none now. Runs under the agent's lock.
  using WriteFunction = std::function<bool(ValueWriter&)>;

  template <typename T>
  NotificationObject(const Scalar<T>& scalar)  // NOLINT: meant to be implicit
      : NotificationObject(scalar.State(), Oid(scalar.State()->InstanceName()),
                           [state = scalar.State()](ValueWriter& writer) {
                             return state->WriteValue(writer);
                           }) {}
  // `instance` is the whole OID.
  template <typename T>
  NotificationObject(Oid instance, T value)
      : NotificationObject(nullptr, std::move(instance),
                           [v = std::move(value)](ValueWriter& writer) {
                             if constexpr (detail::HasSyntax<T>) {
                               Syntax<T>::Write(writer, v);
                             }
                             return true;
                           }) {
    static_assert(detail::HasSyntax<T>,
                  "this type is none of SMIv2: see <snmpsubagent/Types.h>, or "
                  "specialise snmpsubagent::Syntax for it");
  }
  NotificationObject(Oid instance, const char* text)
      : NotificationObject(std::move(instance), std::string(text)) {}
  // What `object`, if it is not null, no longer has once it is withdrawn.
  NotificationObject(std::shared_ptr<detail::ManagedObject> object,
                     Oid instance, WriteFunction write)
      : object_(std::move(object)),
        instance_(std::move(instance)),
        write_(std::move(write)) {}

  const Oid& Instance() const { return instance_; }
  bool Write(ValueWriter& writer) const {
    return (!object_ || object_->IsServed()) && write_(writer);
  }

 private:
  std::shared_ptr<detail::ManagedObject> object_;
  Oid instance_;
  WriteFunction write_;
};

// A NOTIFICATION-TYPE (RFC 2578, section 8). Sent to the master agent, which
// sends it on to its trap receivers, as a trap or an inform.
//
//   snmp::Notification overheated(module, "0.1");
//   overheated.Send({temperature, limit});
//
// Each is sent once. While there is no session they are kept in order, up to
// AgentOptions::notificationLimit; then the oldest are dropped.
//
// Threads: any. Send() never waits for the master agent.
class SNMPSUBAGENT_OBJECTS_EXPORT Notification {
 public:
  // `oid` is that of snmpTrapOID.0, relative to the module's subtree, or whole
  // with a dot in front, anywhere: linkDown is ".1.3.6.1.6.3.1.1.5.3". Throws
  // std::invalid_argument if it is none.
  Notification(Module& module, std::string_view oid);

  // A value that has no instance now, or whose function throws, is left out,
  // with a log line. `outcome` is called once, also if the agent never runs, at
  // the latest when that is destroyed; perhaps before Send() returns. It may
  // send again what was dropped: that waits, beyond the limit, at least until
  // the next Send() or attempt to connect.
  void Send(const std::vector<NotificationObject>& objects,
            NotificationFunction outcome = {});
  void Send(std::initializer_list<NotificationObject> objects,
            NotificationFunction outcome = {}) {
    Send(std::vector<NotificationObject>(objects), std::move(outcome));
  }
  void Send() { Send(std::vector<NotificationObject>()); }

 private:
  std::shared_ptr<detail::ModuleState> module_;
  Oid oid_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_NOTIFICATION_H_
