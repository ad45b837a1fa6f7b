# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
set terminal svg size 800,500 background "white"
set output "objects-getnext.svg"
set datafile separator ","
set datafile missing NaN
set key left top
set grid
set logscale xy
set title "CPU time per GETNEXT in a table, the objects"
set xlabel "rows"
set ylabel "microseconds"
subjects = "objects 'C container'"
of(subject) = stringcolumn(1) eq subject ? column(3) : NaN
plot for [i=1:words(subjects)] "objects-getnext.csv" \
  using 2:(of(word(subjects, i))) smooth unique with linespoints \
  title word(subjects, i)
