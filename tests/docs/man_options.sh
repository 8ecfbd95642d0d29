#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Every option that a tool's help names stands in its man page. SOURCE, PREFIX and EMULATOR are set by CMakeLists.txt.
set -euo pipefail
for tool in qfftf-plan qfftf-info; do
    options=$($EMULATOR "$PREFIX/bin/$tool" --help | grep -oE -- '--[a-z]+' | sort -u) || true
    for option in $options; do
        grep -qE -- "(Fl |\| )${option#-}( |$)" "$SOURCE/docs/man/$tool.1" || { echo "FAILED: $tool.1 lacks $option"; exit 1; }
        echo "ok: $tool $option"
    done
done
