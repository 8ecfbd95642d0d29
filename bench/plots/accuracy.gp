# SPDX-License-Identifier: Apache-2.0
# Errors over length. ARG1 table, ARG2 plot, ARG3 title.
set terminal svg size 1000, 480 font "sans,13" background "white"
set output ARG2
set datafile separator comma
set title ARG3." (relative L2 error, uniform random input)" noenhanced
set xlabel "n"
set ylabel "error in units of 2^{-24} sqrt(log_2 n)"
set logscale x 2
set yrange [0:*]
set grid
set key top left noenhanced
of(library) = sprintf("< awk -F, '/^#/ {next} $2 ~ /%s/' '%s'", library, ARG1)
plot of("fftw") using 3:5 with points pointtype 6 linecolor rgb "#999999" title "libfftw3f", \
     of("qfftf") using 3:5 with points pointtype 7 pointsize 0.6 linecolor rgb "#1f6f8b" title "libqfftf"
