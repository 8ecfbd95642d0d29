# SPDX-License-Identifier: Apache-2.0
width = 800; height = 700
call "style.gp" ARG1 ARG2
set palette defined (-1 "#21478a", -0.4 "#7fb0d8", 0 "#f7f7f7", 0.4 "#f0a07c", 1 "#a01c2c")
set title "Five charges in an earthed box: the potential beside their plane" font ",13"
set view map
set contour base
set cntrparam levels incremental -3, 0.25, 5 bspline
set cntrlabel onecolor
set cbrange [-3:3]
set size ratio -1
set xrange [0:n - 1]; set yrange [0:n - 1]
set lmargin at screen 0.04; set rmargin at screen 0.84; set bmargin at screen 0.04; set tmargin at screen 0.93
unset xtics; unset ytics; unset key
set cblabel "potential, hundredths"
splot data("slice") binary array=(n, n) format="%float" with pm3d nocontour, \
      data("slice") binary array=(n, n) format="%float" with lines nosurface linecolor rgb "#333333" linewidth 0.7
