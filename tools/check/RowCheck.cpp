// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/RowCheck.h"

#include <algorithm>

#include "check/IndexDecoder.h"
#include "check/Probes.h"

namespace snmpsubagent::check {
namespace {

// RowStatus of RFC 2579.
enum {
  kActive = 1,
  kNotInService = 2,
  kNotReady = 3,
  kCreateAndGo = 4,
  kCreateAndWait = 5,
  kDestroy = 6
};

// How many new instance identifiers are tried out before the table counts as
// full.
constexpr int kMostSeeds = 300;

// Refusals of an agent in whose state there can't be such a row.
bool DependsOnState(const Response& response) {
  return response.answered && (response.error == SNMP_ERR_INCONSISTENTNAME ||
                               response.error == SNMP_ERR_INCONSISTENTVALUE ||
                               response.error == SNMP_ERR_RESOURCEUNAVAILABLE);
}

}  // namespace

RowCheck::RowCheck(Manager& manager, const Served& served,
                   const MibTable& table, Report& report)
    : manager_(manager), served_(served), table_(table), report_(report) {
  for (const std::size_t number : table.columns) {
    const MibObject& column = served.module.Objects()[number];
    const bool isStatus = column.syntax.convention == "RowStatus" &&
                          column.access == Access::ReadCreate;
    if (isStatus) status_ = &column;
  }
}

void RowCheck::All() {
  if (!status_ || (status_->obsolete && IsEmpty())) return;
  const std::optional<Oid> row = NewRow();
  if (!row) {
    report_.totals.rows.AddUndecided(2);
    report_.notes.push_back("no row was made in " + table_.name +
                            ": no index is known that it lacks");
    return;
  }
  works_ = CreateAndGo(*row);
  CreateAndWait(*row);
}

bool RowCheck::IsEmpty() const {
  return std::all_of(table_.columns.begin(), table_.columns.end(),
                     [this](std::size_t number) {
                       return served_.objects[number].instances.empty();
                     });
}

std::optional<Oid> RowCheck::MakeForSets() {
  const std::optional<Oid> row = works_ ? NewRow() : std::nullopt;
  if (!row) return std::nullopt;
  const Response response =
      SetStatus(*row, kCreateAndGo,
                withColumns_ ? Columns(*row) : std::vector<Varbind>());
  return response.Succeeded() ? row : std::nullopt;
}

// With values for all columns; if they do not fit together, without any.
bool RowCheck::CreateAndGo(const Oid& row) {
  std::vector<Varbind> columns = Columns(row);
  Response response = SetStatus(row, kCreateAndGo, columns);
  if (DependsOnState(response)) {
    columns.clear();
    response = SetStatus(row, kCreateAndGo, columns);
  }
  const std::string how =
      columns.empty() ? "createAndGo" : "createAndGo with all columns";
  if (!response.Succeeded()) {
    AddRefusal(response, how, DependsOnState(response));
    return false;
  }
  withColumns_ = !columns.empty();
  bool right = Shows(row, {kActive}, how);
  for (const Varbind& column : columns) right = HasStored(column, how) && right;
  right = Destroyed(row) && right;
  report_.totals.rows.Add(right);
  return true;
}

// An agent need not know createAndWait.
void RowCheck::CreateAndWait(const Oid& row) {
  const Response created = SetStatus(row, kCreateAndWait, {});
  if (!created.Succeeded()) {
    AddRefusal(created, "createAndWait",
               DependsOnState(created) || created.error == SNMP_ERR_WRONGVALUE);
    return;
  }
  const bool waits = Shows(row, {kNotInService, kNotReady}, "createAndWait");
  const Response activated = Activate(row);
  const bool active = activated.Succeeded() &&
                      Shows(row, {kActive}, "createAndWait and active");
  const bool destroyed = Destroyed(row);
  if (!activated.Succeeded() && waits && destroyed) {
    AddRefusal(activated, "a row that waits, with its columns and active,",
               DependsOnState(activated));
  } else {
    report_.totals.rows.Add(waits && active && destroyed);
  }
}

// Gives a row that waits its columns, and makes it active.
Response RowCheck::Activate(const Oid& row) {
  const std::vector<Varbind> columns = Columns(row);
  if (!columns.empty()) {
    const Response set = manager_.Set(columns);
    if (!set.Succeeded() && !DependsOnState(set)) return set;
  }
  return SetStatus(row, kActive, {});
}

Response RowCheck::SetStatus(const Oid& row, int status,
                             std::vector<Varbind> columns) {
  columns.push_back({status_->oid + row, Value::OfNumber(ASN_INTEGER, status)});
  return manager_.Set(columns);
}

void RowCheck::AddRefusal(const Response& response, const std::string& how,
                          bool isUndecided) {
  const std::string text = how + " gets " + ErrorText(response);
  if (isUndecided) {
    report_.totals.rows.AddUndecided();
    report_.notes.push_back("no row was made in " + table_.name + ": " + text);
  } else {
    report_.totals.rows.Add(false);
    report_.Add(Fault::RowCreation, table_.name, ToText(table_.oid), text);
  }
}

bool RowCheck::HasStored(const Varbind& column, const std::string& how) {
  const std::optional<Value> now = Read(column.name);
  if (now == column.value) return true;
  report_.Add(Fault::StoredValue, served_.module.ObjectOf(column.name)->name,
              ToText(column.name),
              how + " sets it to " + ToText(column.value) +
                  ", and then it has " + (now ? ToText(*now) : "no value"));
  return false;
}

bool RowCheck::Shows(const Oid& row, std::initializer_list<std::int64_t> states,
                     const std::string& how) {
  const std::optional<Value> now = Read(status_->oid + row);
  const bool right =
      now && std::count(states.begin(), states.end(), now->Number());
  if (!right) {
    AddCreation(row, "after " + how + ", RowStatus has " +
                         (now ? ToText(*now) : "no value"));
  }
  return right;
}

bool RowCheck::Destroyed(const Oid& row) {
  const Response response = SetStatus(row, kDestroy, {});
  const std::optional<Value> now = Read(status_->oid + row);
  if (response.Succeeded() && !now) return true;
  report_.Add(Fault::RowDestruction, status_->name, ToText(status_->oid + row),
              "destroy gets " + ErrorText(response) + ", and RowStatus has " +
                  (now ? ToText(*now) : "no value"));
  return false;
}

void RowCheck::AddCreation(const Oid& row, const std::string& text) {
  report_.Add(Fault::RowCreation, status_->name, ToText(status_->oid + row),
              text);
}

// An identifier that no row has; with the indexes of other tables' rows if that
// can be.
std::optional<Oid> RowCheck::NewRow() const {
  if (table_.indexes.empty()) return std::nullopt;
  std::vector<std::optional<Value>> existing;
  for (const Index& index : table_.indexes) {
    existing.push_back(ExistingIndex(index));
  }
  for (int seed = 0; seed < kMostSeeds; ++seed) {
    const Oid row = RowOf(existing, seed);
    if (!Read(status_->oid + row)) return row;
  }
  const Oid row = RowOf({}, 0);
  return Read(status_->oid + row) ? std::nullopt : std::optional(row);
}

Oid RowCheck::RowOf(const std::vector<std::optional<Value>>& known,
                    int seed) const {
  std::vector<Value> values;
  for (std::size_t i = 0; i < table_.indexes.size(); ++i) {
    const bool isKnown = i < known.size() && known[i];
    values.push_back(isKnown ? *known[i]
                             : AnyValue(table_.indexes[i].syntax, seed));
  }
  return EncodeIndex(table_, values);
}

// Of an index that is another table's: a value that this one has, since a row
// for one that it lacks may be refused.
std::optional<Value> RowCheck::ExistingIndex(const Index& index) const {
  if (IsAtOrBelow(index.oid, table_.entry)) return std::nullopt;
  const MibObject* const column = served_.module.ObjectOf(index.oid);
  if (column && column->table) {
    const MibTable& owner = served_.module.Tables()[*column->table];
    for (const std::size_t number : owner.columns) {
      const auto& instances = served_.objects[number].instances;
      if (instances.empty() || owner.indexes.empty()) continue;
      const MibObject& served = served_.module.Objects()[number];
      const Oid& name = served_.all[instances.front()].name;
      const DecodedIndex decoded = DecodeIndex(
          owner,
          Oid(name.begin() + static_cast<std::ptrdiff_t>(served.oid.size()),
              name.end()));
      for (std::size_t i = 0; i < decoded.values.size(); ++i) {
        if (owner.indexes[i].oid == index.oid) return decoded.values[i];
      }
    }
  }
  const Response next = manager_.GetNext({index.oid});
  if (!next.Succeeded() || next.varbinds.size() != 1 ||
      !IsAtOrBelow(next.varbinds[0].name, index.oid) ||
      index.syntax.Check(next.varbinds[0].value)) {
    return std::nullopt;
  }
  return next.varbinds[0].value;
}

// What a manager would set of a new row: what another row has, or anything.
std::vector<Varbind> RowCheck::Columns(const Oid& row) const {
  std::vector<Varbind> columns;
  for (const std::size_t number : table_.columns) {
    const MibObject& column = served_.module.Objects()[number];
    if (column.access != Access::ReadCreate || &column == status_ ||
        column.obsolete || column.syntax.base == Base::Unknown) {
      continue;
    }
    const auto& instances = served_.objects[number].instances;
    columns.push_back(
        {column.oid + row, instances.empty() || served_.objects[number].faulty
                               ? AnyValue(column.syntax, 0)
                               : served_.all[instances.front()].value});
  }
  return columns;
}

std::optional<Value> RowCheck::Read(const Oid& name) const {
  const Response response = manager_.Get({name});
  if (!response.Succeeded() || response.varbinds.size() != 1 ||
      response.varbinds[0].value.IsException()) {
    return std::nullopt;
  }
  return response.varbinds[0].value;
}

}  // namespace snmpsubagent::check
