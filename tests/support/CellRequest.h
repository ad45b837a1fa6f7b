// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_CELLREQUEST_H_
#define SNMPSUBAGENT_TESTS_CELLREQUEST_H_

#include <string>
#include <vector>

#include "NetSNMP.h"
#include "NetSNMPNodeData.h"
#include "support/Oid.h"

// A manager's request for one object of a table, as the agent library hands it
// to a handler. It lasts over all phases of a SET.
class CellRequest {
 public:
  // Part of `pdu`, which must outlive it; of none when a handler is called by
  // others than the agent library.
  explicit CellRequest(const Oid& oid, netsnmp_agent_session* pdu = nullptr);
  ~CellRequest();
  CellRequest(const CellRequest&) = delete;
  CellRequest& operator=(const CellRequest&) = delete;

  // What the manager wants to set.
  void SetInteger(long number);

  // The same with any type and bytes.
  void SetBytes(unsigned char type, const std::string& bytes);

  // Marks the request as the agent library's table and iterator do: for the
  // cell of `row` in `column`.
  void Choose(std::vector<NetSNMPNodeData*>* row, unsigned int column);

  void MarkProcessed() { request_.processed = 1; }

  // Links `next` behind this one.
  void Append(CellRequest& next) { request_.next = &next.request_; }

  // Gives the request, with those linked, to the handler of the table `name`
  // itself.
  int HandleAs(std::string name, int mode);

  // Gives it to all the handlers of `registration`, the agent library's own
  // ones first.
  int Serve(netsnmp_handler_registration* registration, int mode);

  unsigned char Type() const { return request_.requestvb->type; }
  Oid Name() const;
  long Integer() const { return *request_.requestvb->val.integer; }
  std::string Text() const;

  int Status() const { return request_.status; }
  bool Processed() const { return request_.processed != 0; }

 private:
  netsnmp_agent_request_info agentRequest_{};
  netsnmp_request_info request_{};
  netsnmp_table_request_info tableInfo_{};
};

#endif  // SNMPSUBAGENT_TESTS_CELLREQUEST_H_
