#!/usr/bin/python3
"""Writes the small dataset files the data bridge tests read.

The files are written by VTK's own Python writers, a plain-Python STL writer and PIL, so the tests
read files our code did not write. Run it by hand to regenerate them (needs python3-vtk9 and
python3-pil); the results are committed, so building and testing need no Python.

    cd tests/data && ./make-fixtures.py
"""

import math
import os
import struct

from PIL import Image
from vtkmodules.vtkCommonCore import vtkDoubleArray, vtkFloatArray, vtkIntArray, vtkPoints
from vtkmodules.vtkCommonDataModel import (
    VTK_HEXAHEDRON,
    VTK_TETRA,
    vtkImageData,
    vtkRectilinearGrid,
    vtkStructuredGrid,
    vtkUnstructuredGrid,
)
from vtkmodules.vtkFiltersSources import vtkSphereSource
from vtkmodules.vtkIOGeometry import vtkSTLWriter
from vtkmodules.vtkIOLegacy import vtkDataSetWriter
from vtkmodules.vtkIOParallelXML import (
    vtkXMLPImageDataWriter,
    vtkXMLPPolyDataWriter,
    vtkXMLPRectilinearGridWriter,
    vtkXMLPStructuredGridWriter,
    vtkXMLPUnstructuredGridWriter,
)
from vtkmodules.vtkIOXML import (
    vtkXMLImageDataWriter,
    vtkXMLPolyDataWriter,
    vtkXMLRectilinearGridWriter,
    vtkXMLStructuredGridWriter,
    vtkXMLUnstructuredGridWriter,
)

HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, "vtk")


def named_array(cls, name, components, values):
    array = cls()
    array.SetName(name)
    array.SetNumberOfComponents(components)
    for value in values:
        array.InsertNextValue(value)
    return array


def image():
    """4 x 3 x 2 points, spacing and origin that aren't the defaults."""
    data = vtkImageData()
    data.SetDimensions(4, 3, 2)
    data.SetOrigin(1.0, 2.0, 3.0)
    data.SetSpacing(0.5, 0.25, 2.0)
    points = data.GetNumberOfPoints()
    data.GetPointData().AddArray(named_array(vtkFloatArray, "Density", 1, [i * 1.5 for i in range(points)]))
    data.GetCellData().AddArray(named_array(vtkIntArray, "Phase", 1, [i % 3 for i in range(data.GetNumberOfCells())]))
    return data


def rectilinear():
    data = vtkRectilinearGrid()
    data.SetDimensions(3, 4, 2)
    data.SetXCoordinates(named_array(vtkDoubleArray, "x", 1, [0.0, 1.0, 3.0]))
    data.SetYCoordinates(named_array(vtkDoubleArray, "y", 1, [0.0, 0.5, 1.0, 2.0]))
    data.SetZCoordinates(named_array(vtkDoubleArray, "z", 1, [-1.0, 1.0]))
    data.GetCellData().AddArray(named_array(vtkDoubleArray, "Temperature", 1, [20.0 + i for i in range(data.GetNumberOfCells())]))
    return data


def structured():
    """A bent 3 x 3 x 2 grid: points follow a quarter ring."""
    data = vtkStructuredGrid()
    data.SetDimensions(3, 3, 2)
    points = vtkPoints()
    for k in range(2):
        for j in range(3):
            for i in range(3):
                angle = 0.25 * math.pi * i
                radius = 1.0 + j
                points.InsertNextPoint(radius * math.cos(angle), radius * math.sin(angle), float(k))
    data.SetPoints(points)
    data.GetPointData().AddArray(named_array(vtkFloatArray, "Velocity", 3, [float(v) for v in range(3 * 18)]))
    return data


def unstructured():
    """One hexahedron and one tetrahedron on top of it."""
    data = vtkUnstructuredGrid()
    points = vtkPoints()
    for p in [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1), (0.5, 0.5, 2)]:
        points.InsertNextPoint(*p)
    data.SetPoints(points)
    data.InsertNextCell(VTK_HEXAHEDRON, 8, list(range(8)))
    data.InsertNextCell(VTK_TETRA, 4, [4, 5, 6, 8])
    data.GetCellData().AddArray(named_array(vtkIntArray, "FeatureIds", 1, [7, 9]))
    data.GetPointData().AddArray(named_array(vtkDoubleArray, "Height", 1, [points.GetPoint(i)[2] for i in range(9)]))
    return data


def poly(theta=8, phi=6):
    sphere = vtkSphereSource()
    sphere.SetThetaResolution(theta)
    sphere.SetPhiResolution(phi)
    sphere.SetRadius(2.0)
    sphere.Update()
    return sphere.GetOutput()


def write(writer, data, name):
    writer.SetFileName(os.path.join(OUT, name))
    writer.SetInputData(data)
    if not writer.Write():
        raise RuntimeError("failed to write " + name)


def write_vtk_files():
    os.makedirs(OUT, exist_ok=True)
    datasets = [
        ("image", image(), vtkXMLImageDataWriter, vtkXMLPImageDataWriter, "vti", "pvti"),
        ("rectilinear", rectilinear(), vtkXMLRectilinearGridWriter, vtkXMLPRectilinearGridWriter, "vtr", "pvtr"),
        ("structured", structured(), vtkXMLStructuredGridWriter, vtkXMLPStructuredGridWriter, "vts", "pvts"),
        ("unstructured", unstructured(), vtkXMLUnstructuredGridWriter, vtkXMLPUnstructuredGridWriter, "vtu", "pvtu"),
        ("poly", poly(), vtkXMLPolyDataWriter, vtkXMLPPolyDataWriter, "vtp", "pvtp"),
    ]
    for name, data, serial, parallel, ext, pext in datasets:
        write(serial(), data, name + "." + ext)
        writer = parallel()
        writer.SetNumberOfPieces(1)
        writer.SetStartPiece(0)
        writer.SetEndPiece(0)
        write(writer, data, "parallel_" + name + "." + pext)

    ascii_writer = vtkDataSetWriter()
    ascii_writer.SetFileTypeToASCII()
    write(ascii_writer, unstructured(), "legacy_ascii.vtk")
    binary_writer = vtkDataSetWriter()
    binary_writer.SetFileTypeToBinary()
    write(binary_writer, poly(), "legacy_binary.vtk")
    write(vtkDataSetWriter(), image(), "legacy_image.vtk")
    # Some tools save XML under the legacy suffix.
    write(vtkXMLUnstructuredGridWriter(), unstructured(), "xml_named.vtk")

    ascii_stl = vtkSTLWriter()
    ascii_stl.SetFileTypeToASCII()
    write(ascii_stl, poly(4, 4), "vtk_ascii.stl")
    binary_stl = vtkSTLWriter()
    binary_stl.SetFileTypeToBinary()
    write(binary_stl, poly(4, 4), "vtk_binary.stl")


# A tetrahedron, written the way other tools write STL: no VTK involved.
TETRA = [(0.0, 0.0, 0.0), (1.0, 0.0, 0.0), (0.0, 1.0, 0.0), (0.0, 0.0, 1.0)]
TETRA_FACES = [(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)]


def normal(a, b, c):
    u = [b[i] - a[i] for i in range(3)]
    v = [c[i] - a[i] for i in range(3)]
    n = [u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]]
    length = math.sqrt(sum(x * x for x in n))
    return [x / length for x in n]


def write_hand_stl():
    with open(os.path.join(OUT, "tool_ascii.stl"), "w") as out:
        out.write("solid tetra\n")
        for face in TETRA_FACES:
            a, b, c = (TETRA[i] for i in face)
            out.write("  facet normal %g %g %g\n    outer loop\n" % tuple(normal(a, b, c)))
            for p in (a, b, c):
                out.write("      vertex %g %g %g\n" % p)
            out.write("    endloop\n  endfacet\n")
        out.write("endsolid tetra\n")
    with open(os.path.join(OUT, "tool_binary.stl"), "wb") as out:
        out.write(b"binary tetra from a plain writer".ljust(80, b"\0"))
        out.write(struct.pack("<I", len(TETRA_FACES)))
        for face in TETRA_FACES:
            a, b, c = (TETRA[i] for i in face)
            out.write(struct.pack("<12fH", *normal(a, b, c), *a, *b, *c, 0))


def write_images():
    out = os.path.join(HERE, "images")
    os.makedirs(out, exist_ok=True)

    def gradient(width, height):
        img = Image.new("RGB", (width, height))
        img.putdata([(x * 255 // width, y * 255 // height, 128) for y in range(height) for x in range(width)])
        return img

    picture = gradient(100, 50)
    picture.save(os.path.join(out, "gradient_100x50.png"))
    picture.save(os.path.join(out, "gradient_100x50.jpg"), quality=80)
    picture.save(os.path.join(out, "gradient_100x50.tif"), compression="tiff_deflate")
    gradient(40, 20).save(os.path.join(out, "gradient_40x20.bmp"))
    # PNG content under a JPEG name: the reader must go by content.
    gradient(30, 10).save(os.path.join(out, "png_content.jpg"), format="PNG")


if __name__ == "__main__":
    write_vtk_files()
    write_hand_stl()
    write_images()
