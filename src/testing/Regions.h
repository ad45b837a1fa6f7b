// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_REGIONS_H_
#define SNMPSUBAGENT_TESTING_REGIONS_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "testkit/agentx/Pdu.h"

namespace snmpsubagent::testing::internal {

namespace wire = testkit::agentx;

// A subtree, or several that differ in one sub-identifier, and whose it is.
struct Region {
  wire::Register registered;
  std::string context;
  std::uint32_t session;
};

// A part of all OIDs, from `begin` up to but without `end`, of which one
// session is the owner. A null `end` is that of all OIDs.
struct Segment {
  wire::Oid begin;
  wire::Oid end;
  std::uint32_t session;
};

// What is registered, and who is to be asked for an OID: of those that have
// registered it, the one with the longest subtree, and of these, the one with
// the lowest number for a priority (RFC 2741, 7.1.4.1).
class Regions {
 public:
  // False for what is registered already.
  bool Add(Region region);
  // False if it is not registered.
  bool Remove(const wire::Unregister& withdrawn, const std::string& context,
              std::uint32_t session);
  void RemoveAll(std::uint32_t session);

  const std::vector<Region>& All() const { return regions_; }

  // In the order of OIDs, none of them empty.
  const std::vector<Segment>& SegmentsIn(const std::string& context);

 private:
  std::vector<Region> regions_;
  std::map<std::string, std::vector<Segment>> segments_;  // by context
};

// That which has the OID; null for none.
const Segment* Owner(const std::vector<Segment>& segments,
                     const wire::Oid& oid);
// That, or the first one behind it.
const Segment* OwnerOrNext(const std::vector<Segment>& segments,
                           const wire::Oid& oid);

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_REGIONS_H_
