# SPDX-License-Identifier: Apache-2.0
"""What the exercise computes with, and what it keeps: data, references in double precision, results by name."""
import numpy as np

results = {}
generator = np.random.default_rng(3)


def real(shape):
    return generator.uniform(-1, 1, shape).astype(np.float32)


def complex_(shape):
    return (real(shape) + 1j * real(shape)).astype(np.complex64)


def keep(name, compute, expected=None):
    """The result of compute() beside what is expected, or which exception it raised."""
    assert name not in results, name
    try:
        results[name] = np.array(compute())
    except Exception as error:  # whatever it is: it must be the same on both libraries
        results[name] = np.array(f"{type(error).__name__}: {error}")
    if expected is not None:
        results[f"expected: {name}"] = np.asarray(expected)


def transformed(data, axes, inverse=False):
    """Not normalised in either direction."""
    points = np.prod([data.shape[axis] for axis in axes])
    return np.fft.ifftn(data, axes=axes) * points if inverse else np.fft.fftn(data, axes=axes)


def cosines_or_sines(kind, n):
    """The matrix of a real-to-real transform of n points, from its definition."""
    k, j = np.meshgrid(np.arange(n), np.arange(n), indexing="ij")
    if kind.startswith("FFTW_REDFT"):
        middle = {"00": j * k / max(n - 1, 1), "10": (j + .5) * k / n, "01": j * (k + .5) / n, "11": (j + .5) * (k + .5) / n}
        matrix = 2 * np.cos(np.pi * middle[kind[-2:]])
        if kind.endswith("00"):
            matrix[:, [0, -1]] /= 2
        elif kind.endswith("01"):
            matrix[:, 0] /= 2
        return matrix
    middle = {"00": (j + 1) * (k + 1) / (n + 1), "10": (j + .5) * (k + 1) / n, "01": (j + 1) * (k + .5) / n,
              "11": (j + .5) * (k + .5) / n}
    matrix = 2 * np.sin(np.pi * middle[kind[-2:]])
    if kind.endswith("01"):
        matrix[:, -1] /= 2
    return matrix


def real_transformed(data, kinds, axes):
    data = data.astype(np.float64)
    for kind, axis in zip(kinds, axes):
        data = np.moveaxis(np.tensordot(cosines_or_sines(kind, data.shape[axis]), data, axes=(1, axis)), 0, axis)
    return data
