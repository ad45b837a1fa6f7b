// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_REPORT_H_
#define SNMPSUBAGENT_BENCH_COMPARE_REPORT_H_

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

// One line of the results: the library compared with a peer.
struct Figure {
  std::string name;
  std::string unit;
  std::string peer;
  // Samples taken in pairs; their medians are shown, and the median and the
  // quartiles of their ratios.
  std::vector<double> library;
  std::vector<double> ofPeer;
  std::optional<double> goal;  // what the ratio is to be at most
};

// Prints each result as it arrives, and writes all of them to files of
// comma-separated values.
class Report {
 public:
  void Add(const Figure& figure);

  // A figure of the library alone; the goal is for its value.
  void Add(const std::string& name, const std::string& unit, double value,
           double goal);

  // A point of a curve, for the plots.
  void AddPoint(const std::string& curve, const std::string& subject, double x,
                double y);

  // Writes figures.csv and a file named after each curve.
  void Save(const std::filesystem::path& directory) const;

 private:
  using Cells = std::vector<std::string>;

  void Add(Cells line);

  std::vector<Cells> lines_;
  std::map<std::string, std::vector<Cells>> curves_;
};

#endif  // SNMPSUBAGENT_BENCH_COMPARE_REPORT_H_
