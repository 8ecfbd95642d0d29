#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# run_target.sh PROGRAM CASES WORK SECONDS
# Runs a fuzz target on the cases that are kept, then on new ones for so many seconds. New inputs that reach new code are
# kept in WORK/corpus; one that fails is left in WORK, and what to do with it is said.
set -euo pipefail
program=$1 cases=$2 work=$3 seconds=$4
mkdir -p "$work/corpus"
cd "$work"
options=(-timeout=20 -rss_limit_mb=2048 -max_len=400 -print_final_stats=1 "-artifact_prefix=$work/")
run() {
    "$program" "${options[@]}" "$@" >said 2>&1 || {
        tail -n 60 said
        echo "FAILED: $(basename "$program"). Mend the fault and keep the input that is named above in $cases."
        exit 1
    }
}
run -runs=0 "$cases"
[ "$seconds" = 0 ] || run "-max_total_time=$seconds" corpus "$cases"
grep -E "stat::(number_of_executed_units|new_units_added)" said || grep DONE said
