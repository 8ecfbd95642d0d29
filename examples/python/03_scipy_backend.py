# SPDX-License-Identifier: Apache-2.0
# %% [markdown]
# # A program that knows nothing of qfftf
# The function below is written for scipy.fft. One line sends its transforms of single precision to the library; the
# result in double precision, which scipy computes as before, shows how near they are.
#
#     python3 03_scipy_backend.py FOLDER        draws FOLDER/sharpened.png

# %%
import sys
from pathlib import Path

import matplotlib
import numpy as np
import scipy.fft

import qfftf

matplotlib.use("Agg")
import matplotlib.pyplot as plt

folder = Path(sys.argv[1] if len(sys.argv) > 1 else ".")
folder.mkdir(parents=True, exist_ok=True)


# %% Somebody's program: undoes a blur, with a little care where the blur left nothing
def blur_of(shape, width):
    f0, f1 = scipy.fft.fftfreq(shape[0])[:, None], scipy.fft.rfftfreq(shape[1])[None, :]
    return np.exp(-2 * (np.pi * width) ** 2 * (f0**2 + f1**2))


def filtered(image, response):
    return scipy.fft.irfft2(scipy.fft.rfft2(image) * response.astype(image.dtype), s=image.shape)


def sharpened(image, width):
    blur = blur_of(image.shape, width)
    return filtered(image, blur / (blur**2 + 1e-4))


# %% An image: bars that become finer, and rings
r, c = np.mgrid[:256, :384]
scene = 0.5 + 0.5 * np.sign(np.sin(c**1.6 / 40)) * (r < 110)
scene[r >= 110] = (0.5 + 0.5 * np.cos(((r - 185) ** 2 + (c - 192) ** 2) / 120))[r >= 110]
blurred = filtered(scene, blur_of(scene.shape, 2.5))

# %% The one line
scipy.fft.set_global_backend(qfftf.scipy_backend)

made = qfftf.plan_cache_info()["made"]
exact = sharpened(blurred, 2.5)  # double precision: scipy's own
assert qfftf.plan_cache_info()["made"] == made
result = sharpened(blurred.astype(np.float32), 2.5)  # single precision: the library
assert qfftf.plan_cache_info()["made"] > made and result.dtype == np.float32
error = np.abs(result - exact).max()
print(f"largest difference between single and double precision: {error:.1e}, of values up to {exact.max():.2f}")
assert error < 1e-4  # the filter multiplies rounding errors by up to 50

# %% The picture
figure, axes = plt.subplots(1, 3, figsize=(12, 3), layout="constrained")
for plot, image, title in zip(axes, (scene, blurred, result), ("scene", "blurred", "sharpened by qfftf, float32")):
    plot.imshow(image, cmap="gray", vmin=0, vmax=1)
    plot.set(title=title, xticks=[], yticks=[])
figure.savefig(folder / "sharpened.png", dpi=110)
