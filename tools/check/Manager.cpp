// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/Manager.h"

#include <cstdlib>
#include <memory>

namespace snmpsubagent::check {
namespace {

// Of requests that change nothing.
constexpr int kRetries = 2;

netsnmp_pdu* Request(int type, const std::vector<Oid>& names) {
  netsnmp_pdu* const request = snmp_pdu_create(type);
  for (const Oid& name : names) {
    snmp_add_null_var(request, name.data(), name.size());
  }
  return request;
}

std::string OpenError(const netsnmp_session& session) {
  int systemError = 0;
  int error = 0;
  char* text = nullptr;
  snmp_error(const_cast<netsnmp_session*>(&session), &systemError, &error,
             &text);
  const std::unique_ptr<char, decltype(&std::free)> owned(text, &std::free);
  return text ? text : "unknown error";
}

}  // namespace

std::string ErrorName(long error) {
  static constexpr const char* kNames[] = {"noError",
                                           "tooBig",
                                           "noSuchName",
                                           "badValue",
                                           "readOnly",
                                           "genErr",
                                           "noAccess",
                                           "wrongType",
                                           "wrongLength",
                                           "wrongEncoding",
                                           "wrongValue",
                                           "noCreation",
                                           "inconsistentValue",
                                           "resourceUnavailable",
                                           "commitFailed",
                                           "undoFailed",
                                           "authorizationError",
                                           "notWritable",
                                           "inconsistentName"};
  constexpr long kNumber = sizeof kNames / sizeof *kNames;
  return error >= 0 && error < kNumber ? kNames[error]
                                       : "error " + std::to_string(error);
}

std::string ErrorText(const Response& response) {
  return response.answered ? ErrorName(response.error) : "no response";
}

Manager::Manager(const Peer& peer) {
  netsnmp_session session;
  snmp_sess_init(&session);
  session.version = SNMP_VERSION_2c;
  session.peername = const_cast<char*>(peer.address.c_str());
  session.community =
      reinterpret_cast<u_char*>(const_cast<char*>(peer.community.c_str()));
  session.community_len = peer.community.size();
  session.timeout = std::chrono::microseconds(peer.timeout).count();
  session_ = snmp_sess_open(&session);
  if (!session_) {
    throw CannotCheck(peer.address + ": " + OpenError(session));
  }
}

Manager::~Manager() { snmp_sess_close(session_); }

Response Manager::Get(const std::vector<Oid>& names) {
  return Send(Request(SNMP_MSG_GET, names));
}

Response Manager::GetNext(const std::vector<Oid>& names) {
  return Send(Request(SNMP_MSG_GETNEXT, names));
}

Response Manager::GetBulk(const Oid& name, long maxRepetitions) {
  netsnmp_pdu* const request = Request(SNMP_MSG_GETBULK, {name});
  request->non_repeaters = 0;
  request->max_repetitions = maxRepetitions;
  return Send(request);
}

Response Manager::Set(const std::vector<Varbind>& varbinds) {
  netsnmp_pdu* const request = snmp_pdu_create(SNMP_MSG_SET);
  for (const Varbind& varbind : varbinds) {
    snmp_pdu_add_variable(request, varbind.name.data(), varbind.name.size(),
                          varbind.value.Type(), varbind.value.Bytes().data(),
                          varbind.value.Bytes().size());
  }
  return Send(request);
}

Response Manager::Send(netsnmp_pdu* request) {
  snmp_sess_session(session_)->retries =
      request->command == SNMP_MSG_SET ? 0 : kRetries;
  netsnmp_pdu* received = nullptr;
  const int status = snmp_sess_synch_response(session_, request, &received);
  const std::unique_ptr<netsnmp_pdu, decltype(&snmp_free_pdu)> owned(
      received, &snmp_free_pdu);
  Response response;
  if (status != STAT_SUCCESS || !received) return response;
  response.answered = true;
  response.error = received->errstat;
  response.index = static_cast<std::size_t>(received->errindex);
  for (const netsnmp_variable_list* variable = received->variables; variable;
       variable = variable->next_variable) {
    response.varbinds.push_back(
        {Oid(variable->name, variable->name + variable->name_length),
         Value(*variable)});
  }
  return response;
}

}  // namespace snmpsubagent::check
