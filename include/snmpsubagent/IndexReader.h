// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_INDEXREADER_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_INDEXREADER_H_

#include <limits>

#include "snmpsubagent/Oid.h"

namespace snmpsubagent {

// Takes an index apart, from its front (RFC 2578, 7.7).
//
// A GETNEXT may begin at sub-identifiers that are no row's. For those it can
// round down, to the greatest index that is not behind them: a number that is
// too high is read as the highest that may stand there, and all that follows
// as the highest there is.
class IndexReader {
 public:
  enum class Mode {
    Exact,
    RoundDown,
    Below  // rounds down, and the highest of everything follows the last one
  };
  explicit IndexReader(OidView ids, Mode mode = Mode::Exact)
      : ids_(ids), mode_(mode) {}

  // The next number. False if there is none left, or it is out of the range.
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
  // How many octets or sub-identifiers follow.
  bool TakeSize(SubIdentifier& size) { return Take(size, 0, Oid::kMaxSize); }
  bool HasMore() const {
    return isBelow_ || mode_ == Mode::Below || !ids_.empty();
  }

  // What has not been taken. It belongs to whoever gave the sub-identifiers.
  OidView Rest() const { return ids_; }

 private:
  OidView ids_;
  Mode mode_;
  bool isBelow_ = false;  // what has been taken is below what there was
};

}  // namespace snmpsubagent

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_INDEXREADER_H_
