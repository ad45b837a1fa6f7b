// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_SCALAR_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_SCALAR_H_

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "snmpsubagent/Access.h"
#include "snmpsubagent/Agent.h"
#include "snmpsubagent/Module.h"
#include "snmpsubagent/ValueSources.h"
#include "snmpsubagent/detail/ScalarState.h"

namespace snmpsubagent {

// An object with one instance, whose name ends in 0.
//
//   snmp::Scalar temperature(module, "1", celsius);
//   snmp::Scalar limit(module, "2", 60, snmp::ReadWrite().Range(0, 90));
//   snmp::Scalar uptime(module, "3", [] { return snmp::TimeTicks(Uptime()); });
//
// Where the value comes from:
//
//   the third argument is       the value is
//   a variable (an lvalue that  that variable, read and written under the
//   is not const)               agent's lock; it outlives the object
//   a std::atomic               that variable
//   a function                  asked for each request; one that returns a
//                               std::optional may say that there is no instance
//                               now
//   a function of a Later<T>    answered when it can be
//   Cached(function, time)      asked when the last result is that old
//   GetSet(getter, setter)      read and written by two functions
//   As<Counter64>(variable)     an integer variable, shown as a counter
//   anything else: 60           a copy that the object holds; see Get(), Set()
//
// The type of the value is that of the object, see Types.h; an
// application-defined class needs a Syntax.
//
// A SET is tested, stored and, if anything refuses, undone:
//
//   in          is called   may refuse with
//   TestSet     Check       any SetError; nothing has been changed yet
//   CommitSet   Apply       anything but None or true: commitFailed, and all
//                           of the SET is undone, with Apply(new, old) for each
//                           object that had applied, the last one first
//   CleanupSet  Changed     nothing: it is final
//
// What a function throws is logged and refuses as GenErr.
//
// Threads: any. The destructor waits for an application function that runs on
// another thread. After it, managers no longer see the object, and the library
// touches neither its variable nor its functions.
template <typename T>
class Scalar {
  static_assert(!std::is_same_v<T, detail::NoValue>,
                "the function is to return the value, or to take a Later");
  static_assert(detail::HasSyntax<T> || std::is_same_v<T, detail::NoValue>,
                "this type is none of SMIv2: see <snmpsubagent/Types.h>, or "
                "specialise snmpsubagent::Syntax for it");
  static_assert(!detail::HasSyntax<T> || detail::IsComparableOf<T>::value,
                "values of this type need an operator==");

 public:
  // `oid` is relative to the module's subtree, without the 0: "1", "2.3". One
  // with a dot in front is a whole OID. Throws std::invalid_argument if it is
  // no OID, if the module has another object there, or if constraints do not
  // fit the type.
  template <typename V, typename A = ReadOnly>
  Scalar(Module& module, std::string_view oid, V&& value, const A& access = {})
      : state_(MakeState<A>(module, oid, std::forward<V>(value), access)) {
    state_->Serve();
  }
  ~Scalar() { Withdraw(); }
  Scalar(Scalar&&) noexcept = default;
  Scalar& operator=(Scalar&& other) noexcept {
    if (this != &other) {
      Withdraw();
      state_ = std::move(other.state_);
    }
    return *this;
  }

  // The value as a manager would see it. Throws std::logic_error if there is no
  // instance now or it is answered later.
  T Get() const {
    const AgentLock lock = Lock();
    std::optional<T> value = state_->Load();
    if (!value) {
      throw std::logic_error(ToString(state_->Name()) +
                             ": the scalar has no instance now");
    }
    return *std::move(value);
  }

  // Stores the application's own value: it is neither checked nor applied.
  // Throws std::logic_error if a function tells the value.
  void Set(const T& value) {
    const AgentLock lock = Lock();
    if (state_->Store(value) != SetError::None) {
      throw std::logic_error(ToString(state_->Name()) +
                             ": a function tells the value");
    }
  }

  // Has the value come from there from now on; see the table above. Throws
  // std::logic_error if managers write it and what is given takes no value.
  //
  //   objects.upsBatteryVoltage.From([] { return ReadVoltage(); });
  template <typename V>
  Scalar& From(V&& value) {
    auto source = detail::MakeSource<T>(std::forward<V>(value));
    if (!detail::CanStore<V>() && state_->IsWritable()) {
      throw std::logic_error("managers write the scalar: give it a setter");
    }
    const AgentLock lock = Lock();
    state_->SetSource(std::move(source));
    return *this;
  }

  // A function of (after) or of (before, after) that returns a SetError, or a
  // bool, of which false is InconsistentValue.
  template <typename F>
  Scalar& Check(F function) {
    static_assert(kTakesValues<F>,
                  "a Check function takes (after) or (before, after)");
    static_assert(!ReturnsNothing<F>(),
                  "a Check function returns a bool or a SetError");
    Edit([&](auto& functions) {
      functions.check = [f = std::move(function)](const T& before,
                                                  const T& after) mutable {
        return Call(f, before, after, SetError::InconsistentValue);
      };
    });
    return *this;
  }

  // A function of (after) or of (before, after) that returns nothing, a bool or
  // a SetError; or of (before, after, Later<SetError>), which answers when it
  // can.
  template <typename F>
  Scalar& Apply(F function) {
    constexpr bool answersLater =
        std::is_invocable_v<F&, const T&, const T&, Later<SetError>>;
    static_assert(kTakesValues<F> || answersLater,
                  "an Apply function takes (after), (before, after) or "
                  "(before, after, Later<SetError>)");
    Edit([&](auto& functions) {
      if constexpr (answersLater) {
        functions.apply = {};
        functions.applyLater = std::move(function);
      } else {
        functions.applyLater = {};
        functions.apply = [f = std::move(function)](const T& before,
                                                    const T& after) mutable {
          return Call(f, before, after, SetError::CommitFailed);
        };
      }
    });
    return *this;
  }

  // A function of the new value.
  template <typename F>
  Scalar& Changed(F function) {
    constexpr bool takesValue = std::is_invocable_v<F&, const T&>;
    static_assert(takesValue, "a Changed function takes the new value");
    if constexpr (takesValue) {
      Edit([&](auto& functions) { functions.changed = std::move(function); });
    }
    return *this;
  }

  // For SetChange and Notification.
  bool IsNamedBy(const detail::Transaction& transaction) const {
    return detail::FindChange(transaction, *state_) != nullptr;
  }
  T After(const detail::Transaction& transaction) const {
    const auto* change = static_cast<detail::ScalarChange<T>*>(
        detail::FindChange(transaction, *state_));
    return change ? change->After() : Get();
  }
  const std::shared_ptr<detail::TypedScalar<T>>& State() const {
    return state_;
  }

 private:
  template <typename F>
  static constexpr bool kTakesValues =
      std::is_invocable_v<F&, const T&> ||
      std::is_invocable_v<F&, const T&, const T&>;

  template <typename F>
  static constexpr bool ReturnsNothing() {
    if constexpr (std::is_invocable_v<F&, const T&, const T&>) {
      return std::is_void_v<std::invoke_result_t<F&, const T&, const T&>>;
    } else if constexpr (kTakesValues<F>) {
      return std::is_void_v<std::invoke_result_t<F&, const T&>>;
    } else {
      return false;
    }
  }

  template <typename A, typename V>
  static std::shared_ptr<detail::TypedScalar<T>> MakeState(Module& module,
                                                           std::string_view oid,
                                                           V&& value,
                                                           const A& access) {
    constexpr bool writable = !std::is_same_v<A, ReadOnly>;
    static_assert(std::is_same_v<A, ReadOnly> || std::is_same_v<A, ReadWrite>,
                  "a scalar is ReadOnly or ReadWrite");
    static_assert(!writable || detail::CanStore<V>(),
                  "managers can't write what a function or As() tells: give "
                  "it a setter with snmpsubagent::GetSet");
    static_assert(!writable || detail::CanRead<T>,
                  "SMIv2 has no writable Counter32, Counter64 or TimeStamp");
    auto state = std::make_shared<detail::TypedScalar<T>>(
        module.State(), oid, writable, access.Rules(),
        detail::MakeSource<T>(std::forward<V>(value)));
    if constexpr (writable) {
      detail::RequireWritable<T>(access.Rules().get(), state->Name());
    }
    return state;
  }

  template <typename F>
  static SetError Call(F& function, const T& before, const T& after,
                       SetError refused) {
    return detail::AsSetError(
        [&] {
          if constexpr (std::is_invocable_v<F&, const T&, const T&>) {
            return function(before, after);
          } else if constexpr (kTakesValues<F>) {
            return function(after);
          }
        },
        refused);
  }

  template <typename F>
  void Edit(F edit) {
    const AgentLock lock = Lock();
    state_->EditFunctions(edit);
  }

  AgentLock Lock() const { return AgentLock(state_->Agent()); }
  void Withdraw() {
    if (state_) state_->Withdraw();
  }

  std::shared_ptr<detail::TypedScalar<T>> state_;
};

template <typename V, typename... A>
Scalar(Module&, std::string_view, V&&, const A&...)
    -> Scalar<detail::ValueOf<V>>;

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_SCALAR_H_
