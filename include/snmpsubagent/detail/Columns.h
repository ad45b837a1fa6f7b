// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_COLUMNS_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_COLUMNS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "snmpsubagent/IndexOrder.h"
#include "snmpsubagent/Later.h"
#include "snmpsubagent/Syntax.h"
#include "snmpsubagent/Types.h"
#include "snmpsubagent/ValueView.h"
#include "snmpsubagent/ValueWriter.h"
#include "snmpsubagent/detail/NewValue.h"
#include "snmpsubagent/detail/Requests.h"
#include "snmpsubagent/detail/Source.h"
#include "snmpsubagent/detail/TableState.h"

// Where the cells of a column come from, one class for each way.
namespace snmpsubagent::detail {

template <typename T>
class TypedColumn : public Column {
 public:
  static_assert(HasSyntax<T>,
                "the column's type is none of SMIv2: see "
                "<snmpsubagent/Types.h>, or specialise snmpsubagent::Syntax");
  TypedColumn() { type = Syntax<T>::kType; }
  SetError Decode(const ValueView& value) const override {
    return DecodeAs<T>(value);
  }
  SetError Write(void*, OidView, const ValueView&) const override {
    return SetError::NotWritable;
  }

 protected:
  static bool WriteTo(ValueWriter& writer, const T& value) {
    Syntax<T>::Write(writer, value);
    return true;
  }
  static bool WriteTo(ValueWriter& writer, const std::optional<T>& value) {
    if (value) Syntax<T>::Write(writer, *value);
    return value.has_value();
  }
};

// A member of the row, M being its type: a T, or a std::optional<T> if a row
// may have no such cell.
template <typename Row, typename M>
class MemberColumn final
    : public TypedColumn<typename WithoutOptional<M>::Type> {
 public:
  using T = typename WithoutOptional<M>::Type;
  explicit MemberColumn(M Row::*member) : member_(member) {}

  bool Read(const RowView& row, ValueWriter& writer) const override {
    return this->WriteTo(writer, static_cast<const Row*>(row.row)->*member_);
  }
  SetError Write(void* row, OidView, const ValueView& value) const override {
    M& cell = static_cast<Row*>(row)->*member_;
    if constexpr (std::is_same_v<M, T>) {
      return MakeNewValue(value, cell);
    } else {
      if (!cell && !this->canCreate) return SetError::NoCreation;
      T made = cell.value_or(T{});
      const SetError error = MakeNewValue(value, made);
      if (error == SetError::None) cell = std::move(made);
      return error;
    }
  }
  bool TakeBack(void* row, const void* before,
                const void* after) const override {
    M& cell = static_cast<Row*>(row)->*member_;
    if (!AreEqual(cell, static_cast<const Row*>(after)->*member_, true)) {
      return false;
    }
    cell = static_cast<const Row*>(before)->*member_;
    return true;
  }

 private:
  M Row::*member_;
};

// A function of key and row.
template <typename Key, typename Row, typename Function>
class FunctionColumn final
    : public TypedColumn<typename WithoutOptional<std::decay_t<
          std::invoke_result_t<Function&, const Key&, const Row&>>>::Type> {
 public:
  explicit FunctionColumn(Function function) : function_(std::move(function)) {}
  bool Read(const RowView& row, ValueWriter& writer) const override {
    return this->WriteTo(writer, function_(*static_cast<const Key*>(row.key),
                                           *static_cast<const Row*>(row.row)));
  }

 private:
  mutable Function function_;
};

// The T of a function of (key, row, Later<T>).
template <typename F, typename = void>
struct LaterCellOf {};
template <typename F>
struct LaterCellOf<F, std::void_t<decltype(&F::operator())>>
    : LaterCellOf<decltype(&F::operator())> {};
template <typename R, typename K, typename W, typename A>
struct LaterCellOf<R (*)(K, W, A)> : LaterValue<std::decay_t<A>> {};
template <typename R, typename K, typename W, typename A>
struct LaterCellOf<R (*)(K, W, A) noexcept> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename K, typename W, typename A>
struct LaterCellOf<R (C::*)(K, W, A)> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename K, typename W, typename A>
struct LaterCellOf<R (C::*)(K, W, A) const> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename K, typename W, typename A>
struct LaterCellOf<R (C::*)(K, W, A) noexcept> : LaterValue<std::decay_t<A>> {};
template <typename R, typename C, typename K, typename W, typename A>
struct LaterCellOf<R (C::*)(K, W, A) const noexcept>
    : LaterValue<std::decay_t<A>> {};

template <typename F, typename = void>
struct TakesLaterCell : std::false_type {};
template <typename F>
struct TakesLaterCell<F, std::void_t<typename LaterCellOf<F>::Type>>
    : std::true_type {};

// A function that answers when it can.
template <typename Key, typename Row, typename Function>
class LaterColumn final
    : public TypedColumn<typename LaterCellOf<Function>::Type> {
 public:
  using T = typename LaterCellOf<Function>::Type;
  explicit LaterColumn(Function function) : function_(std::move(function)) {}
  bool Read(const RowView&, ValueWriter&) const override {
    throw std::logic_error("a cell that is answered later is not here to get");
  }
  Answer ReadFor(ReadContext& context, const RowView& row) const override {
    function_(*static_cast<const Key*>(row.key),
              *static_cast<const Row*>(row.row), Later<T>(Defer(context)));
    return Deferred(context);
  }

 private:
  mutable Function function_;
};

// The same in each row.
template <typename T>
class ConstantColumn final : public TypedColumn<T> {
 public:
  explicit ConstantColumn(T value) : value_(std::move(value)) {}
  bool Read(const RowView&, ValueWriter& writer) const override {
    return this->WriteTo(writer, value_);
  }

 private:
  T value_;
};

template <std::size_t N, typename Key>
const Key& PartOf(const Key& key) {
  static_assert(N == 0, "the key has one part");
  return key;
}
template <std::size_t N, typename... Parts>
const auto& PartOf(const std::tuple<Parts...>& key) {
  return std::get<N>(key);
}
template <std::size_t N, typename A, typename B>
const auto& PartOf(const std::pair<A, B>& key) {
  return std::get<N>(key);
}
template <typename T>
const T& Bare(const T& part) {
  return part;
}
template <typename T>
const T& Bare(const Implied<T>& part) {
  return part.value;
}
template <std::size_t N, typename Key>
using PartType =
    std::decay_t<decltype(Bare(PartOf<N>(std::declval<const Key&>())))>;

// What constraints are about, of a part of a key.
template <typename T>
std::enable_if_t<IsNumberIndex<T>, std::int64_t> NumberOfPart(T part) {
  return NumberOfValue(part);
}
template <typename T>
std::enable_if_t<!IsNumberIndex<T>, std::int64_t> NumberOfPart(const T&) {
  return 0;
}
inline std::int64_t NumberOfPart(bool part) { return NumberOfValue(part); }
inline std::int64_t NumberOfPart(TimeTicks part) { return part.value; }
inline std::int64_t NumberOfPart(Counter32 part) { return part.value; }

template <typename T>
std::string_view OctetsOfPart(const T&) {
  return {};
}
inline std::string_view OctetsOfPart(const std::string& part) { return part; }
inline std::string_view OctetsOfPart(const InetAddress& part) {
  return part.octets;
}
template <typename Enum>
std::string_view OctetsOfPart(const Bits<Enum>& part) {
  return part.Octets();
}
inline std::string_view OctetsOfPart(const Bytes& part) {
  return AsText(part.data(), part.size());
}
template <std::size_t N>
std::string_view OctetsOfPart(const std::array<std::uint8_t, N>& part) {
  return AsText(part.data(), part.size());
}

template <typename T>
ValueView ViewOfPart(const T& part) {
  ValueView view;
  view.type = Syntax<T>::kType;
  view.number = static_cast<std::uint64_t>(NumberOfPart(part));
  view.octets = OctetsOfPart(part);
  return view;
}

// An index that is readable as a column. What managers write is the value that
// it has: rows keep their names.
template <std::size_t N, typename Key>
class IndexColumn final : public TypedColumn<PartType<N, Key>> {
 public:
  SetError Write(void*, OidView index, const ValueView& value) const override {
    using T = PartType<N, Key>;
    const std::optional<Key> key = ReadKey<Key>(index);
    T written = key ? Bare(PartOf<N>(*key)) : T{};
    const SetError error = MakeNewValue(value, written);
    if (error != SetError::None) return error;
    return key && Bare(PartOf<N>(*key)) == written
               ? SetError::None
               : SetError::InconsistentValue;
  }
  bool Read(const RowView& row, ValueWriter& writer) const override {
    return this->WriteTo(writer,
                         Bare(PartOf<N>(*static_cast<const Key*>(row.key))));
  }
};

// Of an InetAddress in the index, its type.
template <std::size_t N, typename Key>
class AddressTypeColumn final : public TypedColumn<InetAddressType> {
 public:
  bool Read(const RowView& row, ValueWriter& writer) const override {
    return WriteTo(writer, PartOf<N>(*static_cast<const Key*>(row.key)).type);
  }
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_COLUMNS_H_
