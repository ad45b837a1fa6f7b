// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_LATER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_LATER_H_

#include <functional>
#include <memory>
#include <utility>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/Syntax.h"

namespace snmpsubagent {

namespace detail {

// The request that waits for one answer. Answers after the first, and after the
// request has been given up, are ignored.
class SNMPSUBAGENT_OBJECTS_EXPORT LaterCall {
 public:
  virtual ~LaterCall();
  // Each takes the agent's lock.
  virtual void Value(const std::function<void(ValueWriter&)>& write) = 0;
  virtual void Absent() = 0;
  // `error` is None for a step of a SET that is done. Whether it counts.
  virtual bool Set(SetError error) = 0;
};

// Fails the request when nobody can answer it any more.
class SNMPSUBAGENT_OBJECTS_EXPORT LaterAnswer {
 public:
  explicit LaterAnswer(std::shared_ptr<LaterCall> call);
  ~LaterAnswer();
  LaterAnswer(const LaterAnswer&) = delete;
  LaterAnswer& operator=(const LaterAnswer&) = delete;

  LaterCall& Call() const { return *call_; }

 private:
  std::shared_ptr<LaterCall> call_;
};

}  // namespace detail

// A request that an application function has taken with it, to answer it when
// it can. Other requests are served meanwhile.
//
//   snmp::Scalar pressure(module, "4", [&](snmp::Later<int> reply) {
//     sensor.Read([reply](int hectopascal) { reply.Answer(hectopascal); });
//   });
//
// One that nobody answers, since all copies are gone or the time that the
// master agent waits is nearly over, is answered with genErr.
//
// Threads: any, also within the function itself. An answer takes the agent's
// lock, so hold no mutex meanwhile for which an application function waits.
template <typename T>
class Later {
 public:
  explicit Later(std::shared_ptr<detail::LaterCall> call)
      : answer_(std::make_shared<detail::LaterAnswer>(std::move(call))) {}

  // The first answer counts.
  void Answer(const T& value) const {
    answer_->Call().Value(
        [&value](ValueWriter& writer) { Syntax<T>::Write(writer, value); });
  }
  // There is no such instance now: noSuchInstance, and a GETNEXT goes on.
  void NoInstance() const { answer_->Call().Absent(); }
  // genErr.
  void Fail() const { answer_->Call().Set(SetError::GenErr); }

 private:
  std::shared_ptr<detail::LaterAnswer> answer_;
};

// The same for an `Apply` function, which accepts with SetError::None. One that
// nobody answers in time is answered with commitFailed, or with undoFailed if
// it undoes, and not called the other way round.
template <>
class Later<SetError> {
 public:
  explicit Later(std::shared_ptr<detail::LaterCall> call)
      : answer_(std::make_shared<detail::LaterAnswer>(std::move(call))) {}

  // Whether it counts: not if nobody waits for it any more. What the
  // application has begun is its own to take back then.
  bool Answer(SetError error) const { return answer_->Call().Set(error); }

 private:
  std::shared_ptr<detail::LaterAnswer> answer_;
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_LATER_H_
