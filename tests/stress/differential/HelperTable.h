// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_DIFFERENTIAL_HELPERTABLE_H_
#define SNMPSUBAGENT_TESTS_DIFFERENTIAL_HELPERTABLE_H_

#include <map>
#include <memory>
#include <string>
#include <vector>

// clang-format off
#include <net-snmp/net-snmp-config.h>
#include <net-snmp/net-snmp-includes.h>
#include <net-snmp/agent/net-snmp-agent-includes.h>
// clang-format on

// What the cells of a row are.
struct HelperCells {
  int number;
  unsigned int count;
  std::string text;
};

// One index of a row as the agent library takes it: ASN_INTEGER, say, and the
// value in memory.
struct HelperIndex {
  unsigned char type;
  std::string value;
};
using HelperIndexes = std::vector<HelperIndex>;

// A table with the columns 2 (INTEGER), 3 (Gauge32) and 4 (OCTET STRING), of
// rows that one of the agent library's own helpers keeps and finds.
//
// Threads: under the agent library's lock.
class HelperTable {
 public:
  using Oid = std::vector<oid>;

  // `types` are those of the indexes.
  HelperTable(Oid name, std::vector<unsigned char> types)
      : name_(std::move(name)), types_(std::move(types)) {}
  virtual ~HelperTable() = default;
  HelperTable(const HelperTable&) = delete;
  HelperTable& operator=(const HelperTable&) = delete;

  // Once the session is up, and before there are rows. What the agent library
  // has then stays until the process ends.
  virtual void Register() = 0;
  // Adds the row, or puts it in the place of the one with these indexes.
  virtual void Set(const HelperIndexes& indexes, const HelperCells& cells) = 0;
  virtual void Erase(const HelperIndexes& indexes) = 0;

 protected:
  using FindRow = const HelperCells* (*)(netsnmp_request_info* request);

  netsnmp_handler_registration* MakeRegistration(Netsnmp_Node_Handler* handler);
  netsnmp_table_registration_info* MakeColumns() const;
  static int Serve(netsnmp_agent_request_info* info,
                   netsnmp_request_info* requests, FindRow findRow);

  const Oid name_;
  const std::vector<unsigned char> types_;
};

// By table_container, which finds rows by their sub-identifiers.
std::unique_ptr<HelperTable> MakeContainerTable(
    HelperTable::Oid name, std::vector<unsigned char> types);
// By table_tdata.
std::unique_ptr<HelperTable> MakeTdataTable(HelperTable::Oid name,
                                            std::vector<unsigned char> types);

#endif  // SNMPSUBAGENT_TESTS_DIFFERENTIAL_HELPERTABLE_H_
