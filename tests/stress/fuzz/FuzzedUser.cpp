// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "FuzzedUser.h"

#include <algorithm>
#include <utility>

#include "agentx/ResponseWriter.h"

namespace snmpsubagent::agentx {

void FuzzedUser::Serve(Session& session, Input& input, Time& now) {
  session_ = &session;
  input_ = &input;
  now_ = &now;
}

void FuzzedUser::Notify() {
  const bool wasQueued = std::exchange(isQueued_, isTold_);
  const std::uint64_t id = session_->Notify({}, "", *now_);
  isQueued_ = wasQueued;
  sent_ = std::max(sent_, id);
}

// Behind Stop() nothing is queued any more, so each has had its outcome.
bool FuzzedUser::EachNotificationHasOneOutcome() {
  return std::count(outcomes_.begin() + 1, outcomes_.end(), 1) ==
         static_cast<long>(sent_);
}

void FuzzedUser::ActNow() {
  if (input_->AtEnd()) return;
  switch (input_->Below(8)) {
    case 0:
      return Notify();
    case 1:
      session_->Register({Oid{1, 3, input_->Below(4)}, "", 127, {}}, *now_);
      return;
    case 2:
      return session_->Unregister(input_->Below(16), *now_);
    case 3:
      if (input_->Below(4) == 0) session_->Stop(*now_);
      return;
    case 4:
      return session_->Start(*now_);
    default:
      return;
  }
}

void FuzzedUser::OnOpened() {
  Require(!open_, "opened twice");
  open_ = true;
  ActNow();
}

void FuzzedUser::OnEnded(std::string_view) {
  Require(open_, "ended without having been open");
  open_ = false;
  ActNow();
}

void FuzzedUser::OnAttemptFailed(std::string_view) {
  Require(!open_, "an attempt failed while it was open");
  ActNow();
}

void FuzzedUser::OnRequest(const Request& request,
                           std::vector<std::uint8_t>& response) {
  Require(open_, "a request without a session");
  ActNow();
  if (request.header.type == PduType::CleanupSet) return;
  ResponseWriter(response, request.header).Finish();
}

void FuzzedUser::OnRegistration(std::uint32_t, Error) {
  Require(open_, "a registration without a session");
  ActNow();
}

void FuzzedUser::OnNotification(std::uint64_t id, NotificationOutcome, Error) {
  Require(!isQueued_, "told while another one is queued by what is told");
  if (outcomes_.size() <= id) outcomes_.resize(id + 1);
  sent_ = std::max(sent_, id);
  if (++outcomes_[id] > 1) onlyOnes_ = false;
  const bool wasTold = std::exchange(isTold_, true);
  ActNow();
  isTold_ = wasTold;
}

}  // namespace snmpsubagent::agentx
