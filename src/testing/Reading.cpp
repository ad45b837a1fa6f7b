// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Reading.h"

#include <algorithm>
#include <map>
#include <utility>

#include "testing/WireValues.h"

namespace snmpsubagent::testing::internal {
namespace {

constexpr std::uint16_t kGenErr = 5;

// One round of questions: the ranges that each subagent is asked for, and of
// which varbinds of the request they are.
class Round {
 public:
  void Add(std::uint32_t session, std::size_t varbind,
           wire::SearchRange range) {
    Part& part = parts_[session];
    part.ranges.push_back(std::move(range));
    part.varbinds.push_back(varbind);
  }

  bool IsEmpty() const { return parts_.empty(); }

  // Asks, and calls `take` with each varbind's place and answer. Returns the
  // first error with its place in the request.
  template <typename Body, typename Take>
  Response Ask(MasterState& master, MasterState::Guard& lock,
               const Take& take) {
    std::vector<Question> questions;
    for (const auto& [session, part] : parts_) {
      questions.push_back({session, Body{part.ranges}});
    }
    const auto answers =
        master.Ask(lock, questions, master.NewTransaction(lock));
    auto answer = answers.begin();
    for (const auto& [session, part] : parts_) {
      const Response failure = Failure(part, *answer);
      if (!failure.Succeeded()) return failure;
      for (std::size_t i = 0; i < part.varbinds.size(); ++i) {
        take(part.varbinds[i], FromWire((*answer)->varbinds[i]));
      }
      ++answer;
    }
    return {};
  }

 private:
  struct Part {
    std::vector<wire::SearchRange> ranges;
    std::vector<std::size_t> varbinds;
  };

  static Response Failure(const Part& part,
                          const std::optional<wire::Response>& answer) {
    if (!answer) return Failed(part, kGenErr, 1);
    if (answer->error != 0) return Failed(part, answer->error, answer->index);
    const bool isWhole = answer->varbinds.size() == part.varbinds.size();
    return isWhole ? Response() : Failed(part, kGenErr, 1);
  }
  static Response Failed(const Part& part, std::uint16_t error,
                         std::uint16_t index) {
    const bool isOne = index >= 1 && index <= part.varbinds.size();
    return {static_cast<ErrorStatus>(error),
            isOne ? part.varbinds[index - 1U] + 1 : 0,
            {}};
  }

  std::map<std::uint32_t, Part> parts_;
};

Response FailedWith(Response failure, const Request& request) {
  failure.varbinds = request.varbinds;
  return failure;
}

Response Get(MasterState& master, MasterState::Guard& lock,
             const Request& request) {
  const std::vector<Segment> segments = master.Segments(lock);
  Response response;
  Round round;
  for (std::size_t i = 0; i < request.varbinds.size(); ++i) {
    const Oid& name = request.varbinds[i].name;
    response.varbinds.push_back({name, ValueType::NoSuchObject});
    const wire::Oid oid = ToWire(name);
    const Segment* const segment = Owner(segments, oid);
    if (segment != nullptr) round.Add(segment->session, i, {oid, true, {}});
  }
  const Response failure = round.Ask<wire::Get>(
      master, lock, [&](std::size_t varbind, Varbind answer) {
        response.varbinds[varbind] = std::move(answer);
      });
  return failure.Succeeded() ? response : FailedWith(failure, request);
}

// The search for the instance behind one name, over all subagents.
struct Search {
  wire::Oid from;
  bool include = false;
  const Segment* segment = nullptr;
  Varbind found;
  bool isDone = false;

  // Moves on to where there may be one.
  void Locate(const std::vector<Segment>& segments) {
    segment = OwnerOrNext(segments, from);
    if (segment == nullptr) {
      isDone = true;
    } else if (from < segment->begin) {
      from = segment->begin;
      include = true;
    }
  }
  void Take(Varbind answer) {
    if (answer.value.Type() != ValueType::EndOfMibView) {
      found = std::move(answer);
      isDone = true;
    } else if (segment->end.empty()) {
      isDone = true;
    } else {
      from = segment->end;
      include = true;
    }
  }
};

Response GetNext(MasterState& master, MasterState::Guard& lock,
                 const Request& request) {
  const std::vector<Segment> segments = master.Segments(lock);
  std::vector<Search> searches;
  for (const Varbind& varbind : request.varbinds) {
    searches.emplace_back();
    searches.back().from = ToWire(varbind.name);
    searches.back().found = {varbind.name, ValueType::EndOfMibView};
  }
  while (true) {
    Round round;
    for (std::size_t i = 0; i < searches.size(); ++i) {
      Search& search = searches[i];
      if (!search.isDone) search.Locate(segments);
      if (search.isDone) continue;
      round.Add(search.segment->session, i,
                {search.from, search.include, search.segment->end});
    }
    if (round.IsEmpty()) break;
    const Response failure = round.Ask<wire::GetNext>(
        master, lock, [&](std::size_t varbind, Varbind answer) {
          searches[varbind].Take(std::move(answer));
        });
    if (!failure.Succeeded()) return FailedWith(failure, request);
  }
  Response response;
  for (Search& search : searches) {
    response.varbinds.push_back(std::move(search.found));
  }
  return response;
}

bool IsAtEnd(const std::vector<Varbind>& varbinds) {
  return std::all_of(varbinds.begin(), varbinds.end(), [](const Varbind& each) {
    return each.value.Type() == ValueType::EndOfMibView;
  });
}

// With GETNEXTs, as snmpd does it.
Response GetBulk(MasterState& master, MasterState::Guard& lock,
                 const Request& request) {
  const std::size_t once =
      std::min(request.nonRepeaters, request.varbinds.size());
  Request next = request;
  if (request.maxRepetitions == 0) next.varbinds.resize(once);
  Response response = GetNext(master, lock, next);
  if (request.maxRepetitions == 0 || !response.Succeeded()) return response;
  next.varbinds.assign(
      response.varbinds.begin() + static_cast<std::ptrdiff_t>(once),
      response.varbinds.end());
  for (std::size_t i = 1; i < request.maxRepetitions && !IsAtEnd(next.varbinds);
       ++i) {
    Response more = GetNext(master, lock, next);
    if (!more.Succeeded()) return FailedWith(more, request);
    response.varbinds.insert(response.varbinds.end(), more.varbinds.begin(),
                             more.varbinds.end());
    next.varbinds = std::move(more.varbinds);
  }
  return response;
}

}  // namespace

Response Read(MasterState& master, MasterState::Guard& lock,
              const Request& request) {
  switch (request.kind) {
    case Request::Kind::GetNext:
      return GetNext(master, lock, request);
    case Request::Kind::GetBulk:
      return GetBulk(master, lock, request);
    default:
      return Get(master, lock, request);
  }
}

}  // namespace snmpsubagent::testing::internal
