# SPDX-License-Identifier: Apache-2.0
"""Finds and loads libqfftf.so.1 and declares the calls that the package uses.

The first of these that exists is taken: the file named by the environment variable QFFTF_LIBRARY, the one inside the
package (wheels have it there), the one that the system's loader finds.
"""
import ctypes
import os
from pathlib import Path

FORWARD, BACKWARD = -1, 1
RULES, MEASURED = 0, 32

R2R_KINDS = {("dct", 1): 3, ("dct", 2): 5, ("dct", 3): 4, ("dct", 4): 6,
             ("dst", 1): 7, ("dst", 2): 9, ("dst", 3): 8, ("dst", 4): 10}


class IoDim(ctypes.Structure):
    """One dimension of a 64-bit planning call: size, and the steps in elements on both sides."""
    _fields_ = [("n", ctypes.c_int64), ("is", ctypes.c_int64), ("os", ctypes.c_int64)]


def candidates():
    named = os.environ.get("QFFTF_LIBRARY")
    if named:
        return [named]
    bundled = Path(__file__).with_name("libqfftf.so.1")
    return [str(bundled)] if bundled.exists() else ["libqfftf.so.1"]


def load():
    (path,) = candidates()
    try:
        return declared(ctypes.CDLL(path))  # CDLL releases the interpreter's lock during every call
    except OSError as error:
        raise ImportError(f"qfftf: the shared library can't be loaded ({error}); install it, or name its file in the "
                          "environment variable QFFTF_LIBRARY") from None


def declared(lib):
    pointer, integer, unsigned = ctypes.c_void_p, ctypes.c_int, ctypes.c_uint
    lists = [integer, pointer, integer, pointer]  # rank, dims, howmany_rank, howmany_dims
    calls = {
        "qsl_fftf_plan_guru64_dft": (pointer, lists + [pointer, pointer, integer, unsigned]),
        "qsl_fftf_plan_guru64_dft_r2c": (pointer, lists + [pointer, pointer, unsigned]),
        "qsl_fftf_plan_guru64_dft_c2r": (pointer, lists + [pointer, pointer, unsigned]),
        "qsl_fftf_plan_guru64_r2r": (pointer, lists + [pointer, pointer, pointer, unsigned]),
        "qsl_fftf_plan_upsampling_2d": (pointer, [integer] * 4 + [pointer, pointer, unsigned] + [ctypes.c_float] * 2),
        "qsl_fftf_execute_dft": (None, [pointer, pointer, pointer]),
        "qsl_fftf_destroy_plan": (None, [pointer]),
        "qsl_fftf_plan_with_nthreads_local": (None, [integer]),
        "qsl_fftf_cleanup_threads": (None, []),
    }
    for name, (result, arguments) in calls.items():
        call = getattr(lib, name)
        call.restype, call.argtypes = result, arguments
    return lib


lib = load()


def version():
    """The version of the library's transforms."""
    return ctypes.string_at(ctypes.addressof(ctypes.c_char.in_dll(lib, "qsl_fftf_version"))).decode()
