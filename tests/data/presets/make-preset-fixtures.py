#!/usr/bin/python3
"""Writes the colour preset files the preset import tests read.

They follow the JSON layout that visualization tools export for colour maps (an array of preset
objects, or one object), with colours taken from matplotlib (Debian's python3-matplotlib), so the
tests read files our code did not write. Run by hand; the results are committed.

    cd tests/data/presets && ./make-preset-fixtures.py
"""

import json

import matplotlib


def rgb_points(name, count):
    colormap = matplotlib.colormaps[name]
    points = []
    for i in range(count):
        x = -1.0 + 2.0 * i / (count - 1)  # exported maps keep their data range
        points += [round(x, 6)] + [round(float(c), 6) for c in colormap((x + 1.0) / 2.0)[:3]]
    return points


def write(file_name, content, indent=2):
    with open(file_name, "w", encoding="utf-8") as out:
        json.dump(content, out, indent=indent)
        out.write("\n")


twilight = {
    "ColorSpace": "Lab",
    "Creator": "matplotlib",
    "Name": "Exported Twilight",
    "NanColor": [1, 1, 0],
    "RGBPoints": rgb_points("twilight", 9),
}
pastel = {
    "Annotations": ["1", "Ferrite", "2", "Austenite", "3", "Pore"],
    "IndexedColors": [round(float(c), 6) for rgb in matplotlib.colormaps["Pastel1"].colors[:3] for c in rgb],
    "Name": "Exported Phases",
    "NanColor": [0.25, 0, 0],
}

write("good-presets.json", [twilight, pastel])
write("single-preset.json", dict(twilight, Name="Exported Single"), indent=None)

# One preset whose "RGBPoints" is text, one whose "IndexedColors" is an object, between good ones.
write("mixed-presets.json", [
    dict(twilight, Name="Good Before"),
    dict(twilight, Name="Text Points", RGBPoints="0 0 0 0 1 1 1 1"),
    dict(pastel, Name="Object Colors", IndexedColors={"r": 1, "g": 0, "b": 0}),
    dict(pastel, Name="Good After"),
])

# Cut off in the middle, as a failed download leaves it.
with open("good-presets.json", encoding="utf-8") as good:
    text = good.read()
with open("malformed-presets.json", "w", encoding="utf-8") as out:
    out.write(text[: len(text) // 2])
