// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/detail/ScalarState.h"

#include <stdexcept>
#include <utility>

#include "objects/ReadContext.h"

namespace snmpsubagent::detail {
namespace {

constexpr SubIdentifier kInstance[] = {0};

}  // namespace

ScalarState::ScalarState(std::shared_ptr<ModuleState> module,
                         std::string_view oid, ValueType type, bool writable,
                         std::shared_ptr<const Constraints> constraints)
    : ManagedObject(std::move(module), oid, OidView(kInstance, 1)),
      type_(type),
      writable_(writable),
      constraints_(std::move(constraints)) {
  if (Name()[Name().size() - 1] == 0) {
    throw std::invalid_argument(
        ToString(Name()) +
        ": an object's OID does not end in 0; leave out the instance");
  }
  if (constraints_) constraints_->RequireFor(type, Name());
}

Answer ScalarState::Read(OidView instance, ReadContext& context) {
  if (instance != OidView(kInstance, 1)) return Answer::Absent;
  context.SetEnd({});
  return ReadInstance(context);
}

Answer ScalarState::ReadNext(OidView instance, bool include,
                             ReadContext& context) {
  const int order = Compare(instance, OidView(kInstance, 1));
  if (order > 0 || (order == 0 && !include)) return Answer::Absent;
  return ReadInstance(context);
}

Answer ScalarState::ReadInstance(ReadContext& context) {
  if (!context.Begin(InstanceName())) return Answer::Beyond;
  const Answer answer = ReadValue(context);
  if (answer == Answer::Absent) context.Cancel();
  return answer;
}

// In the order of RFC 3416, 4.2.5.
SetError ScalarState::Stage(OidView instance, const ValueView& value,
                            Transaction& transaction) {
  if (!writable_) return SetError::NotWritable;
  if (value.type != type_) return SetError::WrongType;
  SetError error = Decode(value);
  if (error == SetError::None && constraints_) {
    error = constraints_->Check(value);
  }
  if (error != SetError::None) return error;
  if (instance != OidView(kInstance, 1)) return SetError::NoCreation;
  if (ChangedElsewhere(transaction, *this)) {
    return SetError::ResourceUnavailable;
  }
  return StageValue(value, transaction);
}

}  // namespace snmpsubagent::detail
