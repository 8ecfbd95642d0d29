# SPDX-License-Identifier: Apache-2.0
# Shared by the checks beside it, which source it.

# enter_work NAME: an empty folder to work in.
enter_work() {
    work=$BUILD/tests/install/$1
    rm -rf "$work"
    mkdir -p "$work"
    cd "$work"
}

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# expect_same WHAT EXPECTED ACTUAL
expect_same() {
    diff <(echo "$2") <(echo "$3") >differences || { cat differences; fail "$1 (< expected, > found)"; }
    echo "ok: $1"
}

# The names that interface/exports.map lists, sorted.
listed_names() {
    sed '1,/global:/d; /local:/,$d; s@//.*@@; s@/\*.*\*/@@; s/#.*//' "$SOURCE/interface/exports.map" |
        tr -s ' ;\n' '\n' | sed '/^$/d' | sort
}
