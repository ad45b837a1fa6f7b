// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/ObjectIndex.h"

#include <algorithm>
#include <stdexcept>

namespace snmpsubagent::detail {

// A binary search that passes over what names have in common: of what lies
// between two names, all begins as those two do.
ObjectIndex::Objects::const_iterator ObjectIndex::PlaceBehind(
    OidView name) const {
  auto first = objects_.begin();
  auto last = objects_.end();
  // Sub-identifiers that `name` shares with the object before `first`, and with
  // the one at `last`.
  std::size_t sharedBefore = 0;
  std::size_t sharedBehind = 0;
  while (first != last) {
    const auto middle = first + (last - first) / 2;
    const OidView other = (*middle)->Name();
    const std::size_t end = std::min(name.size(), other.size());
    std::size_t shared = std::min(sharedBefore, sharedBehind);
    while (shared < end && name[shared] == other[shared]) ++shared;
    const bool isBehind = shared < end ? name[shared] < other[shared]
                                       : name.size() < other.size();
    if (isBehind) {
      last = middle;
      sharedBehind = shared;
    } else {
      first = middle + 1;
      sharedBefore = shared;
    }
  }
  return first;
}

void ObjectIndex::Add(ManagedObject& object) {
  const OidView name = object.Name();
  const auto place = PlaceBehind(name);
  const ManagedObject* other = Containing(name);
  if (!other && place != objects_.end() && (*place)->Name().StartsWith(name)) {
    other = *place;
  }
  if (other) {
    throw std::invalid_argument(ToString(name) + ": there is an object at " +
                                ToString(other->Name()));
  }
  objects_.insert(place, &object);
  object.served_ = true;
}

void ObjectIndex::Remove(ManagedObject& object) {
  const auto place = PlaceBehind(object.Name());
  if (place == objects_.begin() || *(place - 1) != &object) return;
  objects_.erase(place - 1);
  object.served_ = false;
}

void ObjectIndex::RemoveAllOf(const ModuleState& module) {
  const auto gone = std::stable_partition(
      objects_.begin(), objects_.end(),
      [&](auto* object) { return &object->Module() != &module; });
  std::for_each(gone, objects_.end(),
                [](ManagedObject* object) { object->served_ = false; });
  objects_.erase(gone, objects_.end());
}

ManagedObject* ObjectIndex::Containing(OidView name) const {
  const auto place = PlaceBehind(name);
  if (place == objects_.begin()) return nullptr;
  ManagedObject* before = *(place - 1);
  return name.StartsWith(before->Name()) ? before : nullptr;
}

ManagedObject* ObjectIndex::ContainingOrBehind(OidView name) const {
  const auto place = PlaceBehind(name);
  if (place != objects_.begin() && name.StartsWith((*(place - 1))->Name())) {
    return *(place - 1);
  }
  return place == objects_.end() ? nullptr : *place;
}

ManagedObject* ObjectIndex::Behind(OidView name) const {
  const auto place = PlaceBehind(name);
  return place == objects_.end() ? nullptr : *place;
}

}  // namespace snmpsubagent::detail
