// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_READCONTEXT_H_
#define SNMPSUBAGENT_OBJECTS_READCONTEXT_H_

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <memory>

#include "agentx/VarbindWriter.h"
#include "snmpsubagent/ValueWriter.h"
#include "snmpsubagent/detail/ManagedObject.h"

namespace snmpsubagent::detail {

class ReadCall;
class ReadRequest;

// What an object is handed to write an instance into, name first.
class ReadContext {
 public:
  ReadContext(ReadRequest& request, agentx::VarbindWriter& varbinds,
              const AgentState& agent)
      : request_(request), varbinds_(varbinds), writer_(varbinds, agent) {}

  // Instances from `end` on are not wanted; an empty one sets no bound.
  void SetEnd(OidView end) { end_ = end; }

  // Writes the name, whose parts stand one behind the other; false if it is
  // beyond the end. Requires: at most Oid::kMaxSize sub-identifiers.
  template <typename... Parts>
  bool Begin(const Parts&... parts) {
    nameSize_ = 0;
    (Append(parts), ...);
    if (!end_.empty() && Name() >= end_) return false;
    place_ = varbinds_.Place();
    varbinds_.Name(Name());
    return true;
  }
  // That of the last Begin().
  OidView Name() const { return {name_.data(), nameSize_}; }
  // False once the session of the request has gone: no other function of the
  // application is to be called for it.
  bool IsWanted() const;
  // Takes the name back, and what was written behind it.
  void Cancel() { varbinds_.Rewind(place_); }

  ValueWriter& Writer() { return writer_; }
  ReadRequest& Request() { return request_; }

  // The call that answers the instance, if it is to be answered later.
  std::shared_ptr<ReadCall>& Call() { return call_; }

 private:
  void Append(OidView part) {
    assert(nameSize_ + part.size() <= name_.size());
    std::copy(part.begin(), part.end(), name_.data() + nameSize_);
    nameSize_ += part.size();
  }

  ReadRequest& request_;
  agentx::VarbindWriter& varbinds_;
  ValueWriter writer_;
  std::shared_ptr<ReadCall> call_;
  OidView end_;
  std::array<SubIdentifier, Oid::kMaxSize> name_;
  std::size_t nameSize_ = 0;
  std::size_t place_ = 0;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_READCONTEXT_H_
