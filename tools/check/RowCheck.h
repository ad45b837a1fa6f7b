// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_ROWCHECK_H_
#define SNMPSUBAGENT_TOOLS_CHECK_ROWCHECK_H_

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "check/Manager.h"
#include "check/Served.h"

namespace snmpsubagent::check {

// Makes and destroys rows of one table, if it has a RowStatus (RFC 2579).
class RowCheck {
 public:
  RowCheck(Manager& manager, const Served& served, const MibTable& table,
           Report& report);

  // Makes a row with createAndGo and one with createAndWait, and destroys
  // them.
  void All();

  // Whether the agent has no row of the table.
  bool IsEmpty() const;

  // Makes a row; its instance identifier, or nothing if that can't be done.
  std::optional<Oid> MakeForSets();
  void Destroy(const Oid& row) { Destroyed(row); }

 private:
  bool CreateAndGo(const Oid& row);
  void CreateAndWait(const Oid& row);
  Response Activate(const Oid& row);
  Response SetStatus(const Oid& row, int status, std::vector<Varbind> columns);
  void AddRefusal(const Response& response, const std::string& how,
                  bool isUndecided);
  bool HasStored(const Varbind& column, const std::string& how);
  bool Shows(const Oid& row, std::initializer_list<std::int64_t> states,
             const std::string& how);
  bool Destroyed(const Oid& row);
  void AddCreation(const Oid& row, const std::string& text);
  std::optional<Oid> NewRow() const;
  Oid RowOf(const std::vector<std::optional<Value>>& known, int seed) const;
  std::optional<Value> ExistingIndex(const Index& index) const;
  std::vector<Varbind> Columns(const Oid& row) const;
  std::optional<Value> Read(const Oid& name) const;

  Manager& manager_;
  const Served& served_;
  const MibTable& table_;
  Report& report_;
  const MibObject* status_ = nullptr;  // null without a RowStatus
  bool works_ = false;                 // createAndGo has made a row
  bool withColumns_ = false;           // with values for them
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_ROWCHECK_H_
