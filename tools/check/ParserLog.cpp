// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "check/ParserLog.h"

#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>

#include <string_view>

namespace snmpsubagent::check {
namespace {

constexpr int kMostLines = 3;

}  // namespace

ParserLog::ParserLog()
    : handler_(
          netsnmp_register_loghandler(NETSNMP_LOGHANDLER_CALLBACK, LOG_DEBUG)) {
  snmp_register_callback(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_LOGGING,
                         &ParserLog::OnLine, this);
}

ParserLog::~ParserLog() {
  snmp_unregister_callback(SNMP_CALLBACK_LIBRARY, SNMP_CALLBACK_LOGGING,
                           &ParserLog::OnLine, this, 1);
  netsnmp_remove_loghandler(handler_);
}

int ParserLog::OnLine(int, int, void* message, void* log) {
  ParserLog& self = *static_cast<ParserLog*>(log);
  std::string_view line = static_cast<snmp_log_message*>(message)->msg;
  if (++self.lines_ > kMostLines) return 0;
  while (!line.empty() && line.back() == '\n') line.remove_suffix(1);
  if (!self.text_.empty()) self.text_ += ", ";
  self.text_ += line;
  return 0;
}

std::string ParserLog::Text() const {
  return lines_ > kMostLines ? text_ + ", ..." : text_;
}

}  // namespace snmpsubagent::check
