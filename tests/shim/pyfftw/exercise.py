#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""exercise.py RESULTS: calls pyfftw in single precision in the ways that it offers and keeps every result.

Writes RESULTS (.npz) and, beside it, a text that tells which library was loaded. The data are the same in every run."""
import itertools
import pathlib
import sys

import numpy as np
import pyfftw

SHAPES = [(8,), (9,), (100,), (101,), (256,), (4, 6), (7, 9), (16, 16), (3, 4, 5), (2, 3, 4, 6), (1,), (1, 5), (6, 1)]
FEW_SHAPES = [(9,), (100,), (4, 6), (3, 4, 5), (1, 5)]
MEASURED_SHAPES = [(8,)]  # an emulator takes long to measure
REAL_KINDS = [f"FFTW_{kind}" for kind in ("REDFT00", "REDFT01", "REDFT10", "REDFT11", "RODFT00", "RODFT01", "RODFT10", "RODFT11")]
results = {}
generator = np.random.default_rng(3)


def real(shape):
    return generator.uniform(-1, 1, shape).astype(np.float32)


def complex_(shape):
    return (real(shape) + 1j * real(shape)).astype(np.complex64)


def keep(name, compute):
    """The result of compute(), or which exception it raised: both must be the same on both libraries."""
    assert name not in results, name
    try:
        results[name] = np.array(compute())
    except Exception as error:
        results[name] = np.array(f"{type(error).__name__}: {error}")


def axes_of(shape):
    count = len(shape)
    return [(k,) for k in range(count)] + ([tuple(range(count)), tuple(reversed(range(count)))] if count > 1 else [])


def plans():
    """FFTW objects: directions, axes, flags, threads, in place, strided arrays, normalisation, update of arrays."""
    flags = [("FFTW_ESTIMATE",), ("FFTW_MEASURE",), ("FFTW_PATIENT",), ("FFTW_ESTIMATE", "FFTW_UNALIGNED"),
             ("FFTW_ESTIMATE", "FFTW_DESTROY_INPUT")]
    for shape in SHAPES:
        for axes, flag in itertools.product(axes_of(shape), flags):
            if flag[0] != "FFTW_ESTIMATE" and shape not in MEASURED_SHAPES:
                continue
            for direction in ("FFTW_FORWARD", "FFTW_BACKWARD"):
                def planned():
                    a, b = pyfftw.empty_aligned(shape, "complex64"), pyfftw.empty_aligned(shape, "complex64")
                    plan = pyfftw.FFTW(a, b, axes=axes, direction=direction, flags=flag)
                    a[:] = data
                    return plan().copy()
                data = complex_(shape)
                keep(f"plan {shape} {axes} {flag} {direction}", planned)
    for shape in SHAPES:
        data, again = complex_(shape), complex_(shape)

        def in_place():
            a = pyfftw.byte_align(data.copy())
            plan = pyfftw.FFTW(a, a, axes=tuple(range(len(shape))), flags=("FFTW_ESTIMATE",))
            plan.input_array[:] = data
            return plan().copy()

        def other_arrays():
            a, b = pyfftw.empty_aligned(shape, "complex64"), pyfftw.empty_aligned(shape, "complex64")
            plan = pyfftw.FFTW(a, b, axes=tuple(range(len(shape))), threads=2, flags=("FFTW_ESTIMATE",))
            c, d = pyfftw.byte_align(again.copy()), pyfftw.empty_aligned(shape, "complex64")
            plan.update_arrays(c, d)
            plan.execute()
            return d.copy()
        keep(f"in place {shape}", in_place)
        keep(f"other arrays {shape}", other_arrays)
    for steps in ((2,), (3,), (-1,), (-2,)):
        whole = complex_((60,))
        part = whole[::steps[0]]

        def strided():
            a = np.zeros(60, "complex64")[::steps[0]]
            b = np.zeros(120, "complex64")[::2][:len(part)]
            plan = pyfftw.FFTW(a, b, flags=("FFTW_ESTIMATE", "FFTW_UNALIGNED"))
            a[:] = part
            return plan().copy()
        keep(f"strides {steps}", strided)


def real_plans():
    for shape in SHAPES:
        for axes in axes_of(shape):
            data = real(shape)
            half = list(shape)
            half[axes[-1]] = half[axes[-1]] // 2 + 1

            def forward():
                a, b = pyfftw.empty_aligned(shape, "float32"), pyfftw.empty_aligned(half, "complex64")
                plan = pyfftw.FFTW(a, b, axes=axes, flags=("FFTW_ESTIMATE",))
                a[:] = data
                return plan().copy()

            def backward():
                a, b = pyfftw.empty_aligned(half, "complex64"), pyfftw.empty_aligned(shape, "float32")
                plan = pyfftw.FFTW(a, b, axes=axes, direction="FFTW_BACKWARD", flags=("FFTW_ESTIMATE",))
                a[:] = np.fft.rfftn(data, axes=axes)
                return plan(normalise_idft=True).copy()
            keep(f"r2c {shape} {axes}", forward)
            keep(f"c2r {shape} {axes}", backward)
            for kind in REAL_KINDS:
                if "FT00" in kind and 1 in [shape[axis] for axis in axes]:
                    continue

                def real_to_real():
                    a, b = pyfftw.empty_aligned(shape, "float32"), pyfftw.empty_aligned(shape, "float32")
                    plan = pyfftw.FFTW(a, b, axes=axes, direction=(kind,) * len(axes), flags=("FFTW_ESTIMATE",))
                    a[:] = data
                    return plan().copy()
                keep(f"{kind} {shape} {axes}", real_to_real)


def interfaces():
    """The drop-in replacements of numpy.fft, with padding, cutting, axes and norms."""
    numpy_fft = pyfftw.interfaces.numpy_fft
    pyfftw.config.PLANNER_EFFORT = "FFTW_ESTIMATE"
    for norm in (None, "ortho"):
        for shape in FEW_SHAPES:
            z, x = complex_(shape), real(shape)
            for name in ("fft", "ifft", "fftn", "ifftn"):
                keep(f"{name} {shape} {norm}", lambda: getattr(numpy_fft, name)(z, norm=norm))
            for name in ("rfft", "rfftn", "ihfft"):
                keep(f"{name} {shape} {norm}", lambda: getattr(numpy_fft, name)(x, norm=norm))
            for name in ("irfft", "hfft", "irfftn"):
                keep(f"{name} {shape} {norm}", lambda: getattr(numpy_fft, name)(z, norm=norm))
            for n, axis in itertools.product((3, 5, 12), (0, -1)):
                keep(f"fft {shape} {norm} n={n} axis={axis}", lambda: numpy_fft.fft(z, n=n, axis=axis, norm=norm))
                keep(f"irfft {shape} {norm} n={n} axis={axis}", lambda: numpy_fft.irfft(z, n=n, axis=axis, norm=norm))


def builders():
    for shape in FEW_SHAPES:
        z, x = complex_(shape), real(shape)
        efforts = ("FFTW_ESTIMATE", "FFTW_MEASURE") if shape in MEASURED_SHAPES else ("FFTW_ESTIMATE",)
        for name, data in (("fft", z), ("ifft", z), ("rfft", x), ("irfft", z), ("fftn", z), ("ifftn", z), ("rfftn", x), ("irfftn", z)):
            for effort in efforts:
                def built():
                    plan = getattr(pyfftw.builders, name)(data.copy(), planner_effort=effort, threads=2)
                    plan.input_array[:] = data[tuple(slice(0, k) for k in plan.input_shape)]
                    return plan().copy()
                keep(f"builders.{name} {shape} {effort}", built)


def wisdom():
    """Wisdom goes out, is forgotten, and comes in again; FFTW_WISDOM_ONLY knows what was planned."""
    def only():
        a, b = pyfftw.empty_aligned(48, "complex64"), pyfftw.empty_aligned(48, "complex64")
        a[:] = data
        plan = pyfftw.FFTW(a, b, flags=("FFTW_MEASURE", "FFTW_WISDOM_ONLY"))
        a[:] = data
        return plan().copy()
    data = complex_((48,))
    pyfftw.forget_wisdom()
    keep("wisdom: forgotten", only)
    pyfftw.FFTW(pyfftw.empty_aligned(48, "complex64"), pyfftw.empty_aligned(48, "complex64"), flags=("FFTW_MEASURE",))
    keep("wisdom: known", only)
    known = pyfftw.export_wisdom()
    pyfftw.forget_wisdom()
    keep("wisdom: forgotten again", only)
    keep("wisdom: imported", lambda: pyfftw.import_wisdom(known)[1])
    keep("wisdom: known again", only)
    keep("alignment", lambda: pyfftw.is_byte_aligned(pyfftw.empty_aligned(5, "complex64", n=32), n=32))


for part in (plans, real_plans, interfaces, builders, wisdom):
    part()
target = pathlib.Path(sys.argv[1])
np.savez(target, **results)
maps = pathlib.Path("/proc/self/maps").read_text(encoding="utf-8")
loaded = sorted({line.split()[-1] for line in maps.splitlines() if "/libfftw3f.so" in line})
target.with_suffix(".txt").write_text("".join(f"loaded: {path}\n" for path in loaded), encoding="utf-8")
