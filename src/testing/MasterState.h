// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_MASTERSTATE_H_
#define SNMPSUBAGENT_TESTING_MASTERSTATE_H_

#include <chrono>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "snmpsubagent/testing/Master.h"
#include "testing/Inbox.h"
#include "testing/Link.h"
#include "testing/Monitor.h"
#include "testing/Regions.h"
#include "testkit/FileDescriptor.h"
#include "testkit/ScratchDirectory.h"

namespace snmpsubagent::testing::internal {

// A request to the subagent of that session.
struct Question {
  std::uint32_t session;
  wire::Body body;
};

// What lies behind a Master: the sessions, on a thread of its own, and what is
// registered.
//
// Threads: any. Operations that take a lock want one of its Lock().
class MasterState {
 public:
  using Guard = std::unique_lock<std::mutex>;

  // Notifications go into `inbox`, which is borrowed.
  explicit MasterState(Inbox& inbox);
  ~MasterState();
  MasterState(const MasterState&) = delete;
  MasterState& operator=(const MasterState&) = delete;

  std::string Address() const { return "unix:" + path_; }

  Guard Lock() { return monitor_.Lock(); }
  // Waits as Monitor does. Throws TimedOut, which says what for.
  void WaitUntil(Guard& lock, const std::function<bool()>& condition,
                 const std::function<std::string()>& what);

  const std::string& Context(const Guard&) const { return context_; }
  void SetContext(const Guard&, std::string context) {
    context_ = std::move(context);
  }
  std::vector<Registration> Registrations(const Guard&) const;
  std::vector<Segment> Segments(const Guard&) {
    return regions_.SegmentsIn(context_);
  }
  std::vector<Capability> Capabilities(const Guard&) const;
  bool IsAlone(const Guard&) const { return links_.empty(); }

  std::uint32_t NewTransaction(const Guard&) { return ++lastTransaction_; }
  // The responses in the order of the questions; nothing from a subagent that
  // goes away meanwhile. Throws TimedOut.
  std::vector<std::optional<wire::Response>> Ask(
      Guard& lock, const std::vector<Question>& questions,
      std::uint32_t transaction);
  // Sends what has no response.
  void Tell(const Guard&, const Question& question, std::uint32_t transaction);

  void Listen(const Guard&);
  void StopListening(const Guard&);
  void Disconnect(const Guard&);

  // Waits until the subagents have nothing more to say, as long as no time
  // passes.
  void Settle();

 private:
  struct AddedCapability {
    std::uint32_t session;
    Capability capability;
  };

  void AwaitAnswers(Guard& lock, const std::function<bool()>& areThere);
  void Loop();
  void Serve(Link& link);
  void Handle(Link& link, const wire::Pdu& message);
  std::uint16_t Grant(Link& link, const wire::Pdu& message);
  void Accept();
  void Remove(std::uint32_t session);
  Link* Find(std::uint32_t session) const;
  bool IsQuiet();
  std::vector<Question> QuestionOfEach() const;
  std::uint32_t UpTime() const;
  void Wake();

  Inbox& inbox_;
  Monitor monitor_;
  testkit::ScratchDirectory directory_;
  const std::string path_;
  testkit::FileDescriptor wake_;
  testkit::FileDescriptor listener_;
  std::vector<std::unique_ptr<Link>> links_;
  // Ended here, and not by the subagents yet.
  std::vector<testkit::FileDescriptor> leaving_;
  // Of the requests that wait: whether their responses are there.
  std::list<const std::function<bool()>*> asking_;
  Regions regions_;
  std::vector<AddedCapability> capabilities_;
  std::string context_;
  std::uint32_t lastSession_ = 0;
  std::uint32_t lastTransaction_ = 0;
  std::uint64_t handled_ = 0;  // messages of subagents
  std::chrono::steady_clock::time_point start_;
  bool ending_ = false;
  std::thread thread_;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_MASTERSTATE_H_
