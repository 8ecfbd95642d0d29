# SPDX-License-Identifier: Apache-2.0
# Modelled speed; the top edge is the peak of the modelled core: two pipes of 8 lanes, each a fused multiply-add.
table = ARG1; picture = ARG2; title = ARG3
how = "modelled cycles; operations by the formula 5 n log_2 n, half of it for real data"
if (title eq "movers") {
    how = "modelled cycles"
    value = "bytes_per_cycle"
    what = "bytes read and written per cycle"
} else {
    value = "flops_per_cycle"
    what = "operations per cycle, peak 32"
    set yrange [0:32]
}
load "bench/plots/bars.gp"
