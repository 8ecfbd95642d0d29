# SPDX-License-Identifier: Apache-2.0
width = 940; height = 720
call "style.gp" ARG1 ARG2
set multiplot layout 2, 2 title "A photograph in blocks of 8 x 8 cosines" font ",14" margins 0.01, 0.99, 0.01, 0.91 spacing 0.02, 0.05
unset tics; unset border; unset key
set size ratio -1
set yrange [*:*] reverse
set autoscale fix
set title "original, 8 bits per pixel" font ",11"
plot data("original") binary array=(original_width, original_height) format="%uchar" with rgbimage
do for [k = 1:3] {
    set title sprintf("%.2f bits per pixel, %.1f dB", value(sprintf("coded%d_bits", k)), value(sprintf("coded%d_db", k)))
    plot data(sprintf("coded%d", k)) binary array=(original_width, original_height) format="%uchar" with rgbimage
}
unset multiplot
