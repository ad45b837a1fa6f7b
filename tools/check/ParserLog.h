// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_PARSERLOG_H_
#define SNMPSUBAGENT_TOOLS_CHECK_PARSERLOG_H_

#include <string>

struct netsnmp_log_handler_s;

namespace snmpsubagent::check {

// Keeps what Net-SNMP logs as long as this exists: its MIB parser has no other
// way to say what is wrong with a file.
class ParserLog {
 public:
  ParserLog();
  ~ParserLog();
  ParserLog(const ParserLog&) = delete;
  ParserLog& operator=(const ParserLog&) = delete;

  // The lines, with a comma between them; the first few of many.
  std::string Text() const;

 private:
  static int OnLine(int, int, void* message, void* log);

  netsnmp_log_handler_s* handler_;
  std::string text_;
  int lines_ = 0;
};

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_PARSERLOG_H_
