# SPDX-License-Identifier: Apache-2.0
width = 1000; height = 620
call "style.gp" ARG1 ARG2
set multiplot layout 3, 1 title "A voice in a hall of 14 x 10 x 5 m" font ",15" margins 0.05, 0.98, 0.09, 0.9 spacing 0.06
set tics out nomirror
set xrange [0:last]
unset ytics
unset key
set label 1 "recorded" at graph 0.99, 0.88 right
plot data("before") binary array=(-1) dx=1.0/rate format="%float" with lines linecolor rgb "#1f6f8b"
set label 1 "impulse response of the hall" at graph 0.99, 0.88 right
plot data("response") binary array=(-1) dx=1.0/rate format="%float" with lines linecolor rgb "#555555"
set label 1 "in the hall" at graph 0.99, 0.88 right
set xlabel "seconds"
plot data("after") binary array=(-1) dx=1.0/rate format="%float" with lines linecolor rgb "#c8551b"
unset multiplot
