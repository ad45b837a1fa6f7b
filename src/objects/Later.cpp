// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "snmpsubagent/Later.h"

#include <utility>

namespace snmpsubagent::detail {

LaterCall::~LaterCall() = default;

LaterAnswer::LaterAnswer(std::shared_ptr<LaterCall> call)
    : call_(std::move(call)) {}

LaterAnswer::~LaterAnswer() { call_->Set(SetError::GenErr); }

}  // namespace snmpsubagent::detail
