# SPDX-License-Identifier: Apache-2.0
# Time of a plan and its destruction, medians.
table = ARG1; picture = ARG2; title = ARG3
how = "a plan and its destruction, of a problem not planned before, by the clock"
value = "median_ns"
what = "ns"
set logscale y
load "bench/plots/bars.gp"
