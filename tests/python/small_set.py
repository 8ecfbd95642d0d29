# SPDX-License-Identifier: Apache-2.0
"""Every kind of transform a few times against numpy in double precision, without scipy and pytest: for Pythons that run
under an emulator."""
import platform
import threading

import numpy as np

import qfftf

random = np.random.default_rng(1)
checked = 0


def near(what, result, wanted):
    global checked
    error = np.linalg.norm(result - wanted) / np.linalg.norm(wanted)
    assert error < 3e-7, f"{what}: error {error}"
    checked += 1  # behind the assertion: one that fails in a thread is missing in the count


def matrix(family, type, n):
    """The transform of scipy.fft's definition as a matrix, from its formula."""
    k, j = np.arange(n)[:, None].astype(float), np.arange(n)[None, :].astype(float)
    if family == "dct":
        ends = np.where((j == 0) | (j == n - 1), 1, 2)
        first = np.where(j == 0, 1, 2)
        return {1: ends * np.cos(np.pi * j * k / max(n - 1, 1)), 2: 2 * np.cos(np.pi * (j + .5) * k / n),
                3: first * np.cos(np.pi * j * (k + .5) / n), 4: 2 * np.cos(np.pi * (j + .5) * (k + .5) / n)}[type]
    last = np.where(j == n - 1, 1, 2)
    return {1: 2 * np.sin(np.pi * (j + 1) * (k + 1) / (n + 1)), 2: 2 * np.sin(np.pi * (j + .5) * (k + 1) / n),
            3: last * np.sin(np.pi * (j + 1) * (k + .5) / n), 4: 2 * np.sin(np.pi * (j + .5) * (k + .5) / n)}[type]


for n in (1, 2, 7, 16, 60, 64, 97, 256, 1000, 1009):
    z = (random.standard_normal((3, n)) + 1j * random.standard_normal((3, n))).astype(np.complex64)
    x = z.real
    near(f"fft {n}", qfftf.fft(z), np.fft.fft(z))
    near(f"ifft {n}", qfftf.ifft(z), np.fft.ifft(z))
    near(f"fft {n} of columns", qfftf.fft(z.T, axis=0), np.fft.fft(z.T, axis=0))
    near(f"rfft {n}", qfftf.rfft(x), np.fft.rfft(x))
    near(f"irfft {n}", qfftf.irfft(z, n=n + 1), np.fft.irfft(z, n=n + 1))
    for family, type in ((f, t) for f in ("dct", "dst") for t in (1, 2, 3, 4)):
        if n <= 256 and (n, family, type) != (1, "dct", 1):
            near(f"{family} {type} {n}", getattr(qfftf, family)(x, type), x.astype(float) @ matrix(family, type, n).T)
z = (random.standard_normal((4, 6, 10)) + 1j * random.standard_normal((4, 6, 10))).astype(np.complex64)
near("fftn", qfftf.fftn(z), np.fft.fftn(z))
near("irfftn", qfftf.irfftn(z), np.fft.irfftn(z))
near("rfftn", qfftf.rfftn(z.real), np.fft.rfftn(z.real))
image = z.real[0]
near("upsample", qfftf.upsample(image, (12, 30))[::2, ::3], image)
near("workers", qfftf.fft(z, workers=2), np.fft.fft(z))
threads = [threading.Thread(target=lambda: near("a thread", qfftf.fftn(z), np.fft.fftn(z))) for _ in range(3)]
for t in threads:
    t.start()
for t in threads:
    t.join()
assert checked == 121, f"{checked} checks ran"
print(f"{checked} transforms are right on {platform.machine()} ({qfftf.version()})")
