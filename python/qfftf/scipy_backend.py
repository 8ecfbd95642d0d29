# SPDX-License-Identifier: Apache-2.0
"""A backend of scipy.fft: existing programs change one line.

    scipy.fft.set_global_backend(qfftf.scipy_backend)        # or for a block: with scipy.fft.set_backend(...)

Arrays of single precision (and float16) are transformed here. What numpy holds otherwise, and functions that the library
doesn't have, go to scipy's own backend, so that nothing loses precision; arrays of other packages to their backends.
"""
import numpy as np

__ua_domain__ = "numpy.scipy.fft"

SINGLE = ("float16", "float32", "complex64")


def takes(method, args, kwargs):
    """Whether a call is transformed here."""
    import qfftf

    x = args[0] if args else kwargs.get("x")
    return method.__name__ in qfftf.TRANSFORMS and isinstance(x, np.ndarray) and x.dtype.newbyteorder("=").name in SINGLE


def __ua_function__(method, args, kwargs):
    import qfftf
    import scipy.fft

    if takes(method, args, kwargs):
        with qfftf.set_workers(scipy.fft.get_workers()):
            return getattr(qfftf, method.__name__)(*args, **kwargs)
    x = args[0] if args else kwargs.get("x")
    if isinstance(x, np.ndarray) or not hasattr(type(x), "__array_function__"):
        return default_backend(method, args, kwargs)
    return NotImplemented


def default_backend(method, args, kwargs):
    """scipy's own. It is asked by its name: a global backend stands in its place, and a context manager inside this
    call would be found again by a later thread of the same number."""
    try:
        from scipy.fft._backend import _ScipyBackend
    except ImportError:
        return NotImplemented
    return _ScipyBackend.__ua_function__(method, args, kwargs)
