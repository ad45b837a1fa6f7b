// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "ScriptedAgent.h"

#include <sys/select.h>

#include <stdexcept>

using check::Oid;
using check::Value;
using check::Varbind;

Oid ScalarName(oid number) { return kModule + Oid{1, number, 0}; }

Oid CellName(oid table, oid column, const Oid& row) {
  return kModule + Oid{2, table, 1, column} + row;
}

Value Integer(long number) { return Value::OfNumber(ASN_INTEGER, number); }

Value Number(u_char type, long number) { return Value::OfNumber(type, number); }

Value Text(const std::string& octets) {
  return Value::OfOctets(ASN_OCTET_STR, octets);
}

namespace {

Value Exception(u_char type) { return Value::OfOctets(type, ""); }

}  // namespace

ScriptedAgent::ScriptedAgent() = default;

void ScriptedAgent::Start() {
  netsnmp_session session;
  snmp_sess_init(&session);
  session.version = SNMP_DEFAULT_VERSION;
  session.callback = &ScriptedAgent::OnPdu;
  session.callback_magic = this;
  netsnmp_transport* const transport =
      netsnmp_transport_open_server("snmp", ("udp:" + port_.Address()).c_str());
  session_ = transport ? snmp_sess_add(&session, transport, nullptr, nullptr)
                       : nullptr;
  if (!session_) throw std::runtime_error("no SNMP agent can be opened");
  thread_ = std::thread([this] { Serve(); });
}

ScriptedAgent::~ScriptedAgent() {
  stop_ = true;
  if (thread_.joinable()) thread_.join();
  if (session_) snmp_sess_close(session_);
}

check::Peer ScriptedAgent::Peer() const {
  check::Peer peer;
  peer.address = port_.Address();
  return peer;
}

void ScriptedAgent::Serve() {
  const int descriptor = snmp_sess_transport(session_)->sock;
  while (!stop_) {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(descriptor, &readable);
    timeval atMost{0, 20000};
    if (select(descriptor + 1, &readable, nullptr, nullptr, &atMost) > 0) {
      snmp_sess_read(session_, &readable);
    }
  }
}

int ScriptedAgent::OnPdu(int operation, netsnmp_session*, int, netsnmp_pdu* pdu,
                         void* agent) {
  if (operation == NETSNMP_CALLBACK_OP_RECEIVED_MESSAGE) {
    static_cast<ScriptedAgent*>(agent)->Answer(*pdu);
  }
  return 1;
}

void ScriptedAgent::Answer(const netsnmp_pdu& request) {
  std::vector<Varbind> asked;
  for (auto* at = request.variables; at; at = at->next_variable) {
    asked.push_back({Oid(at->name, at->name + at->name_length), Value(*at)});
  }
  const long status = error ? error(request.command, asked) : 0;
  if (status < 0) return;
  netsnmp_pdu* const response =
      snmp_clone_pdu(const_cast<netsnmp_pdu*>(&request));
  response->command = SNMP_MSG_RESPONSE;
  response->errstat = status;
  response->errindex = status ? 1 : 0;
  if (status == 0) {
    snmp_free_varbind(response->variables);
    response->variables = nullptr;
    for (const Varbind& varbind : AnswerTo(request, asked)) {
      snmp_pdu_add_variable(response, varbind.name.data(), varbind.name.size(),
                            varbind.value.Type(), varbind.value.Bytes().data(),
                            varbind.value.Bytes().size());
    }
  }
  if (!snmp_sess_send(session_, response)) snmp_free_pdu(response);
}

std::vector<Varbind> ScriptedAgent::AnswerTo(
    const netsnmp_pdu& request, const std::vector<Varbind>& asked) {
  std::vector<Varbind> answer;
  if (request.command == SNMP_MSG_SET) {
    if (store) {
      store(asked);
    } else {
      for (const Varbind& varbind : asked)
        objects[varbind.name] = varbind.value;
    }
    return asked;
  }
  if (request.command == SNMP_MSG_GETBULK) {
    Varbind at = asked.at(0);
    for (long i = 0; i < request.max_repetitions; ++i) {
      at = Next(at.name);
      answer.push_back(at);
      if (at.value.IsException()) break;
    }
    return answer;
  }
  for (const Varbind& varbind : asked) {
    answer.push_back(request.command == SNMP_MSG_GETNEXT
                         ? Next(varbind.name)
                         : Varbind{varbind.name, Get(varbind.name)});
  }
  return answer;
}

Value ScriptedAgent::Get(const Oid& name) const {
  if (get) {
    if (const auto value = get(name)) return *value;
  }
  const auto found = objects.find(name);
  return found == objects.end() ? Exception(SNMP_NOSUCHINSTANCE)
                                : found->second;
}

Varbind ScriptedAgent::Next(const Oid& name) const {
  if (next) {
    if (const auto varbind = next(name)) return *varbind;
  }
  const auto found = objects.upper_bound(name);
  return found == objects.end() ? Varbind{name, Exception(SNMP_ENDOFMIBVIEW)}
                                : Varbind{found->first, found->second};
}
