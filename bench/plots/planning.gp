# SPDX-License-Identifier: Apache-2.0
# Instructions of a plan and its destruction.
table = ARG1; picture = ARG2; title = ARG3
how = "instructions of a plan and its destruction, of a problem not planned before"
value = "first"
what = "instructions"
set logscale y
load "bench/plots/bars.gp"
