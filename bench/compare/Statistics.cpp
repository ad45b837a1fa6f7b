// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "compare/Statistics.h"

#include <algorithm>
#include <cmath>

double Quantile(std::vector<double> samples, double q) {
  std::sort(samples.begin(), samples.end());
  const double position = q * static_cast<double>(samples.size() - 1);
  const auto below = static_cast<std::size_t>(position);
  const std::size_t above = std::min(below + 1, samples.size() - 1);
  const double part = position - static_cast<double>(below);
  return samples[below] + part * (samples[above] - samples[below]);
}

double Median(const std::vector<double>& samples) {
  return Quantile(samples, 0.5);
}

double GrowthExponent(const std::vector<double>& x,
                      const std::vector<double>& y) {
  const auto n = static_cast<double>(x.size());
  double sumX = 0;
  double sumY = 0;
  double sumXX = 0;
  double sumXY = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double logX = std::log(x[i]);
    const double logY = std::log(y[i]);
    sumX += logX;
    sumY += logY;
    sumXX += logX * logX;
    sumXY += logX * logY;
  }
  return (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX);
}
