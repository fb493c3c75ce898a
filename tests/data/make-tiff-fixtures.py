#!/usr/bin/python3
"""Writes the TIFF files the image reader tests read, with tifffile and PIL rather than VTK.

Each image holds a pattern the tests can recompute: value(x, y) for column x and row y, row 0 at the
top of the picture. Layouts VTK 9.1 reads correctly and ones it would garble (tiles of wide samples,
separate colour planes, 16-bit colour, alpha) are both here. Needs python3-tifffile, python3-numpy and
python3-pil; the results are committed.

    cd tests/data && ./make-tiff-fixtures.py
"""

import os

import numpy as np
import tifffile
from PIL import Image

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "images", "tiff")

WIDTH, HEIGHT = 48, 40
Y, X = np.mgrid[0:HEIGHT, 0:WIDTH]
GRAY8 = ((X * 2 + Y * 3) % 256).astype(np.uint8)
GRAY16 = (X * 1200 + Y).astype(np.uint16)
FLOAT32 = (X * 0.5 + Y * 0.25).astype(np.float32)
RGB8 = np.stack([GRAY8, 255 - GRAY8, GRAY8 // 2], axis=-1)
RGB16 = np.stack([X * 1200, Y * 700, (X + Y) * 300], axis=-1).astype(np.uint16)
RGBA8 = np.concatenate([RGB8, np.full((HEIGHT, WIDTH, 1), 200, np.uint8)], axis=-1)


def main():
    os.makedirs(OUT, exist_ok=True)

    def path(name):
        return os.path.join(OUT, name)

    # Read correctly by vtkTIFFReader.
    tifffile.imwrite(path("gray8_tiled.tif"), GRAY8, tile=(16, 16))
    tifffile.imwrite(path("rgb8_tiled.tif"), RGB8, tile=(16, 16), photometric="rgb")
    tifffile.imwrite(path("gray16_strips.tif"), GRAY16, rowsperstrip=7)
    tifffile.imwrite(path("float32_deflate.tif"), FLOAT32, compression="zlib")
    Image.fromarray(RGB8).save(path("rgb8_lzw_pil.tif"), compression="tiff_lzw")
    # Garbled by it: refused.
    tifffile.imwrite(path("gray16_tiled.tif"), GRAY16, tile=(16, 16))
    tifffile.imwrite(path("rgb16_planar.tif"), np.moveaxis(RGB16, -1, 0), photometric="rgb", planarconfig="separate")
    tifffile.imwrite(path("rgb8_planar.tif"), np.moveaxis(RGB8, -1, 0), photometric="rgb", planarconfig="separate")
    tifffile.imwrite(path("rgb16_contiguous.tif"), RGB16, photometric="rgb")
    Image.fromarray(RGBA8).save(path("rgba8_pil.tif"))


if __name__ == "__main__":
    main()
