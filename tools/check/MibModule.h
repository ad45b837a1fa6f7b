// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_MIBMODULE_H_
#define SNMPSUBAGENT_TOOLS_CHECK_MIBMODULE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "check/CheckMib.h"
#include "check/Oid.h"
#include "check/Syntax.h"

namespace snmpsubagent::check {

enum class Access { NotAccessible, ForNotify, ReadOnly, ReadWrite, ReadCreate };

// A scalar or a column.
struct MibObject {
  std::string name;
  Oid oid;
  Syntax syntax;
  Access access = Access::NotAccessible;
  bool obsolete = false;
  std::optional<std::size_t> table;  // of a column: its number in Tables()

  bool Readable() const { return access >= Access::ReadOnly; }
  bool Writable() const { return access >= Access::ReadWrite; }
};

// An object of the INDEX clause, of this table or of another one.
struct Index {
  std::string name;
  Oid oid;
  Syntax syntax;
  bool implied = false;
};

struct MibTable {
  std::string name;
  Oid oid;
  Oid entry;
  // Of the clause, or of the entry that this one augments. Empty if the parser
  // does not know it.
  std::vector<Index> indexes;
  bool augments = false;
  std::vector<std::size_t> columns;  // their numbers in Objects()
};

// The objects of a module, as Net-SNMP's parser reads them.
class MibModule {
 public:
  // Throws CannotCheck if the module is not found, can't be read or has no
  // objects.
  MibModule(const std::string& name, const MibOptions& options);

  const std::string& Name() const { return name_; }
  // Upwards by their OIDs.
  const std::vector<MibObject>& Objects() const { return objects_; }
  const std::vector<MibTable>& Tables() const { return tables_; }
  // What to walk: subtrees that hold all objects and all that is foreign there,
  // none within another.
  const std::vector<Oid>& Roots() const { return roots_; }

  // The object that an instance belongs to; null if it is none of the module's.
  const MibObject* ObjectOf(const Oid& instance) const;
  // Whether an instance, though none of the module's, belongs to another one.
  bool IsOfAnotherModule(const Oid& instance) const;

 private:
  void Collect(const struct tree& node, const Oid& parent, int module);
  void AddObject(const struct tree& node, const Oid& oid, bool ofTheModule);
  std::size_t TableOf(const struct tree& column, const Oid& oid);
  void FindRoots();

  std::string name_;
  std::vector<MibObject> objects_;
  std::vector<MibTable> tables_;
  std::vector<Oid> roots_;
  std::vector<Oid> others_;  // objects of other modules
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_MIBMODULE_H_
