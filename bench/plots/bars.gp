# SPDX-License-Identifier: Apache-2.0
# Bars per problem and library of the column `value` in `table`; `title`, `how` and `what` are texts.
set terminal svg size 1000, 480 font "sans,13" background "white"
set output picture
set datafile separator comma
set title title." (".how.")"
set ylabel what
set rmargin 10
set style data histograms
set style histogram clustered gap 1
set style fill solid border -1
set xtics rotate by -35 noenhanced
set grid ytics
set key top right noenhanced
set linetype 1 linecolor rgb "#1f6f8b"
set linetype 2 linecolor rgb "#c9c9c9"
set linetype 3 linecolor rgb "#e8a33d"
pivoted = sprintf("< awk -F, -v value=%s -f bench/plots/pivot.awk '%s'", value, table)
stats pivoted skip 1 using 2 nooutput
libraries = int(STATS_columns) - 1
plot for [l = 2:libraries + 1] pivoted using l:xtic(1) title columnheader(l)
