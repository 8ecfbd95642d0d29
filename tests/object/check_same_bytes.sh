#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# check_same_bytes.sh [whole]: a build from another folder, without ccache, makes the same bytes as this one: the texts of
# all kernels and a few objects, or the whole library. CMakeLists.txt sets the variables.
set -euo pipefail
fail() { echo "FAILED: $*" >&2; exit 1; }
export CCACHE_DISABLE=1
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER
rm -rf "$WORK"
copy="$WORK/another, longer folder/sources"
mkdir -p "$copy"
tar -C "$SOURCE" --exclude=./build --exclude=./.git -c . | tar -C "$copy" -x

same() { cmp "$1" "$2" || fail "$(basename "$1") differs from a build in $copy"; }

if [ "${1:-}" = whole ]; then
    compilers=()
    [ -n "$TOOLCHAIN" ] || compilers=(-D "CMAKE_C_COMPILER=$C" -D "CMAKE_CXX_COMPILER=$CXX")
    "$CMAKE" -S "$copy" -B "$copy/build" -G Ninja ${TOOLCHAIN:+--toolchain "$TOOLCHAIN"} "${compilers[@]}" \
        -D CMAKE_BUILD_TYPE=Release -D QFFTF_BUILD_TESTS=OFF -D QFFTF_BUILD_BENCH=OFF >"$WORK/log" || { cat "$WORK/log"; fail "CMake"; }
    ninja -C "$copy/build" qfftf qfftf_static >"$WORK/log" || { tail -n 30 "$WORK/log"; fail "the build"; }
    same "$BUILD/libqfftf.so.1" "$copy/build/libqfftf.so.1"
    same "$BUILD/static/qfftf.o" "$copy/build/static/qfftf.o"
    echo "ok: the whole library"
    exit
fi

generator=$BUILD/host/kernel_generator/kernel_generator
[ -x "$generator" ] || generator=$BUILD/kernels/kernel_generator
for again in 1 2; do  # the places of its objects in memory differ from run to run
    mkdir "$WORK/generated$again"
    "$generator" "$WORK/generated$again"
    diff -r "$BUILD/generated" "$WORK/generated$again" || fail "the generator wrote other texts"
done
echo "ok: the texts of $(find "$BUILD/generated" -name '*.cpp' | wc -l) files"

# The commands of the build, in the other folder. The build writes into $SOURCE/build/PRESET or anywhere else.
mkdir -p "$copy/build" && ln -s "$BUILD/generated" "$copy/build/generated"
number=0
for source in interface/version.cpp planner/measured.cpp threads/backend.cpp dft/multi_stage.cpp real_lookup.cpp; do
    while read -r object; do
        number=$((number + 1))
        command=$(ninja -C "$BUILD" -t commands -s "$object" 2>/dev/null | sed "s@^[^ ]*ccache @@; s@ -MD .* -o @ -o @")
        command=${command//"$BUILD/generated"/@generated@}
        command=${command//"$SOURCE"/"'$copy'"}
        command=${command//@generated@/"'$copy/build/generated'"}
        (cd "$copy/build" && eval "${command/ -o $object/ -o "'$WORK/$number.o'"}") || fail "compiling $source by $command"
        same "$BUILD/$object" "$WORK/$number.o"
        echo "ok: $object"
    done < <(ninja -C "$BUILD" -t targets all | sed -n "s@: CXX_COMPILER.*@@p" | grep -F "/$source.o" | grep -E '^(CMakeFiles/qfftf_|kernels/CMakeFiles/qfftf_)')
done
[ "$number" -ge 11 ] || fail "only $number objects were compared"
