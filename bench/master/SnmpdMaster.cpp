// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "master/SnmpdMaster.h"

// clang-format off
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
// clang-format on

#include <stdexcept>
#include <string>
#include <vector>

#include "testkit/Deadlines.h"
#include "testkit/WaitFor.h"

namespace agentx = testkit::agentx;

namespace {

using testkit::agentx::Varbind;

constexpr long kTimeout = 60'000'000;  // microseconds

// Initialises the manager's side of Net-SNMP, without the machine's
// configuration.
void SetUpManager() {
  static const bool done = [] {
    setenv("MIBS", "", 1);
    netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID,
                           NETSNMP_DS_LIB_DONT_READ_CONFIGS, 1);
    netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID,
                           NETSNMP_DS_LIB_DISABLE_PERSISTENT_LOAD, 1);
    netsnmp_ds_set_boolean(NETSNMP_DS_LIBRARY_ID,
                           NETSNMP_DS_LIB_DISABLE_PERSISTENT_SAVE, 1);
    init_snmp("bench-manager");
    return true;
  }();
  static_cast<void>(done);
}

std::vector<oid> Name(const agentx::Oid& name) {
  return {name.begin(), name.end()};
}

netsnmp_pdu* NewPdu(int command,
                    const std::vector<agentx::SearchRange>& asked) {
  netsnmp_pdu* const pdu = snmp_pdu_create(command);
  for (const agentx::SearchRange& range : asked) {
    const std::vector<oid> name = Name(range.start);
    snmp_add_null_var(pdu, name.data(), name.size());
  }
  return pdu;
}

netsnmp_pdu* NewPdu(const std::vector<Varbind>& values) {
  netsnmp_pdu* const pdu = snmp_pdu_create(SNMP_MSG_SET);
  for (const Varbind& value : values) {
    const std::vector<oid> name = Name(value.name);
    const long number = std::get<std::int32_t>(value.value.content);
    snmp_pdu_add_variable(pdu, name.data(), name.size(), ASN_INTEGER, &number,
                          sizeof number);
  }
  return pdu;
}

netsnmp_pdu* NewPdu(const agentx::Body& request) {
  if (const auto* get = std::get_if<agentx::Get>(&request)) {
    return NewPdu(SNMP_MSG_GET, get->ranges);
  }
  if (const auto* getNext = std::get_if<agentx::GetNext>(&request)) {
    return NewPdu(SNMP_MSG_GETNEXT, getNext->ranges);
  }
  return NewPdu(std::get<agentx::TestSet>(request).varbinds);
}

agentx::Value ValueOf(const netsnmp_variable_list& variable) {
  const auto type = static_cast<agentx::Type>(variable.type);
  switch (type) {
    case agentx::Type::kInteger:
      return {type, static_cast<std::int32_t>(*variable.val.integer)};
    case agentx::Type::kGauge32:
      return {type, static_cast<std::uint32_t>(*variable.val.integer)};
    case agentx::Type::kOctetString:
      return {type, std::string(variable.val.string,
                                variable.val.string + variable.val_len)};
    default:
      return {type, {}};
  }
}

agentx::Response ResponseOf(const netsnmp_pdu& pdu) {
  agentx::Response response;
  response.error = static_cast<std::uint16_t>(pdu.errstat);
  response.index = static_cast<std::uint16_t>(pdu.errindex);
  for (const auto* variable = pdu.variables; variable != nullptr;
       variable = variable->next_variable) {
    response.varbinds.push_back(
        {{variable->name, variable->name + variable->name_length},
         ValueOf(*variable)});
  }
  return response;
}

}  // namespace

SnmpdMaster::SnmpdMaster() {
  SetUpManager();
  std::string address = agent_.Address();
  std::string community = "public";
  netsnmp_session settings;
  snmp_sess_init(&settings);
  settings.version = SNMP_VERSION_2c;
  settings.peername = address.data();
  settings.community = reinterpret_cast<u_char*>(community.data());
  settings.community_len = community.size();
  settings.timeout = kTimeout;
  settings.retries = 0;
  manager_ = snmp_open(&settings);
  if (manager_ == nullptr) throw std::runtime_error("no session with snmpd");
}

SnmpdMaster::~SnmpdMaster() { snmp_close(manager_); }

void SnmpdMaster::Connect(const Expected& expected) {
  const agentx::Get probe{{{expected.object, true, {}}}};
  const auto served = [&] {
    const agentx::Type type = Put(probe).varbinds.at(0).value.type;
    return type != agentx::Type::kNoSuchObject &&
           type != agentx::Type::kNoSuchInstance;
  };
  if (!testkit::WaitFor(served, testkit::Deadlines::Session())) {
    throw std::runtime_error("the subagent has not connected to snmpd");
  }
}

agentx::Response SnmpdMaster::Put(const agentx::Body& request) {
  netsnmp_pdu* answer = nullptr;
  const int status = snmp_synch_response(manager_, NewPdu(request), &answer);
  if (status != STAT_SUCCESS || answer == nullptr) {
    throw std::runtime_error("snmpd does not answer");
  }
  const agentx::Response response = ResponseOf(*answer);
  snmp_free_pdu(answer);
  return response;
}
