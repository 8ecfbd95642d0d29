# SPDX-License-Identifier: Apache-2.0
width = 1100; height = 680
call "style.gp" ARG1 ARG2
set title "A band of 240 kHz: a broadcast, a sweep, Morse code, a hopping transmitter" font ",14"
set xlabel "kHz from the middle of the band"
set ylabel "seconds"
set cblabel "decibels above the noise"
set cbrange [2:20]
set xrange [-points / 2 * kilohertz:points / 2 * kilohertz]
set yrange [lines * seconds:0]
set tics out nomirror
unset key
plot data("decibels") binary array=(points, lines) origin=(-points / 2 * kilohertz, 0) dx=kilohertz dy=seconds \
     format="%float" with image
