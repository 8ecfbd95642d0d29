# SPDX-License-Identifier: Apache-2.0
# Errors over length, the worst of all inputs: the L2 norm and the largest. ARG1 table of summary.py, ARG2 plot, ARG3 kind.
set terminal svg size 1000, 420 font "sans,12" background "white"
set output ARG2
set datafile separator comma
set multiplot layout 1, 2 title ARG3." (the worst of uniform, impulse and range)" noenhanced
set xlabel "n"
set logscale x 2
set yrange [0:*]
set grid
set key below noenhanced
set format x "2^{%L}"
of(library) = sprintf("< awk -F, '$1 == \"%s\" && $4 == \"%s\"' '%s'", ARG3, library, ARG1)
do for [norm in "5 6"] {
    set ylabel (norm == 5 ? "L2" : "largest")." error, 2^{-24} sqrt(log_2 n)"
    plot of("libfftw3f") using 3:int(norm) with points pointtype 6 linecolor rgb "#999999" title "libfftw3f", \
         of("pocketfft") using 3:int(norm) with points pointtype 2 pointsize 0.6 linecolor rgb "#c98b2b" title "pocketfft (scipy)", \
         of("libqfftf") using 3:int(norm) with points pointtype 7 pointsize 0.6 linecolor rgb "#1f6f8b" title "libqfftf"
}
