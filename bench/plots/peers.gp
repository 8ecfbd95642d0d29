# SPDX-License-Identifier: Apache-2.0
# gnuplot -c bench/plots/peers.gp DATA PICTURE: this library beside the fastest peer known, from what bench/peers/compare --data writes.
data = ARG1; picture = ARG2
set terminal svg size 1000, 760 font "sans,13" background "white"
set output picture
set multiplot layout 2, 1
set style line 1 linecolor rgb "#1f6f8b" pointtype 7 pointsize 0.5 linewidth 2
set style line 2 linecolor rgb "#e8a33d" pointtype 7 pointsize 0.5 linewidth 2
set style line 3 linecolor rgb "#9a9a9a" pointtype 6 pointsize 0.5 linewidth 1
set style line 4 linecolor rgb "#c9c9c9" pointtype 6 pointsize 0.5 linewidth 1
set lmargin 8
set rmargin 3
set grid ytics

stats data index 0 using 2 nooutput
set title "Modelled cycles over those of the fastest peer known, sorted: below 1 this library is faster"
set xlabel sprintf("%d problems", STATS_records)
set ylabel "ratio"
set yrange [0:*]
set xrange [0:STATS_records + 1]
set arrow from 0, 1 to STATS_records + 1, 1 nohead linecolor rgb "#b03030"
set key top left
plot data index 0 using 0:3 with points linestyle 2 title "cautious price", \
     "" index 0 using 0:2 with points linestyle 1 title "the model's price"
unset arrow

set title "One complex transform, powers of two: operations per modelled cycle, 5 n log_2 n over cycles (peak 32)"
set xlabel "n"
set ylabel "operations per cycle"
set logscale x 2
set xrange [2:65536]
set format x "%.0f"
set key bottom right
plot data index 1 using 1:2 with linespoints linestyle 1 title "this library, the model's price", \
     "" index 1 using 1:3 with linespoints linestyle 2 title "this library, cautious price", \
     "" index 1 using 1:4 with linespoints linestyle 3 title "fastest peer, the model's price", \
     "" index 1 using 1:5 with linespoints linestyle 4 title "fastest peer, cautious price"
