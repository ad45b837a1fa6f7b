// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_OBJECTINDEX_H_
#define SNMPSUBAGENT_OBJECTS_OBJECTINDEX_H_

#include <vector>

#include "snmpsubagent/detail/ManagedObject.h"

namespace snmpsubagent::detail {

// The objects of one context in the order of their OIDs. None lies below
// another, so that each OID belongs to one at the most.
class ObjectIndex {
 public:
  // Throws std::invalid_argument if there is an object at, above or below the
  // OID of this one.
  void Add(ManagedObject& object);
  // Does nothing if it is not there.
  void Remove(ManagedObject& object);
  void RemoveAllOf(const ModuleState& module);

  // The object to which `name` belongs, or null.
  ManagedObject* Containing(OidView name) const;
  // That object or, if there is none, the first behind `name`.
  ManagedObject* ContainingOrBehind(OidView name) const;
  // The first object whose OID is greater than this one; null for none.
  ManagedObject* Behind(OidView name) const;

 private:
  using Objects = std::vector<ManagedObject*>;

  // Where the first object lies whose OID is greater.
  Objects::const_iterator PlaceBehind(OidView name) const;

  Objects objects_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_OBJECTINDEX_H_
