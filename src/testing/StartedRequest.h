// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTING_STARTEDREQUEST_H_
#define SNMPSUBAGENT_TESTING_STARTEDREQUEST_H_

#include <functional>
#include <future>

#include "snmpsubagent/testing/Response.h"

namespace snmpsubagent::testing::internal {

// A request that a thread of its own carries out, and what others wait for: its
// first message, and its response.
class StartedRequest {
 public:
  // Each to be called once.
  std::future<void> FirstMessage() { return sent_.get_future(); }
  std::future<Response> Result() { return response_.get_future(); }

  // Carries it out on the calling thread.
  void Run(const std::function<Response()>& answer);

  // To be called by whoever carries out requests, on its thread: after each
  // message; with the response, before others can learn that there is nothing
  // left to do. They do nothing outside of Run().
  static void Sent();
  static void Answered(const Response& response);

 private:
  void TellSent();
  void TellAnswered(const Response& response);

  std::promise<void> sent_;
  std::promise<Response> response_;
  bool isSent_ = false;
  bool isAnswered_ = false;
};

}  // namespace snmpsubagent::testing::internal

#endif  // SNMPSUBAGENT_TESTING_STARTEDREQUEST_H_
