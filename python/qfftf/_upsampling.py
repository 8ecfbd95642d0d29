# SPDX-License-Identifier: Apache-2.0
"""Fourier interpolation of images."""
import operator

import numpy as np

from . import _arguments as arguments
from ._library import RULES, lib
from ._plans import PlanError, address, count_workers


def upsample(x, shape, shift=(0.0, 0.0), *, workers=None, out=None):
    """Images at more points: x[..., n0, n1] continued periodically, at rows (p + shift[0]) n0 / m0 and columns
    (q + shift[1]) n1 / m1 for p, q below shape = (m0, m1), which are at least (n0, n1). The values keep their size: an
    output point that falls onto an input point has its value. All axes but the last two are a batch."""
    x = np.ascontiguousarray(arguments.real(x))
    if x.ndim < 2:
        raise ValueError("qfftf: upsample takes images, arrays of at least two dimensions")
    (n0, n1), (m0, m1) = x.shape[-2:], (operator.index(m) for m in shape)
    if min(n0, n1) < 1 or m0 < n0 or m1 < n1:
        raise ValueError(f"qfftf: upsampling goes from at least 1 x 1 to no less points, not {n0} x {n1} to {m0} x {m1}")
    target = arguments.output(out, x.shape[:-2] + (m0, m1), x.dtype, x, False)
    result = target if target.flags.c_contiguous and not np.may_share_memory(x, target) else np.empty(target.shape, x.dtype)
    for image, large in zip(x.reshape(-1, n0, n1), result.reshape(-1, m0, m1)):
        lib.qsl_fftf_plan_with_nthreads_local(count_workers(workers))
        # A plan of its own for every image: only the first execution of an upsampling plan is exact.
        plan = lib.qsl_fftf_plan_upsampling_2d(n0, n1, m0, m1, address(image), address(large), RULES, *shift)
        if not plan:
            raise PlanError(f"qfftf: no plan for {n0} x {n1} to {m0} x {m1} points: memory is short")
        lib.qsl_fftf_execute_dft(plan, address(image), address(large))
        lib.qsl_fftf_destroy_plan(plan)
    return arguments.finish(result, out if out is not None and result is not out else None, m0 * m1 / (n0 * n1))
