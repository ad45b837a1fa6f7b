# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
set terminal svg size 800,500 background "white"
set output "latency.svg"
set datafile separator ","
set datafile missing NaN
set key left top
set grid
set logscale y
set title "Latency of 60 GETNEXTs, 16 outstanding, after a pause"
set xlabel "percentile"
set ylabel "milliseconds"
subjects = "library 'C scalars'"
of(subject) = stringcolumn(1) eq subject ? column(3) : NaN
plot for [i=1:words(subjects)] "latency.csv" \
  using 2:(of(word(subjects, i))) smooth unique with linespoints \
  title word(subjects, i)
