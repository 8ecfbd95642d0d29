# SPDX-License-Identifier: Apache-2.0
# Measured speed, medians.
table = ARG1; picture = ARG2; title = ARG3
how = "by the clock; operations by the formula 5 n log_2 n, half of it for real data"
value = title eq "movers" ? "median_ns" : "nominal_mflops"
what = title eq "movers" ? "ns" : "10^6 operations per second"
load "bench/plots/bars.gp"
