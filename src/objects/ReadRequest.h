// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_READREQUEST_H_
#define SNMPSUBAGENT_OBJECTS_READREQUEST_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "agentx/Message.h"
#include "agentx/ResponseWriter.h"
#include "agentx/Session.h"
#include "objects/ReadContext.h"
#include "snmpsubagent/detail/ManagedObject.h"

namespace snmpsubagent::detail {

class ObjectIndex;

// Serves one Get, GetNext or GetBulk (RFC 2741, 7.2.3), varbind by varbind. It
// stops at one whose value comes later, and goes on with the answer.
//
// Threads: under the agent's lock.
class ReadRequest : public std::enable_shared_from_this<ReadRequest> {
 public:
  explicit ReadRequest(AgentState& agent) : agent_(agent) {}

  // `index` is that of the request's context, or null if that has no objects.
  // What the request views must stay until Continue() has returned.
  void Begin(const agentx::Request& request, const ObjectIndex* index);

  // Goes on until Response() is complete (true) or a value is to come later
  // (false).
  bool Continue();

  // Keeps what the request views, since Continue() or Resume() has returned
  // false.
  void Suspend();

  // Goes on with the answer; as Continue(). Written calls `write`.
  bool Resume(Answer answer, const std::function<void(ValueWriter&)>& write);

  // Answers that are still to come are ignored.
  void Abandon();
  // Whether its session has gone.
  bool IsAbandoned() const;

  const agentx::Header& Header() const { return header_; }
  std::vector<std::uint8_t>& Response() { return response_; }
  agentx::Time Deadline() const { return deadline_; }

  AgentState& Agent() const { return agent_; }
  ReadContext& Context() { return *context_; }

 private:
  bool IsGet() const { return header_.type == agentx::PduType::Get; }
  // The range to which the present varbind belongs.
  std::size_t Place() const;
  bool IsDone();
  void KeepRanges();

  Answer Serve();
  Answer ServeGet(OidView name);
  Answer ServeNext(OidView start, bool include, OidView end);
  template <typename Read>
  Answer ReadSafely(const ManagedObject& object, const Read& read);
  void Complete(Answer answer);
  bool Refuse();

  AgentState& agent_;
  agentx::Header header_;
  std::uint64_t epoch_ = 0;  // of the agent's session
  const ObjectIndex* index_ = nullptr;
  std::vector<agentx::SearchRange> ranges_;
  std::vector<Oid> kept_;  // what the ranges view once it is suspended

  // Of a GetBulk; every other request has only non-repeaters.
  std::size_t nonRepeaters_ = 0;
  std::size_t maxVarbinds_ = 0;
  std::vector<Oid> last_;         // the names served last, of each range
  std::size_t endedInRound_ = 0;  // ranges that have no more instances

  std::size_t position_ = 0;   // of the varbind that is being served
  std::optional<Oid> absent_;  // an instance that was to come and did not
  ValueType missing_ = ValueType::NoSuchObject;  // what an absent one is

  std::vector<std::uint8_t> response_;
  std::optional<agentx::ResponseWriter> writer_;
  std::optional<ReadContext> context_;
  std::chrono::milliseconds answerTime_{0};  // of the object read last
  agentx::Time deadline_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_READREQUEST_H_
