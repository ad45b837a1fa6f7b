// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_ENDURANCE_MODEL_H_
#define SNMPSUBAGENT_TESTS_ENDURANCE_MODEL_H_

#include <array>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "NetSNMPTableEntryNode.h"
#include "NetSNMPTrapNode.h"
#include "testkit/Manager.h"

// The objects of an application that runs for long, and what managers are to
// read of them.
//
// Threads: one; the subagent may serve the objects meanwhile.
class Model {
 public:
  // Builds the nodes. Requires: the registry.
  Model();

  // The application's own changes: rows come and go, values change.
  void Change();

  // Has a manager set a number, a text and a truth value, and requires that
  // they are set.
  void Set(const testkit::Manager& manager);

  // Requires that managers read exactly what is known, by whatever request.
  void RequireServed(const testkit::Manager& manager) const;

  // Fires a trap with a unique number.
  void Fire();

  // Requires that exactly the traps fired have arrived, in their order.
  void RequireReceived(const std::vector<std::string>& received) const;
  std::size_t Fired() const { return static_cast<std::size_t>(fired_); }

 private:
  using Row = std::pair<unsigned long, unsigned long>;

  int Random(int below);
  void AddRow(const Row& row);
  void RemoveRow(const Row& row);
  std::vector<std::string> Scalars() const;
  std::vector<std::string> Cells() const;

  std::mt19937 random_{1};
  // The application's variables.
  int number_ = 1;
  unsigned int count_ = 1;
  bool truth_ = true;
  std::string text_ = "text";
  std::array<char, 32> label_{"label"};
  int fired_ = 0;

  NetSNMPTrapNode* trap_;         // the registry's
  NetSNMPDataNode* firedNode_;    // the registry's
  NetSNMPTableEntryNode* store_;  // the registry's
  // The rows' numbers and texts, in the order of a walk.
  std::map<Row, std::pair<int, std::string>> rows_;
};

// Throws std::runtime_error, with `what`, unless `holds`.
void Require(bool holds, const std::string& what);

#endif  // SNMPSUBAGENT_TESTS_ENDURANCE_MODEL_H_
