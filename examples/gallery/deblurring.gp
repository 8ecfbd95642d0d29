# SPDX-License-Identifier: Apache-2.0
width = 1000; height = 400
call "style.gp" ARG1 ARG2
set multiplot layout 1, 2 title "A photograph, moved while it was taken" font ",14" margins 0.01, 0.99, 0.02, 0.85 spacing 0.02
unset tics; unset border; unset key
set size ratio -1
set yrange [*:*] reverse
set autoscale fix
set title sprintf("as taken, %.1f dB", moved_db) font ",11"
plot data("moved") binary array=(moved_width, moved_height) format="%uchar" with rgbimage
set title sprintf("restored by Wiener's filter, %.1f dB", restored_db)
plot data("restored") binary array=(restored_width, restored_height) format="%uchar" with rgbimage
unset multiplot
