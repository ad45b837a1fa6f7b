// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Report.h"

#include <array>
#include <cstdio>
#include <fstream>

#include "compare/Statistics.h"

namespace {

using Cells = std::vector<std::string>;

const Cells kHeading{"figure", "unit",  "library", "peer", "of peer",
                     "ratio",  "lower", "upper",   "goal", "verdict"};

// Column widths of the table on the terminal; the first column is left-aligned.
constexpr std::array<int, 10> kWidths{46, 6, 9, 12, 9, 7, 7, 7, 6, 7};

std::string Number(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.4g", number);
  return text.data();
}

std::string Verdict(double measured, double goal) {
  return measured <= goal ? "met" : "missed";
}

void Print(const Cells& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    std::printf(i == 0 ? "%-*s" : " %*s", kWidths.at(i), cells[i].c_str());
  }
  std::printf("\n");
  std::fflush(stdout);
}

void Write(const std::filesystem::path& file, const Cells& heading,
           const std::vector<Cells>& lines) {
  std::ofstream csv(file);
  const auto write = [&](const Cells& cells) {
    const char* separator = "";
    for (const std::string& cell : cells) {
      const bool quoted = cell.find(',') != std::string::npos;
      csv << separator << (quoted ? '"' + cell + '"' : cell);
      separator = ",";
    }
    csv << '\n';
  };
  write(heading);
  for (const Cells& cells : lines) write(cells);
}

std::vector<double> Ratios(const Figure& figure) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < figure.library.size(); ++i) {
    ratios.push_back(figure.library[i] / figure.ofPeer[i]);
  }
  return ratios;
}

}  // namespace

void Report::Add(const Figure& figure) {
  const std::vector<double> ratios = Ratios(figure);
  const double ratio = Median(ratios);
  Add(Cells{figure.name, figure.unit, Number(Median(figure.library)),
            figure.peer, Number(Median(figure.ofPeer)), Number(ratio),
            Number(Quantile(ratios, 0.25)), Number(Quantile(ratios, 0.75)),
            figure.goal ? Number(*figure.goal) : "",
            figure.goal ? Verdict(ratio, *figure.goal) : ""});
}

void Report::Add(const std::string& name, const std::string& unit, double value,
                 double goal) {
  Add(Cells{name, unit, Number(value), "", "", "", "", "", Number(goal),
            Verdict(value, goal)});
}

void Report::AddPoint(const std::string& curve, const std::string& subject,
                      double x, double y) {
  curves_[curve].push_back({subject, Number(x), Number(y)});
}

void Report::Save(const std::filesystem::path& directory) const {
  Write(directory / "figures.csv", kHeading, lines_);
  for (const auto& [name, points] : curves_) {
    Write(directory / (name + ".csv"), {"subject", "x", "y"}, points);
  }
}

void Report::Add(Cells line) {
  if (lines_.empty()) Print(kHeading);
  Print(line);
  lines_.push_back(std::move(line));
}
