// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "objects/ReadRequest.h"

#include <algorithm>

#include "objects/AgentState.h"
#include "objects/ModuleState.h"
#include "objects/ObjectIndex.h"
#include "objects/ReadCall.h"
#include "objects/TimedCall.h"
#include "snmpsubagent/detail/Clock.h"
#include "snmpsubagent/detail/Requests.h"

namespace snmpsubagent::detail {
namespace {

// A response to a GetBulk ends early when it is this long; the master agent
// asks again (RFC 2741, 7.2.3.3).
constexpr std::size_t kLongResponse = 32768;

// An object that its own functions may destroy, kept while they run.
std::shared_ptr<ManagedObject> Kept(ManagedObject* object) {
  return object ? object->shared_from_this() : nullptr;
}

}  // namespace

void ReadRequest::Begin(const agentx::Request& request,
                        const ObjectIndex* index) {
  header_ = request.header;
  epoch_ = agent_.SessionEpoch();
  index_ = index;
  ranges_ = *request.ranges;
  const std::size_t count = ranges_.size();
  const bool bulk = header_.type == agentx::PduType::GetBulk;
  nonRepeaters_ =
      bulk ? std::min<std::size_t>(request.nonRepeaters, count) : count;
  maxVarbinds_ =
      nonRepeaters_ + (count - nonRepeaters_) * request.maxRepetitions;
  kept_.clear();
  last_.clear();
  last_.resize(bulk ? count : 0);
  endedInRound_ = 0;
  position_ = 0;
  absent_.reset();
  response_.clear();
  writer_.emplace(response_, header_);
  context_.emplace(*this, writer_->Varbinds(), agent_);
}

void ReadRequest::Suspend() {
  if (kept_.empty()) KeepRanges();
  context_->SetEnd(ranges_[Place()].end);
  context_->Call()->Suspend();
}

void ReadRequest::KeepRanges() {
  deadline_ = Now() + answerTime_;
  kept_.reserve(2 * ranges_.size());
  for (agentx::SearchRange& range : ranges_) {
    kept_.emplace_back(range.start);
    range.start = kept_.back();
    kept_.emplace_back(range.end);
    range.end = kept_.back();
  }
}

void ReadRequest::Abandon() {
  if (context_ && context_->Call()) context_->Call()->Abandon();
}

bool ReadRequest::IsAbandoned() const {
  return agent_.SessionEpoch() != epoch_;
}

bool ReadContext::IsWanted() const { return !request_.IsAbandoned(); }

std::size_t ReadRequest::Place() const {
  if (position_ < nonRepeaters_) return position_;
  return nonRepeaters_ +
         (position_ - nonRepeaters_) % (ranges_.size() - nonRepeaters_);
}

// Of a GetBulk also once a whole round has found nothing more.
bool ReadRequest::IsDone() {
  if (position_ >= maxVarbinds_) return true;
  if (position_ <= nonRepeaters_ || Place() != nonRepeaters_) return false;
  const std::size_t ended = endedInRound_;
  endedInRound_ = 0;
  return ended == ranges_.size() - nonRepeaters_ ||
         response_.size() > kLongResponse;
}

bool ReadRequest::Continue() {
  while (!IsDone()) {
    const Answer answer = Serve();
    if (IsAbandoned()) {
      Abandon();
      writer_.reset();
      response_.clear();
      return true;
    }
    if (answer == Answer::Deferred) return false;
    if (answer == Answer::Failed) return Refuse();
    Complete(answer);
  }
  writer_->Finish();
  return true;
}

bool ReadRequest::Resume(Answer answer,
                         const std::function<void(ValueWriter&)>& write) {
  if (answer == Answer::Failed) return Refuse();
  if (answer == Answer::Written) {
    write(context_->Writer());
  } else {
    context_->Cancel();
    if (!IsGet()) {
      absent_ = Oid(context_->Name());
      return Continue();
    }
    missing_ = ValueType::NoSuchInstance;
  }
  Complete(answer);
  return Continue();
}

bool ReadRequest::Refuse() {
  writer_->Refuse(agentx::Error::GenErr,
                  static_cast<std::uint16_t>(position_ + 1));
  writer_->Finish();
  return true;
}

// Ends the present varbind.
void ReadRequest::Complete(Answer answer) {
  const std::size_t place = Place();
  const bool repeated = position_ > place;
  const OidView start = repeated ? last_[place].View() : ranges_[place].start;
  if (answer != Answer::Written) {
    writer_->Varbinds().Name(start);
    writer_->Varbinds().Empty(IsGet() ? missing_ : ValueType::EndOfMibView);
    if (position_ >= nonRepeaters_) ++endedInRound_;
  }
  if (!last_.empty()) {
    last_[place] = Oid(answer == Answer::Written ? context_->Name() : start);
  }
  absent_.reset();
  ++position_;
}

Answer ReadRequest::Serve() {
  const std::size_t place = Place();
  const agentx::SearchRange& range = ranges_[place];
  if (!index_) {
    missing_ = ValueType::NoSuchObject;
    return Answer::Absent;
  }
  if (IsGet()) return ServeGet(range.start);
  context_->SetEnd(range.end);
  if (absent_) return ServeNext(*absent_, false, range.end);
  if (position_ > place) return ServeNext(last_[place], false, range.end);
  return ServeNext(range.start, range.include, range.end);
}

template <typename Read>
Answer ReadRequest::ReadSafely(const ManagedObject& object, const Read& read) {
  const std::size_t place = writer_->Varbinds().Place();
  answerTime_ = object.Module().AnswerTime();
  const TimedCall timed(agent_, object.Name());
  try {
    return read();
  } catch (...) {
    ReportException(object);
    Abandon();
    writer_->Varbinds().Rewind(place);
    return Answer::Failed;
  }
}

Answer ReadRequest::ServeGet(OidView name) {
  missing_ = ValueType::NoSuchObject;
  const auto object = Kept(index_->Containing(name));
  if (!object) return Answer::Absent;
  const OidView instance = name.After(object->Name().size());
  if (object->HasObjectAt(instance)) missing_ = ValueType::NoSuchInstance;
  return ReadSafely(*object, [&] { return object->Read(instance, *context_); });
}

Answer ReadRequest::ServeNext(OidView start, bool include, OidView end) {
  auto object = Kept(index_->ContainingOrBehind(start));
  while (object && (end.empty() || object->Name() < end)) {
    const OidView name = object->Name();
    const bool within = start.StartsWith(name);
    const OidView instance = within ? start.After(name.size()) : OidView();
    const Answer answer = ReadSafely(*object, [&] {
      return object->ReadNext(instance, !within || include, *context_);
    });
    if (answer != Answer::Absent || IsAbandoned()) return answer;
    object = Kept(index_->Behind(name));
  }
  return Answer::Beyond;
}

}  // namespace snmpsubagent::detail
