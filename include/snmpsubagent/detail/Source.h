// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_SOURCE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_SOURCE_H_

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "snmpsubagent/Later.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/ValueSources.h"
#include "snmpsubagent/detail/Clock.h"
#include "snmpsubagent/detail/ManagedObject.h"
#include "snmpsubagent/detail/Requests.h"

// Where the value of a scalar comes from, one class for each way.
namespace snmpsubagent::detail {

template <typename T>
class SharedSource;

template <typename T>
class Source {
 public:
  Source() = default;
  virtual ~Source() = default;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  // The value now; none if there is no instance.
  virtual std::optional<T> Load() = 0;
  virtual SetError Store(const T&) { return SetError::NotWritable; }
  // Whether it tells a value as it was stored. What a setter makes of one is
  // its own affair.
  virtual bool KeepsWhatIsStored() const { return true; }

  // False if there is no instance.
  virtual bool Write(ValueWriter& writer) {
    const std::optional<T> value = Load();
    if (value) Syntax<T>::Write(writer, *value);
    return value.has_value();
  }
  virtual Answer Read(ReadContext& context) {
    return Write(WriterOf(context)) ? Answer::Written : Answer::Absent;
  }

 private:
  friend class SharedSource<T>;

  unsigned int owners_ = 0;
};

// One of the owners of a source: its scalar, and each call that runs in it. A
// std::shared_ptr would take a block more for each scalar.
//
// Threads: copied under the agent's lock only, so that the count needs no
// atomic.
template <typename T>
class SharedSource {
 public:
  explicit SharedSource(std::unique_ptr<Source<T>> source)
      : source_(source.release()) {
    ++source_->owners_;
  }
  SharedSource(const SharedSource& other) : source_(other.source_) {
    ++source_->owners_;
  }
  SharedSource& operator=(SharedSource other) {
    std::swap(source_, other.source_);
    return *this;
  }
  ~SharedSource() {
    if (--source_->owners_ == 0) delete source_;
  }

  Source<T>* operator->() const { return source_; }

 private:
  Source<T>* source_;
};

template <typename T>
class HeldSource final : public Source<T> {
 public:
  explicit HeldSource(T value) : value_(std::move(value)) {}
  std::optional<T> Load() override { return value_; }
  SetError Store(const T& value) override {
    value_ = value;
    return SetError::None;
  }
  bool Write(ValueWriter& writer) override {
    Syntax<T>::Write(writer, value_);
    return true;
  }

 private:
  T value_;
};

template <typename T>
class VariableSource final : public Source<T> {
 public:
  explicit VariableSource(T& variable) : variable_(variable) {}
  std::optional<T> Load() override { return variable_; }
  SetError Store(const T& value) override {
    variable_ = value;
    return SetError::None;
  }
  bool Write(ValueWriter& writer) override {
    Syntax<T>::Write(writer, variable_);
    return true;
  }

 private:
  T& variable_;
};

template <typename T>
class AtomicSource final : public Source<T> {
 public:
  explicit AtomicSource(std::atomic<T>& variable) : variable_(variable) {}
  std::optional<T> Load() override { return variable_.load(); }
  SetError Store(const T& value) override {
    variable_.store(value);
    return SetError::None;
  }

 private:
  std::atomic<T>& variable_;
};

// A variable of another type, of which T is only what managers see.
template <typename T, typename Variable>
class CountedSource final : public Source<T> {
 public:
  explicit CountedSource(Variable& variable) : variable_(variable) {}
  std::optional<T> Load() override {
    T value;
    if constexpr (std::is_class_v<T>) value.value = variable_;
    return value;
  }

 private:
  Variable& variable_;
};

template <typename T, typename Function>
class FunctionSource final : public Source<T> {
 public:
  explicit FunctionSource(Function function) : function_(std::move(function)) {}
  std::optional<T> Load() override { return function_(); }

 private:
  Function function_;
};

template <typename T, typename Getter, typename Setter>
class GetSetSource final : public Source<T> {
 public:
  explicit GetSetSource(GetSet<Getter, Setter> functions)
      : functions_(std::move(functions)) {}
  std::optional<T> Load() override { return functions_.get(); }
  SetError Store(const T& value) override {
    constexpr bool takesValue = std::is_invocable_v<Setter&, const T&>;
    static_assert(takesValue, "the setter takes the value");
    if constexpr (takesValue) {
      return AsSetError([&] { return functions_.set(value); });
    } else {
      return SetError::NotWritable;
    }
  }
  bool KeepsWhatIsStored() const override { return false; }

 private:
  GetSet<Getter, Setter> functions_;
};

template <typename T, typename Function>
class CachedSource final : public Source<T> {
 public:
  explicit CachedSource(Cached<Function> cached) : cached_(std::move(cached)) {}
  std::optional<T> Load() override {
    const auto now = Now();
    if (!asked_ || now - *asked_ >= cached_.timeToLive) {
      value_ = cached_.function();
      asked_ = now;
    }
    return value_;
  }

 private:
  Cached<Function> cached_;
  std::optional<std::chrono::steady_clock::time_point> asked_;
  std::optional<T> value_;
};

template <typename T, typename Function>
class LaterSource final : public Source<T> {
 public:
  explicit LaterSource(Function function) : function_(std::move(function)) {}
  std::optional<T> Load() override {
    throw std::logic_error("a value that is answered later is not here to get");
  }
  Answer Read(ReadContext& context) override {
    function_(Later<T>(Defer(context)));
    return Deferred(context);
  }

 private:
  Function function_;
};

// What `V` stands for, by its kind.
template <typename V>
struct IsAtomic : std::false_type {};
template <typename T>
struct IsAtomic<std::atomic<T>> : std::true_type {
  using Value = T;
};
template <typename V>
struct IsGetSet : std::false_type {};
template <typename G, typename S>
struct IsGetSet<GetSet<G, S>> : std::true_type {
  using Getter = G;
  using Setter = S;
};
template <typename V>
struct IsCached : std::false_type {};
template <typename F>
struct IsCached<Cached<F>> : std::true_type {
  using Function = F;
};
template <typename V>
struct IsCounted : std::false_type {};
template <typename T, typename V>
struct IsCounted<Counted<T, V>> : std::true_type {
  using Value = T;
  using Variable = V;
};

// What a function that returns nothing tells.
struct NoValue {};

template <typename T>
struct WithoutOptional {
  using Type = T;
};
template <>
struct WithoutOptional<void> {
  using Type = NoValue;
};
template <typename T>
struct WithoutOptional<std::optional<T>> {
  using Type = T;
};
template <typename F, typename = void>
struct ResultOfCall {
  using Type = NoValue;
};
template <typename F>
struct ResultOfCall<F, std::enable_if_t<std::is_invocable_v<F&>>>
    : WithoutOptional<std::decay_t<std::invoke_result_t<F&>>> {};
template <typename F>
using ResultOf = typename ResultOfCall<F>::Type;

// The T of a function whose only parameter is a Later<T>; none of others.
template <typename Argument>
struct LaterValue {};
template <typename T>
struct LaterValue<Later<T>> {
  using Type = T;
};
template <typename F, typename = void>
struct LaterArgumentOf {};
template <typename F>
struct LaterArgumentOf<F, std::void_t<decltype(&F::operator())>>
    : LaterArgumentOf<decltype(&F::operator())> {};
template <typename R, typename A>
struct LaterArgumentOf<R (*)(A)> : LaterValue<std::decay_t<A>> {};
template <typename R, typename A>
struct LaterArgumentOf<R (*)(A) noexcept> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename A>
struct LaterArgumentOf<R (C::*)(A)> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename A>
struct LaterArgumentOf<R (C::*)(A) const> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename A>
struct LaterArgumentOf<R (C::*)(A) noexcept> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename A>
struct LaterArgumentOf<R (C::*)(A) const noexcept>
    : LaterValue<std::decay_t<A>> {};

template <typename F, typename = void>
struct TakesLater : std::false_type {};
template <typename F>
struct TakesLater<F, std::void_t<typename LaterArgumentOf<F>::Type>>
    : std::true_type {
  using Type = typename LaterArgumentOf<F>::Type;
};

// The type of the object that is made from a V.
template <typename V>
constexpr auto ValueTypeOf() {
  using D = std::decay_t<V>;
  struct None {};
  if constexpr (IsAtomic<D>::value) {
    return std::common_type<typename IsAtomic<D>::Value>();
  } else if constexpr (IsGetSet<D>::value) {
    return std::common_type<ResultOf<typename IsGetSet<D>::Getter>>();
  } else if constexpr (IsCached<D>::value) {
    return std::common_type<ResultOf<typename IsCached<D>::Function>>();
  } else if constexpr (IsCounted<D>::value) {
    return std::common_type<typename IsCounted<D>::Value>();
  } else if constexpr (TakesLater<D>::value) {
    return std::common_type<typename TakesLater<D>::Type>();
  } else if constexpr (std::is_invocable_v<D&>) {
    return std::common_type<ResultOf<D>>();
  } else if constexpr (std::is_convertible_v<D, const char*>) {
    return std::common_type<std::string>();
  } else {
    return std::common_type<D>();
  }
}
template <typename V>
using ValueOf = typename decltype(ValueTypeOf<V>())::type;

// Whether what a manager writes has somewhere to go.
template <typename V>
constexpr bool CanStore() {
  using D = std::decay_t<V>;
  return !IsCached<D>::value && !IsCounted<D>::value && !TakesLater<D>::value &&
         !std::is_invocable_v<D&>;
}

template <typename T, typename V>
std::unique_ptr<Source<T>> MakeSource(V&& value) {
  using D = std::decay_t<V>;
  if constexpr (IsAtomic<D>::value) {
    constexpr bool isConst = std::is_const_v<std::remove_reference_t<V>>;
    static_assert(!isConst,
                  "the std::atomic is const: give a function that reads it");
    if constexpr (isConst) {
      return nullptr;
    } else {
      return std::make_unique<AtomicSource<T>>(value);
    }
  } else if constexpr (IsGetSet<D>::value) {
    using Kind = IsGetSet<D>;
    return std::make_unique<
        GetSetSource<T, typename Kind::Getter, typename Kind::Setter>>(
        std::forward<V>(value));
  } else if constexpr (IsCached<D>::value) {
    return std::make_unique<CachedSource<T, typename IsCached<D>::Function>>(
        std::forward<V>(value));
  } else if constexpr (IsCounted<D>::value) {
    return std::make_unique<CountedSource<T, typename IsCounted<D>::Variable>>(
        value.variable);
  } else if constexpr (std::is_invocable_v<D&, Later<T>>) {
    return std::make_unique<LaterSource<T, D>>(std::forward<V>(value));
  } else if constexpr (std::is_invocable_v<D&>) {
    return std::make_unique<FunctionSource<T, D>>(std::forward<V>(value));
  } else if constexpr (std::is_same_v<V, T&>) {
    return std::make_unique<VariableSource<T>>(value);
  } else {
    constexpr bool isVariable = std::is_lvalue_reference_v<V> &&
                                !std::is_const_v<std::remove_reference_t<V>> &&
                                !std::is_pointer_v<std::remove_reference_t<V>>;
    static_assert(!isVariable,
                  "the variable is of another type than the object: make it "
                  "one of that type, or see snmpsubagent::As");
    if constexpr (isVariable) {
      return nullptr;
    } else {
      return std::make_unique<HeldSource<T>>(T(std::forward<V>(value)));
    }
  }
}

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_SOURCE_H_
