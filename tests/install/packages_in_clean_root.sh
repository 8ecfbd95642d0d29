#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# tests/install/packages_in_clean_root.sh [FOLDER]
# Installs what scripts/package made into an empty Debian 12 in FOLDER (build/clean_root), uses it there as a user would,
# and removes it: nothing may be left. On x86_64 the arm64 packages are installed as foreign ones beside an x86_64 system,
# with the emulator for the programs. Needs root, debootstrap and a network; not one of the automatic tests.
set -euo pipefail
cd "$(dirname "$0")/../.."
folder=$(realpath -m "${1:-build/clean_root}")
debootstrap --variant=minbase bookworm "$folder" >"$folder.log"
trap 'umount "$folder/proc"' EXIT
mount -t proc proc "$folder/proc"

inside() { DEBIAN_FRONTEND=noninteractive LC_ALL=C chroot "$folder" "$@"; }
files() { (cd "$folder" && find . -xdev \( -path ./proc -o -path ./var/lib/dpkg -o -path ./var/cache -o -path ./var/log \
    -o -path ./packages -o -path ./var/lib/apt \) -prune -o ! -type d -print | sort); }

[ "$(uname -m)" = aarch64 ] || inside dpkg --add-architecture arm64
inside apt-get -q update
foreign=$([ "$(uname -m)" = aarch64 ] || echo qemu-user g++-aarch64-linux-gnu libstdc++6:arm64)
inside apt-get -q -y install --no-install-recommends pkgconf cmake ninja-build g++ libgomp1:arm64 libc6:arm64 $foreign
files >"$folder.before"

mkdir -p "$folder/packages"
cp build/packages/*.deb "$folder/packages/"
cp -r tests/install/consumer "$folder/packages/"
names=(libqfftf1 libqfftf-dev libqfftf-fftw3f qfftf-tools libqfftf-doc)
inside sh -c 'apt-get -q -y install --no-install-recommends /packages/*.deb'
if [ "$(uname -m)" = aarch64 ]; then  # ldconfig lists what its own machine can load
    inside ldconfig -p >"$folder.libraries"
    grep -q libqfftf.so.1 "$folder.libraries" || { echo "FAILED: the loader doesn't know the library"; exit 1; }
fi
inside dpkg -l "${names[@]}"
inside dpkg --verify "${names[@]}"

run=$([ "$(uname -m)" = aarch64 ] || echo qemu-aarch64 -cpu max,sve-default-vector-length=32)
cc=$([ "$(uname -m)" = aarch64 ] && echo gcc || echo aarch64-linux-gnu-gcc)
inside $run /usr/bin/qfftf-plan --line "c2c 1024"
inside $run /usr/bin/qfftf-info | tail -n 1
inside sh -ec "export PKG_CONFIG_LIBDIR=/usr/lib/aarch64-linux-gnu/pkgconfig
    $cc -o /tmp/plain /packages/consumer/plain.c \$(pkgconf --cflags --libs qfftf) -lm && $run /tmp/plain
    $cc -o /tmp/plain /packages/consumer/plain.c -l:libqfftf.a -lgomp -lm && $run /tmp/plain
    rm /tmp/plain"
# On the shim: by its header, and as a binary that asks for libfftw3f.so.3.
inside sh -ec "libraries=/usr/lib/aarch64-linux-gnu
    $cc -o /tmp/plain -I/usr/include/qfftf /packages/consumer/fftw.c -lqfftf_fftw3f -lm && $run /tmp/plain
    $cc -o /tmp/plain -I/usr/include/qfftf /packages/consumer/fftw.c \$libraries/qfftf/libfftw3f.so.3 -lm
    qfftf-run sh -c '$run ${run:+-E LD_LIBRARY_PATH=\$LD_LIBRARY_PATH} /tmp/plain'
    rm /tmp/plain"
inside sh -ec "cmake -S /packages/consumer -B /packages/by_cmake -G Ninja -D CMAKE_SYSTEM_NAME=Linux \
    -D CMAKE_SYSTEM_PROCESSOR=aarch64 -D CMAKE_LIBRARY_ARCHITECTURE=aarch64-linux-gnu -D CMAKE_C_COMPILER=$cc \
    -D CMAKE_CXX_COMPILER=${cc%gcc}g++ >/dev/null
    cmake --build /packages/by_cmake >/dev/null && $run /packages/by_cmake/plain_cpp"

inside apt-get -q -y purge "${names[@]}"
files >"$folder.after"
diff "$folder.before" "$folder.after" || { echo "FAILED: removal leaves files (> above)"; exit 1; }
echo "Installed, used and removed: nothing is left."
