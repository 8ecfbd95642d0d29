# SPDX-License-Identifier: Apache-2.0
# Shared by the scripts beside it, which source it: progress lines, packages, presets, checks of the machine.
set -euo pipefail
export LC_ALL=C.UTF-8

called_from=$PWD
script_file=$(realpath "$0")
script_name=$(basename "$0")
root=$(dirname "$(dirname "$(realpath "${BASH_SOURCE[0]}")")")
cd "$root"

# The preset of everything that is installed, shown and tested: "cross" is clang 19, "cross-gcc" is g++.
cross_preset=${QFFTF_CROSS_PRESET:-cross}
native_preset=${QFFTF_NATIVE_PRESET:-native}

# --- progress ---------------------------------------------------------------------------------------------------

steps_total=1
step_number=0

fail() {
    echo "scripts/$script_name: $*" >&2
    exit 1
}

# make_build_folder: everything that a script writes goes there.
make_build_folder() {
    mkdir -p build 2>/dev/null && [ -w build ] ||
        fail "$root/build cannot be written; the scripts put all that they make there"
}

# absolute PATH: a path that the user named, from where the user called.
absolute() { (cd "$called_from" && realpath -m -- "$1"); }

# step TEXT: begins the next of $steps_total steps. A script that runs within another shows that one's step before
# its own, as in "[demo 1/3 > build 2/4, 12 s]".
step() {
    make_build_folder
    step_number=$((step_number + 1))
    echo "[${QFFTF_WITHIN:-}${script_name} ${step_number}/${steps_total}, ${SECONDS} s] $*"
}

# within SCRIPT [ARG...]: runs another script as part of the present step.
within() {
    QFFTF_WITHIN="${QFFTF_WITHIN:-}${script_name} ${step_number}/${steps_total} > " "$@"
}

# Only reading this tree needs no right to write; everything else keeps what it makes in build/.
need_build_folder() {
    mkdir -p build 2>/dev/null && [ -w build ] || fail "$root/build cannot be written; clone the repository where you may write"
}

# usage: the comment at the head of the calling script is its help text.
usage() {
    sed -n '3,/^[^#]/s/^# \{0,1\}//p' "$script_file"
}

# --- the machine ------------------------------------------------------------------------------------------------

machine=$(uname -m)
if [ "$machine" = x86_64 ]; then foreign=:arm64; else foreign=""; fi  # where Arm libraries are foreign packages

choose_preset() {
    case $machine in
        x86_64) preset=$cross_preset ;;
        aarch64) preset=$native_preset ;;
        *) fail "this machine is $machine; the scripts know x86_64 (with an emulator) and aarch64" ;;
    esac
}

# The highest level of the library (interface/level.h) that this Arm machine has: unit tests link its inner library.
native_level() {
    local features
    features=" $(sed -n '/^Features/{s/.*: *//p;q}' /proc/cpuinfo) "
    case $features in
        *" fcma "*) [ "$(cat /proc/sys/abi/sve_default_vector_length 2>/dev/null)" = 32 ] && echo sve || echo fcma ;;
        *) echo neon ;;
    esac
}

# --- packages ---------------------------------------------------------------------------------------------------

build_packages() {
    echo cmake ninja-build clang-19 lld-19 g++ googletest
    [ "$machine" = aarch64 ] || echo g++-aarch64-linux-gnu
}

# The emulator, and the run-time libraries of the programs that it runs.
run_packages() {
    [ "$machine" = aarch64 ] || echo qemu-user libc6:arm64 libstdc++6:arm64 libgomp1:arm64
}

fortran_package() { [ "$machine" = aarch64 ] && echo gfortran || echo gfortran-aarch64-linux-gnu; }
# The last row is what the documents need: their programs on other libraries, the gallery, the manual.
test_packages() {
    echo libclang-rt-19-dev llvm-19 pkgconf python3 $(fortran_package)
    echo libc6-dev libfftw3-dev libkissfft-dev python3-numpy $(demo_packages) $(docs_packages)
}
demo_packages() { echo pkgconf gnuplot-nox "libsndfile1-dev$foreign" "libpng-dev$foreign"; }
docs_packages() { echo doxygen mandoc python3; }
format_packages() { echo clang-format-19; }
tidy_packages() { echo clang-tidy-19; }
python_packages() { echo python3 python3-numpy python3-scipy python3-pytest; }
mpi_packages() { echo libopenmpi-dev openmpi-bin curl ca-certificates; }
python=/usr/bin/python3  # the system's, for which these packages are; another may stand before it in PATH

missing_packages() {
    local installed name
    installed=$(dpkg-query -W -f='${Package}:${Architecture} ${db:Status-Status}\n' | sed -n 's/ installed$//p')
    for name in "$@"; do
        case $name in
            *:*) grep -qxF "$name" <<<"$installed" || echo "$name" ;;
            *) grep -qxF -e "$name:$(dpkg --print-architecture)" -e "$name:all" <<<"$installed" || echo "$name" ;;
        esac
    done
}

# Packages for Arm can only be had on another machine once it knows that architecture.
needs_foreign_architecture() {
    grep -q ':arm64' <<<"$*" && ! grep -qx arm64 <<<"$(dpkg --print-foreign-architectures)"
}

# find_root: sets as_root to what must stand before a command that changes the system.
find_root() {
    if [ "$(id -u)" = 0 ]; then
        as_root=""
    elif command -v sudo >/dev/null && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
        as_root=sudo
    else
        echo "scripts/$script_name: packages are missing, and installing them needs root or sudo. As root:" >&2
        ! needs_foreign_architecture "$@" || echo "    dpkg --add-architecture arm64 && apt-get update" >&2
        echo "    apt-get install --no-install-recommends" $* >&2
        exit 1
    fi
}

# All output goes to build/packages.log; of it the user sees how much is fetched.
apt_get() {
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Dpkg::Use-Pty=0 "$@" 2>&1 | tee build/packages.log |
        sed -un '/^\(Need to get\|Fetched\|After this\)/s/^/    /p'
}

# Whether the package lists on this machine offer every one of the packages.
lists_know() {
    local name
    for name in "$@"; do
        grep -q 'Candidate: [^(]' <<<"$(apt-cache policy "$name")" || return 1
    done
}

# install_missing PACKAGE...: installs those that aren't there, and does nothing if all are. Package lists are
# fetched only if they don't offer what is wanted, or what they offer can't be had any more.
install_missing() {
    need_build_folder
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
        fail "this system has no apt; the scripts are for Debian 12 and later (CONTRIBUTING.md lists what a build needs)"
    local missing
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    make_build_folder
    find_root $missing
    echo "  installing" $missing
    if needs_foreign_architecture $missing; then
        $as_root dpkg --add-architecture arm64
    fi
    if ! lists_know $missing; then
        apt_get update || fail_with_packages "the package lists could not be fetched"
        lists_know $missing || fail "the package sources of this system don't offer all of:" $missing
    fi
    apt_get install --no-install-recommends $missing ||
        { apt_get update && apt_get install --no-install-recommends $missing; } ||
        fail_with_packages "the packages could not be installed"
}

fail_with_packages() {
    tail -n 15 build/packages.log >&2
    fail "$1 (the whole output is in build/packages.log)"
}

# --- building ---------------------------------------------------------------------------------------------------

use_ccache() {
    command -v ccache >/dev/null || return 0
    export CMAKE_C_COMPILER_LAUNCHER=${CMAKE_C_COMPILER_LAUNCHER:-ccache}
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER:-ccache}
}

# configure PRESET [CMAKE-ARG...]
configure() {
    need_build_folder
    use_ccache
    local level=()
    [ "$machine-$1" != "aarch64-$native_preset" ] || level=(-D "QFFTF_TEST_LEVEL=$(native_level)")
    cmake --preset "$@" "${level[@]}" >build/configure.log 2>&1 || { cat build/configure.log >&2; fail "CMake could not configure"; }
}

# compile PRESET [TARGET...]: every finished object is a line "[done/all, seconds] ...".
compile() {
    NINJA_STATUS="  [%f/%t, %es] " cmake --build "build/$1" ${2:+--target "${@:2}"}
}

# build_for_this_machine: sets `built` to the preset whose library runs here without an emulator, and builds that.
build_for_this_machine() {
    [ "$machine" = aarch64 ] && built=$native_preset || built=portable
    configure "$built"
    compile "$built" qfftf
}

# run_tests PRESET [OPTION OF CTEST...]
run_tests() {
    ctest --test-dir "build/$1" "${@:2}" -j "$(nproc)" --output-on-failure --no-tests=error --timeout 900
}

# The hand-written C and C++ files, each name ended by a zero byte.
source_files() {
    find . \( -path './.*' -o -path ./build \) -prune -o \
        -type f \( -name '*.c' -o -name '*.cpp' -o -name '*.h' -o -name '*.hpp' \) -print0 | sort -z
}

# --- examples ---------------------------------------------------------------------------------------------------

# configure_example NAME PREFIX FOLDER: a project in examples/ that takes the library from PREFIX, configured in FOLDER
# with the compiler of the chosen preset.
configure_example() {
    local compiler=(-D CMAKE_C_COMPILER=clang-19 -D CMAKE_CXX_COMPILER=clang++-19)
    case $preset in
        cross) compiler=(--toolchain "$root/cmake/cross-clang.cmake") ;;
        cross-gcc) compiler=(--toolchain "$root/cmake/cross-gcc.cmake") ;;
    esac
    [ -z "$foreign" ] || export PKG_CONFIG_LIBDIR=/usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig
    cmake -S "examples/$1" -B "$3" -G Ninja "${compiler[@]}" -D CMAKE_BUILD_TYPE=Release -D "CMAKE_PREFIX_PATH=$2" \
        >build/configure.log 2>&1 || { cat build/configure.log >&2; fail "CMake could not configure the example $1"; }
}

# The emulated processor, in the emulator's words; by default one with SVE registers of 256 bits.
emulated_processor=${QFFTF_PROCESSOR:-max,sve-default-vector-length=32}

# run_arm PROGRAM [ARG...]: natively, or under the emulator.
run_arm() {
    if [ "$machine" = aarch64 ]; then "$@"; else qemu-aarch64 -cpu "$emulated_processor" "$@"; fi
}

# unpack_package NAME FOLDER: a Debian package's files in FOLDER/NAME, without installing it.
unpack_package() {
    [ ! -d "$2/$1" ] || return 0
    local fetched=$2/$1.fetched
    rm -rf "$fetched" && mkdir -p "$fetched"
    if ! lists_know "$1"; then
        find_root "$1"
        apt_get update || fail_with_packages "the package lists could not be fetched"
    fi
    (cd "$fetched" && apt-get -q download "$1") >build/packages.log 2>&1 || fail_with_packages "$1 could not be fetched"
    dpkg-deb -x "$fetched"/*.deb "$fetched/files" && mv "$fetched/files" "$2/$1" || fail "$1 could not be unpacked"
    rm -rf "$fetched"
}
