// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_INDEXREADER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_INDEXREADER_H_

#include <limits>

#include "snmpsubagent/Oid.h"

namespace snmpsubagent {

// Takes an index apart, from its front. To find the place of sub-identifiers
// that are those of no value, it can also round down: then it takes the highest
// number that may stand there in the place of one that is higher, and from
// there on the highest of everything.
class IndexReader {
 public:
  enum class Mode {
    Exact,
    RoundDown,
    Below  // rounds down, and the highest of everything follows the last one
  };
  explicit IndexReader(OidView ids, Mode mode = Mode::Exact)
      : ids_(ids), mode_(mode) {}

  // Fails if there is none left, or none of that range.
  bool Take(SubIdentifier& id, SubIdentifier lowest = 0,
            SubIdentifier highest = std::numeric_limits<SubIdentifier>::max()) {
    if (ids_.empty()) {
      if (!isBelow_ && mode_ != Mode::Below) return false;
      isBelow_ = true;
    }
    id = isBelow_ ? highest : ids_[0];
    if (id < lowest) return false;
    if (id > highest) {
      if (mode_ == Mode::Exact) return false;
      id = highest;
      isBelow_ = true;
    }
    ids_ = isBelow_ ? OidView() : ids_.After(1);
    return true;
  }
  // How many of something follow.
  bool TakeSize(SubIdentifier& size) { return Take(size, 0, Oid::kMaxSize); }
  bool HasMore() const {
    return isBelow_ || mode_ == Mode::Below || !ids_.empty();
  }

  OidView Rest() const { return ids_; }

 private:
  OidView ids_;
  Mode mode_;
  bool isBelow_ = false;  // what has been taken is below what there was
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_INDEXREADER_H_
