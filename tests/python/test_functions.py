# SPDX-License-Identifier: Apache-2.0
"""Every function against scipy.fft in double precision: lengths, axes, shapes, norms, layouts, outputs, types."""
import itertools

import numpy as np
import pytest
import scipy.fft

import qfftf

BOUND = 3e-7  # relative L2 error
COMPLEX = ("fft", "ifft", "irfft", "hfft")
REAL = ("rfft", "ihfft")
TRIGONOMETRIC = ("dct", "idct", "dst", "idst")
LENGTHS = (1, 2, 3, 5, 8, 15, 17, 31, 64, 97, 100, 128, 1000, 1023, 1024, 2 * 1009)


def data(shape, dtype, seed=1):
    random = np.random.default_rng(seed)
    x = random.standard_normal(shape)
    return (x + 1j * random.standard_normal(shape) if np.dtype(dtype).kind == "c" else x).astype(dtype)


def double(x):
    return x.astype(np.complex128 if x.dtype.kind == "c" else np.float64)


def expect(name, x, *args, given=None, bound=BOUND, **options):
    """qfftf's result, which has single precision and agrees with scipy's of the same numbers in double."""
    wanted = getattr(scipy.fft, name)(double(x), *args, **options)
    result = getattr(qfftf, name)(x, *args, **options, **(given or {}))
    assert result.dtype == (np.complex64 if wanted.dtype.kind == "c" else np.float32)
    assert result.shape == wanted.shape
    error = np.linalg.norm(result - wanted) / max(np.linalg.norm(wanted), 1e-30)
    assert error < bound, f"{name} of {x.dtype} {x.shape}, strides {x.strides}, {args} {options}: error {error}"
    return result


@pytest.mark.parametrize("norm", [None, "backward", "ortho", "forward"])
@pytest.mark.parametrize("name", COMPLEX + REAL)
def test_every_length_along_one_axis(name, norm):
    for n in LENGTHS:
        if name in ("irfft", "hfft") and n == 1:
            continue
        expect(name, data(n, np.float32 if name in REAL else np.complex64), norm=norm)


@pytest.mark.parametrize("type", [1, 2, 3, 4])
@pytest.mark.parametrize("name", TRIGONOMETRIC)
def test_every_cosine_and_sine_type(name, type):
    for n, norm, orthogonalize in itertools.product(LENGTHS, (None, "ortho", "forward"), (None, False, True)):
        if type == 1 and name.endswith("dct") and n == 1:
            continue
        expect(name, data(n, np.float32), type, norm=norm, orthogonalize=orthogonalize)


@pytest.mark.parametrize("n, name", [(1024, "dst"), (15, "dst"), (17, "dst")])
def test_ramps_of_scipys_own_tests_within_two_units_of_the_largest_value(n, name):
    x = np.arange(n, dtype=np.float32)
    for type in (1, 2, 3, 4):
        result = expect(name, x, type)
        wanted = getattr(scipy.fft, name)(double(x), type)
        assert np.abs(result - wanted).max() <= 2 * np.spacing(np.float32(np.abs(wanted).max()))


@pytest.mark.parametrize("name", COMPLEX + REAL + TRIGONOMETRIC)
def test_n_cuts_and_pads_along_any_axis(name):
    x = data((5, 6, 7), np.complex64 if name in COMPLEX else np.float32)
    for axis, n in itertools.product((0, 1, 2, -1, -3), (2, 5, 6, 7, 12)):
        expect(name, x, n=n, axis=axis)


NAMES_N = ("fftn", "ifftn", "irfftn", "hfftn", "rfftn", "ihfftn", "dctn", "idctn", "dstn", "idstn")


@pytest.mark.parametrize("name", NAMES_N)
def test_several_axes_in_every_order(name):
    x = data((4, 5, 3, 6), np.complex64 if name in ("fftn", "ifftn", "irfftn", "hfftn") else np.float32)
    for count in (1, 2, 3, 4):
        for axes in itertools.permutations(range(4), count):
            expect(name, x, axes=axes)
    expect(name, x, s=(7, 4))
    expect(name, x, s=(2, 9), axes=(0, 2))
    expect(name, x)


@pytest.mark.parametrize("name", NAMES_N)
def test_more_axes_than_one_plan_takes(name):
    dtype = np.complex64 if name in ("fftn", "ifftn", "irfftn", "hfftn") else np.float32
    x = data((3, 2, 2, 3, 2, 2, 3, 2, 2, 3), dtype)
    expect(name, x)
    expect(name, x, axes=(1, 3, 5, 7, 9))
    expect(name, x, axes=(0, 8, 2, 6))
    backwards = x.transpose()
    expect(name, backwards, axes=(4,))
    expect(name, backwards, axes=(1, 3, 5, 7))
    expect(name, data((2, 3, 2, 3, 2, 3, 2, 3), dtype).transpose(3, 1, 0, 2, 7, 5, 6, 4), axes=(0, 2, 4, 6))


@pytest.mark.parametrize("name", ["fft2", "ifft2", "rfft2", "irfft2", "hfft2", "ihfft2"])
def test_two_axes(name):
    x = data((3, 8, 10), np.float32 if name in ("rfft2", "ihfft2") else np.complex64)
    expect(name, x)
    expect(name, x, axes=(0, 1))
    expect(name, x, s=(5, 7), norm="ortho")


def layouts(dtype):
    """(name, array, whether it can be transformed where it lies)."""
    base = data((8, 10, 12), dtype)
    yield "contiguous", base, True
    yield "Fortran", np.asfortranarray(base), True
    yield "every other", data((16, 20, 24), dtype)[::2, 1::2, ::2], True
    yield "transposed", data((12, 8, 10), dtype).transpose(1, 2, 0), True
    yield "reversed", base[:, ::-1], False
    yield "broadcast", np.broadcast_to(base[0], (8, 10, 12)), False
    yield "swapped bytes", base.astype(base.dtype.newbyteorder()), False
    raw = np.zeros(base.nbytes + 1, np.uint8)[1:].view(dtype).reshape(base.shape)
    raw[...] = base
    yield "odd address", raw, False
    record = np.zeros(base.shape, [("flag", np.int16), ("value", dtype)])["value"]
    record[...] = base
    yield "steps that are no multiple", record, False


@pytest.mark.parametrize("name", ["fft", "irfft", "rfft", "dct", "fftn", "irfftn", "rfftn", "dstn"])
def test_every_layout_in_and_out_and_the_input_stays(name):
    real_in = name in ("rfft", "rfftn", "dct", "dstn")
    for (what, x, _) in layouts(np.float32 if real_in else np.complex64):
        before = x.copy()
        result = expect(name, x)
        assert np.array_equal(x, before), what
        for where, out in ((w, o) for w, o, _ in layouts(result.dtype)):
            if where in ("broadcast", "swapped bytes"):
                continue
            out = np.resize(out, result.shape) if out.shape != result.shape else out
            wide = np.full(tuple(2 * n for n in result.shape), 7, result.dtype)
            for target in (out, wide[::2, ::2, ::2], wide[::-2, 1::2, ::2]):
                assert expect(name, x, given={"out": target}) is target, (what, where)
            assert (wide[1::2, ::2, 1::2] == 7).all(), "elements between the outputs are written"


def test_overlapping_windows_are_read_where_they_lie():
    signal = data(1000, np.float32)
    windows = np.lib.stride_tricks.sliding_window_view(signal, 64)[::16]
    assert qfftf._layout.readable(windows) and not qfftf._layout.writable(windows)
    expect("rfft", windows)
    expect("dct", windows)
    expect("irfft", np.lib.stride_tricks.sliding_window_view(data(300, np.complex64), 33)[::5])


def test_overwrite_works_in_the_input_and_nothing_else_does():
    for name, dtype in (("fft", np.complex64), ("ifftn", np.complex64), ("dct", np.float32), ("idstn", np.float32)):
        x = data((4, 30), dtype)
        kept = x.copy()
        assert getattr(qfftf, name)(x, overwrite_x=True) is x
        assert np.array_equal(x, getattr(qfftf, name)(kept)) and not np.array_equal(x, kept)


def test_out_may_be_the_input_and_may_overlap_it():
    x = data((60, 100), np.complex64)
    wanted = scipy.fft.fft(double(x[10:50]))
    for low in (7, 9, 10, 11, 13):
        y = x.copy()
        result = qfftf.fft(y[10:50], out=y[low:low + 40])
        assert np.linalg.norm(result - wanted) / np.linalg.norm(wanted) < BOUND, low


@pytest.mark.parametrize("bad, match", [
    ({"out": np.zeros(9, np.complex64)}, "shape"), ({"out": np.zeros(8, np.complex128)}, "complex64"),
    ({"n": 0}, "data points"), ({"axis": 1}, "axis"), ({"norm": "backwards"}, "norm"), ({"workers": 0}, "workers")])
def test_bad_arguments_are_named(bad, match):
    with pytest.raises(ValueError, match=match):
        qfftf.fft(np.ones(8, np.complex64), **bad)


def test_types_that_would_lose_digits_are_refused():
    for dtype in (np.float64, np.complex128, np.int32, np.int64, np.longdouble, "O", "U3"):
        with pytest.raises(TypeError, match="lose digits"):
            qfftf.fft(np.ones(4).astype(dtype))


def test_types_without_loss_and_python_numbers_are_converted():
    for dtype in (np.float16, np.int8, np.uint8, np.int16, np.uint16, bool):
        x = data(20, np.float32).astype(dtype)
        assert np.array_equal(qfftf.rfft(x), qfftf.rfft(x.astype(np.float32)))
    assert np.array_equal(qfftf.fft([1, 2.5, 3j]), qfftf.fft(np.array([1, 2.5, 3j], np.complex64)))
    assert np.array_equal(qfftf.dct([1, 2, 4]), qfftf.dct(np.array([1, 2, 4], np.float32)))
    with pytest.raises(TypeError, match="real"):
        qfftf.rfft(np.ones(4, np.complex64))


def test_complex_input_of_cosine_transforms_goes_part_by_part():
    for name in ("dct", "idst", "dctn"):
        expect(name, data((5, 12), np.complex64), 2)


def test_empty_batches_give_empty_results():
    for name, shape in (("fft", (0, 8)), ("rfft", (0, 5)), ("irfft", (0, 8)), ("dct", (0, 8))):
        result = getattr(qfftf, name)(np.zeros((0, 8), np.float32))
        assert result.shape == (shape if name != "irfft" else (0, 14))


def test_upsampling_keeps_samples_and_interpolates_band_limited_images():
    rows, columns = np.arange(9)[:, None] / 9, np.arange(7)[None, :] / 7
    image = lambda r, c: np.cos(2 * np.pi * (2 * r + c)) + np.sin(2 * np.pi * 3 * c) + 0.5
    x = np.stack([image(rows, columns), 2 * image(rows, columns)]).astype(np.float32)
    fine = image(np.arange(18)[:, None] / 18, np.arange(21)[None, :] / 21)
    result = qfftf.upsample(x, (18, 21))
    assert np.abs(result - np.stack([fine, 2 * fine])).max() < 3e-6
    assert np.abs(result[:, ::2, ::3] - x).max() < 3e-6
    shifted = image((np.arange(9)[:, None] + 0.5) / 9, (np.arange(7)[None, :] + 0.25) / 7)
    assert np.abs(qfftf.upsample(x[0], (9, 7), (0.5, 0.25)) - shifted).max() < 3e-6
    out = np.zeros((18, 42), np.float32)[:, ::2]
    assert qfftf.upsample(x[0], (18, 21), out=out) is out and np.abs(out - fine).max() < 3e-6
    with pytest.raises(ValueError, match="no less points"):
        qfftf.upsample(x, (8, 21))
