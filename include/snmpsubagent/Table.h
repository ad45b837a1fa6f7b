// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_TABLE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_TABLE_H_

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

#include "snmpsubagent/Access.h"
#include "snmpsubagent/AgentLock.h"
#include "snmpsubagent/IndexOrder.h"
#include "snmpsubagent/Module.h"
#include "snmpsubagent/Notification.h"
#include "snmpsubagent/RowChange.h"
#include "snmpsubagent/ValueSources.h"
#include "snmpsubagent/detail/Columns.h"
#include "snmpsubagent/detail/MapRows.h"
#include "snmpsubagent/detail/TableState.h"

namespace snmpsubagent {

// A conceptual table (RFC 2578, 7.1.12) of rows of the application's type, each
// under a key.
//
//   struct User {
//     std::string shell = "/bin/sh";
//     std::uint32_t quota = 1000;
//     snmp::Counter64 logins;
//   };
//
//   snmp::Table<std::string, User> users(module, "5");  // INDEX { userName }
//   users.Column(2, &User::shell, snmp::ReadCreate().Size(1, 64))
//       .Column(3, &User::quota, snmp::ReadCreate().Range(0, 1'000'000))
//       .Column(4, &User::logins)
//       .Column(5, [](const std::string& name, const User&) {
//         return ProcessesOf(name);
//       })
//       .RowStatus(6);
//   users.Insert("root", {"/bin/bash", 0, {}});
//
// The key is what the INDEX clause says, see Index.h: an integer, an
// enumeration, a std::string, a std::array of octets, an Oid, an IpAddress, an
// InetAddress (which is two indexes), or a std::tuple of them; a last string or
// OID that the MIB says to be IMPLIED is an Implied<std::string> or
// Implied<Oid>.
//
// Rows are held by the table, or borrowed from a container of the
// application's, or filled in by a function when managers ask.
//
// A SET changes rows in copies of its own. They are checked when the whole PDU
// is there, put in place by CommitSet, and replaced by the rows before if
// anything refuses; see Scalar for the phases.
//
// Threads: any. Each operation takes the agent's lock, and so waits for a
// function of the application's that runs on another thread; hold Agent::Lock()
// around several that belong together. Functions given here are called under
// that lock, on the thread that runs the agent, or on one that answers a Later,
// sends a notification or stops the agent. What they throw is logged, and a
// manager gets genErr, or commitFailed from CommitSet.
template <typename Key, typename Row,
          typename Container = std::map<Key, Row, IndexOrder<Key>>>
class Table {
  static_assert(detail::HasIndexSyntax<Key>,
                "this type can't be an index: see <snmpsubagent/Index.h>");

 public:
  using Rows = Container;
  using Change_ = RowChange<Key, Row>;

  // `oid` is that of the table, relative to the module's subtree, or whole with
  // a dot in front; its entry is the 1 below. Throws std::invalid_argument as
  // Scalar does.
  Table(Module& module, std::string_view oid)
      : Table(module, oid, std::make_shared<Store>()) {}

  // A table of rows that are the application's, which changes them under
  // Agent::Lock(). The container outlives the table. It is ordered by
  // IndexOrder<Key>, or, with one integer or enumeration as its key, by
  // std::less. With a RowStatus() rows go with Erase(), which forgets their
  // status as well.
  //
  //   std::map<int, Port> ports;
  //   snmp::Table portTable(module, "7", ports);
  Table(Module& module, std::string_view oid, Container& rows)
      : Table(module, oid, std::make_shared<Store>(rows)) {}

  // A table that shares the rows of another: one that AUGMENTS it, or has some
  // of its columns only for some rows (RFC 2578, 7.8). Throws
  // std::invalid_argument unless both are of one agent.
  Table(Module& module, std::string_view oid, const Table& rows)
      : Table(module, oid, rows.rows_) {
    if (state_->Agent() != rows.state_->Agent()) {
      throw std::invalid_argument(ToString(state_->Name()) +
                                  ": the rows are those of another agent");
    }
  }

  ~Table() { Withdraw(); }
  Table(Table&&) noexcept = default;
  Table& operator=(Table&& other) noexcept {
    if (this != &other) {
      Withdraw();
      rows_ = std::move(other.rows_);
      state_ = std::move(other.state_);
    }
    return *this;
  }

  // A column that is a member of the row, or of a base of it; a std::optional
  // member that is empty is a cell that the row does not have. ReadOnly,
  // ReadWrite or ReadCreate. Each of these throws std::invalid_argument for a
  // number that is 0 or taken, or constraints that do not fit the type.
  template <typename M, typename Base, typename A = ReadOnly,
            typename = std::enable_if_t<std::is_base_of_v<Base, Row>>>
  Table& Column(SubIdentifier number, M Base::*member, const A& access = {}) {
    using T = typename detail::WithoutOptional<M>::Type;
    constexpr bool writable = !std::is_same_v<A, ReadOnly>;
    static_assert(!writable || detail::CanRead<T>,
                  "SMIv2 has no writable Counter32, Counter64 or TimeStamp");
    static_assert(!std::is_same_v<A, NotAccessible>,
                  "a column that managers do not see is not needed; for an "
                  "index see Index()");
    auto column = std::make_unique<detail::MemberColumn<Row, M>>(member);
    column->writable = writable;
    column->constraints = access.Rules();
    if constexpr (writable) {
      detail::RequireWritable<T>(access.Rules().get(),
                                 state_->CellName(number, {}));
    }
    if constexpr (std::is_same_v<A, ReadCreate>) {
      column->canCreate = true;
      column->isRequired = access.IsRequired();
    }
    return Add(number, std::move(column));
  }

  // A column that a function of (key, row) tells; one that returns a
  // std::optional may say that there is no such cell, and one of (key, row,
  // Later<T>) answers when it can. Or a column that is the same in each row.
  template <typename V>
  Table& Column(SubIdentifier number, V value) {
    if constexpr (detail::TakesLaterCell<V>::value) {
      return Add(number, std::make_unique<detail::LaterColumn<Key, Row, V>>(
                             std::move(value)));
    } else if constexpr (std::is_invocable_v<V&, const Key&, const Row&>) {
      return Add(number, std::make_unique<detail::FunctionColumn<Key, Row, V>>(
                             std::move(value)));
    } else {
      constexpr bool isValue =
          !std::is_invocable_v<V&> && detail::HasSyntax<detail::ValueOf<V>>;
      static_assert(isValue,
                    "a column's function takes a key and a row that it does "
                    "not change; for values see <snmpsubagent/Types.h>");
      if constexpr (isValue) {
        using T = detail::ValueOf<V>;
        Add(number,
            std::make_unique<detail::ConstantColumn<T>>(T(std::move(value))));
      }
      return *this;
    }
  }

  // The `Part`th index, from 0, as a column that managers read. Without it they
  // know it from the instance alone. `access` says what it is in the rows that
  // they make. With ReadWrite, as old modules want it, they may write the value
  // that it has; for another one they get inconsistentValue.
  template <std::size_t Part = 0, typename A = ReadOnly,
            typename = std::enable_if_t<!std::is_integral_v<A>>>
  Table& Index(SubIdentifier number, const A& access = {}) {
    static_assert(std::is_same_v<A, ReadOnly> || std::is_same_v<A, ReadWrite>,
                  "an index column is ReadOnly or ReadWrite");
    Restrict<Part>(access.Rules());
    auto column = std::make_unique<detail::IndexColumn<Part, Key>>();
    column->writable = std::is_same_v<A, ReadWrite>;
    column->constraints = access.Rules();
    return Add(number, std::move(column));
  }
  // The same for an InetAddress, which has a column for its type.
  template <std::size_t Part = 0>
  Table& Index(SubIdentifier typeNumber, SubIdentifier addressNumber,
               const ReadOnly& access = {}) {
    Add(typeNumber, std::make_unique<detail::AddressTypeColumn<Part, Key>>());
    return Index<Part>(addressNumber, access);
  }
  // What the `Part`th index is in the rows that managers make: any other is
  // noCreation. Keys of the application's are not checked.
  //
  //   users.Index(snmp::NotAccessible().Size(1, 16));
  template <std::size_t Part = 0>
  Table& Index(const NotAccessible& access) {
    return Restrict<Part>(access.Rules());
  }

  // The column by which managers make, activate and destroy rows (RFC 2579,
  // RowStatus). Rows of the application's are active. Throws
  // std::invalid_argument as Column() does, and if there is one already.
  Table& RowStatus(SubIdentifier number) {
    const AgentLock lock = Lock();
    state_->SetStatusColumn(number);
    return *this;
  }
  // The member that says how a row is kept (RFC 2579, StorageType), as a column
  // that managers write: they can't destroy a row that is Permanent, nor change
  // one that is ReadOnly. Throws as Column() does.
  template <typename Base>
  Table& StorageType(SubIdentifier number,
                     snmpsubagent::StorageType Base::*member) {
    using T = snmpsubagent::StorageType;
    auto column = std::make_unique<detail::MemberColumn<Row, T>>(member);
    column->writable = true;
    column->isStorage = true;
    column->constraints = ReadCreate().Range(1, 3).Rules();
    const AgentLock lock = Lock();
    state_->AddColumn(number, std::move(column));
    rows_->SetStorage([member](const void* row) {
      return static_cast<const Row*>(row)->*member;
    });
    return *this;
  }
  // Managers change other columns of a row only while it is not active; else
  // they get inconsistentValue.
  Table& FreezeActiveRows() {
    const AgentLock lock = Lock();
    rows_->FreezeActive();
    return *this;
  }
  // Managers make no more rows when there are so many: resourceUnavailable.
  // 0, as at first, is no limit. Rows of the application's count, and are not
  // limited.
  Table& Limit(std::size_t rows) {
    const AgentLock lock = Lock();
    rows_->SetLimit(rows);
    return *this;
  }

  // Functions of a RowChange, called for each row that a SET changes; as those
  // of a Scalar. A table that shares rows shares them too.
  template <typename F>
  Table& Check(F function) {
    constexpr bool takesChange = std::is_invocable_v<F&, const Change_&>;
    static_assert(takesChange, "a Check function takes a RowChange");
    if constexpr (takesChange) {
      static_assert(!std::is_void_v<std::invoke_result_t<F&, const Change_&>>,
                    "a Check function returns a bool or a SetError");
      Edit([&](auto& functions) {
        functions.check =
            [f = std::move(function)](const Change_& change) mutable {
              return detail::AsSetError([&] { return f(change); },
                                        SetError::InconsistentValue);
            };
      });
    }
    return *this;
  }
  // Returns nothing, a bool or a SetError, or takes a Later<SetError> as well.
  // Called by CommitSet, and with before and after exchanged to undo it.
  template <typename F>
  Table& Apply(F function) {
    constexpr bool answersLater =
        std::is_invocable_v<F&, const Change_&, Later<SetError>>;
    constexpr bool answers = std::is_invocable_v<F&, const Change_&>;
    static_assert(answers || answersLater,
                  "an Apply function takes a RowChange, or a RowChange and a "
                  "Later<SetError>");
    return Edit([&](auto& functions) {
      if constexpr (answersLater) {
        functions.apply = {};
        functions.applyLater = std::move(function);
      } else if constexpr (answers) {
        functions.applyLater = {};
        functions.apply =
            [f = std::move(function)](const Change_& change) mutable {
              return detail::AsSetError([&] { return f(change); });
            };
      }
    });
  }
  // Called when the SET is final.
  template <typename F>
  Table& Changed(F function) {
    constexpr bool takesChange = std::is_invocable_v<F&, const Change_&>;
    static_assert(takesChange, "a Changed function takes a RowChange");
    return Edit([&](auto& functions) {
      if constexpr (takesChange) functions.changed = std::move(function);
    });
  }

  // Adds a row; false, with nothing changed, if there is one. Throws
  // std::invalid_argument for a key that no OID can have: a number below 0, a
  // text that is too long.
  bool Insert(const Key& key, Row row) {
    const AgentLock lock = Lock();
    Require(key);
    return !Contains(key) && rows_->Put(key, std::move(row));
  }
  // Adds a row, or puts it in the place of the one that there is, which stays
  // active or notInService; one that was notReady is notInService. Throws as
  // Insert() does.
  void Set(const Key& key, Row row) {
    const AgentLock lock = Lock();
    Require(key);
    rows_->Put(key, std::move(row));
  }
  // Calls `change` with the row, which it may change in place; false if there
  // is none. What `change` throws comes out of here.
  template <typename F>
  bool Change(const Key& key, F change) {
    const AgentLock lock = Lock();
    const auto place = rows_->Rows().find(key);
    if (place == rows_->Rows().end()) return false;
    const auto rows = rows_;  // `change` may destroy the table
    rows->Changed(key);
    const detail::RowStore::Reading reading(*rows);
    change(place->second);
    return true;
  }
  // False if there is none.
  bool Erase(const Key& key) {
    const AgentLock lock = Lock();
    return rows_->Erase(key);
  }
  // Makes the rows those of `rows`, in one go: managers see the ones before or
  // the new ones. Rows that stay keep their status. Throws as Insert() does,
  // and changes nothing then.
  void Replace(Rows rows) {
    const AgentLock lock = Lock();
    for (const auto& row : rows) Require(row.first);
    rows_->Replace(std::move(rows));
  }

  // A copy of the row, if there is one.
  std::optional<Row> Find(const Key& key) const {
    const AgentLock lock = Lock();
    return rows_->RowUnder(key);
  }
  bool Contains(const Key& key) const {
    const AgentLock lock = Lock();
    return rows_->Contains(key);
  }
  // None if there is no such row.
  snmpsubagent::RowStatus Status(const Key& key) const {
    const AgentLock lock = Lock();
    return Contains(key) ? rows_->KeyStatus(key)
                         : snmpsubagent::RowStatus::None;
  }
  // Makes a row active or notInService; rows that the application puts are
  // active. False if there is none. Throws std::invalid_argument for any other
  // status.
  //
  //   users.Insert(saved.name, saved.row);
  //   users.SetStatus(saved.name, saved.status);
  bool SetStatus(const Key& key, snmpsubagent::RowStatus status) {
    using Status = snmpsubagent::RowStatus;
    if (status != Status::Active && status != Status::NotInService) {
      throw std::invalid_argument(ToString(state_->Name()) +
                                  ": a row is made active or notInService");
    }
    const AgentLock lock = Lock();
    return rows_->SetKeyStatus(key, status);
  }
  // Of the rows that the table holds or borrows.
  std::size_t Size() const {
    const AgentLock lock = Lock();
    return rows_->Size();
  }
  // Calls `visit` with each key and row, in the order of the index. It must not
  // add or erase rows.
  template <typename F>
  void ForEach(F visit) const {
    const AgentLock lock = Lock();
    const detail::RowStore::Reading reading(*rows_);
    for (const auto& [key, row] : rows_->Rows()) visit(key, row);
  }

  // Has `load` fill an empty map whenever managers ask and the rows are older
  // than `timeToLive`. It runs under the agent's lock, once at a time; one that
  // throws is answered with genErr, and asked again.
  Table& Load(std::function<void(Rows&)> load,
              std::chrono::steady_clock::duration timeToLive) {
    const AgentLock lock = Lock();
    rows_->SetLoader(std::move(load), timeToLive);
    return *this;
  }

  // Has functions tell the rows, which nobody holds then: `rowOf` the row of a
  // key, if there is one; `keyAfter` the first key behind one that there may
  // not be, or with null the first of all, in the order of IndexOrder<Key>.
  // They run under the agent's lock, also for Find(), Contains() and Status().
  // A SET changes what `Apply` changes.
  //
  //   squares.Virtual(
  //       [](unsigned n) { return SquareOf(n); },
  //       [](const unsigned* n) { return NumberAfter(n ? *n : 0); });
  Table& Virtual(std::function<std::optional<Row>(const Key&)> rowOf,
                 std::function<std::optional<Key>(const Key*)> keyAfter) {
    const AgentLock lock = Lock();
    rows_->SetVirtual(std::move(rowOf), std::move(keyAfter));
    return *this;
  }

  // A cell, for Notification::Send(), which reads it then. Throws
  // std::invalid_argument for a name of more than 128 sub-identifiers.
  NotificationObject Cell(const Key& key, SubIdentifier column) const {
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    Oid name = state_->CellName(column, index.View());
    return NotificationObject(
        state_, std::move(name),
        [state = state_, column, at = Oid(index.View())](ValueWriter& writer) {
          detail::RowView row;
          return state->Rows().Find(at, row) &&
                 state->WriteCell(column, row, at, writer);
        });
  }

  // For SetChange.
  bool IsNamedBy(const detail::Transaction& transaction, const Key& key) const {
    return FindStaged(transaction, key) != nullptr;
  }
  std::optional<Row> After(const detail::Transaction& transaction,
                           const Key& key) const {
    const auto* staged = static_cast<const detail::StagedMapRow<Rows>*>(
        FindStaged(transaction, key));
    if (staged) return staged->FinalRow();
    return rows_->RowUnder(key);
  }

 private:
  using Store = detail::MapRows<Rows>;

  Table(Module& module, std::string_view oid, std::shared_ptr<Store> rows)
      : rows_(std::move(rows)),
        state_(
            std::make_shared<detail::TableState>(module.State(), oid, rows_)) {
    static_assert(std::is_default_constructible_v<Row> &&
                      std::is_copy_constructible_v<Row> &&
                      std::is_move_assignable_v<Row>,
                  "a row is made by default, copied and assigned");
    state_->Serve();
  }

  void Require(const Key& key) const {
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    if (!detail::CanBeIndex(key) || !state_->HasRoomFor(index.View())) {
      throw std::invalid_argument(ToString(state_->Name()) +
                                  ": a key that can't be an index");
    }
  }

  template <std::size_t Part>
  Table& Restrict(std::shared_ptr<const detail::Constraints> rules) {
    using T = detail::PartType<Part, Key>;
    if (!rules) return *this;
    const AgentLock lock = Lock();
    rules->RequireFor(Syntax<T>::kType, state_->Name());
    rows_->RestrictKeys([rules = std::move(rules)](const Key& key) {
      const T& part = detail::Bare(detail::PartOf<Part>(key));
      return rules->Check(detail::ViewOfPart(part)) == SetError::None;
    });
    return *this;
  }
  Table& Add(SubIdentifier number, std::unique_ptr<detail::Column> column) {
    const AgentLock lock = Lock();
    state_->AddColumn(number, std::move(column));
    return *this;
  }
  template <typename F>
  Table& Edit(F edit) {
    const AgentLock lock = Lock();
    rows_->EditFunctions(edit);
    return *this;
  }
  const detail::StagedRow* FindStaged(const detail::Transaction& transaction,
                                      const Key& key) const {
    IndexWriter index;
    IndexSyntax<Key>::Write(index, key);
    return rows_->FindStaged(transaction, index.View());
  }
  AgentLock Lock() const { return AgentLock(state_->Agent()); }
  void Withdraw() {
    if (state_) state_->Withdraw();
  }

  std::shared_ptr<Store> rows_;
  std::shared_ptr<detail::TableState> state_;
};

template <typename Container>
Table(Module&, std::string_view, Container&)
    -> Table<typename Container::key_type, typename Container::mapped_type,
             Container>;

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_TABLE_H_
