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

// One varbind of a notification: a scalar with its present value, or any OID
// with a value.
class NotificationObject {
 public:
  template <typename T>
  NotificationObject(const Scalar<T>& scalar)  // NOLINT: meant to be implicit
      : object_(scalar.State()) {}
  // `instance` is the whole OID.
  template <typename T>
  NotificationObject(Oid instance, T value)
      : instance_(std::move(instance)),
        write_([v = std::move(value)](ValueWriter& writer) {
          Syntax<T>::Write(writer, v);
        }) {
    static_assert(detail::HasSyntax<T>, "this type is none of SMIv2");
  }
  NotificationObject(Oid instance, const char* text)
      : NotificationObject(std::move(instance), std::string(text)) {}

  const std::shared_ptr<detail::ScalarState>& Object() const { return object_; }
  const Oid& Instance() const { return instance_; }
  void Write(ValueWriter& writer) const { write_(writer); }

 private:
  std::shared_ptr<detail::ScalarState> object_;  // null if it is a value
  Oid instance_;
  std::function<void(ValueWriter&)> write_;
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
  // with a dot in front. Throws std::invalid_argument if it is none.
  Notification(Module& module, std::string_view oid);

  // A value that has no instance now, or whose function throws, is left out,
  // with a log line. `outcome` is called once, also if the agent never runs, at
  // the latest when that is destroyed; perhaps before Send() returns.
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
