# SPDX-License-Identifier: Apache-2.0
# %% [markdown]
# # Cosine transforms: heat that doesn't leave the plate
# On a plate with insulated edges the cosines of type 2 decay each by itself: one transform gives the temperature at any
# time, without steps. The mean stays.
#
#     python3 02_cosines.py FOLDER        draws FOLDER/heat.png

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

# %% Three hot patches on a plate of 300 x 400 points
rows, columns = 300, 400
plate = np.zeros((rows, columns), np.float32)
plate[30:80, 40:120] = 1
plate[200:280, 300:330] = 2
r, c = np.mgrid[:rows, :columns]
plate[(r - 150) ** 2 + (c - 200) ** 2 < 35**2] = 1.5

# %% Every coefficient decays with the square of its frequency
decay = (np.pi * np.arange(rows) / rows)[:, None] ** 2 + (np.pi * np.arange(columns) / columns)[None, :] ** 2
coefficients = qfftf.dctn(plate, workers=2)


def after(time):
    return qfftf.idctn(coefficients * np.exp(-decay * time).astype(np.float32), overwrite_x=True)


# %% The picture
figure, axes = plt.subplots(1, 4, figsize=(12, 2.7), layout="constrained", sharey=True)
for plot, time in zip(axes, (0, 30, 300, 3000)):
    state = after(time)
    assert abs(state.mean() - plate.mean()) < 1e-5 * plate.mean() + 1e-6, "the heat stays in the plate"
    picture = plot.imshow(state, vmin=0, vmax=2, cmap="inferno")
    plot.set_title(f"time {time}, hottest {state.max():.2f}")
figure.colorbar(picture, ax=axes, label="temperature")
figure.savefig(folder / "heat.png", dpi=110)
print(f"mean {plate.mean():.6f} at the start, {after(3000).mean():.6f} at the end")
