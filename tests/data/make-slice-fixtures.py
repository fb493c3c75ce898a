#!/usr/bin/python3
"""Writes the image files of the image slice view tests with VTK's own Python writers.

slice_cells.vti: 9 x 7 x 5 points, so 8 x 6 x 4 cells, each cell holding "CellIndex" = i + 10 j + 100 k
(so every slice along every axis has its own values) and "Phase" from 1 to 3.
slice_cells_coarse.vti: the same cells, twice as thick in z (spacing 1, 1, 2).
empty_image.vti: an image with no points.
"""
import os

from vtkmodules.vtkCommonCore import vtkFloatArray, vtkIntArray
from vtkmodules.vtkCommonDataModel import vtkImageData
from vtkmodules.vtkIOXML import vtkXMLImageDataWriter

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "vtk")


def cells(spacing_z):
    data = vtkImageData()
    data.SetDimensions(9, 7, 5)
    data.SetSpacing(1.0, 1.0, spacing_z)
    index = vtkFloatArray()
    index.SetName("CellIndex")
    phase = vtkIntArray()
    phase.SetName("Phase")
    for k in range(4):
        for j in range(6):
            for i in range(8):
                index.InsertNextValue(i + 10 * j + 100 * k)
                phase.InsertNextValue((i // 3 + j // 2 + k) % 3 + 1)
    data.GetCellData().AddArray(index)
    data.GetCellData().AddArray(phase)
    data.GetCellData().SetActiveScalars("CellIndex")
    return data


def write(data, name):
    writer = vtkXMLImageDataWriter()
    writer.SetFileName(os.path.join(OUT, name))
    writer.SetInputData(data)
    if not writer.Write():
        raise RuntimeError("failed to write " + name)


if __name__ == "__main__":
    write(cells(1.0), "slice_cells.vti")
    write(cells(2.0), "slice_cells_coarse.vti")
    write(vtkImageData(), "empty_image.vti")
