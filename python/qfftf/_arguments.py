# SPDX-License-Identifier: Apache-2.0
"""Arguments of the transforms as scipy.fft has them: types, lengths, axes, normalisation, outputs."""
import math
import operator

import numpy as np

from . import _layout
from ._plans import COMPLEX, REAL

EXACT = ("float16", "int8", "uint8", "int16", "uint16", "bool")  # every value of these is a float32


def single(x):
    """The array in single precision. float32 and complex64 stay as they are. Types of which every value is a float32,
    and plain Python numbers, are converted. What would lose digits is refused."""
    declared = hasattr(x, "dtype")
    x = np.asarray(x)
    if x.dtype in (REAL, COMPLEX):
        return x if x.dtype.isnative else x.astype(x.dtype.newbyteorder("="))
    if x.dtype.newbyteorder("=") in (REAL, COMPLEX):
        return x.astype(x.dtype.newbyteorder("="))
    if x.dtype.newbyteorder("=").name in EXACT or (not declared and x.dtype.kind in "iuf"):
        return x.astype(REAL)
    if not declared and x.dtype.kind == "c":
        return x.astype(COMPLEX)
    raise TypeError(f"qfftf transforms single precision, and {x.dtype} would lose digits: convert the array with "
                    "astype(numpy.float32) or astype(numpy.complex64), or use scipy.fft")


def real(x):
    x = single(x)
    if x.dtype != REAL:
        raise TypeError("qfftf: x must be a real sequence")
    return x


def as_complex(x):
    return single(x).astype(COMPLEX, copy=False)


def one_axis(x, n, axis):
    """(axis, n) with the axis counted from 0; n is the length along it if none is given."""
    axis = operator.index(axis)
    if not -x.ndim <= axis < x.ndim:
        raise ValueError(f"qfftf: axis {axis} exceeds the {x.ndim} dimensions of the array")
    axis %= x.ndim
    n = x.shape[axis] if n is None else operator.index(n)
    return axis, positive(n)


def positive(n):
    if n < 1:
        raise ValueError(f"qfftf: invalid number of data points ({n}) specified")
    return n


def several_axes(x, s, axes):
    """(axes, sizes) as scipy.fft reads them: axes default to the last len(s), or to all; -1 in s keeps a length."""
    s = None if s is None else [operator.index(n) for n in (s if np.iterable(s) else [s])]
    if axes is not None:
        axes = [operator.index(a) for a in (axes if np.iterable(axes) else [axes])]
    elif s is None:
        axes = list(range(x.ndim))
    elif len(s) > x.ndim:
        raise ValueError("qfftf: shape requires more axes than are present")
    else:
        axes = list(range(x.ndim - len(s), x.ndim))
    if s is not None and len(s) != len(axes):
        raise ValueError("qfftf: when given, axes and shape arguments have to be of the same length")
    if any(not -x.ndim <= a < x.ndim for a in axes):
        raise ValueError("qfftf: axes exceeds dimensionality of input")
    axes = [a % x.ndim for a in axes]
    if len(set(axes)) != len(axes):
        raise ValueError("qfftf: all axes must be unique")
    sizes = [x.shape[a] if s is None or s[i] == -1 else s[i] for i, a in enumerate(axes)]
    return axes, [positive(n) for n in sizes]


def scale(norm, n, inverse):
    """The factor of a transform of n points in all; the library itself has none."""
    if norm not in (None, "backward", "ortho", "forward"):
        raise ValueError(f'qfftf: invalid norm value {norm!r}, should be "backward", "ortho" or "forward"')
    if norm == "ortho":
        return 1 / math.sqrt(n)
    return 1 / n if inverse == (norm != "forward") else 1.0


def resized(x, axes, sizes):
    """x cut or padded with zeros to these sizes, as a view where it is only cut: (array, whether it is a copy)."""
    shape = list(x.shape)
    for axis, n in zip(axes, sizes):
        shape[axis] = n
    if tuple(shape) == x.shape:
        return x, False
    kept = tuple(slice(0, min(a, b)) for a, b in zip(shape, x.shape))
    if all(a <= b for a, b in zip(shape, x.shape)):
        return x[kept], False
    padded = np.zeros(shape, x.dtype)
    padded[kept] = x[kept]
    return padded, True


def readable(x):
    """x where the library can read it: itself, or a copy."""
    return x if _layout.readable(x) else np.array(x, order="C")


def output(out, shape, dtype, x, may_overwrite):
    """Where the library writes: `out` if it was given and its memory serves, x itself if it may be overwritten and
    fits, else a new array."""
    if out is not None:
        if not isinstance(out, np.ndarray) or out.dtype != dtype or out.shape != tuple(shape):
            raise ValueError(f"qfftf: out is a numpy array of {dtype} and shape {tuple(shape)}")
        if not out.flags.writeable:
            raise ValueError("qfftf: out is read-only")
        return out if serves(out) else np.empty(shape, dtype)
    if may_overwrite and x.dtype == dtype and x.shape == tuple(shape) and serves(x):
        return x
    return np.empty(shape, dtype)


def serves(array):
    """Whether it can take results; its axes beside one transformed may not be more than a plan's batch has."""
    return _layout.writable(array) and (array.flags.c_contiguous or array.ndim <= _layout.MAX_DIMS + 1)


def apart(x, target):
    """x, or a copy if it shares memory with the target in any way but being the same array."""
    same = (x.__array_interface__["data"] == target.__array_interface__["data"]
            and x.strides == target.strides and x.dtype == target.dtype)
    return x if same or not np.may_share_memory(x, target) else x.copy()


def finish(target, out, factor):
    """The result times its factor, in `out` if that was given."""
    if factor != 1.0:
        np.multiply(target, target.real.dtype.type(factor), out=target)
    if out is not None and target is not out:
        out[...] = target
        return out
    return target
