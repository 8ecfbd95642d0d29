#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""pocketfft_errors.py LIST...: errors of scipy's pocketfft in single precision against itself in double precision, for
the same problems, kinds of input and columns as qfftf_accuracy. Its random numbers are others, and it runs on the
machine that it is started on."""
import math
import sys

import numpy
import scipy.fft

KINDS = {"redft00": (scipy.fft.dct, 1), "redft01": (scipy.fft.dct, 3), "redft10": (scipy.fft.dct, 2),
         "redft11": (scipy.fft.dct, 4), "rodft00": (scipy.fft.dst, 1), "rodft01": (scipy.fft.dst, 3),
         "rodft10": (scipy.fft.dst, 2), "rodft11": (scipy.fft.dst, 4)}


def real_input(kind, n, random):
    if kind == "impulse":
        x = numpy.zeros(n)
        x[n // 3] = 1
    elif kind == "range":
        x = random.choice([-1, 1], n) * numpy.exp2(random.uniform(-20, 20, n))
    else:
        x = random.uniform(-0.5, 0.5, n)
    return x.astype(numpy.float32)


def spectrum(n, kind, random):
    """Of a real signal, rounded to single precision."""
    return scipy.fft.rfft(real_input(kind, n, random).astype(numpy.float64)).astype(numpy.complex64)


def problem(transform, n, words, kind, random):
    """The function that is the transform, and its input. r2hc and hc2r are r2c and c2r in another order."""
    if transform == "c2c":
        x = real_input(kind, n, random).astype(numpy.complex64)
        if kind != "impulse":
            x = x + numpy.complex64(1j) * real_input(kind, n, random)
        # The unnormalised backward transform, by its norm of "forward".
        return (lambda a: scipy.fft.ifft(a, norm="forward")) if "backward" in words else scipy.fft.fft, x
    if transform in ("r2c", "r2hc"):
        return scipy.fft.rfft, real_input(kind, n, random)
    if transform in ("c2r", "hc2r"):
        return (lambda a: scipy.fft.irfft(a, n, norm="forward")), spectrum(n, kind, random)
    if transform in KINDS:
        function, number = KINDS[transform]
        return (lambda a: function(a, type=number)), real_input(kind, n, random)
    return None, None  # it has no Hartley transform


def parts(a):
    return a.view(a.real.dtype) if numpy.iscomplexobj(a) else a


def report(name, transform, n, words):
    random = numpy.random.default_rng(n)
    for kind in ("uniform", "impulse", "range"):
        function, x = problem(transform, n, words, kind, random)
        if function is None:
            return
        result = function(x)
        if parts(result).dtype != numpy.float32:
            sys.exit(f"{name}: scipy computed it in {result.dtype}")
        exact = parts(function(x.astype(numpy.complex128 if numpy.iscomplexobj(x) else numpy.float64)))
        difference = parts(result).astype(numpy.float64) - exact
        l2 = numpy.linalg.norm(difference) / numpy.linalg.norm(exact)
        largest = numpy.abs(difference).max() / numpy.abs(exact).max()
        unit = 2.0**-24 * math.sqrt(math.log2(max(n, 2)))
        print(f"{name},{kind},pocketfft,{n},{l2:.4g},{largest:.4g},{l2 / unit:.4f},{largest / unit:.4f}")


for path in sys.argv[1:]:
    for line in open(path):
        words = line.split("#")[0].split()
        if not words:
            continue
        for span in words[1].split(","):
            first, _, last = span.partition("-")
            for n in range(int(first), int(last or first) + 1):
                if not (words[0] == "redft00" and n < 2):
                    report(" ".join([words[0], str(n)] + words[2:]), words[0], n, words[2:])
