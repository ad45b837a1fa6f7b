// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_STRESS_FUZZ_SETSRUN_H_
#define SNMPSUBAGENT_TESTS_STRESS_FUZZ_SETSRUN_H_

#include <snmpsubagent.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "Input.h"
#include "KnownObjects.h"
#include "KnownSets.h"
#include "ServedAgent.h"

// Where the objects of a run are.
constexpr char kSubtree[] = "1.3.6.1.4.1.32473.7";
known::wire::Oid Below(std::uint32_t object);

// What the application's functions do about a scalar or a row.
inline snmpsubagent::SetError CheckOf(const known::Unit& unit) {
  if (unit.check == known::kGenErr) throw std::runtime_error("a check");
  return static_cast<snmpsubagent::SetError>(unit.check);
}
inline snmpsubagent::SetError AnswerOf(const known::Unit& unit) {
  if (unit.apply == known::Way::Throw) throw std::runtime_error("an apply");
  return unit.apply == known::Way::Refuse
             ? snmpsubagent::SetError::ResourceUnavailable
             : snmpsubagent::SetError::None;
}
inline snmpsubagent::SetError ApplyOf(known::Sets& sets,
                                      const known::Unit& unit) {
  sets.TellApplied(unit);
  return AnswerOf(unit);
}
inline void ApplyLater(known::Sets& sets, known::Unit& unit,
                       const snmpsubagent::Later<snmpsubagent::SetError>& l) {
  sets.TellApplied(unit);
  if (unit.apply == known::Way::Later) {
    unit.later = l;
  } else {
    l.Answer(AnswerOf(unit));
  }
}

// Served objects, the master agent's and the application's part, in any order;
// and the reference, which predicts every response and every value.
class SetsRun {
 public:
  // All are borrowed. `change` has the application change something, also what
  // is known.
  SetsRun(Input& input, ServedAgent& agent, known::Objects& objects,
          known::Sets& sets, std::function<void()> change);

  void Play();

 private:
  void Step();
  void Test();
  void Commit();
  void Undo();
  void Cleanup();
  void Plan();
  void Answer();
  void Lose();
  void Pass();
  void CompareResponses();
  void CompareValues();
  void CompareWalk();

  std::uint32_t SomeSet() { return 1 + input_.Below(8) / 7; }
  known::wire::Varbind SomeVarbind();
  known::Unit* SomeUnit();

  Input& input_;
  ServedAgent& agent_;
  known::Objects& objects_;
  known::Sets& sets_;
  std::function<void()> change_;
};

#endif  // SNMPSUBAGENT_TESTS_STRESS_FUZZ_SETSRUN_H_
