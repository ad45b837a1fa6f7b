// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "agentx/StandingRequests.h"

#include <algorithm>

namespace snmpsubagent::agentx {
namespace {

// Whether a master agent can have only one of the two.
bool ShareRegion(const StandingRequests::Content& a,
                 const StandingRequests::Content& b) {
  if (a.index() != b.index()) return false;
  if (const auto* const first = std::get_if<Registration>(&a)) {
    const auto& second = std::get<Registration>(b);
    return first->subtree == second.subtree && first->context == second.context;
  }
  const auto& first = std::get<AgentCaps>(a);
  const auto& second = std::get<AgentCaps>(b);
  return first.id == second.id && first.context == second.context;
}

// The same bytes would be no better understood another time.
bool MayBeTakenLater(Error error) { return error != Error::ParseError; }

}  // namespace

std::uint32_t StandingRequests::Add(Content content) {
  const std::uint32_t id = lastId_ + 1;
  if (open_) queue_.push_back(id);
  entries_.emplace(id,
                   Entry{std::move(content), Backoff(firstRetry_, lastRetry_)});
  return lastId_ = id;
}

StandingRequests::Entry* StandingRequests::Find(std::uint32_t id) {
  const auto found = entries_.find(id);
  return found == entries_.end() ? nullptr : &found->second;
}

void StandingRequests::Withdraw(std::uint32_t id) {
  Entry* const entry = Find(id);
  if (!entry || entry->Leaves()) return;
  switch (entry->state) {
    case State::Waiting:
    case State::Refused:
      entries_.erase(id);
      return;
    case State::Asked:
      entry->withdrawn = true;
      ++withdrawnWhileAsked_;
      return;
    case State::Taken:
      entry->state = State::Leaving;
      queue_.push_back(id);
      return;
    case State::Leaving:
    case State::LeavingAsked:
      return;  // already
  }
}

void StandingRequests::WithdrawAgentCaps(const Oid& id,
                                         const std::string& context) {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
        const auto* const caps = std::get_if<AgentCaps>(&entry.second.content);
        return caps && !entry.second.Leaves() && caps->id == id &&
               caps->context == context;
      });
  if (found != entries_.end()) Withdraw(found->first);
}

void StandingRequests::SessionOpened() {
  open_ = true;
  for (const auto& [id, entry] : entries_) queue_.push_back(id);
}

void StandingRequests::SessionEnded() {
  open_ = false;
  queue_.clear();
  retries_.clear();
  withdrawnWhileAsked_ = 0;
  for (auto next = entries_.begin(); next != entries_.end();) {
    Entry& entry = next->second;
    const bool leaves = entry.Leaves();
    entry.state = State::Waiting;
    entry.error = Error::None;
    entry.retry.Reset();
    next = leaves ? entries_.erase(next) : std::next(next);
  }
}

// One of the same region that was withdrawn before the master agent has
// answered is to leave first, or this one would be refused as its duplicate.
bool StandingRequests::WaitsForAnother(const Entry& entry) const {
  if (withdrawnWhileAsked_ == 0 || entry.state != State::Waiting) return false;
  return std::any_of(entries_.begin(), entries_.end(), [&](const auto& other) {
    return other.second.withdrawn &&
           ShareRegion(other.second.content, entry.content);
  });
}

std::optional<StandingRequests::Step> StandingRequests::Next() {
  for (; !queue_.empty(); queue_.pop_front()) {
    const std::uint32_t id = queue_.front();
    const Entry* const entry = Find(id);
    const bool due = entry && (entry->state == State::Waiting ||
                               entry->state == State::Leaving);
    if (!due) continue;
    if (WaitsForAnother(*entry)) return {};
    return Step{id, entry->state == State::Leaving, &entry->content};
  }
  return {};
}

void StandingRequests::NextIsWritten() {
  Entry& entry = *Find(queue_.front());
  entry.state =
      entry.state == State::Leaving ? State::LeavingAsked : State::Asked;
  queue_.pop_front();
}

const StandingRequests::Content* StandingRequests::Answered(std::uint32_t id,
                                                            bool withdraws,
                                                            Error error,
                                                            Time now) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return nullptr;
  if (withdraws) {
    Left(found);
    return nullptr;
  }
  Entry& entry = found->second;
  return error == Error::None ? Take(id, entry) : Refuse(id, entry, error, now);
}

const StandingRequests::Content* StandingRequests::Take(std::uint32_t id,
                                                        Entry& entry) {
  if (entry.withdrawn) {
    entry.withdrawn = false;
    --withdrawnWhileAsked_;
    entry.state = State::Leaving;
    queue_.push_front(id);
    return nullptr;
  }
  entry.state = State::Taken;
  entry.error = Error::None;
  return &entry.content;
}

const StandingRequests::Content* StandingRequests::Refuse(std::uint32_t id,
                                                          Entry& entry,
                                                          Error error,
                                                          Time now) {
  if (entry.withdrawn) {
    --withdrawnWhileAsked_;
    entries_.erase(id);
    return nullptr;
  }
  entry.state = State::Refused;
  entry.error = error;
  if (MayBeTakenLater(error)) retries_.emplace(now + entry.retry.Next(), id);
  return &entry.content;
}

// Whoever was refused because of it can be taken now.
void StandingRequests::Left(Entries::iterator entry) {
  const Content content = std::move(entry->second.content);
  entries_.erase(entry);
  for (auto& [id, other] : entries_) {
    if (other.state != State::Refused || !ShareRegion(other.content, content)) {
      continue;
    }
    queue_.push_back(id);
    other.state = State::Waiting;
  }
}

std::optional<StandingRequests::Time> StandingRequests::NextRetry() const {
  if (retries_.empty()) return {};
  return retries_.begin()->first;
}

void StandingRequests::RetryDue(Time now) {
  while (!retries_.empty() && retries_.begin()->first <= now) {
    const std::uint32_t id = retries_.begin()->second;
    Entry* const entry = Find(id);
    if (entry && entry->state == State::Refused) {
      queue_.push_back(id);
      entry->state = State::Waiting;
    }
    retries_.erase(retries_.begin());
  }
}

bool StandingRequests::IsTaken(std::uint32_t id) const {
  const auto found = entries_.find(id);
  return found != entries_.end() && found->second.state == State::Taken;
}

std::vector<RefusedRegistration> StandingRequests::Refused() const {
  std::vector<RefusedRegistration> all;
  for (const auto& [id, entry] : entries_) {
    if (auto refused = FindRefused(id)) all.push_back(*std::move(refused));
  }
  return all;
}

std::optional<RefusedRegistration> StandingRequests::FindRefused(
    std::uint32_t id) const {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return {};
  const Entry& entry = found->second;
  const auto* const registration = std::get_if<Registration>(&entry.content);
  if (!registration || entry.Leaves() || entry.error == Error::None) return {};
  return RefusedRegistration{id, registration->subtree, registration->context,
                             entry.error};
}

}  // namespace snmpsubagent::agentx
