# SPDX-License-Identifier: Apache-2.0
"""Single-precision discrete Fourier, cosine and sine transforms on numpy arrays, by the library libqfftf.so.1.

>>> import numpy as np, qfftf
>>> qfftf.fft(np.ones(4, np.float32))
array([4.+0.j, 0.+0.j, 0.+0.j, 0.+0.j], dtype=complex64)

Functions have the names and arguments of scipy.fft, and an `out` besides. float32 and complex64 are transformed as they
are; types of which every value is a float32 (float16, integers of up to 16 bits, bool) and plain Python numbers are
converted; others are refused. `scipy.fft.set_backend(qfftf.scipy_backend)` makes programs written for scipy.fft use it.
"""
from . import scipy_backend
from ._fourier import (fft, fft2, fftn, hfft, hfft2, hfftn, ifft, ifft2, ifftn, ihfft, ihfft2, ihfftn, irfft, irfft2,
                       irfftn, rfft, rfft2, rfftn)
from ._library import version
from ._plans import (Plan, PlanError, clear_plan_cache, get_workers, plan_cache_info, set_plan_cache_limit, set_workers)
from ._trigonometric import dct, dctn, dst, dstn, idct, idctn, idst, idstn
from ._upsampling import upsample

__version__ = "1.0.0"

TRANSFORMS = ("fft", "fft2", "fftn", "hfft", "hfft2", "hfftn", "ifft", "ifft2", "ifftn", "ihfft", "ihfft2", "ihfftn",
              "irfft", "irfft2", "irfftn", "rfft", "rfft2", "rfftn",
              "dct", "dctn", "dst", "dstn", "idct", "idctn", "idst", "idstn")
__all__ = [*TRANSFORMS, "upsample", "Plan", "PlanError", "clear_plan_cache", "get_workers", "plan_cache_info",
           "scipy_backend", "set_plan_cache_limit", "set_workers", "version"]
