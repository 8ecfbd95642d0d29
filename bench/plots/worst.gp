# SPDX-License-Identifier: Apache-2.0
# The worst errors of each kind, of all lengths and inputs. ARG1 table of summary.py, ARG2 plot.
set terminal svg size 1000, 420 font "sans,12" background "white"
set output ARG2
set datafile separator comma
set multiplot layout 1, 2
set style data histogram
set style fill solid
set boxwidth 0.9
set yrange [0:*]
set grid ytics
set xtics rotate by -40
set key below noenhanced
do for [first in "2 5"] {
    set title (first == 2 ? "L2" : "largest")." error, units of 2^{-24} sqrt(log_2 n)"
    plot ARG1 skip 1 using (column(int(first))):xtic(1) linecolor rgb "#1f6f8b" title "libqfftf", \
         "" skip 1 using (column(int(first) + 1)) linecolor rgb "#999999" title "libfftw3f", \
         "" skip 1 using (column(int(first) + 2)) linecolor rgb "#c98b2b" title "pocketfft (scipy)"
}
