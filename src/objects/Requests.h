// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_REQUESTS_H_
#define SNMPSUBAGENT_OBJECTS_REQUESTS_H_

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "agentx/Session.h"
#include "objects/ObjectIndex.h"
#include "objects/ReadRequest.h"
#include "objects/Transaction.h"

namespace snmpsubagent::detail {

// All requests of an agent: those that are being served, those that wait for an
// answer, and the SETs that are under way.
//
// Threads: under the agent's lock.
class Requests {
 public:
  explicit Requests(AgentState& agent) : agent_(agent) {}

  // The objects of a context.
  ObjectIndex& IndexOf(const std::string& context) { return indexes_[context]; }

  // Serves a request; `response` stays empty if it is answered later.
  void Serve(const agentx::Request& request,
             std::vector<std::uint8_t>& response);

  // Goes on with a read request whose answer has come.
  void Resume(const std::shared_ptr<ReadRequest>& request, Answer answer,
              const std::function<void(ValueWriter&)>& write);

  // The session is gone: nothing is answered, what SETs have changed is undone.
  void Abandon();
  // The agent has been stopped: SETs that wait for an answer are undone without
  // it.
  void GiveUp();

  bool IsChangedByOther(const Transaction& transaction,
                        const ManagedObject& object) const;

  std::optional<agentx::Time> NextDeadline() const;
  // Ends what has waited for too long.
  void Advance(agentx::Time now);

 private:
  const ObjectIndex* FindIndex(std::string_view context) const;
  void Read(const agentx::Request& request,
            std::vector<std::uint8_t>& response);
  bool IsSuspended(const std::shared_ptr<ReadRequest>& request) const;
  void Set(const agentx::Request& request);
  std::shared_ptr<Transaction> Find(std::uint32_t id) const;
  template <typename End>
  void ForEachTransaction(const End& end);
  void ForgetEnded();

  AgentState& agent_;
  std::map<std::string, ObjectIndex, std::less<>> indexes_;
  std::shared_ptr<ReadRequest>
      idle_;  // for the next one, which needs no memory
  std::vector<std::shared_ptr<ReadRequest>> suspended_;
  std::vector<std::shared_ptr<Transaction>> transactions_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_REQUESTS_H_
