#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the built library, moves the tree, and checks what a user gets: programs in C99 and C++ build against it by
# pkg-config and by CMake and run; the shared object has the right name, needs only the C, maths and OpenMP libraries,
# and exports the names of interface/exports.map, neither more nor fewer. CMakeLists.txt sets the variables.
set -euo pipefail
source "$SOURCE/tests/install/checks.sh"
enter_work work

echo "--- the installed files, relocated"
"$CMAKE" --install "$BUILD" --prefix "$work/installed_here" >install.log
mv installed_here prefix
expect_same "the installed files" \
"bin/qfftf-info
bin/qfftf-plan
bin/qfftf-run
include/qfftf.f90
include/qfftf.h
include/qfftf.hpp
include/qfftf/fftw3.h
lib/cmake/qfftf/qfftf-config-release.cmake
lib/cmake/qfftf/qfftf-config-version.cmake
lib/cmake/qfftf/qfftf-config.cmake
lib/libqfftf.a
lib/libqfftf.so
lib/libqfftf.so.1
lib/libqfftf.so.$VERSION
lib/libqfftf_fftw3f.so
lib/libqfftf_fftw3f.so.1
lib/libqfftf_fftw3f.so.$VERSION
lib/pkgconfig/qfftf.pc
lib/qfftf/libfftw3f.so.3
lib/qfftf/libfftw3f_omp.so.3
lib/qfftf/libfftw3f_threads.so.3
share/doc/qfftf/CHANGELOG.md
share/doc/qfftf/LICENSE" "$(cd prefix && find . ! -type d -printf '%P\n' | grep -vE '^share/doc/qfftf/(user|examples)/' | sort)"
expect_same "the installed documents and examples" "$(cd "$SOURCE" && find docs/user examples -type f | sed 's@^docs/@@' | sort)" \
    "$(cd prefix/share/doc/qfftf && find user examples -type f | sort)"
DESTDIR=$work/stage "$CMAKE" --install "$BUILD" --prefix /opt/qfftf >stage.log
expect_same "DESTDIR and --prefix together" "$(cd prefix && find . | sort)" "$(cd stage/opt/qfftf && find . | sort)"
grep -rqF -e "$work" -e "$SOURCE" --include='*.pc' --include='*.cmake' prefix && fail "an absolute path was installed"

echo "--- the shared object"
library=prefix/lib/libqfftf.so
readelf -dW $library >dynamic.txt
soname=$(sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p' dynamic.txt)
expect_same "SONAME" libqfftf.so.1 "$soname"
needed=$(sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' dynamic.txt)
strangers=$(grep -vxE 'libc\.so\.6|libm\.so\.6|ld-linux-aarch64\.so\.1|libgomp\.so\.1' <<<"$needed" || true)
expect_same "libraries that aren't allowed to be needed" "" "$strangers"
readelf -lW $library >segments.txt
grep -q 'BIND_NOW\|FLAGS_1.*NOW' dynamic.txt || fail "the shared object's symbols aren't bound at load"
grep -q GNU_RELRO segments.txt || fail "the shared object has no segment that is read-only after binding"
grep 'GNU_STACK' segments.txt | grep -q 'RW ' || fail "the shared object asks for an executable stack"
grep -q TEXTREL dynamic.txt && fail "the shared object has text relocations"

listed=$(listed_names)
[ -n "$listed" ] || fail "interface/exports.map lists no name"
readelf --dyn-syms -W $library >symbols.txt
exported=$(awk '$7 != "UND" && ($5 == "GLOBAL" || $5 == "WEAK") { print $8 }' symbols.txt | sort)
expect_same "exported names" "$listed" "$exported"
declared=$(grep -v '^#' prefix/include/qfftf.h | grep -oE 'qsl_fftf_[a-z0-9_]+\(|QFFTGetVersion\(' | tr -d '(' | sort -u)
expect_same "names that the header declares and the library lacks" "" "$(comm -23 <(echo "$declared") <(echo "$listed"))"

echo "--- the shim"
check_shim() {  # FILE SONAME NEEDED...
    readelf -dW "prefix/lib/$1" >dynamic.txt
    expect_same "SONAME of $1" "$2" "$(sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p' dynamic.txt)"
    strangers=$(sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' dynamic.txt | grep -vxE "libc\.so\.6|libm\.so\.6|$3" || true)
    expect_same "libraries that $1 may not need" "" "$strangers"
}
check_shim libqfftf_fftw3f.so libqfftf_fftw3f.so.1 'libqfftf\.so\.1'
check_shim qfftf/libfftw3f.so.3 libfftw3f.so.3 'libqfftf\.so\.1'
check_shim qfftf/libfftw3f_threads.so.3 libfftw3f_threads.so.3 'libfftw3f\.so\.3'
check_shim qfftf/libfftw3f_omp.so.3 libfftw3f_omp.so.3 'libfftw3f\.so\.3'
expect_same "names of FFTW in the main library" "" "$(grep -E 's?fftwf?_' <<<"$exported" | grep -v '^qsl_' || true)"
strict="-Wall -Wextra -Wpedantic -Werror"
program=$SOURCE/tests/install/consumer/fftw.c
$C -std=c99 $strict -Iprefix/include/qfftf -o by_header "$program" -Lprefix/lib -lqfftf_fftw3f -Wl,-rpath,"$work/prefix/lib" -lm
$EMULATOR ./by_header || fail "a program that is compiled against the shim's header"
# As a binary that was built elsewhere: it asks for libfftw3f.so.3 and knows no folder.
$C -std=c99 $strict -Iprefix/include/qfftf -o by_binary "$program" prefix/lib/qfftf/libfftw3f.so.3 \
    -Wl,-rpath-link,prefix/lib -lm
# The emulator isn't what qfftf-run runs: it hands the folder on.
prefix/bin/qfftf-run sh -c "${EMULATOR:+$EMULATOR -E LD_LIBRARY_PATH=\$LD_LIBRARY_PATH }./by_binary" ||
    fail "a binary under qfftf-run"
prefix/bin/qfftf-run >/dev/null && fail "qfftf-run without a program"
prefix/bin/qfftf-run --help | grep -q PROGRAM || fail "qfftf-run --help"
echo "ok: programs on the shim"

echo "--- the tools"
expect_same "what qfftf-info says at its end" "The library can run here." "$($EMULATOR prefix/bin/qfftf-info | tail -n 1)"
$EMULATOR prefix/bin/qfftf-plan "c2c 1024" || fail "qfftf-plan"

echo "--- a program by a plain compiler command"
$C -o by_hand "$SOURCE/tests/install/consumer/plain.c" -Iprefix/include -Lprefix/lib -lqfftf -lm
if [ -n "$EMULATOR" ]; then $EMULATOR -E LD_LIBRARY_PATH=prefix/lib ./by_hand; else LD_LIBRARY_PATH=prefix/lib ./by_hand; fi ||
    fail "plain.c, built by a plain compiler command"

echo "--- programs, by pkg-config"
export PKG_CONFIG_LIBDIR=$work/prefix/lib/pkgconfig
flags="$(pkg-config --cflags --libs qfftf) -Wl,-rpath,$(pkg-config --variable=libdir qfftf)"
expect_same "version by pkg-config" "$VERSION" "$(pkg-config --modversion qfftf)"
strict="-Wall -Wextra -Wpedantic -Werror"
for file in plain.c complex.c; do
    $C -std=c99 $strict -o by_pkg_config "$SOURCE/tests/install/consumer/$file" $flags -lm
    $EMULATOR ./by_pkg_config || fail "$file, built by pkg-config"
    echo "ok: $file"
done
for standard in c++11 c++20; do
    $CXX -std=$standard $strict -o by_pkg_config "$SOURCE/tests/install/consumer/plain.cpp" $flags
    $EMULATOR ./by_pkg_config || fail "plain.cpp, built by pkg-config as $standard"
    echo "ok: plain.cpp as $standard"
done

echo "--- the examples and the program in README.md, by pkg-config; what they print stands behind \"Prints:\""
check_example() {
    diff <(echo "$2") - >differences <<<"$($EMULATOR ./by_pkg_config)" || { cat differences; fail "$1 (< told, > printed)"; }
    echo "ok: $1"
}
told_by() { sed '1,/^\(\/\*\|!\) Prints:$/d; /^\*\/$/d; s/^! //' "$1"; }
for file in "$SOURCE"/examples/[0-9]*.{c,cpp}; do
    case $file in
        *.c) $C -std=c99 $strict -o by_pkg_config "$file" $flags -lm ;;
        *.cpp) $CXX -std=c++20 $strict -o by_pkg_config "$file" $flags -pthread ;;
    esac
    check_example "$(basename "$file")" "$(told_by "$file")"
done
if command -v "${FORTRAN%% *}" >/dev/null; then
    for file in "$SOURCE"/examples/[0-9]*.f90; do
        $FORTRAN -O1 -Wall -o by_pkg_config prefix/include/qfftf.f90 "$file" $flags
        check_example "$(basename "$file")" "$(told_by "$file")"
    done
else
    echo "skipped: there is no Fortran compiler"
fi
sed '1,/^```c$/d; /^```$/,$d' "$SOURCE/README.md" >readme.c
$C $strict -o by_pkg_config readme.c $flags
check_example README.md "$(sed '1,/^```text$/d; /^```$/,$d' "$SOURCE/README.md")"

echo "--- C++ standards, versions"
grep -q "^#define QFFTF_VERSION \"$VERSION\"$" prefix/include/qfftf.h || fail "QFFTF_VERSION isn't $VERSION"
cat >version.c <<'PROGRAM'
#include <qfftf.h>
#include <stdio.h>
int main(void) { return printf("%d.%d.%d\n", QFFTF_VERSION_MAJOR, QFFTF_VERSION_MINOR, QFFTF_VERSION_PATCH) < 0; }
PROGRAM
$C $strict -o by_pkg_config version.c $flags
expect_same "the version's three numbers" "$VERSION" "$($EMULATOR ./by_pkg_config)"
echo '#include <qfftf.hpp>' >header.cpp
$CXX -std=c++17 -fsyntax-only header.cpp $flags 2>errors.txt && fail "qfftf.hpp was compiled as C++17"
grep -q 'error: \(#error \)\?"\?qfftf.hpp needs C++20' errors.txt || { cat errors.txt; fail "qfftf.hpp as C++17 gives no sentence"; }
grep -c 'error:' errors.txt | grep -qx 1 || { cat errors.txt; fail "qfftf.hpp as C++17 gives more than a sentence"; }
echo "ok: qfftf.hpp as C++17 is one sentence"

echo "--- programs, by CMake"
compilers=()
[ -n "$TOOLCHAIN" ] || compilers=(-D "CMAKE_C_COMPILER=$C" -D "CMAKE_CXX_COMPILER=$CXX")
"$CMAKE" -S "$SOURCE/tests/install/consumer" -B by_cmake -G Ninja ${TOOLCHAIN:+--toolchain "$TOOLCHAIN"} \
    "${compilers[@]}" -D "CMAKE_PREFIX_PATH=$work/prefix" -D "wanted_version=${VERSION%.*}" >cmake.log || { cat cmake.log; exit 1; }
"$CMAKE" --build by_cmake >>cmake.log || { cat cmake.log; exit 1; }
for program in plain_c complex_c plain_cpp; do
    $EMULATOR by_cmake/$program || fail "$program, built by CMake"
    echo "ok: $program"
done

echo "--- projects for another machine"
for version in "" 1.0; do
    cat >CMakeLists.txt <<PROJECT
cmake_minimum_required(VERSION 3.20)
project(other LANGUAGES NONE)
set(CMAKE_SYSTEM_PROCESSOR riscv64)
find_package(qfftf $version REQUIRED)
PROJECT
    "$CMAKE" -S . -B other_machine -G Ninja -D "CMAKE_PREFIX_PATH=$work/prefix" >other.log 2>&1 && fail "another machine takes the package"
    tr -s ' \n' ' ' <other.log | grep -q "which is for aarch64 under Linux; this project is built for riscv64" ||
        { cat other.log; fail "the refusal of another machine has no sentence"; }
    rm -rf other_machine
done
echo "ok: another machine is refused by a sentence"

echo "--- removal"
"$CMAKE" --install "$BUILD" --prefix "$work/removed" >removal.log
"$CMAKE" --build "$BUILD" --target uninstall >>removal.log
expect_same "what is left after removal" "" "$(find removed ! -type d; find removed -name '*qfftf*')"
