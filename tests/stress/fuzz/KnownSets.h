// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNSETS_H_
#define SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNSETS_H_

#include <chrono>
#include <cstdint>
#include <list>
#include <set>
#include <utility>
#include <vector>

#include "KnownObjects.h"

// The reference of SETs: from the messages of a master agent and what the
// application does, which responses are to come and what managers see then.
namespace known {

struct Response {
  std::uint32_t packet;
  std::uint16_t error;
  std::uint16_t index;
};

class Sets {
 public:
  using Time = std::chrono::milliseconds;

  // A function that answers later has to do so within `answerTime`.
  Sets(Objects& objects, Time answerTime)
      : objects_(objects), answerTime_(answerTime) {}

  // The phases of a SET (RFC 2741, 7.2.4). `packet` is that of the request.
  void Test(std::uint32_t id, std::uint32_t packet,
            const std::vector<wire::Varbind>& varbinds);
  void Commit(std::uint32_t id, std::uint32_t packet);
  void Undo(std::uint32_t id, std::uint32_t packet);
  void Cleanup(std::uint32_t id);

  // The session is gone.
  void Lose();
  // An Apply function has answered.
  void Answer(const Unit& unit, Error error);
  // The application has changed a row, or has put or erased one, and has said
  // so.
  void NoteChange(const Unit& unit);
  void NoteOvertaken(const Unit& unit);
  // Time has passed, and whoever was to say something has not.
  void Pass(Time time);

  // The responses that are to come since the last call, in their order.
  std::vector<Response> TakeResponses() {
    return std::exchange(responses_, {});
  }
  // An Apply function has been called.
  void TellApplied(const Unit& unit) { applied_.push_back(&unit); }
  // Whether those that were to be have been since the last call, in their
  // order.
  bool AreAppliedInOrder() {
    return std::exchange(applied_, {}) == std::exchange(toBeApplied_, {});
  }
  // A Changed function has been called.
  void TellFinal() { --finals_; }
  // Whether each has been that was to be.
  bool EachIsFinal() const { return finals_ == 0; }

 private:
  enum class Phase { Tested, Committing, Committed, Undoing, Ended };
  enum class Step { Done, Refused, Waiting };

  // What a SET makes of a scalar or a row.
  struct Change {
    Store* store;
    Unit* unit;
    std::uint16_t varbind;
    State before;
    State after;
    int action = 0;
    std::uint16_t actionVarbind = 0;
    std::set<unsigned int> written = {};  // cells
    bool isChecked = false;
    bool isChanged = false;    // by the application
    bool isOvertaken = false;  // the row is the application's, or gone
    bool isPut = false;

    bool IsNothing() const {
      return before.status == kAbsent && after.status == kAbsent;
    }
    int Storage() const;
  };
  struct Set {
    std::uint32_t id;
    bool isLost = false;  // with its session
    int tests = 0;
    Phase phase = Phase::Tested;
    std::vector<Change> changes;
    std::size_t next = 0;
    bool waiting = false;
    bool undoWanted = false;
    bool undoFailed = false;
    Time deadline{0};
    std::uint16_t failure = 0;  // the varbind that ended committing
    std::vector<std::uint32_t> commits;
    std::vector<std::uint32_t> undos;
  };
  struct Failure {
    Error error = kNone;
    std::uint16_t varbind = 0;
  };
  using SetList = std::list<Set>;

  Set* Find(std::uint32_t id);
  void ForgetEnded();
  void Abandon(Set& set);
  static Change& Waiting(Set& set);
  void Resume(Set& set, Error error);
  void Respond(std::vector<std::uint32_t>& packets, Error error,
               std::uint16_t index);

  Failure StageAll(Set& set, const std::vector<wire::Varbind>& varbinds);
  Error Stage(Set& set, const wire::Varbind& varbind, std::uint16_t number);
  Error StageScalar(Set& set, Store& store, const Column& column,
                    const wire::Value& value, std::uint16_t number);
  Error StageCell(Set& set, Store& store, const Column& column,
                  const wire::Oid& index, const wire::Value& value,
                  std::uint16_t number);
  Change* FindChange(Set& set, const Unit& unit);
  bool IsChangedByOther(const Set& set, const Unit& unit) const;

  Failure CheckAll(Set& set, std::size_t first);
  Failure CheckOne(Change& change) const;
  Error DecideNew(Change& change) const;
  static Error DecideExisting(Change& change);
  bool IsFullFor(const Change& change) const;

  void Proceed(Set& set);
  void Take(Set& set, Step step);
  void StartUndo(Set& set, std::size_t count);
  void EndUndo(Set& set);
  static bool StillAllowed(Change& change);
  static bool MayUndo(Change& change);
  static bool KeepChanges(Change& change);
  static void ReleaseStatus(Change& change);
  static void Restore(Change& change);
  static bool SetterRefuses(const Change& change);
  Step CommitOne(Change& change);
  Step UndoOne(Change& change);
  Step Apply(Change& change);

  Objects& objects_;
  const Time answerTime_;
  Time now_{0};
  SetList sets_;
  std::vector<Response> responses_;
  std::vector<const Unit*> applied_;
  std::vector<const Unit*> toBeApplied_;
  int finals_ = 0;  // Changed functions that are still to be called
};

}  // namespace known

#endif  // SNMPSUBAGENT_TESTS_STRESS_FUZZ_KNOWNSETS_H_
