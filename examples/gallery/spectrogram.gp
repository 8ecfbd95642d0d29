# SPDX-License-Identifier: Apache-2.0
width = 1200; height = 560
call "style.gp" ARG1 ARG2
set title "A voice names the places of loudspeakers" font ",15" offset 0, 1.2
set xlabel "seconds"
set ylabel "kHz"
set cblabel "decibels below the loudest"
set cbrange [-90:0]
set xrange [0:pieces * seconds]
set yrange [0:12]
set tics out nomirror
set tmargin 5
load data("words.gp")
plot data("decibels") binary array=(pieces, bins) dx=seconds dy=kilohertz format="%float" with image notitle
