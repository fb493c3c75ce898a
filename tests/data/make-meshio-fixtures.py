#!/usr/bin/python3
"""Writes legacy .vtk files the way meshio writes them, into tests/data/vtk/meshio.

meshio saves legacy files of version 5.1 and names integer arrays by their size (`vtktypeint32`,
`vtktypeuint8`, ...), where VTK's own writer says `int` or `unsigned_char`. One mesh carries one
point array of every integer type meshio knows, in ASCII and in binary. A few tools also name
floating-point arrays `vtktypefloat32`/`vtktypefloat64`; the last file renames meshio's `float` and
`double` to those names. Needs python3-meshio (Debian); the results are committed.

    cd tests/data && ./make-meshio-fixtures.py
"""

import os

import meshio
import numpy as np

HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, "vtk", "meshio")

INTEGER_TYPES = [np.int8, np.uint8, np.int16, np.uint16, np.int32, np.uint32, np.int64, np.uint64]


def mesh():
    """Two tetrahedra sharing a face; point values are 10 times the point number plus 1."""
    points = np.array([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1], [1, 1, 1]], dtype=np.float64)
    cells = [("tetra", np.array([[0, 1, 2, 3], [1, 2, 3, 4]], dtype=np.int64))]
    values = np.arange(len(points)) * 10 + 1
    point_data = {np.dtype(t).name: values.astype(t) for t in INTEGER_TYPES}
    point_data["float32"] = (values / 4).astype(np.float32)
    point_data["float64"] = (values / 8).astype(np.float64)
    point_data["velocity"] = np.column_stack([values, -values, values * 2]).astype(np.int32)
    cell_data = {"grain": [np.array([3, 4], dtype=np.int32)]}
    return meshio.Mesh(points, cells, point_data=point_data, cell_data=cell_data)


def main():
    os.makedirs(OUT, exist_ok=True)
    data = mesh()
    ascii_path = os.path.join(OUT, "meshio_ascii.vtk")
    meshio.write(ascii_path, data, file_format="vtk", binary=False)
    meshio.write(os.path.join(OUT, "meshio_binary.vtk"), data, file_format="vtk", binary=True)
    with open(ascii_path, "rb") as f:
        text = f.read()
    text = text.replace(b" float\n", b" vtktypefloat32\n").replace(b" double\n", b" vtktypefloat64\n")
    with open(os.path.join(OUT, "meshio_float_names.vtk"), "wb") as f:
        f.write(text)


if __name__ == "__main__":
    main()
