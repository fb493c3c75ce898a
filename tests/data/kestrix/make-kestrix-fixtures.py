#!/usr/bin/python3
"""Writes .kestrix files with h5py, so the data library's reader is tested on files it did not write.

foreign_layouts.kestrix has a user block of 512 bytes (every address in it is shifted) and arrays
stored in the layouts HDF5 allows beside our own plain one: chunked with gzip, chunked with the
shuffle filter, big-endian, and plain contiguous. The values hold NaN and infinities. Run it by hand
to regenerate the file (needs python3-h5py); the result is committed.

    cd tests/data/kestrix && ./make-kestrix-fixtures.py
"""

import h5py
import numpy as np


def fixed_string(text):
    return np.bytes_(text)


def add_array(group, name, object_id, values, tuple_shape, component_shape, type_name, **layout):
    dataset = group.create_dataset(name, data=values, **layout)
    dataset.attrs["ObjectType"] = fixed_string("DataArray<%s>" % type_name)
    dataset.attrs["ObjectId"] = np.array([object_id], dtype=np.uint64)
    dataset.attrs["TupleShape"] = np.array(tuple_shape, dtype=np.uint64)
    dataset.attrs["ComponentShape"] = np.array(component_shape, dtype=np.uint64)


def main():
    with h5py.File("foreign_layouts.kestrix", "w", userblock_size=512, libver=("earliest", "v110")) as f:
        f.attrs["FileFormat"] = fixed_string("KESTRIX")
        f.attrs["FileVersion"] = np.int32(1)
        f.attrs["NextObjectId"] = np.array([6], dtype=np.uint64)
        top = f.create_group("DataStructure")

        # float32, 3 components: chunked and compressed.
        angles = np.arange(300, dtype=np.float32).reshape(100, 3) * np.float32(0.5) - np.float32(40)
        angles[7, 0] = np.nan
        angles[20, 1] = np.inf
        angles[21, 2] = -np.inf
        angles[:, 2][angles[:, 2] > 0] = np.nan
        add_array(top, "Chunked Angles", 1, angles.reshape(-1), [100], [3], "float32",
                  chunks=(64,), compression="gzip", compression_opts=4)

        # int32 stored big-endian, contiguous: HDF5 has to convert it.
        counts = (np.arange(250, dtype=np.int64) * 7919 % 100003 - 50000).astype(">i4")
        add_array(top, "Big Endian Counts", 2, counts, [250], [1], "int32")

        # uint16, 2 components: chunked with the shuffle filter only.
        levels = (np.arange(160, dtype=np.uint32) * 409 % 65536).astype(np.uint16)
        add_array(top, "Shuffled Levels", 3, levels, [80], [2], "uint16", chunks=(32,), shuffle=True)

        # float64, 2 components: plain contiguous little-endian, the layout our reader takes directly.
        heights = np.linspace(-3.0, 5.0, 120).reshape(60, 2)
        heights[3, 1] = np.nan
        heights[59, 0] = -np.inf
        add_array(top, "Plain Heights", 4, heights.reshape(-1), [60], [2], "float64")

        # int8, 1 component: plain contiguous.
        steps = (np.arange(90, dtype=np.int32) % 200 - 100).astype(np.int8)
        add_array(top, "Plain Steps", 5, steps, [90], [1], "int8")


if __name__ == "__main__":
    main()
