// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_SNMPSUBAGENT_H_
#define SNMPSUBAGENT_SNMPSUBAGENT_H_

#include <boost/shared_ptr.hpp>
#include <boost/thread.hpp>
#include <chrono>
#include <map>
#include <string>

#include "IRunnable.h"
#include "ISNMPSubAgent.h"
#include "SnmpSubAgentExport.h"

// Makes the process an AgentX subagent (RFC 2741) of the device's master agent.
//
// An application derives from it, implements ApplicationOperation() and
// OnSubAgentConnected(), and starts it. One thread then connects to the master
// agent over TCP and serves all nodes; the agent library tries again by itself
// when the master is absent or goes away, every 15 seconds (SetPingInterval(),
// or agentXPingInterval in the application's configuration file, changes that).
//
//   state              IsRunning  Start()  Stop()  Connected()
//   constructed        false      1        0       false
//   running            true       2        0       whether the session is up
//   stopped            true       2        0       as it was before Stop()
//   ended by itself    false      1        0       as it was before
//
// A stopped subagent cannot be started again. One that ended by itself, after
// an error of select(), can.
//
// The agent library is set up once per process, by the first subagent that
// runs: name and master address of a later one are not applied, and nodes and
// connection events stay with the first.
//
// Order: construct it, build nodes, register receivers, Start(); at the end
// Stop(), delete the nodes, destroy it. Call Stop() before the destructor of a
// derived class begins: until then the subagent thread may call the overrides.
//
// Threads: Start(), Stop(), IsRunning() and Connected() from any, but none of
// the first three from a callback or under a NetSNMPAgentGuard. Every request,
// with its callbacks, and every connection event runs on the subagent thread,
// or on an application thread that is waiting for the master agent inside a
// call of this library, always holding the lock of NetSNMPAgentGuard.
class SNMPSUBAGENT_EXPORT SNMPSubAgent : public ISNMPSubAgent,
                                         public vela::IRunnable {
 public:
  // A subagent of the master agent on this device: the loopback address, TCP
  // port 705. `name` is the application name: the agent library reads
  // `name`.conf from its configuration directories (snmp_config(5)). Neither
  // constructor starts anything. Throws boost::thread_resource_error.
  explicit SNMPSubAgent(const std::string& name);

  // The same with a master agent elsewhere. A loopback address is written as
  // "localhost".
  SNMPSubAgent(const std::string& name, const std::string& masterAddress,
               int masterPort);

  SNMPSubAgent(const SNMPSubAgent&) = delete;
  SNMPSubAgent& operator=(const SNMPSubAgent&) = delete;

  bool Connected() const override;
  void RegisterSubAgentCallback(const std::string& callbackName,
                                ISNMPSubAgentCallback* callback) override;
  void UnregisterSubAgentCallback(const std::string& callbackName) override;
  void NotifySubAgentCallbacks(int state) override;

  // Stops the thread if it runs. The agent library stays set up and
  // NetSNMPNode::snmpSubAgent_ keeps its value; events are ignored and nodes
  // find themselves disconnected from here on.
  virtual ~SNMPSubAgent();

  // Starts the subagent thread. Returns 1, or 2 if there is one already. Throws
  // boost::thread_resource_error when no thread can be made.
  int Start() override;

  // Interrupts the subagent thread and waits until it has ended; returns 0. No
  // receiver is called. An idle thread ends at once, or within 5 seconds if the
  // process has run out of descriptors; one that waits for the master agent
  // ends after that, see SetReplyTimeout(). Requires: the thread has
  // initialised (wait for a connection event, or for a moment after Start()); a
  // Stop() before that waits for ever. From the subagent thread itself it
  // throws boost::thread_resource_error, and the thread then ends by itself.
  int Stop() override;

  // Whether there is a subagent thread, also one that Stop() has ended.
  bool IsRunning() const override;

  // How long a request of this process waits for the master agent's response
  // and how often it is sent again before the session is closed; 1 second and 5
  // times, which makes 6 seconds, unless set. While a request waits, so does
  // everything else: Stop(), registrations, callbacks, a NetSNMPAgentGuard.
  //
  // Once set, a single request without a response closes the session: the
  // receivers get 0, and the agent library reconnects after the ping interval.
  // With 300 ms and no retries nothing waits longer than a second for a master
  // agent that hangs. Too short a time disconnects one that is merely slow: on
  // a busy device, use seconds.
  //
  // Returns false, with nothing changed, unless 0 < `timeout` <= 30 minutes,
  // `retries` >= 0 and `retries` + 2 timeouts are less than a day, and once
  // there is a subagent thread.
  // Requires: initialize() has not been called.
  bool SetReplyTimeout(std::chrono::milliseconds timeout, int retries);

  // How often an idle session is pinged, and how often the agent library tries
  // to connect to an absent master agent; 15 seconds unless set.
  // agentXPingInterval in the application's configuration file wins. The
  // interval is raised above the time of an attempt, `retries` + 2 reply
  // timeouts.
  //
  // Returns false, with nothing changed, unless 0 < `interval` <= 24 hours, and
  // once there is a subagent thread.
  // Requires: initialize() has not been called.
  bool SetPingInterval(std::chrono::seconds interval);

  // Sets up the agent library, once per process, and makes this the subagent of
  // all nodes. Called by the subagent thread.
  void initialize();

  // One pass of the event loop: waits up to 5 seconds for something to arrive
  // and serves it. A boost interruption point. An application that wants no
  // subagent thread calls initialize() once and this in a loop.
  void process();

  // The body of the subagent thread.
  void threadProc();

  // Takes the agent library's session events (`minorID` 10 start, 11 stop;
  // others are ignored) for the subagent `clientArg`. Returns 0.
  static int snmp_subagent_callback(int majorID, int minorID, void* serverArg,
                                    void* clientArg);

  // Constant after construction.
  std::string masterAddress_;
  int masterPort_;  // TCP
  std::string agentName_;
  // Written while the lock of NetSNMPAgentGuard is held, read by any thread.
  bool connected_;
  // Guarded by mutex_; empty when there is no thread.
  boost::shared_ptr<boost::thread> thread_;
  mutable boost::mutex mutex_;
  // Unguarded, see RegisterSubAgentCallback(). Receivers are borrowed.
  std::map<std::string, ISNMPSubAgentCallback*> callbacks_;
  // Constant once there is a thread; zero for the agent library's own.
  std::chrono::milliseconds replyTimeout_;
  int replyRetries_;
  std::chrono::seconds pingInterval_;
  // Made readable by Stop(), to end the thread's wait; -1 for none.
  int wakeDescriptor_;
};

#endif  // SNMPSUBAGENT_SNMPSUBAGENT_H_
