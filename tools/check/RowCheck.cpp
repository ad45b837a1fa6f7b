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
  std::vector<Varbind> all = Columns(*row);
  all.push_back(Status(*row, kCreateAndGo));
  return manager_.Set(all).Succeeded() ? row : std::nullopt;
}

bool RowCheck::CreateAndGo(const Oid& row) {
  const std::string how = "createAndGo with all columns";
  const std::vector<Varbind> columns = Columns(row);
  std::vector<Varbind> all = columns;
  all.push_back(Status(row, kCreateAndGo));
  if (Refused(manager_.Set(all), how, false)) return false;
  bool right = Shows(row, {kActive}, how);
  for (const Varbind& column : columns) {
    const std::optional<Value> now = Read(column.name);
    if (now == column.value) continue;
    right = false;
    report_.Add(Fault::StoredValue, served_.module.ObjectOf(column.name)->name,
                ToText(column.name),
                how + " sets it to " + ToText(column.value) +
                    ", and then it has " + (now ? ToText(*now) : "no value"));
  }
  right = Destroyed(row) && right;
  report_.totals.rows.Add(right);
  return true;
}

bool RowCheck::CreateAndWait(const Oid& row) {
  const std::string how = "createAndWait";
  if (Refused(manager_.Set({Status(row, kCreateAndWait)}), how, true)) {
    return false;
  }
  bool right = Shows(row, {kNotInService, kNotReady}, how);
  const std::vector<Varbind> columns = Columns(row);
  const Response set =
      columns.empty() ? Response{true, 0, 0, {}} : manager_.Set(columns);
  if (!set.Succeeded()) {
    right = false;
    AddCreation(
        row, "a SET of the columns of a row that waits gets " + ErrorText(set));
  } else {
    const Response activated = manager_.Set({Status(row, kActive)});
    right = activated.Succeeded() && Shows(row, {kActive}, how) && right;
    if (!activated.Succeeded()) {
      AddCreation(row,
                  "a SET to active of a row that waits and has all "
                  "columns gets " +
                      ErrorText(activated));
    }
  }
  right = Destroyed(row) && right;
  report_.totals.rows.Add(right);
  return true;
}

// An agent may refuse a row for its state, and need not know createAndWait.
bool RowCheck::Refused(const Response& response, const std::string& how,
                       bool mayLackIt) {
  if (response.Succeeded()) return false;
  const bool isUndecided =
      response.answered &&
      (response.error == SNMP_ERR_INCONSISTENTNAME ||
       response.error == SNMP_ERR_INCONSISTENTVALUE ||
       response.error == SNMP_ERR_RESOURCEUNAVAILABLE ||
       (mayLackIt && response.error == SNMP_ERR_WRONGVALUE));
  const std::string text = how + " gets " + ErrorText(response);
  if (isUndecided) {
    report_.totals.rows.AddUndecided();
    report_.notes.push_back("no row was made in " + table_.name + ": " + text);
  } else {
    report_.totals.rows.Add(false);
    report_.Add(Fault::RowCreation, table_.name, ToText(table_.oid), text);
  }
  return true;
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
  const Response response = manager_.Set({Status(row, kDestroy)});
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

Varbind RowCheck::Status(const Oid& row, int status) const {
  return {status_->oid + row, Value::OfNumber(ASN_INTEGER, status)};
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
