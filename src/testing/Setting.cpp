// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "testing/Setting.h"

#include <map>
#include <optional>
#include <utility>

#include "testing/WireValues.h"

namespace snmpsubagent::testing::internal {
namespace {

constexpr std::uint16_t kGenErr = 5;

// One SET over all subagents that it concerns.
class SetRun {
 public:
  SetRun(MasterState& master, MasterState::Guard& lock)
      : master_(master),
        lock_(lock),
        transaction_(master.NewTransaction(lock)) {}

  void Add(std::uint32_t session, std::size_t varbind, wire::Varbind value) {
    Part& part = parts_[session];
    part.test.varbinds.push_back(std::move(value));
    part.varbinds.push_back(varbind);
  }

  Response Run() {
    Response failure = Test();
    if (failure.Succeeded()) {
      failure = AskAll(wire::CommitSet{});
      if (!failure.Succeeded()) {
        const Response undone = AskAll(wire::UndoSet{});
        return undone.Succeeded() ? failure
                                  : Response{ErrorStatus::UndoFailed, 0, {}};
      }
    }
    for (const auto& [session, part] : parts_) {
      master_.Tell(lock_, {session, wire::CleanupSet{}}, transaction_);
    }
    AwaitCleanup();
    return failure;
  }

 private:
  struct Part {
    wire::TestSet test;
    std::vector<std::size_t> varbinds;  // of the request
  };

  Response Test() {
    std::vector<Question> questions;
    for (const auto& [session, part] : parts_) {
      questions.push_back({session, part.test});
    }
    return Ask(questions);
  }

  Response AskAll(const wire::Body& body) {
    std::vector<Question> questions;
    for (const auto& [session, part] : parts_) {
      questions.push_back({session, body});
    }
    return Ask(questions);
  }

  // CleanupSet has no response: what is asked behind it has.
  void AwaitCleanup() { AskAll(wire::Get{}); }

  // The error of the first varbind that has one.
  Response Ask(const std::vector<Question>& questions) {
    const auto answers = master_.Ask(lock_, questions, transaction_);
    Response first;
    auto answer = answers.begin();
    for (const auto& [session, part] : parts_) {
      const Response failure = Failure(part, *answer++);
      if (!failure.Succeeded() &&
          (first.Succeeded() || failure.index < first.index)) {
        first = failure;
      }
    }
    return first;
  }

  static Response Failure(const Part& part,
                          const std::optional<wire::Response>& answer) {
    if (answer && answer->error == 0) return {};
    const std::uint16_t error = answer ? answer->error : kGenErr;
    const std::uint16_t index = answer ? answer->index : 1;
    const bool isOne = index >= 1 && index <= part.varbinds.size();
    return {static_cast<ErrorStatus>(error),
            isOne ? part.varbinds[index - 1U] + 1 : 0,
            {}};
  }

  MasterState& master_;
  MasterState::Guard& lock_;
  std::uint32_t transaction_;
  std::map<std::uint32_t, Part> parts_;
};

}  // namespace

Response Set(MasterState& master, MasterState::Guard& lock,
             const Request& request) {
  const std::vector<Segment> segments = master.Segments(lock);
  SetRun run(master, lock);
  for (std::size_t i = 0; i < request.varbinds.size(); ++i) {
    wire::Varbind varbind = ToWire(request.varbinds[i]);
    const Segment* const segment = Owner(segments, varbind.name);
    if (segment == nullptr) {
      return {ErrorStatus::NotWritable, i + 1, request.varbinds};
    }
    run.Add(segment->session, i, std::move(varbind));
  }
  Response response = run.Run();
  response.varbinds = request.varbinds;
  return response;
}

}  // namespace snmpsubagent::testing::internal
