#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# A small set of transforms by the Arm library, called by an Arm Python with numpy under the emulator. Python and numpy
# are unpacked from Debian's packages, not installed.
source "$(dirname "$0")/../../scripts/lib.sh"

choose_preset
install_missing $(build_packages) $(run_packages)
configure "$preset"
compile "$preset" qfftf

unpacked=$root/build/arm_python
for package in python3.11-minimal libpython3.11-minimal libpython3.11-stdlib python3-numpy libblas3 liblapack3 \
    libgfortran5 zlib1g libexpat1 libffi8; do
    unpack_package "$package:arm64" "$unpacked"
done
tree=$unpacked/tree  # Python finds its library beside itself, so that all packages share one tree
mkdir -p "$tree" && cp -a "$unpacked"/*:arm64/. "$tree"

libraries=$tree/usr/lib/aarch64-linux-gnu
qemu-aarch64 -cpu max,sve-default-vector-length=32 -E PYTHONHOME="$tree/usr" -E PYTHONDONTWRITEBYTECODE=1 \
    -E LD_LIBRARY_PATH="$libraries:$libraries/blas:$libraries/lapack:$tree/lib/aarch64-linux-gnu" \
    -E PYTHONPATH="$root/python:$tree/usr/lib/python3/dist-packages" \
    -E QFFTF_LIBRARY="$root/build/$preset/libqfftf.so.1" "$tree/usr/bin/python3.11" tests/python/small_set.py
