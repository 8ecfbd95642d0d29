# SPDX-License-Identifier: Apache-2.0
"""Complex and real Fourier transforms with the arguments of scipy.fft.

What all have in common: `n` or `s` cut or zero-pad the input; `norm` is "backward" (the inverse divides by the number
of points), "ortho" or "forward"; `workers` is the number of threads, -1 all CPUs; `out` is an array that takes the
result; `overwrite_x` allows the input's memory to be used. The result has single precision, always.
"""
import math

import numpy as np

from . import _arguments as arguments
from ._layout import groups
from ._library import BACKWARD, FORWARD
from ._plans import COMPLEX, REAL, count_workers, run


def no_plan(plan):
    if plan is not None:
        raise NotImplementedError("qfftf: a precomputed plan isn't taken here; call a qfftf.Plan itself")


def sorted_axes(x, axes):
    return sorted(axes, key=lambda a: (-x.strides[a], a))


def c2c(x, axes, sizes, norm, overwrite_x, workers, out, inverse):
    """Over `axes`, in several executions if they are many: the first to the output, the others in place there."""
    workers, factor = count_workers(workers), arguments.scale(norm, math.prod(sizes), inverse)
    given, x = x, arguments.as_complex(x)
    x, copied = arguments.resized(x, axes, sizes)
    mine = overwrite_x or copied or not np.may_share_memory(x, given)
    x = arguments.readable(x)
    target = arguments.output(out, x.shape, COMPLEX, x, mine)
    x = arguments.apart(x, target)
    if target.size:
        for group in groups(sorted_axes(x, axes), x.ndim):
            run("c2c", BACKWARD if inverse else FORWARD, *fitting(x, target, group), workers)
            x = target
    return arguments.finish(target, out, factor)


def fitting(x, target, group, sizes=None):
    """The arguments of an execution. Where so many axes can't be told to the library, x becomes contiguous."""
    if x is not target and x.ndim - len(group) > 4 and not x.flags.c_contiguous:
        x = np.ascontiguousarray(x)
    return x, target, group, sizes or [x.shape[a] for a in group]


def r2c(x, axes, sizes, norm, workers, out, inverse=False):
    """Real to complex over the last of `axes`, complex over the others. With `inverse` it is the conjugate."""
    workers, factor = count_workers(workers), arguments.scale(norm, math.prod(sizes), inverse)
    x, _ = arguments.resized(arguments.real(x), axes, sizes)
    x = arguments.readable(x)
    shape = list(x.shape)
    shape[axes[-1]] = sizes[-1] // 2 + 1
    target = arguments.output(out, shape, COMPLEX, x, False)
    x = arguments.apart(x, target)
    if target.size:
        *others, last = groups(sorted_axes(x, axes[:-1]) + [axes[-1]], x.ndim)
        run("r2c", None, *fitting(x, target, last), workers)
        for group in others:
            run("c2c", FORWARD, *fitting(target, target, group), workers)
        if inverse:
            np.conjugate(target, out=target)
    return arguments.finish(target, out, factor)


def c2r(x, axes, sizes, norm, overwrite_x, workers, out, inverse=True):
    """Complex over all of `axes` but the last, then complex to real over that. Without `inverse`, of the conjugate."""
    workers, factor = count_workers(workers), arguments.scale(norm, math.prod(sizes), inverse)
    given, x = x, arguments.as_complex(x)
    *others, last = axes
    x, copied = arguments.resized(x, axes, sizes[:-1] + [sizes[-1] // 2 + 1])
    mine = overwrite_x or copied or not np.may_share_memory(x, given)
    x = arguments.readable(x)
    shape = list(x.shape)
    shape[last] = sizes[-1]
    target = arguments.output(out, shape, REAL, x, False)
    x = arguments.apart(x, target)
    if not inverse:
        x = np.conjugate(x)
        mine = True
    if target.size:
        for group in groups(sorted_axes(x, others), x.ndim):
            scratch = arguments.output(None, x.shape, COMPLEX, x, mine)
            run("c2c", BACKWARD, *fitting(x, scratch, group), workers)
            x, mine = scratch, True
        run("c2r", None, *fitting(x, target, [last], sizes[-1:]), workers)
    return arguments.finish(target, out, factor)


# --- one axis ---------------------------------------------------------------------------------------------------------

def fft(x, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Complex transform along one axis."""
    return one(c2c, x, n, axis, norm, overwrite_x, workers, plan, out, False)


def ifft(x, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Inverse complex transform along one axis."""
    return one(c2c, x, n, axis, norm, overwrite_x, workers, plan, out, True)


def one(transform, x, n, axis, norm, overwrite_x, workers, plan, out, inverse):
    no_plan(plan)
    x = x if hasattr(x, "ndim") else np.asarray(arguments.single(x))
    axis, n = arguments.one_axis(x, n, axis)
    return transform(x, [axis], [n], norm, overwrite_x, workers, out, inverse)


def rfft(x, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Real to complex along one axis: n // 2 + 1 coefficients."""
    no_plan(plan)
    x = arguments.real(x)
    axis, n = arguments.one_axis(x, n, axis)
    return r2c(x, [axis], [n], norm, workers, out)


def irfft(x, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Inverse of rfft; n is the length of the real result, by default twice the coefficients but one."""
    return one_half(x, n, axis, norm, overwrite_x, workers, plan, out, True)


def hfft(x, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Transform of a sequence with Hermitian symmetry, of which x is the first half: real."""
    return one_half(x, n, axis, norm, overwrite_x, workers, plan, out, False)


def one_half(x, n, axis, norm, overwrite_x, workers, plan, out, inverse):
    no_plan(plan)
    x = x if hasattr(x, "ndim") else arguments.single(x)
    axis, length = arguments.one_axis(x, None, axis)
    n = 2 * (length - 1) if n is None else n
    return c2r(x, [axis], [arguments.positive(n)], norm, overwrite_x, workers, out, inverse)


def ihfft(x, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Inverse of hfft."""
    no_plan(plan)
    x = arguments.real(x)
    axis, n = arguments.one_axis(x, n, axis)
    return r2c(x, [axis], [n], norm, workers, out, True)


# --- several axes -----------------------------------------------------------------------------------------------------

def fftn(x, s=None, axes=None, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Complex transform over several axes, by default all."""
    return several(x, s, axes, norm, overwrite_x, workers, plan, out, False)


def ifftn(x, s=None, axes=None, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Inverse of fftn."""
    return several(x, s, axes, norm, overwrite_x, workers, plan, out, True)


def several(x, s, axes, norm, overwrite_x, workers, plan, out, inverse):
    no_plan(plan)
    x = x if hasattr(x, "ndim") else arguments.single(x)
    axes, sizes = arguments.several_axes(x, s, axes)
    if not axes:
        return x
    return c2c(x, axes, sizes, norm, overwrite_x, workers, out, inverse)


def rfftn(x, s=None, axes=None, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Real to complex over several axes; the last of them has n // 2 + 1 coefficients."""
    return several_real(x, s, axes, norm, workers, plan, out, False)


def ihfftn(x, s=None, axes=None, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Inverse of hfftn."""
    return several_real(x, s, axes, norm, workers, plan, out, True)


def several_real(x, s, axes, norm, workers, plan, out, inverse):
    no_plan(plan)
    x = arguments.real(x)
    axes, sizes = arguments.several_axes(x, s, axes)
    if not axes:
        raise ValueError("qfftf: at least 1 axis must be transformed")
    return r2c(x, axes, sizes, norm, workers, out, inverse)


def irfftn(x, s=None, axes=None, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Inverse of rfftn; the last of s is the length of the real result, by default even."""
    return several_half(x, s, axes, norm, overwrite_x, workers, plan, out, True)


def hfftn(x, s=None, axes=None, norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
    """Transform of data with Hermitian symmetry, of which x is half along the last axis: real."""
    return several_half(x, s, axes, norm, overwrite_x, workers, plan, out, False)


def several_half(x, s, axes, norm, overwrite_x, workers, plan, out, inverse):
    no_plan(plan)
    x = x if hasattr(x, "ndim") else arguments.single(x)
    axes, sizes = arguments.several_axes(x, s, axes)
    if not axes:
        raise ValueError("qfftf: at least 1 axis must be transformed")
    if s is None or (s[-1] if np.iterable(s) else s) == -1:
        sizes[-1] = 2 * (x.shape[axes[-1]] - 1)
    arguments.positive(sizes[-1])
    return c2r(x, axes, sizes, norm, overwrite_x, workers, out, inverse)


# --- two axes ---------------------------------------------------------------------------------------------------------

def two(name, transform):
    def function(x, s=None, axes=(-2, -1), norm=None, overwrite_x=False, workers=None, *, plan=None, out=None):
        return transform(x, s, axes, norm, overwrite_x, workers, plan=plan, out=out)
    function.__name__ = function.__qualname__ = name
    function.__doc__ = f"{transform.__name__} over the last two axes."
    return function


fft2, ifft2 = two("fft2", fftn), two("ifft2", ifftn)
rfft2, irfft2 = two("rfft2", rfftn), two("irfft2", irfftn)
hfft2, ihfft2 = two("hfft2", hfftn), two("ihfft2", ihfftn)
