# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
set terminal svg size 800,500 background "white"
set output "getnext.svg"
set datafile separator ","
set datafile missing NaN
set key left top
set grid
set logscale xy
set title "CPU time per GETNEXT in a table"
set xlabel "rows"
set ylabel "microseconds"
subjects = "library 'C iterator' 'C sorted' 'C dataset' 'C tdata' 'C container'"
of(subject) = stringcolumn(1) eq subject ? column(3) : NaN
plot for [i=1:words(subjects)] "getnext.csv" \
  using 2:(of(word(subjects, i))) smooth unique with linespoints \
  title word(subjects, i)
