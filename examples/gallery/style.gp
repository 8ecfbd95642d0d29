# SPDX-License-Identifier: Apache-2.0
# What the gallery's pictures share. ARG1 is the folder that the program wrote, ARG2 the picture.
load ARG1."/values.gp"
set terminal pngcairo size width, height font "DejaVu Sans,11" background "white"
set output ARG2
data(name) = ARG1."/".name
set palette defined (0 "#000004", 0.13 "#1f0c48", 0.25 "#550f6d", 0.38 "#88226a", 0.5 "#ba3655", 0.63 "#e35933", \
                     0.76 "#f98c0a", 0.88 "#f9c932", 1 "#fcffa4")
