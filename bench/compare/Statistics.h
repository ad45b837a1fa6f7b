// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_BENCH_COMPARE_STATISTICS_H_
#define SNMPSUBAGENT_BENCH_COMPARE_STATISTICS_H_

#include <vector>

// The value below which the share `q` (0 to 1) of the samples lies,
// interpolated between the two samples around it. Requires: there are samples.
double Quantile(std::vector<double> samples, double q);

double Median(const std::vector<double>& samples);

// The exponent of the power of `x` by which `y` grows: the slope of the line
// fitted to both in logarithms.
double GrowthExponent(const std::vector<double>& x,
                      const std::vector<double>& y);

#endif  // SNMPSUBAGENT_BENCH_COMPARE_STATISTICS_H_
