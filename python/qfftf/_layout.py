# SPDX-License-Identifier: Apache-2.0
"""Arrays as the dimensions that the planning calls take: sizes, and steps in elements on both sides."""
MAX_DIMS = 4  # of the transform, and as many of the batch


def readable(array):
    """Whether the library can read an array as it lies: its own byte order, whole and positive steps. Elements may be
    at several indices, as in windows that overlap."""
    return (array.flags.aligned and array.dtype.isnative
            and all(step > 0 and step % array.itemsize == 0 for step, n in zip(array.strides, array.shape) if n > 1))


def writable(array):
    """Whether the library can write to it: readable, and every element at one index."""
    if not (array.flags.writeable and readable(array)):
        return False
    reach = array.itemsize
    for step, n in sorted((step, n) for step, n in zip(array.strides, array.shape) if n > 1):
        if step < reach:
            return False
        reach += step * (n - 1)
    return True


def steps(array):
    """Distances between neighbours in elements; those of an axis of length 1 are never walked."""
    return [step // array.itemsize if n > 1 else 1 for step, n in zip(array.strides, array.shape)]


def dimensions(x, out, axes, sizes):
    """(dims, batch): tuples of (size, step in x, step in out). `dims` in the order of `axes`, whose lengths are
    `sizes`; `batch` holds all other axes, slowest first, joined where one continues the other."""
    steps_in, steps_out = steps(x), steps(out)
    dims = tuple((n, steps_in[a], steps_out[a]) for a, n in zip(axes, sizes))
    rest = [(x.shape[a], steps_in[a], steps_out[a]) for a in range(x.ndim) if a not in axes and x.shape[a] > 1]
    rest.sort(key=lambda d: d[1:], reverse=True)
    batch = []
    for n, step_in, step_out in rest:
        if batch and batch[-1][1] == n * step_in and batch[-1][2] == n * step_out:
            n *= batch.pop()[0]
        batch.append((n, step_in, step_out))
    return dims, tuple(batch)


def groups(axes, ndim):
    """Axes in groups that one plan can take. With at most three axes to a plan, the others of a contiguous array join
    into at most four; up to eight axes in all, four to a plan leave four."""
    most = MAX_DIMS if ndim <= 2 * MAX_DIMS else MAX_DIMS - 1
    axes = list(axes)
    first = len(axes) % most
    return ([axes[:first]] if first else []) + [axes[i:i + most] for i in range(first, len(axes), most)]
