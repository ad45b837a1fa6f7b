// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_ROWSTORE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_ROWSTORE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "snmpsubagent/Export.h"
#include "snmpsubagent/IndexWriter.h"
#include "snmpsubagent/RowChange.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/detail/ManagedObject.h"

namespace snmpsubagent::detail {

class Column;
class TableState;
class StagedRow;

// A row as the machinery sees it: the application's types are behind the
// pointers.
struct RowView {
  const void* key = nullptr;
  const void* row = nullptr;
};

// The rows of a table, or of several that share them, in the order of their
// indexes.
//
// Threads: under the agent's lock.
class SNMPSUBAGENT_OBJECTS_EXPORT RowStore {
 public:
  virtual ~RowStore();

  // What is found stays until a row is changed or another one found; while
  // there is a Reading, others may be found as well.
  virtual bool Find(OidView index, RowView& found) = 0;
  // The first row behind `index`, with `include` also that one, and its index.
  virtual bool FindNext(OidView index, bool include, RowView& found,
                        IndexWriter& foundIndex) = 0;
  // Whether there is a row under this index, or a manager may make one.
  virtual bool MayBeRow(OidView index) = 0;
  // A copy of that row, which Find() has found, or a new one (null), to be
  // changed by a SET.
  virtual std::unique_ptr<StagedRow> Stage(std::shared_ptr<TableState> table,
                                           OidView index, const void* row) = 0;

  // While a function of the application's may have a row in its hands, and have
  // other rows read.
  class Reading {
   public:
    explicit Reading(RowStore& store) : store_(store) { ++store_.readings_; }
    ~Reading() { --store_.readings_; }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

   private:
    RowStore& store_;
  };
  // How many there are, one within the other.
  std::size_t Readings() const { return readings_; }

  // How many rows there are, counted no further than to `most`.
  virtual std::size_t CountUpTo(std::size_t most) = 0;

  // What the tables of these rows say about rows that managers make.
  void SetStatusColumn() { hasStatus_ = true; }
  bool HasStatus() const { return hasStatus_; }
  void FreezeActive() { activeAreFrozen_ = true; }
  bool ActiveAreFrozen() const { return activeAreFrozen_; }
  void SetStorage(std::function<StorageType(const void*)> storage) {
    storage_ = std::move(storage);
  }
  StorageType StorageOf(const void* row) const {
    return storage_ ? storage_(row) : StorageType::Volatile;
  }
  // So many rows are the most when a manager makes one; 0 for no limit.
  void SetLimit(std::size_t rows) { limit_ = rows; }
  // Whether there is no room for a new row beside those that are staged.
  bool IsFullFor(const StagedRow& row);

  // One more column that a row needs; which of them it is. And no longer.
  int AddRequired();
  void DropRequired(int which);
  // Which of them a row without cells is missing.
  const std::vector<bool>& Required() const { return required_; }

  // Of a row that there is.
  RowStatus StatusOf(OidView index) const;
  std::vector<bool> MissingOf(OidView index) const;
  bool IsMissing(OidView index, int required) const;
  void SetStatus(OidView index, RowStatus status, std::vector<bool> missing);

  // The staged rows of all SETs that are under way.
  const std::vector<StagedRow*>& Staged() const { return staged_; }
  // That of one of them, or null.
  StagedRow* FindStaged(const Transaction& transaction, OidView index) const;

 protected:
  // Whether anything depends on the row with an index, so that it has to be
  // noted that the application has changed, put or erased it.
  bool TakesNotes() const { return !staged_.empty() || !inactive_.empty(); }
  void NoteChange(OidView index);
  void NoteOvertaken(OidView index);
  void NoteStatus(OidView index, RowStatus status);
  void NotePut(OidView index, bool isNew);
  void NoteErased(OidView index);

 private:
  friend class StagedRow;
  struct Inactive {
    RowStatus status;
    std::vector<bool> missing;  // of the required columns
  };

  std::size_t readings_ = 0;
  bool hasStatus_ = false;
  bool activeAreFrozen_ = false;
  std::function<StorageType(const void*)> storage_;
  std::size_t limit_ = 0;
  std::vector<bool> required_;
  std::map<Oid, Inactive, std::less<>> inactive_;
  std::vector<StagedRow*> staged_;
};

// What a SET makes of one row: cells first, as the varbinds come, then the
// status (RFC 2579, RowStatus).
class SNMPSUBAGENT_OBJECTS_EXPORT StagedRow : public Change {
 public:
  StagedRow(std::shared_ptr<TableState> table, std::shared_ptr<RowStore> store,
            OidView index, const void* row);  // null for a new one
  ~StagedRow() override;

  OidView Index() const { return index_; }
  bool IsOf(const Transaction& transaction) const {
    return transaction_ == &transaction;
  }
  void SetTransaction(const Transaction& transaction) {
    transaction_ = &transaction;
  }

  // The row as it will be.
  virtual void* Row() = 0;
  RowStatus Before() const { return before_; }
  RowStatus After() const { return after_; }
  bool IsPut() const { return isPut_; }
  // How the row has been kept so far.
  StorageType Storage() const { return storage_; }

  // The cell of that column has been written.
  void NoteCell(std::shared_ptr<const Column> column);
  // The status has been written. InconsistentValue if it was before, otherwise.
  SetError NoteAction(RowStatus action, std::uint16_t varbind);
  // The application has changed the row meanwhile, or put or erased it.
  void NoteChange() {
    if (!isPutting_) isChanged_ = true;
  }
  void NoteOvertaken() {
    if (!isPutting_) isOvertaken_ = true;
  }
  // It has said what its status is.
  void NoteStatus() { isOvertaken_ = keepsStatus_ = true; }

  SetError Check(std::uint16_t& varbind) override;
  Step Commit(Transaction& transaction) override;
  Step Resumed(SetError error) override;
  Step Undo(Transaction& transaction) override;
  void Finish() override;

 protected:
  // The application's functions.
  virtual SetError AskCheck() = 0;
  virtual Step CallApply(bool undo, Transaction& transaction) = 0;
  virtual void CallChanged() = 0;
  // Puts the row that will be, or was, in the place of the other.
  virtual void Store() = 0;
  virtual void Restore() = 0;
  // Whether the application has left alone what the store holds: the row as it
  // was, or `put`, as it will be. As far as that can be told.
  virtual bool IsUntouched(bool put) const = 0;
  // Has Restore() leave what the application has made of the row since Store().
  // Whether it then has something to take back.
  virtual bool KeepChanges() = 0;

  // The columns whose cells have been written.
  const std::vector<std::shared_ptr<const Column>>& Written() const {
    return written_;
  }

 private:
  SetError DecideNew();
  SetError DecideExisting();
  bool IsComplete() const;
  // A row that was not, and is not to be.
  bool IsNothing() const {
    return before_ == RowStatus::None && after_ == RowStatus::None;
  }
  bool MayCommit() const;
  bool MayUndo();
  Step Apply(bool undo, Transaction& transaction);
  void Put(bool undo);

  std::shared_ptr<TableState> table_;
  std::shared_ptr<RowStore> store_;
  const Transaction* transaction_ = nullptr;
  Oid index_;
  const std::vector<bool> missingBefore_;  // of the required columns
  std::vector<bool> missing_;
  const StorageType storage_;
  RowStatus before_;
  RowStatus after_;
  RowStatus action_ = RowStatus::None;
  std::uint16_t actionVarbind_ = 0;
  std::vector<std::shared_ptr<const Column>> written_;
  bool isChanged_ = false;    // by the application, meanwhile
  bool isOvertaken_ = false;  // the row is the application's, or gone
  bool keepsStatus_ = false;  // and so is its status
  bool undoing_ = false;
  bool isPutting_ = false;
  bool isPut_ = false;  // the store holds the row as it will be
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_ROWSTORE_H_
