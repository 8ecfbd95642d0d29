# SPDX-License-Identifier: Apache-2.0
"""Plans: handles of the library with the layout that they were made for, and the cache that the functions use."""
import ctypes
import os
import threading
from collections import OrderedDict
from contextlib import contextmanager

import numpy as np

from . import _layout
from ._library import BACKWARD, FORWARD, IoDim, MEASURED, R2R_KINDS, RULES, lib

COMPLEX, REAL = np.dtype(np.complex64), np.dtype(np.float32)


class PlanError(ValueError):
    """The library has no plan for this problem; the message says which demand it fails."""


def address(array):
    return array.__array_interface__["data"][0]


# --- handles ----------------------------------------------------------------------------------------------------------

class Handle:
    """Owns one plan of the library. `problem` is (kind, extra, dims, batch, in_place, workers)."""

    def __init__(self, problem, x, out, flags=RULES):
        self.handle = None
        kind, extra, dims, batch, in_place, workers = problem
        lib.qsl_fftf_plan_with_nthreads_local(workers)
        lists = [len(dims), io_dims(dims), len(batch), io_dims(batch), x, x if in_place else out]
        if kind == "c2c":
            self.handle = lib.qsl_fftf_plan_guru64_dft(*lists, extra, flags)
        elif kind == "r2r":
            self.handle = lib.qsl_fftf_plan_guru64_r2r(*lists, (ctypes.c_uint32 * len(dims))(*extra), flags)
        else:
            self.handle = getattr(lib, f"qsl_fftf_plan_guru64_dft_{kind}")(*lists, flags)
        if not self.handle:
            raise PlanError(reason(problem))

    def execute(self, x, out):
        lib.qsl_fftf_execute_dft(self.handle, x, out)  # one function under four types

    def __del__(self):
        if self.handle:
            lib.qsl_fftf_destroy_plan(self.handle)


def io_dims(dims):
    return (IoDim * max(len(dims), 1))(*dims)


def reason(problem):
    """Why there is no plan, as far as the documented demands tell."""
    kind, extra, dims, batch, in_place, workers = problem
    text = (f"{kind} of dimensions {list(dims)} (size, step in, step out), batch {list(batch)}, "
            f"{'in place' if in_place else 'out of place'}")
    if not 1 <= len(dims) <= 4:
        return f"a plan has 1 to 4 dimensions, not {len(dims)}: {text}"
    if len(batch) > 4:
        return f"a batch has at most 4 dimensions that don't continue each other, not {len(batch)}: {text}"
    for n, step_in, step_out in dims + batch:
        if n < 1:
            return f"sizes are at least 1: {text}"
        if step_in < 1 or step_out < 1:
            return f"steps between elements are at least 1: {text}"
    if kind == "r2r" and any(k == R2R_KINDS["dct", 1] and d[0] < 2 for k, d in zip(extra, dims)):
        return f"a DCT of type 1 has at least 2 points: {text}"
    return f"this layout can't be transformed{' in place' if in_place else ''}, or memory is short: {text}"


# --- the cache --------------------------------------------------------------------------------------------------------

class Cache:
    """Plans by problem, the latest used last, at most `limit`. A plan is lent to one caller at a time: a second thread
    with the same problem gets a plan of its own, and no plan is destroyed while it runs."""

    def __init__(self, limit):
        self.lock = threading.Lock()
        self.limit, self.made, self.found = limit, 0, 0
        self.idle = OrderedDict()  # (problem, number) to handle
        self.count = 0

    def take(self, problem):
        with self.lock:
            spare = self.idle.get(problem)
            if spare:
                self.found += 1
                handle = spare.pop()
                self.count -= 1
                if not spare:
                    del self.idle[problem]
                return handle
            self.made += 1
            return None

    def give_back(self, problem, handle):
        dropped = []  # destroyed after the lock is released
        with self.lock:
            self.idle.setdefault(problem, []).append(handle)
            self.idle.move_to_end(problem)
            self.count += 1
            self.shrink(dropped)

    def shrink(self, dropped):
        while self.count > self.limit:
            oldest, spare = next(iter(self.idle.items()))
            dropped.append(spare.pop(0))
            self.count -= 1
            if not spare:
                del self.idle[oldest]

    def resize(self, limit):
        dropped = []
        with self.lock:
            self.limit = limit
            self.shrink(dropped)


cache = Cache(limit=64)


def renew_lock():
    """In a forked child: a thread that held the lock isn't there to release it."""
    cache.lock = threading.Lock()


os.register_at_fork(after_in_child=renew_lock)


def set_plan_cache_limit(limit):
    """How many idle plans are kept for the functions (64 at first); 0 keeps none. Plans that are too many are
    destroyed, the longest unused first."""
    if limit < 0:
        raise ValueError("qfftf: the limit of the plan cache is at least 0")
    cache.resize(int(limit))


def plan_cache_info():
    """A dictionary: plans kept now, the limit, plans made and plans found since the start."""
    with cache.lock:
        return {"kept": cache.count, "limit": cache.limit, "made": cache.made, "found": cache.found}


def clear_plan_cache():
    """Destroys all idle plans."""
    limit = cache.limit
    cache.resize(0)
    cache.resize(limit)


def run(kind, extra, x, out, axes, sizes, workers):
    """One execution through the cache, from the memory of x to that of out."""
    dims, batch = _layout.dimensions(x, out, axes, sizes)
    source, target = address(x), address(out)
    problem = (kind, extra, dims, batch, source == target, workers)
    handle = cache.take(problem) or Handle(problem, source, target)
    handle.execute(source, target)
    cache.give_back(problem, handle)


# --- workers ----------------------------------------------------------------------------------------------------------

_default = threading.local()


def get_workers():
    """The number of threads of a transform whose `workers` isn't given: 1, unless `set_workers` is in force."""
    return getattr(_default, "workers", 1)


@contextmanager
def set_workers(workers):
    """Context manager: the default number of threads of transforms in this thread."""
    before, _default.workers = get_workers(), count_workers(workers)
    try:
        yield
    finally:
        _default.workers = before


def count_workers(workers):
    """Negative numbers count back from the number of CPUs, as in scipy.fft: -1 is all of them."""
    if workers is None:
        return get_workers()
    cpus = os.cpu_count() or 1
    number = workers.__index__()
    if number < 0:
        number += cpus + 1
    if number < 1:
        raise ValueError(f"qfftf: workers is at least 1, or from -{cpus} to -1 for all CPUs but some, not {workers}")
    return min(number, 512)


# --- plan objects -----------------------------------------------------------------------------------------------------

class Plan:
    """A plan for arrays of one layout, for those who want to plan once and execute often.

    plan = qfftf.Plan.c2c(x, out)       # the arrays give shapes and strides; nothing is read or written
    plan()                              # from x to out
    plan(y, result)                     # other arrays of the same shapes and strides, in place or apart as planned

    Nothing is normalised. `axes` default to all. The same array twice plans in place. With `measured` the library
    times several methods on the arrays and OVERWRITES both. A plan runs on one thread at a time (a lock sees to it);
    make one for each thread that runs at the same time.
    """

    def __init__(self, kind, extra, x, out, axes, sizes, workers, measured):
        fits = {"input": _layout.readable(x), "output": _layout.writable(out)}
        for name, array in (("input", x), ("output", out)):
            if array.size == 0:
                raise PlanError(f"qfftf: the {name} array is empty")
            if not fits[name]:
                raise PlanError(f"qfftf: the {name} array has steps that aren't positive or not whole elements, or "
                                "isn't of this machine's byte order, or as an output overlaps itself or is read-only")
        dims, batch = _layout.dimensions(x, out, axes, sizes)
        self._arrays = x, out
        self._layouts = self._layout_of(x), self._layout_of(out)
        self._in_place = address(x) == address(out)
        self._lock = threading.Lock()
        problem = (kind, extra, dims, batch, self._in_place, count_workers(workers))
        self._handle = Handle(problem, address(x), address(out), MEASURED if measured else RULES)

    @staticmethod
    def _layout_of(array):
        return array.dtype, array.shape, array.strides

    def __call__(self, x=None, out=None):
        """Executes, on the planned arrays or on others, and returns the output array."""
        if (x is None) != (out is None):
            raise ValueError("qfftf: a plan runs on its own arrays, or is given both others")
        if x is None:
            x, out = self._arrays
        elif (self._layout_of(x), self._layout_of(out)) != self._layouts:
            raise ValueError("qfftf: these arrays have other types, shapes or strides than the planned ones")
        elif not out.flags.writeable:
            raise ValueError("qfftf: the output array is read-only")
        elif (address(x) == address(out)) != self._in_place:
            raise ValueError("qfftf: the plan is " + ("in place" if self._in_place else "out of place"))
        elif not self._in_place and np.may_share_memory(x, out):
            raise ValueError("qfftf: input and output overlap")
        with self._lock:
            self._handle.execute(address(x), address(out))
        return out

    @classmethod
    def c2c(cls, x, out, axes=None, *, inverse=False, workers=None, measured=False):
        """Complex to complex; `inverse` has the sign +1 in the exponent."""
        expect("input", x, COMPLEX), expect("output", out, COMPLEX)
        axes = list_axes(x, axes)
        same_shapes(x.shape, out.shape)
        return cls("c2c", BACKWARD if inverse else FORWARD, x, out, axes, [x.shape[a] for a in axes], workers, measured)

    @classmethod
    def r2c(cls, x, out, axes=None, *, workers=None, measured=False):
        """Real to complex, forward: n floats along the last of `axes` to n // 2 + 1 complex numbers."""
        expect("input", x, REAL), expect("output", out, COMPLEX)
        axes = list_axes(x, axes)
        same_shapes(half_shape(x.shape, axes[-1]), out.shape)
        return cls("r2c", None, x, out, axes, [x.shape[a] for a in axes], workers, measured)

    @classmethod
    def c2r(cls, x, out, axes=None, *, workers=None, measured=False):
        """Complex to real, backward; the input is kept."""
        expect("input", x, COMPLEX), expect("output", out, REAL)
        axes = list_axes(out, axes)
        same_shapes(x.shape, half_shape(out.shape, axes[-1]))
        return cls("c2r", None, x, out, axes, [out.shape[a] for a in axes], workers, measured)

    @classmethod
    def r2r(cls, x, out, kinds, axes=None, *, workers=None, measured=False):
        """Real to real; `kinds` is one pair such as ("dct", 2) for all axes, or a list with one for each."""
        expect("input", x, REAL), expect("output", out, REAL)
        axes = list_axes(x, axes)
        same_shapes(x.shape, out.shape)
        kinds = [kinds] * len(axes) if isinstance(kinds, tuple) else list(kinds)
        if len(kinds) != len(axes):
            raise PlanError("qfftf: there are as many kinds as axes")
        unknown = [k for k in kinds if k not in R2R_KINDS]
        if unknown:
            raise PlanError(f"qfftf: {unknown[0]!r} is no kind: (\"dct\" or \"dst\", 1 to 4)")
        return cls("r2r", tuple(R2R_KINDS[k] for k in kinds), x, out, axes, [x.shape[a] for a in axes], workers, measured)


def expect(side, array, dtype):
    if not isinstance(array, np.ndarray) or array.dtype != dtype:
        raise TypeError(f"qfftf: the {side} of this plan is a numpy array of {dtype}")


def list_axes(array, axes):
    axes = range(array.ndim) if axes is None else [axes] if isinstance(axes, int) else axes
    try:
        axes = [range(array.ndim)[a] for a in axes]
    except IndexError:
        raise ValueError("qfftf: axes exceed the dimensions of the array") from None
    if len(set(axes)) != len(axes):
        raise ValueError("qfftf: all axes are different")
    if not 1 <= len(axes) <= _layout.MAX_DIMS:
        raise PlanError("qfftf: a plan has 1 to 4 axes")
    return axes


def half_shape(shape, axis):
    return tuple(n // 2 + 1 if a == axis else n for a, n in enumerate(shape))


def same_shapes(expected, given):
    if expected != given:
        raise PlanError(f"qfftf: shapes {expected} and {given} don't belong together")
