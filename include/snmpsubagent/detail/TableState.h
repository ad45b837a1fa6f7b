// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_TABLESTATE_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_TABLESTATE_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "snmpsubagent/Access.h"
#include "snmpsubagent/Export.h"
#include "snmpsubagent/RowChange.h"
#include "snmpsubagent/SetError.h"
#include "snmpsubagent/ValueWriter.h"
#include "snmpsubagent/detail/ManagedObject.h"
#include "snmpsubagent/detail/RowStore.h"

namespace snmpsubagent::detail {

// One column: how its cells are read from a row, and written.
class SNMPSUBAGENT_OBJECTS_EXPORT Column {
 public:
  virtual ~Column();

  // False if the row has no such cell. May throw what a function throws.
  virtual bool Read(const RowView& row, ValueWriter& writer) const = 0;
  // The same for a request, which may be answered later.
  virtual Answer ReadFor(ReadContext& context, const RowView& row) const;
  // Whether the value can be decoded, and what it makes of the row with that
  // index.
  virtual SetError Decode(const ValueView& value) const = 0;
  virtual SetError Write(void* row, OidView index,
                         const ValueView& value) const = 0;
  // Takes back what a SET has made of the cell, from `before` to `after`,
  // unless `row` has another value by now. Whether it did.
  virtual bool TakeBack(void* row, const void* before, const void* after) const;

  ValueType type = ValueType::Null;
  bool writable = false;
  // Whether a manager may make a cell that a row does not have.
  bool canCreate = false;
  // Whether it is the StorageType of the row.
  bool isStorage = false;
  // Whether a manager has to write it before a new row can be active; and then
  // which of those columns it is.
  bool isRequired = false;
  int required = -1;
  std::shared_ptr<const Constraints> constraints;
};

// What lies behind a Table: its columns, and requests for their cells.
class SNMPSUBAGENT_OBJECTS_EXPORT TableState : public ManagedObject {
 public:
  TableState(std::shared_ptr<ModuleState> module, std::string_view oid,
             std::shared_ptr<RowStore> rows);

  ~TableState() override;

  // Throw std::invalid_argument for a number that is 0 or taken.
  void AddColumn(SubIdentifier number, std::unique_ptr<Column> column);
  void SetStatusColumn(SubIdentifier number);
  // The column with that number, or null.
  const Column* FindColumn(SubIdentifier number) const;

  RowStore& Rows() const { return *rows_; }
  // Whether an OID has room for the name of a cell with that index.
  bool HasRoomFor(OidView index) const;

  // The whole OID of a cell.
  Oid CellName(SubIdentifier column, OidView index) const;
  // Writes that cell's value; false if there is none.
  bool WriteCell(SubIdentifier column, const RowView& row, OidView index,
                 ValueWriter& writer) const;

  Answer Read(OidView instance, ReadContext& context) override;
  Answer ReadNext(OidView instance, bool include,
                  ReadContext& context) override;
  bool HasObjectAt(OidView instance) const override;
  SetError Stage(OidView instance, const ValueView& value,
                 Transaction& transaction) override;

 private:
  struct NumberedColumn {
    SubIdentifier number;
    std::shared_ptr<Column> column;  // null for the status
  };
  using Columns = std::vector<NumberedColumn>;

  void Warn(const char* what) const;
  Columns::const_iterator PlaceFrom(SubIdentifier number) const;
  Answer ReadValue(const NumberedColumn& column, const RowView& row,
                   OidView index, ReadContext& context) const;
  Answer ReadCell(const NumberedColumn& column, const RowView& row,
                  OidView index, ReadContext& context);
  Answer ReadColumn(const NumberedColumn& column, OidView index, bool include,
                    ReadContext& context);
  SetError CheckValue(const NumberedColumn& column,
                      const ValueView& value) const;
  SetError StageCell(const NumberedColumn& column, OidView index,
                     const ValueView& value, Transaction& transaction);
  SetError FindStaged(const NumberedColumn& column, OidView index,
                      Transaction& transaction, StagedRow*& staged);

  std::shared_ptr<RowStore> rows_;
  Columns columns_;
  SubIdentifier statusColumn_ = 0;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_DETAIL_TABLESTATE_H_
