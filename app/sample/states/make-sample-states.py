#!/usr/bin/env python3
"""Writes the example state files shipped with the bundled sample.

Each state is made of records the viewer itself saved (`--save-state`, one run per colouring), put
together into a grid of two windows, each showing some of the sample's data sources. The file path
they record is where an installed sample lies; beside it the path relative to the state file lets
the viewer find the sample next to the state wherever both are.

    make-sample-states.py BUILD_DIR OUT_DIR
"""
import copy
import json
import math
import os
import subprocess
import sys
import tempfile

INSTALLED_SAMPLE = "/usr/share/kestrix-zr/sample/sample.kestrix"


def saved_state(viewer, sample, color_by, preset, work):
    out = os.path.join(work, f"{color_by}-{preset}.ksxstate".replace("/", "_").replace(":", "_"))
    subprocess.run([viewer, sample, "--color-by", color_by, "--preset", preset, "--save-state", out],
                   check=True, stderr=subprocess.DEVNULL)
    with open(out) as f:
        return json.load(f)


def oblique_camera(widget, bounds, direction, view_up=(0.0, 0.0, 1.0)):
    """Looks at the centre of the bounds from the direction given, far enough to see all of it."""
    centre = [(bounds[2 * i] + bounds[2 * i + 1]) / 2 for i in range(3)]
    radius = math.sqrt(sum((bounds[2 * i + 1] - bounds[2 * i]) ** 2 for i in range(3))) / 2
    norm = math.sqrt(sum(d * d for d in direction))
    # Each window is narrower than tall: the horizontal angle, not the vertical, must hold the radius.
    distance = radius / math.sin(math.radians(15)) * 1.6
    for axis, name in enumerate("xyz"):
        widget[f"camera_focal_pt_{name}"] = centre[axis]
        widget[f"camera_pos_{name}"] = centre[axis] + distance * direction[axis] / norm
        widget[f"camera_view_up_{name}"] = view_up[axis]
    widget["camera_parallel_scale"] = radius


def compose(states, windows, bounds):
    """windows: per window, {data source name: index into states} of what it shows."""
    base = copy.deepcopy(states[0])
    bridge = base["tree_view_state"][0]
    bridge["item_data"]["bridge_object_file_path"] = INSTALLED_SAMPLE
    bridge["item_data"]["bridge_object_file_relative_path"] = "sample.kestrix"
    for source_index, source in enumerate(bridge["item_children"]):
        name = source["item_data"]["core_object_name"]
        source["item_data"]["core_object_views"] = [
            {"core_object_visibility": False, "render_window_index": w} for w in range(len(windows))]
        for rep_index, rep in enumerate(source.get("item_children", [])):
            implementations = []
            for w, shown in enumerate(windows):
                state = states[shown.get(name, 0)]
                theirs = state["tree_view_state"][0]["item_children"][source_index]["item_children"][rep_index]
                implementation = copy.deepcopy(theirs["item_data"]["rep_view_implementations"][0])
                implementation["render_window_index"] = w
                implementation["rep_split_id"] = w + 1
                implementation["representation_visible"] = name in shown
                implementations.append(implementation)
            rep["item_data"]["rep_view_implementations"] = implementations

    grid = base["split_view_state"]
    cell = grid["cells"][0][0]
    cells = []
    for w, shown in enumerate(windows):
        widget_cell = copy.deepcopy(cell)
        widget = widget_cell["widget_state"]
        widget["split_view_index"] = w + 1
        widget["active_view"] = w == 0
        oblique_camera(widget, bounds[w], (1.0, -1.2, 0.9))
        cells.append(widget_cell)
    grid["cells"] = [cells]
    grid["grid_cols"] = len(windows)
    grid["col_widths"] = [1.0 / len(windows)] * len(windows)
    return base


def main():
    build, out_dir = sys.argv[1], sys.argv[2]
    viewer = os.path.join(build, "bin", "kestrix-viewer")
    sample = os.path.join(build, "data", "sample.kestrix")
    grain_bounds = [0, 32, 0, 32, 0, 32]
    with tempfile.TemporaryDirectory() as work:
        phases = saved_state(viewer, sample, "Phases", "Set 1", work)
        labels = saved_state(viewer, sample, "FaceLabels:0", "Viridis", work)
        temperature = saved_state(viewer, sample, "Temperature", "Inferno", work)
        stress = saved_state(viewer, sample, "Stress", "Cool to Warm", work)
        height = saved_state(viewer, sample, "Height", "Cividis", work)
    states = {
        "grains-and-boundaries.ksxstate": compose(
            [phases, labels], [{"Grains": 0}, {"Grain Boundaries": 1}], [grain_bounds, grain_bounds]),
        "thermal-and-holder.ksxstate": compose(
            [temperature, stress, height], [{"Thermal Grid": 0}, {"Specimen Holder": 1, "Top Surface": 2}],
            [[0, 32, 0, 32, 32, 35], [-19.2, 32, 0, 32, 0, 33]]),
    }
    for name, state in states.items():
        with open(os.path.join(out_dir, name), "w") as f:
            json.dump(state, f, indent=2)
            f.write("\n")


if __name__ == "__main__":
    main()
