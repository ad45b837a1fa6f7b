// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Regions.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace snmpsubagent::testing::internal {
namespace {

constexpr std::uint32_t kHighest = std::numeric_limits<std::uint32_t>::max();

template <typename A, typename B>
bool IsSame(const A& a, const B& b) {
  return a.subtree == b.subtree && a.priority == b.priority &&
         a.rangeSubid == b.rangeSubid && a.upperBound == b.upperBound;
}

// The first OID behind the subtree.
wire::Oid Behind(wire::Oid subtree) {
  while (!subtree.empty() && subtree.back() == kHighest) subtree.pop_back();
  if (!subtree.empty()) ++subtree.back();
  return subtree;
}

bool IsBefore(const wire::Oid& oid, const wire::Oid& end) {
  return end.empty() || oid < end;
}

// A subtree of a region.
struct Part {
  wire::Oid subtree;
  const Region* region;

  bool Has(const wire::Oid& oid) const {
    return oid.size() >= subtree.size() &&
           std::equal(subtree.begin(), subtree.end(), oid.begin());
  }
  bool IsPreferredTo(const Part& other) const {
    return subtree.size() != other.subtree.size()
               ? subtree.size() > other.subtree.size()
               : region->registered.priority <
                     other.region->registered.priority;
  }
};

void AddParts(const Region& region, std::vector<Part>& parts) {
  const wire::Register& registered = region.registered;
  Part part{registered.subtree, &region};
  parts.push_back(part);
  if (registered.rangeSubid == 0) return;
  std::uint32_t& subid = part.subtree[registered.rangeSubid - 1U];
  while (subid < registered.upperBound) {
    ++subid;
    parts.push_back(part);
  }
}

// None is empty, so there is an order in which each is asked for its owner.
std::set<wire::Oid> BoundsOf(const std::vector<Part>& parts) {
  std::set<wire::Oid> bounds;
  for (const Part& part : parts) {
    bounds.insert(part.subtree);
    bounds.insert(Behind(part.subtree));
  }
  return bounds;
}

const Part* PreferredOf(const std::vector<Part>& parts, const wire::Oid& oid) {
  const Part* preferred = nullptr;
  for (const Part& part : parts) {
    if (part.Has(oid) &&
        (preferred == nullptr || part.IsPreferredTo(*preferred)))
      preferred = &part;
  }
  return preferred;
}

}  // namespace

bool Regions::Add(Region region) {
  for (const Region& other : regions_) {
    if (other.context == region.context &&
        IsSame(other.registered, region.registered)) {
      return false;
    }
  }
  regions_.push_back(std::move(region));
  segments_.clear();
  return true;
}

bool Regions::Remove(const wire::Unregister& withdrawn,
                     const std::string& context, std::uint32_t session) {
  const auto found =
      std::find_if(regions_.begin(), regions_.end(), [&](const Region& region) {
        return region.session == session && region.context == context &&
               IsSame(region.registered, withdrawn);
      });
  if (found == regions_.end()) return false;
  regions_.erase(found);
  segments_.clear();
  return true;
}

void Regions::RemoveAll(std::uint32_t session) {
  regions_.erase(std::remove_if(regions_.begin(), regions_.end(),
                                [session](const Region& region) {
                                  return region.session == session;
                                }),
                 regions_.end());
  segments_.clear();
}

const std::vector<Segment>& Regions::SegmentsIn(const std::string& context) {
  const auto [place, isNew] = segments_.try_emplace(context);
  std::vector<Segment>& segments = place->second;
  if (!isNew) return segments;
  std::vector<Part> parts;
  for (const Region& region : regions_) {
    if (region.context == context) AddParts(region, parts);
  }
  const std::set<wire::Oid> bounds = BoundsOf(parts);
  for (auto bound = bounds.begin(); bound != bounds.end(); ++bound) {
    const Part* const owner = PreferredOf(parts, *bound);
    if (owner == nullptr) continue;
    const auto next = std::next(bound);
    segments.push_back({*bound, next == bounds.end() ? wire::Oid() : *next,
                        owner->region->session});
  }
  return segments;
}

const Segment* Owner(const std::vector<Segment>& segments,
                     const wire::Oid& oid) {
  const Segment* const segment = OwnerOrNext(segments, oid);
  return segment != nullptr && segment->begin <= oid ? segment : nullptr;
}

const Segment* OwnerOrNext(const std::vector<Segment>& segments,
                           const wire::Oid& oid) {
  const auto found = std::find_if(
      segments.begin(), segments.end(),
      [&](const Segment& each) { return IsBefore(oid, each.end); });
  return found == segments.end() ? nullptr : &*found;
}

}  // namespace snmpsubagent::testing::internal
