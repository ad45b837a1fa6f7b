// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_MIBOBJECTS_H_
#define SNMPSUBAGENT_TESTS_MIBOBJECTS_H_

#include <string>
#include <vector>

// An object of a MIB as snmptranslate(1) shows it, which is not what mib2c goes
// by.
struct MibObject {
  std::string name;
  std::string oid;  // as the tools print it; a scalar's without its closing 0
  bool isColumn;
  bool readable;
  bool writable;
};

// The objects at or below `node`, which begins with its module's name: all that
// have a value. `modules` are to be loaded. Throws std::runtime_error if there
// is no such node.
std::vector<MibObject> ObjectsOf(const std::string& modules,
                                 const std::string& node);

// The folders of the MIB files.
std::string MibFolders();

#endif  // SNMPSUBAGENT_TESTS_MIBOBJECTS_H_
