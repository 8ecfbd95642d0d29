# SPDX-License-Identifier: Apache-2.0
"""Cosine and sine transforms of types 1 to 4, with the definitions and arguments of scipy.fft.

`type` 2 and 3 are inverses of each other, 1 and 4 of themselves, up to the norm. `orthogonalize` scales the terms that
make the matrix of a cosine transform orthogonal; it is on with norm "ortho". Complex input is transformed part by part.
"""
import math

import numpy as np

from . import _arguments as arguments
from ._layout import groups
from ._library import R2R_KINDS
from ._plans import REAL, count_workers, run
from ._fourier import fitting, sorted_axes

LOGICAL = {("dct", 1): -1, ("dst", 1): +1}  # the logical length of an axis is twice its own plus this, else twice
ROOT = np.float32(math.sqrt(2))


def ends(family, type, n):
    """Indices of the terms that `orthogonalize` scales: (of the input, of the output). For sine transforms of type 2
    and 3 it is the first term too, as in scipy.fft, though the last would make their matrices orthogonal."""
    if type == 1 and family == "dct":
        return (0, n - 1), (0, n - 1)
    return {2: ((), (0,)), 3: ((0,), ())}.get(type, ((), ()))


def along(array, axis, index):
    return array[(slice(None),) * axis + (slice(index, index + 1),)]


def r2r(family, x, type, axes, sizes, norm, overwrite_x, workers, out, orthogonalize, inverse):
    if type not in (1, 2, 3, 4):
        raise ValueError(f"qfftf: {family} types are 1 to 4, not {type}")
    workers = count_workers(workers)
    logical = [2 * (n + LOGICAL.get((family, type), 0)) for n in sizes]
    if min(logical) < 1:
        raise ValueError("qfftf: a DCT of type 1 has at least 2 points along every axis")
    factor = arguments.scale(norm, math.prod(logical), inverse)
    orthogonalize = norm == "ortho" if orthogonalize is None else orthogonalize
    type = {2: 3, 3: 2}.get(type, type) if inverse else type

    given, x = x, arguments.single(x)
    x, copied = arguments.resized(x, axes, sizes)
    mine = overwrite_x or copied or not np.may_share_memory(x, given)
    x = arguments.readable(x)
    if orthogonalize and any(ends(family, type, n)[0] for n in sizes):
        x, mine = x if mine and x.flags.writeable else x.copy(), True
        for axis, n in zip(axes, sizes):
            for index in ends(family, type, n)[0]:
                along(x, axis, index)[...] *= ROOT
    target = arguments.output(out, x.shape, x.dtype, x, mine)
    x = arguments.apart(x, target)
    for source, result in ((x, target),) if x.dtype == REAL else ((x.real, target.real), (x.imag, target.imag)):
        execute(R2R_KINDS[family, type], source, result, axes, workers)
    if orthogonalize:
        for axis, n in zip(axes, sizes):
            for index in ends(family, type, n)[1]:
                along(target, axis, index)[...] *= 1 / ROOT
    return arguments.finish(target, out, factor)


def execute(kind, x, target, axes, workers):
    if target.size:
        for group in groups(sorted_axes(x, axes), x.ndim):
            run("r2r", (kind,) * len(group), *fitting(x, target, group), workers)
            x = target


def one(family, inverse):
    def function(x, type=2, n=None, axis=-1, norm=None, overwrite_x=False, workers=None, orthogonalize=None, *,
                 out=None):
        x = x if hasattr(x, "ndim") else arguments.single(x)
        axis, n = arguments.one_axis(x, n, axis)
        return r2r(family, x, type, [axis], [n], norm, overwrite_x, workers, out, orthogonalize, inverse)
    return described(function, family, inverse, "", "along one axis")


def several(family, inverse):
    def function(x, type=2, s=None, axes=None, norm=None, overwrite_x=False, workers=None, orthogonalize=None, *,
                 out=None):
        x = x if hasattr(x, "ndim") else arguments.single(x)
        axes, sizes = arguments.several_axes(x, s, axes)
        if not axes:
            return x
        return r2r(family, x, type, axes, sizes, norm, overwrite_x, workers, out, orthogonalize, inverse)
    return described(function, family, inverse, "n", "over several axes, by default all")


def described(function, family, inverse, suffix, where):
    function.__name__ = function.__qualname__ = ("i" if inverse else "") + family + suffix
    words = {"dct": "cosine", "dst": "sine"}[family]
    function.__doc__ = f"{'Inverse ' if inverse else ''}{words} transform of type 1 to 4 {where}.".capitalize()
    return function


dct, idct, dst, idst = one("dct", False), one("dct", True), one("dst", False), one("dst", True)
dctn, idctn, dstn, idstn = several("dct", False), several("dct", True), several("dst", False), several("dst", True)
