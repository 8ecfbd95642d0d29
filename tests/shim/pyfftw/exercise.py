#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""exercise.py RESULTS: calls pyfftw in single precision in the ways that it offers and keeps every result.

Writes RESULTS (.npz) and, beside it, a text that tells which library was loaded. The data are the same in every run."""
import itertools
import pathlib
import sys
import threading

import numpy as np
import pyfftw
from results import complex_, generator, keep, real, real_transformed, results, transformed

SHAPES = [(8,), (9,), (100,), (101,), (256,), (1024,), (4, 6), (7, 9), (16, 16), (3, 4, 5), (2, 3, 4, 6), (1,), (1, 5), (6, 1)]
FEW_SHAPES = [(9,), (100,), (4, 6), (3, 4, 5), (1, 5)]
MEASURED_SHAPES = [(8,)]  # an emulator takes long to measure
REAL_KINDS = [f"FFTW_{kind}" for kind in ("REDFT00", "REDFT01", "REDFT10", "REDFT11", "RODFT00", "RODFT01", "RODFT10", "RODFT11")]
ESTIMATE = ("FFTW_ESTIMATE",)
DIRECTIONS = ("FFTW_FORWARD", "FFTW_BACKWARD")


def empty(shape, kind):
    return pyfftw.empty_aligned(shape, kind)


def axes_of(shape):
    count = len(shape)
    return [(k,) for k in range(count)] + ([tuple(range(count)), tuple(reversed(range(count)))] if count > 1 else [])


def complex_plans():
    """Every flag, axis and direction; as the module normalises by default, the other way round, and both halves."""
    flags = [ESTIMATE, ("FFTW_MEASURE",), ("FFTW_PATIENT",), ("FFTW_ESTIMATE", "FFTW_UNALIGNED"),
             ("FFTW_ESTIMATE", "FFTW_DESTROY_INPUT")]
    for shape in SHAPES:
        for axes, flag, direction in itertools.product(axes_of(shape), flags, DIRECTIONS):
            if flag[0] != "FFTW_ESTIMATE" and shape not in MEASURED_SHAPES:
                continue
            data = complex_(shape)

            def planned(**how):
                a, b = empty(shape, "complex64"), empty(shape, "complex64")
                plan = pyfftw.FFTW(a, b, axes=axes, direction=direction, flags=flag)
                a[:] = data
                return plan(**how).copy()
            name, expected = f"{shape} {axes} {flag} {direction}", transformed(data, axes, direction == "FFTW_BACKWARD")
            points = np.prod([shape[axis] for axis in axes])
            forward, backward = (1, points) if direction == "FFTW_FORWARD" else (points, 1)
            keep(f"plan {name}", planned, expected / forward)
            if flag == ESTIMATE:
                keep(f"plan, forward normalised {name}", lambda: planned(normalise_idft=False), expected / backward)
                keep(f"plan, orthonormal {name}", lambda: planned(ortho=True, normalise_idft=False), expected / np.sqrt(points))


def arrays_of_plans():
    """In place, other arrays than the planned ones, input that must be copied first, strides of every kind."""
    for shape in SHAPES:
        data, axes = complex_(shape), tuple(range(len(shape)))
        expected = transformed(data, axes)

        def in_place():
            a = pyfftw.byte_align(data.copy())
            plan = pyfftw.FFTW(a, a, axes=axes, flags=ESTIMATE)
            plan.input_array[:] = data
            return plan().copy()

        def other_arrays():
            plan = pyfftw.FFTW(empty(shape, "complex64"), empty(shape, "complex64"), axes=axes, threads=2, flags=ESTIMATE)
            c, d = pyfftw.byte_align(data.copy()), empty(shape, "complex64")
            plan.update_arrays(c, d)
            plan.execute()
            return d.copy()

        def copied_input():
            plan = pyfftw.FFTW(empty(shape, "complex64"), empty(shape, "complex64"), axes=axes, flags=ESTIMATE)
            return plan(data.astype("complex128")).copy()

        def given_output():
            plan = pyfftw.FFTW(empty(shape, "complex64"), empty(shape, "complex64"), axes=axes, flags=ESTIMATE)
            output = empty(shape, "complex64")
            assert plan(pyfftw.byte_align(data.copy()), output) is output
            return output
        for compute in (in_place, other_arrays, copied_input, given_output):
            keep(f"{compute.__name__} {shape}", compute, expected)
    for step, out_step in itertools.product((2, 3, -1, -2), (1, 2, -1)):
        part = complex_((60,))[::step]

        def strided():
            a, b = np.zeros(60, "complex64")[::step], np.zeros(120, "complex64")[::out_step][:len(part)]
            plan = pyfftw.FFTW(a, b, flags=("FFTW_ESTIMATE", "FFTW_UNALIGNED"))
            a[:] = part
            return plan().copy()
        keep(f"strides {step} {out_step}", strided, np.fft.fft(part))


def half_of(shape, axis):
    return shape[:axis] + (shape[axis] // 2 + 1,) + shape[axis + 1:]


def real_plans():
    for shape in SHAPES:
        for axes in axes_of(shape):
            data = real(shape)
            half = half_of(shape, axes[-1])
            spectrum = np.fft.rfftn(data, axes=axes)

            def forward():
                a, b = empty(shape, "float32"), empty(half, "complex64")
                plan = pyfftw.FFTW(a, b, axes=axes, flags=ESTIMATE)
                a[:] = data
                return plan().copy()

            def backward(*more):
                a, b = empty(half, "complex64"), empty(shape, "float32")
                plan = pyfftw.FFTW(a, b, axes=axes, direction="FFTW_BACKWARD", flags=ESTIMATE + more)
                a[:] = spectrum
                return plan(normalise_idft=True).copy()
            keep(f"r2c {shape} {axes}", forward, spectrum)
            keep(f"c2r {shape} {axes}", backward, data)
            keep(f"c2r destroying {shape} {axes}", lambda: backward("FFTW_DESTROY_INPUT"), data)
            for kind in REAL_KINDS:
                if kind == "FFTW_REDFT00" and 1 in [shape[axis] for axis in axes]:
                    continue

                def real_to_real():
                    a, b = empty(shape, "float32"), empty(shape, "float32")
                    plan = pyfftw.FFTW(a, b, axes=axes, direction=(kind,) * len(axes), flags=ESTIMATE)
                    a[:] = data
                    return plan(normalise_idft=False).copy()
                keep(f"{kind} {shape} {axes}", real_to_real, real_transformed(data, (kind,) * len(axes), axes))


def window(shape, kind, backwards):
    """An array of that shape inside a larger one, its dimensions in any order, some of them with gaps or backwards."""
    order = generator.permutation(len(shape))
    steps = generator.choice((1, 1, 2, 3, -1 if backwards else 1), len(shape))
    whole = np.zeros([abs(steps[k]) * shape[k] + generator.integers(0, 3) for k in order], kind)
    part = whole[tuple(slice(None, None, steps[k]) for k in order)]
    return part[tuple(slice(0, shape[k]) for k in order)].transpose(np.argsort(order))


def shapes_as_they_come():
    """Random ranks, lengths, axes and layouts of every kind."""
    for k in range(300):
        rank = generator.integers(1, 5)
        shape = tuple(int(n) for n in generator.integers(1, (1500, 50, 15, 9)[rank - 1], rank))
        axes = tuple(int(axis) for axis in generator.permutation(rank)[:generator.integers(1, rank + 1)])
        form = ("c2c", "inverse", "r2c", "c2r", "r2r")[generator.integers(5)]
        if form == "c2r":
            axes = axes[:1]  # in several the input must be one that may be destroyed, as in real_plans
        half = half_of(shape, axes[-1])
        kinds = tuple(str(kind) for kind in generator.choice(REAL_KINDS[1:], len(axes)))
        backwards = len(axes) == 1  # in several dimensions the original's planner recurses until the stack is full
        a = window(half if form == "c2r" else shape, "float32" if form in ("r2c", "r2r") else "complex64", backwards)
        b = window(half if form == "r2c" else shape, "float32" if form in ("c2r", "r2r") else "complex64", backwards)
        threads = int(generator.integers(1, 4))
        x = real(shape)
        data = np.fft.rfftn(x, axes=axes) if form == "c2r" else x if form in ("r2c", "r2r") else complex_(shape)

        def planned():
            direction = kinds if form == "r2r" else "FFTW_BACKWARD" if form in ("inverse", "c2r") else "FFTW_FORWARD"
            plan = pyfftw.FFTW(a, b, axes=axes, direction=direction, flags=ESTIMATE + ("FFTW_UNALIGNED",), threads=threads)
            a[:] = data
            return plan(normalise_idft=form not in ("inverse", "r2r")).copy()
        expected = {"c2c": lambda: transformed(data, axes), "inverse": lambda: transformed(data, axes, True),
                    "r2c": lambda: np.fft.rfftn(data, axes=axes), "c2r": lambda: x,
                    "r2r": lambda: real_transformed(data, kinds, axes)}[form]()
        keep(f"as it comes {k}: {form} {shape} {axes} {kinds if form == 'r2r' else ''} threads {threads} "
             f"strides {a.strides} {b.strides}", planned, expected)


def interfaces(cached):
    """The drop-in replacements of numpy.fft, with padding, cutting, axes, norms and several threads."""
    ours, theirs = pyfftw.interfaces.numpy_fft, np.fft
    if cached:
        pyfftw.interfaces.cache.enable()
    for norm, shape in itertools.product((None, "ortho"), FEW_SHAPES):
        z, x = complex_(shape), real(shape)

        def same(name, data, *arguments, **named):
            text = f"{name} {shape} {arguments} {named} {norm}{' cached' if cached else ''}"
            keep(text, lambda: getattr(ours, name)(data, *arguments, norm=norm, **named, threads=1 + cached),
                 getattr(theirs, name)(data, *arguments, norm=norm, **named))
        for name in ("fft", "ifft", "fftn", "ifftn"):
            same(name, z)
        for name in ("rfft", "rfftn", "ihfft"):
            same(name, x)
        for n, axis in itertools.product((3, 5, 12), (0, -1)):
            for name in ("fft", "irfft", "hfft"):
                same(name, z, n=n, axis=axis)
            same("rfft", x, n=n, axis=axis)
        if len(shape) > 1:
            for name in ("fft2", "ifft2"):
                same(name, z, s=(3, 8))
            for name in ("rfft2", "rfftn"):
                same(name, x, axes=(1, 0))
            for name in ("irfft2", "irfftn"):
                spectrum = np.fft.rfftn(x, axes=(0, 1)).astype("complex64")
                same(name, spectrum, s=x.shape[:2], axes=(0, 1))
    if cached:
        pyfftw.interfaces.cache.disable()


def builders():
    pairs = (("fft", True), ("ifft", True), ("rfft", False), ("irfft", True), ("fftn", True), ("ifftn", True), ("rfftn", False),
             ("irfftn", True))
    for shape, (name, is_complex) in itertools.product(FEW_SHAPES, pairs):
        for effort in ("FFTW_ESTIMATE", "FFTW_MEASURE") if shape in MEASURED_SHAPES else ("FFTW_ESTIMATE",):
            data = complex_(shape) if is_complex else real(shape)

            def built():
                plan = getattr(pyfftw.builders, name)(data.copy(), planner_effort=effort, threads=2)
                plan.input_array[:] = data[tuple(slice(0, k) for k in plan.input_shape)]
                return plan().copy()
            if name in ("irfft", "irfftn"):  # only a spectrum of real numbers has one answer
                points = real(shape[:-1] + (2 * max(shape[-1] - 1, 1),))
                data = np.fft.rfftn(points, axes=tuple(range(len(shape))) if name == "irfftn" else (-1,)).astype("complex64")
            keep(f"builders.{name} {shape} {effort}", built, getattr(np.fft, name)(data))


def wisdom():
    """Wisdom goes out, is forgotten, and comes in again; FFTW_WISDOM_ONLY knows what was planned."""
    def only():
        a, b = empty(48, "complex64"), empty(48, "complex64")
        plan = pyfftw.FFTW(a, b, flags=("FFTW_MEASURE", "FFTW_WISDOM_ONLY"))
        a[:] = data
        return plan().copy()
    data = complex_((48,))
    expected = np.fft.fft(data)
    pyfftw.forget_wisdom()
    keep("wisdom: forgotten", only)
    pyfftw.FFTW(empty(48, "complex64"), empty(48, "complex64"), flags=("FFTW_MEASURE",))
    keep("wisdom: known", only, expected)
    known = pyfftw.export_wisdom()
    pyfftw.forget_wisdom()
    keep("wisdom: forgotten again", only)
    keep("wisdom: imported", lambda: pyfftw.import_wisdom(known)[1])
    keep("wisdom: known again", only, expected)
    keep("wisdom: import of rubbish", lambda: pyfftw.import_wisdom((b"x", b"(fftw)", b""))[1])


def refusals():
    """What the module refuses, or the library by a null plan."""
    def refused(name, shape, out_shape=None, kind="complex64", out_kind=None, **how):
        keep(name, lambda: pyfftw.FFTW(empty(shape, kind), empty(out_shape or shape, out_kind or kind), **how) is not None)
    refused("shapes that don't match", 8, out_shape=9)
    refused("types that don't match", 8, out_kind="float32")
    refused("no such flag", 8, flags=("FFTW_HURRY",))
    refused("an axis twice", (4, 4), axes=(0, 0))
    refused("no axes", 8, axes=())
    refused("REDFT00 of one point", 1, kind="float32", direction=("FFTW_REDFT00",))
    keep("alignment", lambda: pyfftw.is_byte_aligned(pyfftw.empty_aligned(5, "complex64", n=32), n=32))


def time_limits():
    data = complex_((512,))
    for limit in (0.0, 0.01):
        def planned():
            a, b = empty(512, "complex64"), empty(512, "complex64")
            plan = pyfftw.FFTW(a, b, flags=("FFTW_MEASURE",), planning_timelimit=limit)
            a[:] = data
            return plan().copy()
        keep(f"time limit {limit}", planned, np.fft.fft(data))


def python_threads():
    """Four threads plan and execute at once; the module lets go of the interpreter meanwhile."""
    data = [complex_((40, 50)) for _ in range(4)]
    outputs = [None] * 4

    def work(k):
        a, b = empty((40, 50), "complex64"), empty((40, 50), "complex64")
        plan = pyfftw.FFTW(a, b, axes=(0, 1), flags=ESTIMATE)
        for _ in range(20):
            a[:] = data[k]
            outputs[k] = plan().copy()
    team = [threading.Thread(target=work, args=(k,)) for k in range(4)]
    for thread in team:
        thread.start()
    for thread in team:
        thread.join()
    for k in range(4):
        keep(f"thread {k}", lambda: outputs[k], np.fft.fft2(data[k]))


def main():
    pyfftw.config.PLANNER_EFFORT = "FFTW_ESTIMATE"
    for part in (complex_plans, arrays_of_plans, real_plans, shapes_as_they_come, builders, wisdom, refusals, time_limits,
                 python_threads):
        part()
    interfaces(cached=False)
    interfaces(cached=True)
    target = pathlib.Path(sys.argv[1])
    np.savez(target, **results)
    maps = pathlib.Path("/proc/self/maps").read_text(encoding="utf-8")
    loaded = sorted({line.split()[-1] for line in maps.splitlines() if "/libfftw3f.so" in line})
    target.with_suffix(".txt").write_text("".join(f"loaded: {path}\n" for path in loaded), encoding="utf-8")


main()
