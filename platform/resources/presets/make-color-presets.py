#!/usr/bin/python3
"""Writes ColorPresets.json, the colour maps shipped with ColorPresetsDialog.

The tables come from Debian's python3-matplotlib (apt-get install -y python3-matplotlib); the blue to
orange diverging map is computed here in Moreland's Msh space. Each continuous map is sampled to
k_NodeCount evenly spaced nodes. Run from anywhere:
    /usr/bin/python3 platform/resources/presets/make-color-presets.py
The output is committed; building needs no Python.
"""

import json
import math
import os

import matplotlib

k_NodeCount = 64
k_Digits = 6

# (preset name, matplotlib name, colour space, NaN colour); perceptually uniform maps first.
k_Continuous = [
    ("Viridis", "viridis", "Lab", [1.0, 0.0, 0.0]),
    ("Plasma", "plasma", "Lab", [0.0, 1.0, 0.0]),
    ("Inferno", "inferno", "Lab", [0.0, 1.0, 0.0]),
    ("Magma", "magma", "Lab", [0.0, 1.0, 0.0]),
    ("Cividis", "cividis", "Lab", [1.0, 0.0, 0.0]),
    ("Cool to Warm", "coolwarm", "Diverging", [1.0, 1.0, 0.0]),
    ("Blue - Orange", None, "Diverging", [1.0, 1.0, 0.0]),
    ("Red - Blue", "RdBu_r", "Lab", [1.0, 1.0, 0.0]),
    ("Brown - Blue Green", "BrBG", "Lab", [1.0, 0.0, 0.0]),
    ("Purple - Orange", "PuOr_r", "Lab", [1.0, 0.0, 0.0]),
    ("Spectral", "Spectral_r", "Lab", [0.5, 0.5, 0.5]),
    ("Blue - White - Red", "bwr", "RGB", [1.0, 1.0, 0.0]),
    ("Seismic", "seismic", "RGB", [1.0, 1.0, 0.0]),
    ("Jet", "jet", "RGB", [0.5, 0.5, 0.5]),
    ("Turbo", "turbo", "RGB", [0.5, 0.5, 0.5]),
    ("Rainbow", "rainbow", "RGB", [0.5, 0.5, 0.5]),
    ("Grayscale", "gray", "RGB", [1.0, 0.0, 0.0]),
    ("Black-Body Radiation", "gist_heat", "RGB", [0.0, 0.5, 1.0]),
    ("Cubehelix", "cubehelix", "RGB", [1.0, 0.0, 0.0]),
]

# Categorical maps: their colours become "IndexedColors".
k_Categorical = [
    ("Categories 10", "tab10"),
    ("Categories 20", "tab20"),
    ("Set 1", "Set1"),
    ("Set 2", "Set2"),
    ("Dark 2", "Dark2"),
    ("Paired", "Paired"),
    ("Accent", "Accent"),
]


def rounded(values):
    return [round(float(v), k_Digits) for v in values]


# sRGB <-> CIELAB (D65) <-> Msh, for the diverging map (K. Moreland, "Diverging Color Maps for
# Scientific Visualization", 2009).
k_White = (0.95047, 1.0, 1.08883)


def srgb_to_linear(c):
    return c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4


def linear_to_srgb(c):
    c = min(max(c, 0.0), 1.0)
    return 12.92 * c if c <= 0.0031308 else 1.055 * c ** (1 / 2.4) - 0.055


def rgb_to_msh(rgb):
    r, g, b = (srgb_to_linear(c) for c in rgb)
    xyz = (0.4124 * r + 0.3576 * g + 0.1805 * b, 0.2126 * r + 0.7152 * g + 0.0722 * b,
           0.0193 * r + 0.1192 * g + 0.9505 * b)

    def f(t):
        return t ** (1 / 3) if t > 0.008856 else 7.787 * t + 16 / 116

    fx, fy, fz = (f(v / w) for v, w in zip(xyz, k_White))
    lab = (116 * fy - 16, 500 * (fx - fy), 200 * (fy - fz))
    m = math.sqrt(sum(v * v for v in lab))
    return (m, math.acos(lab[0] / m) if m > 0 else 0.0, math.atan2(lab[2], lab[1]))


def msh_to_rgb(msh):
    m, s, h = msh
    lab = (m * math.cos(s), m * math.sin(s) * math.cos(h), m * math.sin(s) * math.sin(h))
    fy = (lab[0] + 16) / 116
    fx = fy + lab[1] / 500
    fz = fy - lab[2] / 200

    def finv(t):
        return t ** 3 if t ** 3 > 0.008856 else (t - 16 / 116) / 7.787

    x, y, z = (finv(v) * w for v, w in zip((fx, fy, fz), k_White))
    rgb = (3.2406 * x - 1.5372 * y - 0.4986 * z, -0.9689 * x + 1.8758 * y + 0.0415 * z,
           0.0557 * x - 0.2040 * y + 1.0570 * z)
    return tuple(linear_to_srgb(c) for c in rgb)


def adjust_hue(msh, unsaturated_m):
    m, s, h = msh
    if m >= unsaturated_m - 0.1:
        return h
    spin = s * math.sqrt(unsaturated_m ** 2 - m ** 2) / (m * math.sin(s))
    return h + spin if h > -math.pi / 3 else h - spin


def diverging(rgb1, rgb2, t):
    msh1, msh2 = rgb_to_msh(rgb1), rgb_to_msh(rgb2)
    if msh1[1] > 0.05 and msh2[1] > 0.05 and abs(msh1[2] - msh2[2]) > math.pi / 3:
        mid = max(msh1[0], msh2[0], 88.0)
        if t < 0.5:
            msh2, t = (mid, 0.0, 0.0), 2 * t
        else:
            msh1, t = (mid, 0.0, 0.0), 2 * t - 1
    if msh1[1] < 0.05 < msh2[1]:
        msh1 = (msh1[0], msh1[1], adjust_hue(msh2, msh1[0]))
    elif msh2[1] < 0.05 < msh1[1]:
        msh2 = (msh2[0], msh2[1], adjust_hue(msh1, msh2[0]))
    return msh_to_rgb(tuple((1 - t) * a + t * b for a, b in zip(msh1, msh2)))


def blue_orange(t):
    return diverging((0.217, 0.525, 0.910), (0.890, 0.443, 0.102), t)


def continuous_preset(name, mpl_name, color_space, nan_color):
    colormap = matplotlib.colormaps[mpl_name] if mpl_name else None
    points = []
    for i in range(k_NodeCount):
        x = i / (k_NodeCount - 1)
        rgb = colormap(x)[:3] if colormap else blue_orange(x)
        points += rounded([x, *rgb])
    preset = {"Name": name, "ColorSpace": color_space, "NanColor": nan_color, "RGBPoints": points}
    preset["Source"] = ("computed in Msh space (Moreland 2009)" if mpl_name is None
                        else "matplotlib " + mpl_name)
    return preset


def categorical_preset(name, mpl_name):
    colors = []
    for rgb in matplotlib.colormaps[mpl_name].colors:
        colors += rounded(rgb[:3])
    return {"Name": name, "ColorSpace": "RGB", "NanColor": [1.0, 1.0, 1.0], "IndexedColors": colors,
            "Annotations": [], "Source": "matplotlib " + mpl_name}


def main():
    presets = [continuous_preset(*entry) for entry in k_Continuous]
    presets += [categorical_preset(*entry) for entry in k_Categorical]
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "ColorPresets.json")
    with open(path, "w", encoding="utf-8") as out:
        json.dump(presets, out, indent=1)
        out.write("\n")
    print(f"wrote {len(presets)} presets to {path}")


if __name__ == "__main__":
    main()
