// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "SetsRun.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "testkit/agentx/Text.h"

using known::wire::Oid;
using known::wire::Varbind;
namespace wire = known::wire;

namespace {

using namespace std::chrono_literals;

// For whoever looks into a finding.
void RequireSame(const Varbind& found, const Oid& name,
                 const wire::Value& value) {
  if (found.name == name && found.value == value) return;
  std::fprintf(stderr, "%s is %s, not %s at %s\n",
               wire::Text(found.name).c_str(), wire::Text(found.value).c_str(),
               wire::Text(value).c_str(), wire::Text(name).c_str());
  Require(false, "another value");
}

// With FUZZ_TRACE in the environment, tells what happens.
void Trace(const std::string& line) {
  static const bool kWanted = std::getenv("FUZZ_TRACE") != nullptr;
  if (kWanted) std::fprintf(stderr, "%s\n", line.c_str());
}

unsigned int CountOf(std::size_t size) {
  return static_cast<unsigned int>(std::min<std::size_t>(size, 256));
}

// Something else instead of a name.
void Spoil(Input& input, Oid& name) {
  const unsigned int place = input.U8();
  switch (input.Below(3)) {
    case 0:
      name.push_back(place);
      break;
    case 1:
      name.resize(name.size() - place % 4);
      break;
    default:
      name[name.size() - 1 - place % 4] = input.U8();
  }
}

}  // namespace

Oid Below(std::uint32_t object) { return {1, 3, 6, 1, 4, 1, 32473, 7, object}; }

SetsRun::SetsRun(Input& input, ServedAgent& agent, known::Objects& objects,
                 known::Sets& sets, std::function<void()> change)
    : input_(input),
      agent_(agent),
      objects_(objects),
      sets_(sets),
      change_(std::move(change)) {}

void SetsRun::Play() {
  while (!input_.AtEnd()) {
    Step();
    CompareResponses();
    CompareValues();
    Require(sets_.AreAppliedInOrder(),
            "other Apply functions, or another order");
    Require(sets_.EachIsFinal(), "a Changed function too few or too many");
  }
  CompareWalk();
}

void SetsRun::Step() {
  switch (input_.Below(16)) {
    case 0:
    case 1:
    case 2:
    case 3:
      return Test();
    case 4:
    case 5:
    case 6:
      return Commit();
    case 7:
      return Undo();
    case 8:
      return Cleanup();
    case 9:
    case 10:
      Trace("change");
      return change_();
    case 11:
    case 12:
      return Plan();
    case 13:
      return Answer();
    case 14:
      Test();
      return Commit();
    default:
      switch (input_.Below(8)) {
        case 0:
          return Lose();
        case 1:
          return Pass();
      }
  }
}

void SetsRun::Test() {
  wire::TestSet test;
  for (unsigned int i = 1 + input_.Below(5); i > 0; --i) {
    test.varbinds.push_back(SomeVarbind());
  }
  const std::uint32_t set = SomeSet();
  Trace(std::to_string(set) + ": " + wire::Text(test));
  sets_.Test(set, agent_.Send(test, set), test.varbinds);
}

Varbind SetsRun::SomeVarbind() {
  const auto& [name, object] =
      *std::next(objects_.begin(), input_.Below(CountOf(objects_.size())));
  const auto& [number, column] = *std::next(
      object.columns.begin(), input_.Below(CountOf(object.columns.size())));
  const auto& units = object.store->units;
  const bool isKnown = object.store->isScalar || input_.Below(4) != 0;
  Varbind varbind;
  varbind.name = NameOf(
      object, number,
      isKnown && !units.empty()
          ? std::next(units.begin(), input_.Below(CountOf(units.size())))->first
          : object.store->someIndex(input_));
  if (input_.Below(32) == 0) Spoil(input_, varbind.name);
  varbind.value = SomeValue(input_, column.kind);
  return varbind;
}

void SetsRun::Commit() {
  const std::uint32_t set = SomeSet();
  Trace(std::to_string(set) + ": CommitSet");
  sets_.Commit(set, agent_.Send(wire::CommitSet{}, set));
}

void SetsRun::Undo() {
  const std::uint32_t set = SomeSet();
  Trace(std::to_string(set) + ": UndoSet");
  sets_.Undo(set, agent_.Send(wire::UndoSet{}, set));
}

void SetsRun::Cleanup() {
  const std::uint32_t set = SomeSet();
  Trace(std::to_string(set) + ": CleanupSet");
  agent_.Send(wire::CleanupSet{}, set);
  sets_.Cleanup(set);
}

known::Unit* SetsRun::SomeUnit() {
  const auto& object =
      std::next(objects_.begin(), input_.Below(CountOf(objects_.size())))
          ->second;
  auto& units = object.store->units;
  if (units.empty()) return nullptr;
  return &std::next(units.begin(), input_.Below(CountOf(units.size())))->second;
}

// What the application's functions do from now on.
void SetsRun::Plan() {
  constexpr std::array<known::Error, 4> kChecks{
      known::kGenErr, known::kInconsistentValue, known::kWrongValue,
      known::kResourceUnavailable};
  known::Unit* const unit = SomeUnit();
  if (!unit) return;
  unit->check = known::kNone;
  unit->setterRefuses = false;
  unit->apply = static_cast<known::Way>(input_.Below(4));
  if (input_.Below(4) == 0) unit->check = kChecks[input_.Below(4)];
  if (input_.Below(4) == 0) unit->setterRefuses = true;
  Trace("plan: check " + std::to_string(unit->check) + ", apply " +
        std::to_string(static_cast<int>(unit->apply)) + ", setter " +
        std::to_string(unit->setterRefuses));
}

// One that waits is answered, or forgotten, which is genErr.
void SetsRun::Answer() {
  std::vector<known::Unit*> waiting;
  for (auto& [name, object] : objects_) {
    for (auto& [index, unit] : object.store->units) {
      if (unit.later) waiting.push_back(&unit);
    }
  }
  if (waiting.empty()) return;
  known::Unit& unit = *waiting[input_.Below(CountOf(waiting.size()))];
  auto later = *std::exchange(unit.later, std::nullopt);
  const auto error = input_.Below(2) == 0 ? snmpsubagent::SetError::None
                                          : snmpsubagent::SetError::GenErr;
  const auto expected = static_cast<known::Error>(error);
  if (expected == known::kNone || input_.Below(2) == 0) later.Answer(error);
  { const auto forgotten = std::move(later); }
  Trace("answer " + std::to_string(expected));
  sets_.Answer(unit, expected);
}

void SetsRun::Lose() {
  Trace("loss");
  agent_.Lose();
  sets_.Lose();
  agent_.Connect();
  sets_.Pass(ServedAgent::kRetry);
}

// The master agent says nothing for a while; nor does the application.
void SetsRun::Pass() {
  constexpr std::array<std::chrono::seconds, 3> kTimes{10s, 20s, 60s};
  const auto time = kTimes[input_.Below(3)];
  Trace("pass " + std::to_string(time.count()) + " s");
  agent_.Pass(time);
  sets_.Pass(time);
}

void SetsRun::CompareResponses() {
  for (const known::Response& expected : sets_.TakeResponses()) {
    const wire::Pdu pdu = agent_.Receive();
    const auto& response = std::get<wire::Response>(pdu.body);
    Trace("  " + wire::Text(pdu.body) + ", expected " +
          std::to_string(expected.error) + " at " +
          std::to_string(expected.index));
    Require(pdu.header.packetId == expected.packet, "another response is next");
    Require(response.error == expected.error, "another error");
    Require(response.index == expected.index, "another varbind is to blame");
  }
}

void SetsRun::CompareValues() {
  const known::Values values = ValuesOf(objects_, true);
  wire::Get get;
  for (const auto& [name, value] : values) get.ranges.push_back({name, {}, {}});
  const wire::Response response = agent_.Ask(get);
  Require(response.varbinds.size() == values.size(), "a value is missing");
  auto value = values.begin();
  for (const Varbind& varbind : response.varbinds) {
    RequireSame(varbind, value->first, value->second);
    ++value;
  }
}

// All instances in their order, and nothing else.
void SetsRun::CompareWalk() {
  const known::Values values = ValuesOf(objects_, false);
  Oid end = Below(0);
  end.pop_back();
  ++end.back();
  wire::SearchRange range{Below(0), false, end};
  auto value = values.begin();
  while (true) {
    const wire::Response response = agent_.Ask(wire::GetBulk{0, 50, {range}});
    for (const Varbind& found : response.varbinds) {
      if (found.value.type == wire::Type::kEndOfMibView) {
        Require(value == values.end(), "a walk ends too early");
        return;
      }
      Require(value != values.end(), "a walk does not end");
      RequireSame(found, value->first, value->second);
      ++value;
    }
    Require(!response.varbinds.empty(), "a walk shows nothing");
    range.start = response.varbinds.back().name;
  }
}
