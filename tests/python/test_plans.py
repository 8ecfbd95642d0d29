# SPDX-License-Identifier: Apache-2.0
"""Plan objects, the cache of plans, threads, the backend of scipy.fft."""
import gc
import os
import signal
import threading
import time

import numpy as np
import pytest
import scipy.fft

import qfftf
from test_functions import BOUND, data, double


def close(result, wanted):
    return np.linalg.norm(result - wanted) / np.linalg.norm(wanted) < BOUND


def test_plans_of_each_kind_on_their_own_and_on_other_arrays():
    x, half = data((6, 16), np.complex64), data((6, 9), np.complex64)
    real = data((6, 16), np.float32)
    cases = [(qfftf.Plan.c2c, x, np.empty_like(x), {"axes": 1}, scipy.fft.fft(double(x))),
             (qfftf.Plan.c2c, x, np.empty_like(x), {"inverse": True}, scipy.fft.ifftn(double(x), norm="forward")),
             (qfftf.Plan.r2c, real, np.empty((6, 9), np.complex64), {}, scipy.fft.rfftn(double(real))),
             (qfftf.Plan.c2r, half, np.empty((6, 16), np.float32), {"axes": [1]},
              scipy.fft.irfft(double(half), norm="forward")),
             (qfftf.Plan.r2r, real, np.empty((6, 16), np.float32), {"kinds": ("dct", 2), "axes": 0},
              scipy.fft.dct(double(real), axis=0)),
             (qfftf.Plan.r2r, real, np.empty((6, 16), np.float32), {"kinds": [("dst", 1), ("dct", 4)]},
              scipy.fft.dct(scipy.fft.dst(double(real), 1, axis=0), 4, axis=1))]
    cases.append((qfftf.Plan.c2r, scipy.fft.rfft2(real), np.empty((6, 16), np.float32), {}, 96 * double(real)))
    for make, source, target, options, wanted in cases:
        before = source.copy()
        plan = make(source, target, **options)
        assert plan() is target and close(target, wanted), (make, options)
        assert np.array_equal(source, before), "out of place the input is kept"
        other = np.empty_like(target)
        assert plan(source.copy(), other) is other and np.array_equal(other, target)


def test_measured_plans_compute_the_same():
    x, out = np.zeros(96, np.complex64), np.zeros(96, np.complex64)
    plan = qfftf.Plan.c2c(x, out, measured=True)
    x[...] = data(96, np.complex64)
    assert close(plan(), scipy.fft.fft(double(x)))


def test_plans_in_place_stay_so():
    x = data(32, np.complex64)
    wanted = scipy.fft.fft(double(x))
    plan = qfftf.Plan.c2c(x, x)
    assert close(plan(), wanted)
    with pytest.raises(ValueError, match="in place"):
        plan(x, x.copy())


@pytest.mark.parametrize("make, match", [
    (lambda x: qfftf.Plan.c2c(x, x[:, ::-1]), "positive"),
    (lambda x: qfftf.Plan.c2c(x, x[:, :3]), "belong together"),
    (lambda x: qfftf.Plan.c2c(x, np.broadcast_to(x[0], x.shape)), "overlaps itself or is read-only"),
    (lambda x: qfftf.Plan.c2c(x, np.lib.stride_tricks.as_strided(x, x.shape, (8, 8))), "overlaps itself"),
    (lambda x: qfftf.Plan.r2r(x.real, x.imag, ("dct", 5)), "no kind"),
    (lambda x: qfftf.Plan.r2r(x.real[:1], x.imag[:1], ("dct", 1)), "at least 2 points"),
    (lambda x: qfftf.Plan.c2c(x, x, axes=(0, 0)), "different"),
    (lambda x: qfftf.Plan.c2c(x, x, axes=()), "1 to 4"),
    (lambda x: qfftf.Plan.c2c(x[:0], x[:0]), "empty")])
def test_refusals_say_why(make, match):
    with pytest.raises(ValueError, match=match):
        make(data((4, 6), np.complex64))


def test_plans_check_the_arrays_that_they_are_given():
    x = data((4, 6), np.complex64)
    plan = qfftf.Plan.c2c(x, np.empty_like(x))
    for source, target in ((x[:3], x[:3].copy()), (np.asfortranarray(x), np.empty_like(x)),
                           (x.astype(np.complex128), np.empty_like(x)), (x, x)):
        with pytest.raises(ValueError):
            plan(source, target)
    with pytest.raises(ValueError, match="both"):
        plan(x)
    big = np.zeros((6, 6), np.complex64)
    with pytest.raises(ValueError, match="overlap"):
        plan(big[:4], big[1:5])


def test_cache_keeps_the_latest_plans_up_to_its_limit():
    before = qfftf.plan_cache_info()
    try:
        qfftf.set_plan_cache_limit(3)
        qfftf.clear_plan_cache()
        made = qfftf.plan_cache_info()["made"]
        for n in (40, 41, 42, 43, 42, 41):
            qfftf.fft(data(n, np.complex64))
        info = qfftf.plan_cache_info()
        assert (info["kept"], info["limit"], info["made"] - made) == (3, 3, 4)
        qfftf.fft(data(40, np.complex64))
        assert qfftf.plan_cache_info()["made"] - made == 5
        qfftf.set_plan_cache_limit(0)
        assert qfftf.plan_cache_info()["kept"] == 0
        assert close(qfftf.fft(data(40, np.complex64)), scipy.fft.fft(double(data(40, np.complex64))))
        with pytest.raises(ValueError):
            qfftf.set_plan_cache_limit(-1)
    finally:
        qfftf.set_plan_cache_limit(before["limit"])


def test_destroyed_plans_give_their_memory_back():
    def resident():
        gc.collect()
        return int(open("/proc/self/statm").read().split()[1]) * 4096
    x = np.zeros(1 << 16, np.complex64)
    out = np.empty_like(x)
    for _ in range(3):
        qfftf.Plan.c2c(x, out)
    before = resident()
    for _ in range(60):
        qfftf.Plan.c2c(x, out)()
    assert resident() - before < 16 * x.nbytes  # each plan holds more than one array


def on_threads(count, work):
    """Runs work(i) on so many threads at once; each has made a plan before, so that none works in storage of its own
    only because it never planned. What one raises is raised here."""
    ready, raised = threading.Barrier(count), []

    def run(i):
        try:
            qfftf.Plan.c2c(np.empty(8, np.complex64), np.empty(8, np.complex64))
            ready.wait()
            work(i)
        except BaseException as error:
            raised.append(error)
    threads = [threading.Thread(target=run, args=(i,)) for i in range(count)]
    for t in threads:
        t.start()
    for t in threads:
        t.join()
    if raised:
        raise raised[0]


def test_many_threads_transform_the_same_problem_at_once():
    inputs = [data(1 << 14, np.complex64, seed=i) for i in range(6)]
    wanted = [qfftf.fft(x) for x in inputs]

    def work(i):
        for _ in range(40):
            assert np.array_equal(qfftf.fft(inputs[i]), wanted[i])
    on_threads(len(inputs), work)


def test_one_plan_object_on_many_threads():
    inputs = [data(1 << 14, np.complex64, seed=i) for i in range(6)]
    plan = qfftf.Plan.c2c(inputs[0], np.empty_like(inputs[0]))
    wanted = [plan(x, np.empty_like(x)) for x in inputs]

    def work(i):
        out = np.empty_like(inputs[i])
        for _ in range(40):
            assert np.array_equal(plan(inputs[i], out), wanted[i])
    on_threads(len(inputs), work)


def test_a_forked_child_transforms_though_another_thread_held_the_cache():
    x = data(100, np.complex64)
    wanted = qfftf.fft(x)
    with qfftf._plans.cache.lock:
        child = os.fork()
        if child == 0:
            os._exit(0 if np.array_equal(qfftf.fft(x), wanted) else 1)
    for _ in range(100):
        done, status = os.waitpid(child, os.WNOHANG)
        if done:
            break
        time.sleep(0.1)
    else:
        os.kill(child, signal.SIGKILL)
        os.waitpid(child, 0)
        pytest.fail("the child waits for ever")
    assert status == 0


def test_the_interpreter_runs_while_a_transform_does():
    x = data((256, 1 << 12), np.complex64)
    out = np.empty_like(x)
    plan = qfftf.Plan.c2c(x, out, axes=1)
    ended = threading.Event()
    worker = threading.Thread(target=lambda: ([plan() for _ in range(1)], ended.set()))
    worker.start()
    steps = 0
    while not ended.is_set():
        steps += 1
        time.sleep(0.0005)
    worker.join()
    assert steps > 3, "this thread stood still while the other one transformed"


def test_workers_count_as_in_scipy_and_change_no_result():
    x = data((64, 1000), np.complex64)
    one = qfftf.fft(x)
    for workers in (1, 2, 3, -1):
        assert np.array_equal(qfftf.fft(x, workers=workers), one)
    with qfftf.set_workers(2):
        assert qfftf.get_workers() == 2
        assert np.array_equal(qfftf.fft(x), one)
    assert qfftf.get_workers() == 1
    for bad in (0, -1000):
        with pytest.raises(ValueError, match="workers"):
            qfftf.fft(x, workers=bad)


def test_scipys_functions_use_the_library_for_single_precision_only():
    x = data((3, 24), np.complex64)
    qfftf.clear_plan_cache()
    made = qfftf.plan_cache_info()["made"]
    with scipy.fft.set_backend(qfftf.scipy_backend):
        result = scipy.fft.fft(x)
        assert result.dtype == np.complex64 and qfftf.plan_cache_info()["made"] == made + 1
        assert np.array_equal(result, qfftf.fft(x))
        exact = scipy.fft.fft(double(x))
        assert exact.dtype == np.complex128 and scipy.fft.fht(np.ones(4), 0.1, 0.5).shape == (4,)
        assert scipy.fft.fft([1, 2, 3]).dtype == np.complex128
    assert close(result, exact)
