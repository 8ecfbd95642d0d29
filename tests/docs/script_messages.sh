#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# What the scripts say where they can't go on: in a clone that can't be written, and without root on a system that knows
# neither the packages nor their architecture. SOURCE and WORK are set by CMakeLists.txt.
set -euo pipefail
rm -rf "$WORK" && mkdir -p "$WORK/clone" "$WORK/bin"
cp -r "$SOURCE/scripts" "$WORK/clone"
cd "$WORK"

# expect WORDS COMMAND...: the command's output holds the words.
expect() {
    local output
    output=$("${@:2}" 2>&1 </dev/null) || true
    grep -qF -- "$1" <<<"$output" || { echo "FAILED: ${*:2} doesn't say '$1' but:"; echo "$output"; exit 1; }
    echo "ok: ${*:2}: $1"
}

touch clone/build  # a file in the place of the folder: not even root can make it
for script in clone/scripts/{build,demo,docs,run,test}; do expect "scripts/$(basename "$script")" "$script" --help; done
for script in clone/scripts/{build,demo,docs}; do expect "/build cannot be written" "$script"; done
touch program.c
expect "/build cannot be written" clone/scripts/run program.c
rm clone/build

stand_in() { printf '#!/bin/sh\n%s\n' "$2" >"bin/$1" && chmod +x "bin/$1"; }
stand_in id 'echo 1000'
stand_in sudo 'exit 1'
stand_in uname 'echo x86_64'
stand_in apt-get 'exit 1'
stand_in dpkg-query 'exit 0'
stand_in dpkg '[ "$1" = --print-architecture ] && echo amd64; exit 0'
export PATH=$WORK/bin:$PATH
expect "dpkg --add-architecture arm64 && apt-get update" clone/scripts/demo
expect "apt-get install --no-install-recommends cmake" clone/scripts/demo
stand_in dpkg '[ "$1" = --print-architecture ] && echo amd64 || echo arm64; exit 0'
if clone/scripts/demo 2>&1 </dev/null | grep -q add-architecture; then echo "FAILED: an architecture is asked for that is there"; exit 1; fi
