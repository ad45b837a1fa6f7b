// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_CREATEDROWS_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_CREATEDROWS_H_

#include <snmpsubagent.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Service.h"
#include "support/Random.h"
#include "testkit/Manager.h"

// A table whose rows a manager and the application make, change and destroy,
// and a model of what RFC 2579 has a RowStatus do.
class CreatedRows {
 public:
  // `random` outlives it.
  CreatedRows(snmpsubagent::Module& module, Random& random);

  // The application makes, changes or destroys a row.
  void Change();
  // A manager has a go at a row: creates, activates, destroys it, sets its
  // cells, rightly or wrongly.
  void Set(const testkit::Manager& manager, Work& done);

  std::string Oid() const;
  // What a walk shows.
  std::vector<std::string> Cells() const;

 private:
  static constexpr int kFirstNumber = 7;
  struct Row {
    int number = kFirstNumber;
    std::string text;
  };
  // A row as managers know it.
  struct Known {
    int status = 0;
    int number = kFirstNumber;
    std::optional<std::string> text;
  };
  // One SET, of a row; what is empty is not written.
  struct Request {
    unsigned key;
    std::optional<int> number;
    std::optional<std::string> text;
    std::optional<int> status;
  };

  Request RandomRequest() const;
  std::vector<std::string> Words(const Request& request) const;
  // The error that the request is to get, which is "None" if it gets none, and
  // then what the row is afterwards, in `row`.
  std::string Foresee(const Request& request, std::optional<Known>& row) const;
  std::string ForeseeStatus(const Request& request,
                            std::optional<Known>& row) const;
  std::string Cell(int column, unsigned key) const;

  Random& random_;
  snmpsubagent::Table<unsigned, Row> table_;
  std::map<unsigned, Known> known_;
};

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_CREATEDROWS_H_
