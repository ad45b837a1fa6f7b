// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_REQUEST_H_
#define SNMPSUBAGENT_TESTS_REQUEST_H_

#include <string>

#include "NetSNMP.h"
#include "support/Oid.h"

// One request as the agent library hands it to a handler.
class Request {
 public:
  Request(const Oid& oid, int mode);
  ~Request();
  Request(const Request&) = delete;
  Request& operator=(const Request&) = delete;

  // What the manager wants to set.
  void SetInteger(long value);

  // Links `next` behind this one.
  void Append(Request& next) { request_.next = &next.request_; }

  // Gives the request to the handler of the scalar `name` itself.
  int HandleAs(std::string name);

  // Gives it to all the handlers of `registration`, the agent library's own
  // ones first.
  int Serve(netsnmp_handler_registration* registration);

  const variable_list& Varbind() const { return *request_.requestvb; }
  Oid Name() const;
  int Status() const { return request_.status; }
  bool Processed() const { return request_.processed != 0; }

 private:
  netsnmp_agent_request_info agentRequest_{};
  netsnmp_request_info request_{};
};

#endif  // SNMPSUBAGENT_TESTS_REQUEST_H_
