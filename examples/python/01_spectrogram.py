# SPDX-License-Identifier: Apache-2.0
# %% [markdown]
# # A spectrogram: overlapping windows without a copy
# A chirp and two short tones, cut into windows that overlap by three quarters. The windows are a view of the signal:
# the library reads it where it lies, by strides.
#
#     python3 01_spectrogram.py FOLDER        draws FOLDER/spectrogram.png

# %%
import sys
from pathlib import Path

import matplotlib
import numpy as np

import qfftf

matplotlib.use("Agg")
import matplotlib.pyplot as plt

folder = Path(sys.argv[1] if len(sys.argv) > 1 else ".")
folder.mkdir(parents=True, exist_ok=True)

# %% A signal of 4 seconds at 16 kHz
rate = 16000
t = np.arange(4 * rate) / rate
signal = np.sin(2 * np.pi * (200 * t + 900 * t**2))  # from 200 Hz to 7400 Hz
signal += 0.5 * np.sin(2 * np.pi * 3000 * t) * ((t > 1) & (t < 1.3))
signal += 0.5 * np.sin(2 * np.pi * 1000 * t) * ((t > 2.5) & (t < 2.8))
signal = (signal + 0.02 * np.random.default_rng(1).standard_normal(t.size)).astype(np.float32)

# %% 1000 points of every window of 512, each 128 further on
window, step = 512, 128
frames = np.lib.stride_tricks.sliding_window_view(signal, window)[::step]
plain = qfftf.rfft(frames, n=window)  # of the view itself
spectrum = qfftf.rfft(frames * np.hanning(window).astype(np.float32))

# The energy of a window is that of its coefficients (those in the middle stand for two).
twice = np.r_[1, np.full(window // 2 - 1, 2), 1]
energy = (np.abs(plain) ** 2 @ twice) / window
assert np.allclose(energy, (frames.astype(float) ** 2).sum(axis=1), rtol=1e-5)
print(f"{len(frames)} windows of {window} points, energy kept to {np.abs(energy / (frames.astype(float)**2).sum(axis=1) - 1).max():.1e}")

# %% The picture
level = 20 * np.log10(np.abs(spectrum) + 1e-3)
figure, axes = plt.subplots(figsize=(9, 4.5), layout="constrained")
picture = axes.imshow(level.T, origin="lower", aspect="auto", extent=(0, t[-1], 0, rate / 2000), vmin=-30, vmax=45)
axes.set(xlabel="time in s", ylabel="frequency in kHz", title="A chirp and two tones")
figure.colorbar(picture, label="level in dB")
figure.savefig(folder / "spectrogram.png", dpi=110)
