// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TOOLS_CHECK_REPORT_H_
#define SNMPSUBAGENT_TOOLS_CHECK_REPORT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace snmpsubagent::check {

// What an agent does otherwise than the MIB or the protocol wants.
enum class Fault {
  Missing,         // no instance of an object
  Foreign,         // an instance of no object of the MIB
  Type,            // not the type of SYNTAX
  Length,          // not a SIZE of SYNTAX
  Range,           // not in a range of SYNTAX
  Enumeration,     // none of the named numbers or bits
  Access,          // readable, though not-accessible
  Instance,        // an instance identifier that the INDEX does not decode
  IndexValue,      // an index column that does not say what the instance does
  Get,             // GETNEXT showed it, GET doesn't
  Order,           // GETNEXT does not go up
  End,             // GETNEXT misses the begin or the end of a column
  NoAnswer,        // no response, or an error in place of a value
  GoodSet,         // a value that SYNTAX allows is refused
  StoredValue,     // a SET succeeds and the object has another value
  RefusedSet,      // a SET that is to be refused succeeds
  SetError,        // it is refused with another error than RFC 3416's
  RowCreation,     // a manager can't make a row
  RowDestruction,  // or destroy it
  Restoration      // what was there before could not be written again
};

// As in the JSON report: "Missing" is "missing", "IndexValue" is "indexValue".
std::string_view NameOf(Fault fault);

struct Finding {
  Fault fault;
  std::string object;  // its name in the MIB, "" of a foreign instance
  std::string oid;     // of the instance, or of the object
  std::string text;    // what is, and what should be
};

// How many of a kind the MIB wants, and what came of them.
struct Total {
  std::size_t expected = 0;  // right + wrong + undecided
  std::size_t right = 0;
  std::size_t wrong = 0;
  // What can't be told: a table that may just be empty and its columns, a good
  // SET that is refused for the present state of the agent alone.
  std::size_t undecided = 0;

  void Add(bool isRight);
  void AddUndecided(std::size_t number = 1);
};

struct Totals {
  Total scalars;
  Total tables;
  Total columns;
  Total instances;    // all that the agent serves of the module
  Total goodSets;     // those that have to succeed
  Total refusedSets;  // those that have to be refused, with which error
  Total rows;  // made with createAndGo, and with createAndWait, and destroyed
};

struct Report {
  std::string module;
  std::string agent;  // its address
  Totals totals;
  std::vector<Finding> findings;
  // What could not be compared, and why: it is nobody's fault.
  std::vector<std::string> notes;

  bool Conformant() const { return findings.empty(); }
  void Add(Fault fault, const std::string& object, const std::string& oid,
           const std::string& text);
};

// The report for a reader, with a line for each finding and a table of totals.
std::string ToText(const Report& report);

// The same as one JSON object:
//
//   {"module": "IF-MIB", "agent": "127.0.0.1", "conformant": true,
//    "totals": {"scalars": {"expected": 2, "right": 2, "wrong": 0,
//                           "undecided": 0}, ...},
//    "findings": [{"fault": "range", "object": "ifType", "oid": "1.3...",
//                  "text": "..."}],
//    "notes": ["..."]}
//
// Bytes that are no printable ASCII are escaped.
std::string ToJson(const Report& report);

}  // namespace snmpsubagent::check

#endif  // SNMPSUBAGENT_TOOLS_CHECK_REPORT_H_
