// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_TRANSACTION_H_
#define SNMPSUBAGENT_OBJECTS_TRANSACTION_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "agentx/Message.h"
#include "agentx/Session.h"
#include "snmpsubagent/Later.h"
#include "snmpsubagent/detail/ManagedObject.h"

namespace snmpsubagent::detail {

class ModuleState;
class ObjectIndex;
class SetCall;

// One SET, from its first TestSet to CleanupSet or UndoSet (RFC 2741, 7.2.4).
//
//   phase        TestSet   CommitSet       UndoSet        CleanupSet
//   Tested       stages    -> Committing   drops          drops
//   Committing   refused   response later  -> Undoing     -> Undoing
//   Committed    refused   noError         -> Undoing     final
//   Undoing      refused   response later  response later
//   Ended        refused   commitFailed    noError
//
// A master agent may send each of them several times, once for each
// registration that the SET concerns: those behind the first find it done.
//
// Threads: under the agent's lock.
class Transaction : public std::enable_shared_from_this<Transaction> {
 public:
  Transaction(AgentState& agent, std::uint32_t id);

  // Whether requests of that number, of the session that there is now, are
  // meant for it.
  bool IsNamed(std::uint32_t id) const;
  bool HasEnded() const {
    return phase_ == Phase::Ended && !running_ && !failureUntold_;
  }

  // Stages all varbinds of the request and asks the application's checks; the
  // response is sent. A varbind that is refused ends the SET.
  void Test(const agentx::Request& request, const ObjectIndex* index);
  void Commit(const agentx::Header& request);
  void Undo(const agentx::Header& request);
  void Cleanup();

  // The session is gone, or the master agent has forgotten it: undoes what has
  // been committed.
  void Abandon();
  // The same, and nothing is waited for any more.
  void GiveUp();

  // That is being staged, counted from 1.
  std::uint16_t CurrentVarbind() const { return varbind_; }
  Change* Find(const ManagedObject& object) const;
  void Add(std::unique_ptr<Change> change);
  const std::vector<std::unique_ptr<Change>>& Changes() const {
    return changes_;
  }

  // For Change::Commit() and Change::Undo() that are answered later.
  std::shared_ptr<LaterCall> MakeCall();
  bool Answered(SetError& error) const;
  // The object whose step is to be answered later.
  OidView CurrentName() const;
  // The answer has come while nothing of the transaction was running.
  void Resume(SetError error);

  // When an answer that is to come has taken too long, or the master agent has
  // said nothing for too long.
  agentx::Time Deadline() const { return deadline_; }
  void OnDeadline();

  AgentState& Agent() const { return agent_; }

 private:
  enum class Phase { Tested, Committing, Committed, Undoing, Ended };
  // A master agent that has not said for so long how a SET goes on has lost it.
  static constexpr std::chrono::seconds kForgotten{60};

  struct Failure {
    agentx::Error error = agentx::Error::None;
    std::uint16_t index = 0;
  };
  // Modules that are to be asked, each with the first varbind that names it.
  using NamedModules =
      std::vector<std::pair<std::shared_ptr<ModuleState>, std::uint16_t>>;
  // Tells that a change is at work, also if it ends with an exception.
  class Running {
   public:
    explicit Running(Transaction& transaction) : transaction_(transaction) {
      transaction_.running_ = true;
    }
    ~Running() { transaction_.running_ = false; }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

   private:
    Transaction& transaction_;
  };

  Failure Stage(const agentx::Request& request, const ObjectIndex* index,
                NamedModules& modules);
  static void NoteModule(ModuleState& module, std::uint16_t varbind,
                         NamedModules& modules);
  Failure Check(std::size_t first, NamedModules& modules);
  Failure CheckChange(std::size_t which);

  void Proceed();
  void Take(Step step);
  // The one that is being committed or undone.
  Change& Current() const;
  Step CallCurrent();
  Step ResumeCurrent(SetError error);
  Step FailCurrent();
  void StartUndo(std::size_t count);
  void EndUndo();
  void Respond(std::vector<agentx::Header>& waiting, agentx::Error error,
               std::uint16_t index = 0);
  void Wait();

  AgentState& agent_;
  const std::uint32_t id_;
  const std::uint64_t epoch_;  // of the agent's session
  Phase phase_ = Phase::Tested;
  std::vector<std::unique_ptr<Change>> changes_;
  // Which one staged each change; 0 in another request than the first.
  std::vector<std::uint16_t> varbinds_;
  std::uint16_t varbind_ = 0;  // that is being staged

  // To be committed next; undoing, how many are still to be undone.
  std::size_t next_ = 0;
  bool running_ = false;  // a change is at work, somewhere up the stack
  bool waiting_ = false;  // for an answer that is to come
  bool undoWanted_ = false;
  bool givenUp_ = false;   // nothing is waited for any more
  bool isTested_ = false;  // a TestSet has been granted
  Failure failure_;        // that ended committing
  bool undoFailed_ = false;
  // An UndoSet is to come that asks whether undoing has failed.
  bool failureUntold_ = false;
  std::shared_ptr<SetCall> call_;
  agentx::Time deadline_;

  // Requests that wait for their response.
  std::vector<agentx::Header> commits_;
  std::vector<agentx::Header> undos_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_TRANSACTION_H_
