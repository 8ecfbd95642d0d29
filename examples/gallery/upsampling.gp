# SPDX-License-Identifier: Apache-2.0
width = 1000; height = 550
call "style.gp" ARG1 ARG2
set multiplot layout 1, 2 title "A photograph at four times its size" font ",14" margins 0.01, 0.99, 0.01, 0.88 spacing 0.02
unset tics; unset border; unset key
set size ratio -1
set yrange [*:*] reverse
set autoscale fix
set title "every pixel repeated" font ",11"
plot data("repeated") binary array=(repeated_width, repeated_height) format="%uchar" with rgbimage
set title "by Fourier interpolation"
plot data("enlarged") binary array=(enlarged_width, enlarged_height) format="%uchar" with rgbimage
unset multiplot
