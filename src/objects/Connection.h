// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_OBJECTS_CONNECTION_H_
#define SNMPSUBAGENT_OBJECTS_CONNECTION_H_

#include <sys/epoll.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "agentx/Session.h"
#include "objects/FileDescriptor.h"
#include "objects/MasterAddress.h"

namespace snmpsubagent::detail {

// Connects a session with its master agent: the socket, the clock, and one
// descriptor that is readable whenever there is something to do.
//
// Nothing in it waits. A name is looked up on a thread of its own.
//
// Threads: every operation under the agent's lock, unless it says otherwise.
class Connection {
 public:
  // `lookUp` runs a function on another thread, and then, whatever came of it,
  // the other one under the agent's lock. `patience` bounds an attempt to
  // connect.
  using LookUp = std::function<void(std::function<void()> lookUp,
                                    std::function<void()> tell)>;
  // Throws std::system_error without descriptors to spare.
  Connection(agentx::Session& session, const MasterAddress& master,
             std::chrono::milliseconds patience, LookUp lookUp);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  int Descriptor() const { return events_.Number(); }

  // What has happened; to be handed to Serve().
  struct Events {
    std::array<epoll_event, 3> events;
    int count;
  };
  // Waits for it, without end or not at all. Needs no lock.
  Events Wait(bool atOnce) const;

  // Makes Descriptor() readable once.
  void Wake();

  // Takes in what has arrived and, when the deadline that Update() has set may
  // have come, does what it is time for: it returns true then.
  bool Serve(const Events& events);

  // Connects, sends and closes as the session wishes, and has Descriptor()
  // become readable at `deadline`, or earlier if the session needs it. To be
  // called whenever something may have been queued.
  void Update(std::optional<agentx::Time> deadline);

  // Ends the session or the attempt, and connects again as after any loss.
  void Abort(const char* reason);

  // Sends what the socket takes of what is left, and is of no use any more: a
  // look-up that is still under way no longer counts. To be called before it is
  // destroyed, which needs no lock then.
  void Close();

 private:
  using Endpoints = std::vector<MasterAddress::Endpoint>;

  void Connect();
  void ConnectTo(Endpoints endpoints);
  void TryNextEndpoint();
  void GiveUpEndpoint(int error);
  bool StartConnecting(const MasterAddress::Endpoint& endpoint);
  void FinishConnecting();
  void Receive(bool mayHaveClosed);
  void Flush();
  void Lose(std::string_view reason);
  void CloseSocket();
  void ServeSocket(std::uint32_t events);
  void MeetDeadlines();
  void Watch(std::uint32_t events);
  void WatchAs(int operation, std::uint32_t events);
  void SetTimer(std::optional<agentx::Time> deadline);

  agentx::Session& session_;
  const MasterAddress master_;
  const std::chrono::milliseconds patience_;
  LookUp lookUp_;

  FileDescriptor events_;  // epoll, over the following
  FileDescriptor wake_;
  FileDescriptor timer_;
  FileDescriptor socket_;
  std::uint32_t socketCount_ = 0;  // tells the events of an earlier one
  std::uint32_t watched_ = 0;
  std::optional<agentx::Time> timerSetTo_;

  bool isClosed_ = false;
  bool connecting_ = false;  // or looking the name up
  std::optional<agentx::Time> connectDeadline_;
  Endpoints endpoints_;  // still to be tried
  std::string failure_;  // of the last one
  // Outlives the connection in a look-up; tells whether it still counts.
  std::shared_ptr<std::uint64_t> attempt_ = std::make_shared<std::uint64_t>(0);
  std::vector<std::uint8_t> received_;
};

}  // namespace snmpsubagent::detail

#endif  // SNMPSUBAGENT_OBJECTS_CONNECTION_H_
