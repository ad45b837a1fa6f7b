// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_SCALARSTATE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_SCALARSTATE_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

#include "snmpsubagent/Access.h"
#include "snmpsubagent/Export.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/detail/ManagedObject.h"
#include "snmpsubagent/detail/NewValue.h"
#include "snmpsubagent/detail/Requests.h"
#include "snmpsubagent/detail/Source.h"

namespace snmpsubagent::detail {

// What all scalars have in common: one instance, whose name ends in 0.
class SNMPSUBAGENT_OBJECTS_EXPORT ScalarState : public ManagedObject {
 public:
  // Throws std::invalid_argument for constraints that the type cannot have.
  ScalarState(std::shared_ptr<ModuleState> module, std::string_view oid,
              ValueType type, bool writable,
              std::shared_ptr<const Constraints> constraints);

  Answer Read(OidView instance, ReadContext& context) override;
  Answer ReadNext(OidView instance, bool include,
                  ReadContext& context) override;
  bool HasObjectAt(OidView) const override { return true; }
  SetError Stage(OidView instance, const ValueView& value,
                 Transaction& transaction) override;

  bool IsWritable() const { return writable_; }
  // Writes the value, as the last part of an instance.
  virtual Answer ReadValue(ReadContext& context) = 0;
  // The same at once; false if there is no instance.
  virtual bool WriteValue(ValueWriter& writer) = 0;

 protected:
  // Stages a value of the right type that keeps the constraints.
  virtual SetError StageValue(const ValueView& value,
                              Transaction& transaction) = 0;
  // Whether the value can be decoded; without a word to the application.
  virtual SetError Decode(const ValueView& value) const = 0;

 private:
  Answer ReadInstance(ReadContext& context);

  // Before the pointer, where they take no more memory.
  const ValueType type_;
  const bool writable_;
  const std::shared_ptr<const Constraints> constraints_;
};

// The application's functions of a scalar. Replaced as a whole, since one of
// them may be running.
template <typename T>
struct ScalarFunctions {
  std::function<SetError(const T& before, const T& after)> check;
  // Done, Refused or Deferred; see TypedScalar::Apply().
  std::function<SetError(const T& before, const T& after)> apply;
  std::function<void(const T& before, const T& after, Later<SetError>)>
      applyLater;
  std::function<void(const T& value)> changed;
};

template <typename T>
class TypedScalar final : public ScalarState {
 public:
  TypedScalar(std::shared_ptr<ModuleState> module, std::string_view oid,
              bool writable, std::shared_ptr<const Constraints> constraints,
              std::unique_ptr<Source<T>> source)
      : ScalarState(std::move(module), oid, Syntax<T>::kType, writable,
                    std::move(constraints)),
        source_(std::move(source)) {}

  // A function of the source before may be running; it lasts until it returns.
  void SetSource(std::unique_ptr<Source<T>> source) {
    source_ = SharedSource<T>(std::move(source));
  }
  std::optional<T> Load() const { return Held()->Load(); }
  SetError Store(const T& value) { return Held()->Store(value); }
  bool KeepsWhatIsStored() const { return source_->KeepsWhatIsStored(); }
  Answer ReadValue(ReadContext& context) override {
    return Held()->Read(context);
  }
  bool WriteValue(ValueWriter& writer) override {
    return Held()->Write(writer);
  }

  // Changes the application's functions; those of a SET that is running stay.
  template <typename Edit>
  void EditFunctions(Edit edit) {
    auto changed = functions_ ? std::make_shared<Functions>(*functions_)
                              : std::make_shared<Functions>();
    edit(*changed);
    functions_ = std::move(changed);
  }

  SetError CallCheck(const T& before, const T& after) {
    const auto functions = functions_;
    if (!functions || !functions->check) return SetError::None;
    return functions->check(before, after);
  }
  Step CallApply(const T& before, const T& after, Transaction& transaction);
  void CallChanged(const T& value) {
    const auto functions = functions_;
    if (functions && functions->changed) functions->changed(value);
  }

 protected:
  SetError StageValue(const ValueView& value,
                      Transaction& transaction) override;
  SetError Decode(const ValueView& value) const override {
    return DecodeAs<T>(value);
  }

 private:
  using Functions = ScalarFunctions<T>;

  SetError StageChange(T before, T after, Transaction& transaction);

  SharedSource<T> Held() const { return source_; }

  SharedSource<T> source_;
  std::shared_ptr<const Functions> functions_;
};

// The new value of a scalar, from TestSet to the end of the SET.
template <typename T>
class ScalarChange final : public Change {
 public:
  ScalarChange(std::shared_ptr<TypedScalar<T>> scalar, T before, T after)
      : Change(scalar),
        scalar_(*scalar),
        before_(std::move(before)),
        after_(std::move(after)) {}

  const T& After() const { return after_; }

  SetError Check(std::uint16_t&) override {
    return scalar_.CallCheck(before_, after_);
  }
  Step Commit(Transaction& transaction) override;
  Step Resumed(SetError error) override;
  Step Undo(Transaction& transaction) override;
  void Finish() override {
    if (scalar_.IsServed()) scalar_.CallChanged(after_);
  }

 private:
  // Whether the SET may go on although the application has changed the value
  // since it was tested.
  bool StillAllowed();
  // Whether there is something to undo: what the application has stored since
  // is its own. A setter is told to undo, and the getter not asked.
  bool HoldsNew() const;
  Step StoreAndApply(const T& from, const T& to, Transaction& transaction);

  TypedScalar<T>& scalar_;
  T before_;
  T after_;
  bool undoing_ = false;
};

template <typename T>
SetError TypedScalar<T>::StageValue(const ValueView& value,
                                    Transaction& transaction) {
  const std::optional<T> before = Load();
  if (!before) return SetError::InconsistentName;
  T after = *before;
  const SetError error = MakeNewValue(value, after);
  return error == SetError::None
             ? StageChange(*before, std::move(after), transaction)
             : error;
}

// Of an object that the request names twice, both values have to be the same.
template <typename T>
SetError TypedScalar<T>::StageChange(T before, T after,
                                     Transaction& transaction) {
  if (const auto* staged =
          static_cast<ScalarChange<T>*>(FindChange(transaction, *this))) {
    return AreEqual(staged->After(), after) ? SetError::None
                                            : SetError::InconsistentValue;
  }
  AddChange(transaction,
            std::make_unique<ScalarChange<T>>(
                std::static_pointer_cast<TypedScalar>(shared_from_this()),
                std::move(before), std::move(after)));
  return SetError::None;
}

template <typename T>
Step TypedScalar<T>::CallApply(const T& before, const T& after,
                               Transaction& transaction) {
  const auto functions = functions_;
  if (!functions || !IsServed()) return Step::Done;
  SetError error = SetError::None;
  if (functions->applyLater) {
    functions->applyLater(before, after, Later<SetError>(Defer(transaction)));
    if (!Answered(transaction, error)) return Step::Deferred;
  } else if (functions->apply) {
    error = functions->apply(before, after);
  }
  return error == SetError::None ? Step::Done : Step::Refused;
}

template <typename T>
bool ScalarChange<T>::StillAllowed() {
  const std::optional<T> now = scalar_.Load();
  if (!now) return false;
  if (AreEqual(*now, before_)) return true;
  if constexpr (std::is_same_v<T, TestAndIncr>) return false;
  before_ = *now;
  return scalar_.CallCheck(before_, after_) == SetError::None;
}

template <typename T>
bool ScalarChange<T>::HoldsNew() const {
  if (!scalar_.IsServed()) return false;
  if (!scalar_.KeepsWhatIsStored()) return true;
  const std::optional<T> now = scalar_.Load();
  return now && AreEqual(*now, after_);
}

template <typename T>
Step ScalarChange<T>::StoreAndApply(const T& from, const T& to,
                                    Transaction& transaction) {
  try {
    if (scalar_.Store(to) != SetError::None) return Step::Refused;
    return scalar_.CallApply(from, to, transaction);
  } catch (...) {
    ReportException(scalar_);
    return Step::Refused;
  }
}

template <typename T>
Step ScalarChange<T>::Commit(Transaction& transaction) {
  if (!scalar_.IsServed() || !StillAllowed() || !scalar_.IsServed()) {
    return Step::Refused;
  }
  const Step step = StoreAndApply(before_, after_, transaction);
  if (step == Step::Refused && scalar_.IsServed()) scalar_.Store(before_);
  return step;
}

template <typename T>
Step ScalarChange<T>::Resumed(SetError error) {
  if (error == SetError::None) return Step::Done;
  if (!undoing_ && HoldsNew()) scalar_.Store(before_);
  return Step::Refused;
}

template <typename T>
Step ScalarChange<T>::Undo(Transaction& transaction) {
  undoing_ = true;
  return HoldsNew() ? StoreAndApply(after_, before_, transaction) : Step::Done;
}

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_SCALARSTATE_H_
