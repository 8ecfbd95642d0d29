#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# check_program.sh PROGRAM SHIM DEBIAN WORK [EMULATOR...]
# Runs a program from a Debian package in DEBIAN, of Arm, once on the library that it was built for and once on the one
# in SHIM, on the same simulated input, and compares what they say. 77 where the program isn't there.
set -euo pipefail
exec </dev/null

here=$(cd "$(dirname "$0")" && pwd)
program=$1 shim=$2 debian=$3 work=$4
shift 4
emulator=("$@")
libraries=$debian/usr/lib/aarch64-linux-gnu
arm=$libraries:$debian/lib/aarch64-linux-gnu:$libraries/pulseaudio:$libraries/openblas-pthread
bin=$debian/usr/bin

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

binary=$bin/$program
case $program in
    gromacs) binary=$bin/gmx ;;
    pyfftw) binary=$bin/python3.11 ;;
esac
[ -x "$binary" ] || { echo "skipped: there is no $binary"; exit 77; }
rm -rf "$work" && mkdir -p "$work/theirs" "$work/ours"

# on FOLDERS COMMAND...: runs a program of Arm with libraries from there first. None of them has more to ask than it is
# given, or runs for minutes.
on() {
    local variable=LD_LIBRARY_PATH=${1:+$1:}$arm
    shift
    if [ ${#emulator[@]} -gt 0 ]; then
        timeout 400 "${emulator[@]}" -E "$variable" "$@"
    else
        timeout 400 env "$variable" "$@"
    fi
}

# It must be ours that runs, not one that the system or the package has, and every name must be in it.
check_binding() {
    local loaded trace=(LD_TRACE_LOADED_OBJECTS=1 LD_WARN=1 LD_BIND_NOW=1)
    [ ${#emulator[@]} -eq 0 ] || trace=(-E "${trace[0]}" -E "${trace[1]}" -E "${trace[2]}")
    loaded=$(on "$shim" "${trace[@]}" "$binary" 2>&1)
    grep -qF "libfftw3f.so.3 => $shim/" <<<"$loaded" || { echo "$loaded"; fail "$shim/libfftw3f.so.3 isn't loaded"; }
    ! grep -E "undefined symbol: s?fftwf?_" <<<"$loaded" || fail "the program asks for names that $shim doesn't have"
}

# both COMMAND...: runs it in two folders on the two libraries, each writing its output to "said".
both() {
    (cd "$work/theirs" && on "" "$@" >said 2>&1) || { cat "$work/theirs/said"; fail "on their library: $*"; }
    (cd "$work/ours" && on "$shim" "$@" >said 2>&1) || { cat "$work/ours/said"; fail "on ours: $*"; }
}

same_said() { diff "$work/theirs/said" "$work/ours/said" || fail "they say different things (< theirs, > ours)"; }
expect() { grep -q -- "$1" "$work/ours/said" || { cat "$work/ours/said"; fail "nothing says '$1'"; }; }

[ "$program" = pyfftw ] || check_binding  # a module of Python's, which tells itself what it loaded
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
    gromacs) # five steps of 213 molecules of water, their long-range forces by transforms of 16 x 16 x 16, on one thread:
        # under the emulator it hangs on either library with two, which wait for each other without sleeping
        share=$debian/usr/share/gromacs
        export GMXLIB=$share/top GMXDATA=$share OPENBLAS_NUM_THREADS=1 OMP_NUM_THREADS=1
        cp "$here/gromacs/water.top" "$work/water.top"
        (cd "$work" && on "" "$binary" -quiet solvate -cs spc216.gro -box 1.9 1.9 1.9 -o box.gro -p water.top &&
            on "" "$binary" -quiet grompp -f "$here/gromacs/steps.mdp" -c box.gro -p water.top -o run.tpr) >"$work/made" 2>&1 ||
            { cat "$work/made"; fail "the box of water isn't made"; }
        both "$binary" mdrun -s "$work/run.tpr" -ntmpi 1 -ntomp 1 -nb cpu -pme cpu -reprod -pin off -deffnm run
        grep -q "CPU FFT library: *qfftf" "$work/ours/run.log" || fail "its log names another library"
        grep -q "CPU FFT library: *fftw" "$work/theirs/run.log" || fail "the log on theirs names another library"
        printf '%s\n' "LJ-(SR)" "Coulomb-(SR)" Coul.-recip. Potential Kinetic-En. Total-Energy "" >"$work/wanted"
        for side in theirs ours; do
            on "" "$binary" -quiet energy -dp -f "$work/$side/run.edr" -o "$work/$side.xvg" <"$work/wanted" >"$work/made" 2>&1 ||
                { cat "$work/made"; fail "there are no energies"; }
        done
        python3 "$here/gromacs/compare_energies.py" "$work/theirs.xvg" "$work/ours.xvg" || fail "energies differ" ;;
    pyfftw) # the module's calls of single precision, on the same data in both processes
        export PYTHONHOME=$debian/usr PYTHONPATH=$debian/usr/lib/python3/dist-packages PYTHONDONTWRITEBYTECODE=1
        export OPENBLAS_NUM_THREADS=1
        both "$binary" "$here/pyfftw/exercise.py" results.npz
        (cd "$work" && on "" "$binary" "$here/pyfftw/compare.py" theirs/results.npz ours/results.npz) || fail "results differ"
        grep -q "loaded: $shim/libfftw3f.so.3" "$work/ours/results.txt" || fail "it loaded another library" ;;
    *) fail "unknown program '$program'" ;;
esac
echo "ok: $program"
