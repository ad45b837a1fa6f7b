// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/MibModule.h"

#include <unistd.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "check/ParserLog.h"

namespace snmpsubagent::check {
namespace {

void AddFolder(const std::string& folder) {
  static std::set<std::string> known;
  if (!known.insert(folder).second) return;
  if (add_mibdir(folder.c_str()) >= 0) return;
  known.erase(folder);
  throw CannotCheck(folder + ": the folder of MIB files can't be read");
}

// The folders that Net-SNMP knows itself. Not all of them have to exist.
void AddDefaultFolders() {
  netsnmp_fixup_mib_directory();
  std::istringstream folders(netsnmp_get_mib_directory());
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (access(folder.c_str(), R_OK | X_OK) == 0) AddFolder(folder);
  }
}

int Read(const std::string& module) {
  netsnmp_read_module(module.c_str());
  const int id = which_module(module.c_str());
  if (id < 0) {
    throw CannotCheck("the module " + module +
                      " is in none of the folders of MIB files");
  }
  return id;
}

bool BelongsTo(const struct tree& node, int module) {
  int* const end = node.module_list + node.number_modules;
  return std::find(node.module_list, end, module) != end;
}

Access AccessOf(const struct tree& node) {
  switch (node.access) {
    case MIB_ACCESS_NOTIFY:
      return Access::ForNotify;
    case MIB_ACCESS_READONLY:
      return Access::ReadOnly;
    case MIB_ACCESS_READWRITE:
    case MIB_ACCESS_WRITEONLY:
      return Access::ReadWrite;
    case MIB_ACCESS_CREATE:
      return Access::ReadCreate;
    default:
      return Access::NotAccessible;
  }
}

// A scalar or a column: an OBJECT-TYPE with nothing below.
bool IsObject(const struct tree& node) {
  return node.access && !node.child_list;
}

Oid OidOf(const struct tree& node) {
  Oid oid;
  for (const struct tree* at = &node; at; at = at->parent) {
    oid.insert(oid.begin(), at->subid);
  }
  return oid;
}

// The node of that name in the module of `near`, or else in any.
const struct tree* FindNode(const char* name, const struct tree& near) {
  const struct tree* const found = find_tree_node(name, near.modid);
  return found ? found : find_tree_node(name, -1);
}

// The entry whose INDEX an entry has.
const struct tree* EntryWithIndex(const struct tree* entry) {
  // An entry may augment one that augments another, but not in a circle.
  for (int steps = 0; entry && entry->augments && steps < 8; ++steps) {
    entry = FindNode(entry->augments, *entry);
  }
  return entry;
}

std::vector<Index> IndexesOf(const struct tree& entry) {
  std::vector<Index> indexes;
  const struct tree* const owner = EntryWithIndex(&entry);
  if (!owner) return indexes;
  for (const index_list* index = owner->indexes; index; index = index->next) {
    const struct tree* const node = FindNode(index->ilabel, *owner);
    if (!node) return {};
    const Syntax syntax = SyntaxOf(*node);
    if (syntax.base == Base::Unknown) return {};
    indexes.push_back(
        {index->ilabel, OidOf(*node), syntax, index->isimplied != 0});
  }
  return indexes;
}

}  // namespace

MibModule::MibModule(const std::string& name, const MibOptions& options)
    : name_(name) {
  netsnmp_init_mib_internals();
  AddDefaultFolders();
  for (const std::string& folder : options.mibFolders) AddFolder(folder);
  const ParserLog log;
  for (const std::string& other : options.otherModules) Read(other);
  const int module = Read(name);
  for (const struct tree* node = get_tree_head(); node;
       node = node->next_peer) {
    Collect(*node, {}, module);
  }
  if (objects_.empty()) {
    const std::string text = log.Text();
    throw CannotCheck("the module " + name + " has no objects" +
                      (text.empty() ? "" : "; the parser says: " + text));
  }
  std::sort(others_.begin(), others_.end());
  FindRoots();
}

void MibModule::Collect(const struct tree& node, const Oid& parent,
                        int module) {
  const Oid oid = parent + Oid{node.subid};
  const bool ofTheModule = BelongsTo(node, module);
  if (ofTheModule && node.type == TYPE_MODID) roots_.push_back(oid);
  if (IsObject(node)) AddObject(node, oid, ofTheModule);
  // The parser keeps children in no order of their numbers.
  std::vector<const struct tree*> children;
  for (const struct tree* child = node.child_list; child;
       child = child->next_peer) {
    children.push_back(child);
  }
  std::sort(children.begin(), children.end(),
            [](const struct tree* a, const struct tree* b) {
              return a->subid < b->subid;
            });
  for (const struct tree* child : children) Collect(*child, oid, module);
}

void MibModule::AddObject(const struct tree& node, const Oid& oid,
                          bool ofTheModule) {
  if (!ofTheModule) {
    others_.push_back(oid);
    return;
  }
  MibObject object{node.label,
                   oid,
                   SyntaxOf(node),
                   AccessOf(node),
                   node.status == MIB_STATUS_OBSOLETE,
                   std::nullopt};
  // Entries are not accessible, groups are no OBJECT-TYPE.
  if (node.parent && node.parent->access) object.table = TableOf(node, oid);
  if (object.table) tables_[*object.table].columns.push_back(objects_.size());
  objects_.push_back(object);
}

std::size_t MibModule::TableOf(const struct tree& column, const Oid& oid) {
  const Oid entry(oid.begin(), oid.end() - 1);
  if (tables_.empty() || tables_.back().entry != entry) {
    const struct tree& node = *column.parent;
    tables_.push_back({node.parent->label,
                       Oid(entry.begin(), entry.end() - 1),
                       entry,
                       IndexesOf(node),
                       node.augments != nullptr,
                       {}});
  }
  return tables_.size() - 1;
}

// The module's identity, the tables, and the groups of its scalars.
void MibModule::FindRoots() {
  for (const MibObject& object : objects_) {
    const std::size_t up = object.table ? 2 : 1;
    roots_.emplace_back(object.oid.begin(), object.oid.end() - up);
  }
  std::sort(roots_.begin(), roots_.end());
  std::vector<Oid> outermost;
  for (const Oid& root : roots_) {
    if (outermost.empty() || !IsAtOrBelow(root, outermost.back())) {
      outermost.push_back(root);
    }
  }
  roots_ = outermost;
}

const MibObject* MibModule::ObjectOf(const Oid& instance) const {
  auto behind = std::upper_bound(objects_.begin(), objects_.end(), instance,
                                 [](const Oid& name, const MibObject& object) {
                                   return name < object.oid;
                                 });
  if (behind == objects_.begin()) return nullptr;
  const MibObject& object = *(behind - 1);
  return IsAtOrBelow(instance, object.oid) ? &object : nullptr;
}

bool MibModule::IsOfAnotherModule(const Oid& instance) const {
  auto behind = std::upper_bound(others_.begin(), others_.end(), instance);
  return behind != others_.begin() && IsAtOrBelow(instance, *(behind - 1));
}

}  // namespace snmpsubagent::check
