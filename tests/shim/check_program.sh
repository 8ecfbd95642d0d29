#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# check_program.sh PROGRAM SHIM DEBIAN WORK [EMULATOR...]
# Runs a program from a Debian package in DEBIAN, of Arm, once on the library that it was built for and once on the one
# in SHIM, on the same simulated input, and compares what they say. 77 where the program isn't there.
set -euo pipefail

program=$1 shim=$2 debian=$3 work=$4
shift 4
emulator=("$@")
arm=$debian/usr/lib/aarch64-linux-gnu:$debian/lib/aarch64-linux-gnu:$debian/usr/lib/aarch64-linux-gnu/pulseaudio
bin=$debian/usr/bin

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

[ -x "$bin/$program" ] || { echo "skipped: there is no $bin/$program"; exit 77; }
rm -rf "$work" && mkdir -p "$work/theirs" "$work/ours"

# on FOLDERS COMMAND...: runs a program of Arm with libraries from there first.
on() {
    local path=$1:$arm
    shift
    if [ ${#emulator[@]} -gt 0 ]; then
        "${emulator[@]}" -E "LD_LIBRARY_PATH=$path" "$@"
    else
        LD_LIBRARY_PATH=$path "$@"
    fi
}

# It must be ours that runs, not one that the system or the package has.
check_binding() {
    local loaded
    if [ ${#emulator[@]} -gt 0 ]; then
        loaded=$("${emulator[@]}" -E "LD_LIBRARY_PATH=$shim:$arm" -E LD_TRACE_LOADED_OBJECTS=1 "$bin/$program")
    else
        loaded=$(LD_LIBRARY_PATH=$shim:$arm LD_TRACE_LOADED_OBJECTS=1 "$bin/$program")
    fi
    grep -qF "libfftw3f.so.3 => $shim/" <<<"$loaded" || { echo "$loaded"; fail "$shim/libfftw3f.so.3 isn't loaded"; }
}

# both COMMAND...: runs it in two folders on the two libraries, each writing its output to "said".
both() {
    (cd "$work/theirs" && on "" "$@" >said 2>&1) || { cat "$work/theirs/said"; fail "on their library: $*"; }
    (cd "$work/ours" && on "$shim" "$@" >said 2>&1) || { cat "$work/ours/said"; fail "on ours: $*"; }
}

same_said() { diff "$work/theirs/said" "$work/ours/said" || fail "they say different things (< theirs, > ours)"; }
expect() { grep -q -- "$1" "$work/ours/said" || { cat "$work/ours/said"; fail "nothing says '$1'"; }; }

check_binding
case $program in
    wsprd) # weak signals at two strengths, the second close to where decoding ends
        for strength in -20 -28; do
            (cd "$work/theirs" && on "" "$bin/wsprsim" -o 150613_1920.c2 -s $strength "K1ABC FN42 33" >/dev/null) || true
            cp "$work/theirs/150613_1920.c2" "$work/ours/"  # its exit status means nothing
            both "$bin/wsprd" -f 14.0956 150613_1920.c2
            same_said
            expect "K1ABC FN42 33"
        done ;;
    minimodem)
        text="The quick brown fox jumps over the lazy dog 0123456789"
        for rate in 300 1200; do
            echo "$text" | on "" "$bin/minimodem" --tx $rate -f "$work/tone.wav"
            both "$bin/minimodem" --rx $rate -f "$work/tone.wav"
            same_said
            expect "$text"
        done ;;
    jt9)
        (cd "$work" && on "" "$bin/ft8sim" "K1ABC W9XYZ EN37" 1500.0 0.0 0.1 1.0 1 -10 >/dev/null)
        both "$bin/jt9" -8 -d 1 "$work/000000_000001.wav"
        same_said
        expect "K1ABC W9XYZ EN37" ;;
    *) fail "unknown program '$program'" ;;
esac
echo "ok: $program"
