// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/Requests.h"

#include <algorithm>
#include <utility>

#include "objects/AgentState.h"
#include "objects/ReadCall.h"
#include "objects/SetCall.h"
#include "snmpsubagent/detail/Requests.h"

namespace snmpsubagent::detail {

const ObjectIndex* Requests::FindIndex(std::string_view context) const {
  const auto found = indexes_.find(context);
  return found == indexes_.end() ? nullptr : &found->second;
}

void Requests::Serve(const agentx::Request& request,
                     std::vector<std::uint8_t>& response) {
  switch (request.header.type) {
    case agentx::PduType::Get:
    case agentx::PduType::GetNext:
    case agentx::PduType::GetBulk:
      Read(request, response);
      break;
    default:
      Set(request);
      break;
  }
}

void Requests::Read(const agentx::Request& request,
                    std::vector<std::uint8_t>& response) {
  const auto isSame = [&](const std::shared_ptr<ReadRequest>& other) {
    return other->Header().packetId == request.header.packetId &&
           other->Header().transactionId == request.header.transactionId;
  };
  // Sent again, since the answer takes its time.
  if (std::any_of(suspended_.begin(), suspended_.end(), isSame)) return;

  auto read = idle_ ? std::exchange(idle_, nullptr)
                    : std::make_shared<ReadRequest>(agent_);
  read->Begin(request, FindIndex(request.context));
  if (read->Continue()) {
    response.swap(read->Response());
    idle_ = std::move(read);
  } else {
    read->Suspend();
    suspended_.push_back(std::move(read));
  }
}

void Requests::Resume(const std::shared_ptr<ReadRequest>& request,
                      Answer answer,
                      const std::function<void(ValueWriter&)>& write) {
  if (request->Resume(answer, write)) {
    agent_.Respond(request->Header(), request->Response());
    suspended_.erase(std::remove(suspended_.begin(), suspended_.end(), request),
                     suspended_.end());
  } else {
    request->Suspend();
  }
  agent_.Update();
}

void Requests::Set(const agentx::Request& request) {
  ForgetEnded();  // by an answer that came in between
  const std::uint32_t id = request.header.transactionId;
  auto transaction = Find(id);
  switch (request.header.type) {
    case agentx::PduType::TestSet:
      if (!transaction) {
        transaction = std::make_shared<Transaction>(agent_, id);
        transactions_.push_back(transaction);
      }
      transaction->Test(request, FindIndex(request.context));
      break;
    case agentx::PduType::CommitSet:
      if (transaction) {
        transaction->Commit(request.header);
      } else {
        agent_.Respond(request.header, agentx::Error::CommitFailed, 0);
      }
      break;
    case agentx::PduType::UndoSet:
      if (transaction) {
        transaction->Undo(request.header);
      } else {
        agent_.Respond(request.header, agentx::Error::None, 0);
      }
      break;
    default:
      if (transaction) transaction->Cleanup();
      break;
  }
  ForgetEnded();
}

std::shared_ptr<Transaction> Requests::Find(std::uint32_t id) const {
  const auto found = std::find_if(
      transactions_.begin(), transactions_.end(),
      [&](const auto& transaction) { return transaction->IsNamed(id); });
  return found == transactions_.end() ? nullptr : *found;
}

void Requests::ForgetEnded() {
  transactions_.erase(std::remove_if(transactions_.begin(), transactions_.end(),
                                     [](const auto& transaction) {
                                       return transaction->HasEnded();
                                     }),
                      transactions_.end());
}

void Requests::Abandon() {
  for (const auto& request : std::exchange(suspended_, {})) request->Abandon();
  ForEachTransaction([](Transaction& transaction) { transaction.Abandon(); });
}

void Requests::GiveUp() {
  ForEachTransaction([](Transaction& transaction) { transaction.GiveUp(); });
}

// Needs no memory.
template <typename End>
void Requests::ForEachTransaction(const End& end) {
  for (std::size_t i = 0; i < transactions_.size(); ++i) {
    const auto transaction = transactions_[i];
    end(*transaction);
  }
  ForgetEnded();
}

bool Requests::IsChangedByOther(const Transaction& transaction,
                                const ManagedObject& object) const {
  return std::any_of(
      transactions_.begin(), transactions_.end(), [&](const auto& other) {
        return other.get() != &transaction && other->Find(object) != nullptr;
      });
}

std::optional<agentx::Time> Requests::NextDeadline() const {
  std::optional<agentx::Time> first;
  const auto consider = [&](agentx::Time deadline) {
    if (!first || deadline < *first) first = deadline;
  };
  for (const auto& request : suspended_) consider(request->Deadline());
  for (const auto& transaction : transactions_) {
    consider(transaction->Deadline());
  }
  return first;
}

bool Requests::IsSuspended(const std::shared_ptr<ReadRequest>& request) const {
  return std::find(suspended_.begin(), suspended_.end(), request) !=
         suspended_.end();
}

// The log may answer other requests, or stop the agent.
void Requests::Advance(agentx::Time now) {
  const auto suspended = suspended_;
  for (const auto& request : suspended) {
    if (now < request->Deadline() || !IsSuspended(request)) continue;
    request->Abandon();
    agent_.Log(LogLevel::Warning, ToString(request->Context().Name()) +
                                      ": a request was not answered in time");
    Resume(request, Answer::Failed, {});
  }
  const auto transactions = transactions_;
  for (const auto& transaction : transactions) {
    if (now >= transaction->Deadline()) transaction->OnDeadline();
  }
  ForgetEnded();
}

ValueWriter& WriterOf(ReadContext& context) { return context.Writer(); }

std::shared_ptr<LaterCall> Defer(ReadContext& context) {
  context.Call() = std::make_shared<ReadCall>(context.Request());
  return context.Call();
}

Answer Deferred(ReadContext& context) { return context.Call()->Result(); }

std::shared_ptr<LaterCall> Defer(Transaction& transaction) {
  return transaction.MakeCall();
}

bool Answered(Transaction& transaction, SetError& error) {
  return transaction.Answered(error);
}

Change* FindChange(const Transaction& transaction,
                   const ManagedObject& object) {
  return transaction.Find(object);
}

void AddChange(Transaction& transaction, std::unique_ptr<Change> change) {
  transaction.Add(std::move(change));
}

std::uint16_t CurrentVarbind(const Transaction& transaction) {
  return transaction.CurrentVarbind();
}

bool ChangedElsewhere(const Transaction& transaction,
                      const ManagedObject& object) {
  return transaction.Agent().Requests().IsChangedByOther(transaction, object);
}

SetError ReportException(const ManagedObject& object) noexcept {
  return object.Agent()->ReportException(object.Name());
}

}  // namespace snmpsubagent::detail
