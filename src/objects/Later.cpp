// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Later.h"

#include <utility>

#include "objects/DeferredCall.h"

namespace snmpsubagent::detail {

LaterCall::~LaterCall() = default;

LaterAnswer::LaterAnswer(std::shared_ptr<LaterCall> call)
    : call_(std::move(call)) {}

LaterAnswer::~LaterAnswer() { static_cast<DeferredCall&>(*call_).Lose(); }

}  // namespace snmpsubagent::detail
