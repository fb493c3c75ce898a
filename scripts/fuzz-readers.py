#!/usr/bin/python3
"""Mutation fuzzer for the file readers of kestrix-viewer.

Starts from valid files of every format the viewer reads (tests/data/vtk, tests/data/images and a
small .kestrix written by kestrix-sample), writes truncated, bit-flipped and header-edited variants,
and runs `kestrix-viewer --list FILE` (and with --screenshot also `kestrix-viewer FILE --screenshot
OUT.png`) on each under a time and an address-space limit. Every run that dies of a signal, runs
out of time or hits the memory limit is reported and its file kept for reproduction.

    scripts/fuzz-readers.py --count 3000                  # a long run, --list only
    xvfb-run -a scripts/fuzz-readers.py --screenshot      # also render each variant
    scripts/fuzz-readers.py --quick                       # the short run of the test suite

Exit status: 0 when nothing crashed, hung or ran out of memory, 1 otherwise, 2 on a usage error.
Only the Python standard library is needed.
"""

import argparse
import base64
import collections
import os
import random
import re
import resource
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import zlib

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

XML_SUFFIXES = {"vti", "vtr", "vts", "vtu", "vtp", "pvti", "pvtr", "pvts", "pvtu", "pvtp"}
EVIL_NUMBERS = [2147483647, 2147483648, -2147483648, -2147483649, 4294967295, 4294967296, -1, 0,
                9223372036854775807, 1 << 40, 65536]
XML_TYPES = ["Int8", "UInt8", "Int16", "UInt16", "Int32", "UInt32", "Int64", "UInt64", "Float32",
             "Float64", "String", "Bit", "Nonsense"]
LEGACY_TYPES = [b"bit", b"char", b"unsigned_char", b"short", b"int", b"long", b"vtktypeint64",
                b"vtktypeint32", b"vtktypeuint8", b"float", b"double", b"string", b"nonsense"]
LEGACY_KEYWORDS = (b"POINTS|CELLS|POLYGONS|LINES|VERTICES|TRIANGLE_STRIPS|CELL_TYPES|POINT_DATA|"
                   b"CELL_DATA|DIMENSIONS|SCALARS|VECTORS|NORMALS|FIELD|LOOKUP_TABLE|OFFSETS|"
                   b"CONNECTIVITY|COLOR_SCALARS|TEXTURE_COORDINATES|TENSORS|X_COORDINATES|"
                   b"Y_COORDINATES|Z_COORDINATES|SPACING|ORIGIN|ASPECT_RATIO")


# ---------------------------------------------------------------------------------------------
# Origins


class Origin:
    """A valid file and the files that must lie beside it (pieces of a parallel file)."""

    def __init__(self, name, data, companions=None, kind=None):
        self.name = name
        self.data = data
        self.companions = companions or {}
        self.kind = kind or suffix_of(name)


def suffix_of(name):
    return name.rsplit(".", 1)[-1].lower() if "." in name else ""


def read(path):
    with open(path, "rb") as f:
        return f.read()


def xml_appended_arrays(data):
    """(header text, appended payload, encoding) of an XML file with appended data, or None."""
    match = re.search(rb'<AppendedData encoding="(\w+)">\s*_', data)
    if not match:
        return None
    return data[:match.start()], data[match.end():], match.group(1)


def base64_blocks(payload, offsets, header_size):
    """Decodes the base64 appended arrays at the given offsets: a list of (header bytes, data bytes)."""
    arrays = []
    for offset in offsets:
        first = base64.b64decode(payload[offset:offset + 8])
        count = struct.unpack("<I" if header_size == 4 else "<Q", first[:header_size])[0]
        header_length = (3 + count) * header_size
        header_chars = 4 * ((header_length + 2) // 3)
        header = base64.b64decode(payload[offset:offset + header_chars])
        fmt = "<%d%s" % (3 + count, "I" if header_size == 4 else "Q")
        sizes = struct.unpack(fmt, header)[3:]
        data_chars = 4 * ((sum(sizes) + 2) // 3)
        body = base64.b64decode(payload[offset + header_chars:offset + header_chars + data_chars])
        arrays.append((header, body))
    return arrays


def raw_appended_variants(name, data):
    """The same XML file with raw appended data, compressed and not: readers take other roads there."""
    parts = xml_appended_arrays(data)
    if parts is None or parts[2] != b"base64" or b'compressor="vtkZLibDataCompressor"' not in data:
        return []
    head, payload, _ = parts
    header_size = 8 if b'header_type="UInt64"' in head else 4
    offsets = [int(m.group(1)) for m in re.finditer(rb'offset="(\d+)"', head)]
    try:
        arrays = base64_blocks(payload, offsets, header_size)
    except Exception:  # an origin the converter does not follow stays as it is
        return []
    out = []
    for compressed in (True, False):
        blobs = []
        for header, body in arrays:
            if compressed:
                blobs.append(header + body)
            else:
                count = struct.unpack("<I" if header_size == 4 else "<Q", header[:header_size])[0]
                fmt = "<%d%s" % (3 + count, "I" if header_size == 4 else "Q")
                sizes = struct.unpack(fmt, header)[3:]
                plain, at = b"", 0
                for size in sizes:
                    plain += zlib.decompress(body[at:at + size])
                    at += size
                blobs.append(struct.pack("<I" if header_size == 4 else "<Q", len(plain)) + plain)
        new_offsets, at = [], 0
        for blob in blobs:
            new_offsets.append(at)
            at += len(blob)
        offset_iter = iter(new_offsets)
        new_head = re.sub(rb'offset="\d+"', lambda m: b'offset="%d"' % next(offset_iter), head)
        if not compressed:
            new_head = new_head.replace(b' compressor="vtkZLibDataCompressor"', b"")
        text = new_head + b'<AppendedData encoding="raw">\n   _' + b"".join(blobs) + b"\n  </AppendedData>\n</VTKFile>\n"
        stem, ext = name.rsplit(".", 1)
        out.append(Origin("%s_%s.%s" % (stem, "rawz" if compressed else "raw", ext), text))
    return out


def collect_origins(args, work):
    origins = []
    vtk_dir = os.path.join(ROOT, "tests", "data", "vtk")
    image_dir = os.path.join(ROOT, "tests", "data", "images")
    for directory in (vtk_dir, image_dir, os.path.join(vtk_dir, "meshio")):
        if not os.path.isdir(directory):
            continue
        for name in sorted(os.listdir(directory)):
            path = os.path.join(directory, name)
            # The viewer refuses parallel files by their suffix; the library's tests cover their readers.
            if not os.path.isfile(path) or suffix_of(name).startswith("pvt") or name.startswith("parallel_"):
                continue
            data = read(path)
            origins.append(Origin(name, data))
            if suffix_of(name) in XML_SUFFIXES or (suffix_of(name) == "vtk" and data.startswith(b"<?xml")):
                origins.extend(raw_appended_variants(name, data))
    kestrix = args.kestrix or make_kestrix(args, work)
    if kestrix:
        origins.append(Origin(os.path.basename(kestrix), read(kestrix)))
    if args.formats:
        wanted = set(args.formats.split(","))
        origins = [s for s in origins if s.kind in wanted or suffix_of(s.name) in wanted]
    return origins


def make_kestrix(args, work):
    sample = os.path.join(os.path.dirname(args.viewer), "kestrix-sample")
    if not os.path.exists(sample):
        print("note: %s not found, no .kestrix origin" % sample, file=sys.stderr)
        return None
    out = os.path.join(work, "origin.kestrix")
    subprocess.run([sample, out, "--size", "6"], stdout=subprocess.DEVNULL, check=True)
    return out


# ---------------------------------------------------------------------------------------------
# Mutations: each takes (rng, origin) and gives (description, new bytes, companions to write)


def truncate(rng, origin):
    cut = rng.randrange(0, max(1, len(origin.data)))
    return "truncated at %d of %d" % (cut, len(origin.data)), origin.data[:cut]


def bit_flip(rng, origin):
    data = bytearray(origin.data)
    # Most damage that matters sits in headers: half of the flips go to the first 512 bytes.
    flips = rng.randint(1, 12)
    where = []
    for _ in range(flips):
        limit = min(len(data), 512) if rng.random() < 0.5 else len(data)
        at = rng.randrange(limit)
        data[at] ^= 1 << rng.randrange(8)
        where.append(at)
    return "bits flipped at %s" % ",".join(map(str, sorted(where))), bytes(data)


def overwrite(rng, origin):
    data = bytearray(origin.data)
    at = rng.randrange(len(data))
    count = rng.randint(1, 16)
    fill = rng.choice([0x00, 0xFF, 0x7F, 0x80, None])
    for i in range(at, min(len(data), at + count)):
        data[i] = rng.randrange(256) if fill is None else fill
    return "%d bytes overwritten at %d" % (count, at), bytes(data)


def xml_numeric_attribute(rng, origin):
    head_end = origin.data.find(b"<AppendedData")
    head = origin.data if head_end < 0 else origin.data[:head_end]
    fields = list(re.finditer(rb'(WholeExtent|Extent|NumberOfComponents|NumberOfTuples|NumberOfPoints|'
                              rb'NumberOfCells|NumberOfVerts|NumberOfLines|NumberOfStrips|NumberOfPolys|'
                              rb'offset|GhostLevel|Spacing|Origin)="([^"]*)"', head))
    if not fields:
        return None
    field = rng.choice(fields)
    values = field.group(2).split()
    if field.group(1) in (b"WholeExtent", b"Extent") and rng.random() < 0.5:
        big = 1 << 31
        values = [b"%d" % (-big if i % 2 == 0 else big - 1) for i in range(len(values))]
    elif field.group(1) == b"offset" and rng.random() < 0.6:
        values = [b"%d" % (int(values[0]) + rng.choice([1, 3, 7, -1, 100, 1 << 20, 1 << 33]))]
    elif values:
        i = rng.randrange(len(values))
        values[i] = b"%d" % rng.choice(EVIL_NUMBERS)
    new = field.group(1) + b'="' + b" ".join(values) + b'"'
    data = origin.data[:field.start()] + new + origin.data[field.end():]
    return "%s set to '%s'" % (field.group(1).decode(), b" ".join(values).decode()), data


def xml_added_attribute(rng, origin):
    arrays = list(re.finditer(rb"<P?DataArray ", origin.data))
    if not arrays:
        return None
    at = rng.choice(arrays).end()
    name = rng.choice([b"NumberOfComponents", b"NumberOfTuples"])
    value = rng.choice([2147483647, 2147483648, 1 << 31 | 3, -1, 0, 1 << 33])
    if re.match(rb"[^>]*" + name, origin.data[at:]):
        data = origin.data[:at] + re.sub(name + rb'="[^"]*"', name + b'="%d"' % value, origin.data[at:], count=1)
    else:
        data = origin.data[:at] + name + b'="%d" ' % value + origin.data[at:]
    return "%s of one array set to %d" % (name.decode(), value), data


def xml_type(rng, origin):
    fields = list(re.finditer(rb'(<P?DataArray[^>]*? type=")(\w+)"', origin.data))
    if not fields:
        return None
    field = rng.choice(fields)
    new_type = rng.choice([t for t in XML_TYPES if t.encode() != field.group(2)])
    data = origin.data[:field.start(2)] + new_type.encode() + origin.data[field.end(2):]
    return "array type %s changed to %s" % (field.group(2).decode(), new_type), data


def xml_block_header(rng, origin):
    """Edits the block header of one compressed or sized array in raw appended data."""
    parts = xml_appended_arrays(origin.data)
    if parts is None or parts[2] != b"raw":
        return None
    head, payload, _ = parts
    offsets = [int(m.group(1)) for m in re.finditer(rb'offset="(\d+)"', head)]
    if not offsets:
        return None
    size = 8 if b'header_type="UInt64"' in head else 4
    fmt = "<Q" if size == 8 else "<I"
    offset = rng.choice(offsets)
    compressed = b"compressor=" in head
    words = 4 if compressed else 1
    word = rng.randrange(words)
    start = len(origin.data) - len(payload) + offset + word * size
    if start + size > len(origin.data):
        return None
    value = rng.choice([v for v in EVIL_NUMBERS if 0 <= v < (1 << (8 * size))] + [1 << 16, 3, 1])
    data = origin.data[:start] + struct.pack(fmt, value) + origin.data[start + size:]
    names = ["block count", "block size", "last block size", "first compressed block size"]
    what = names[word] if compressed else "byte count"
    return "%s of the array at offset %d set to %d" % (what, offset, value), data


def legacy_header(rng, origin):
    lines = list(re.finditer(rb"^(" + LEGACY_KEYWORDS + rb")([ \t][^\n]*)?\n", origin.data, re.M))
    # Field array lines: NAME COMPONENTS TUPLES TYPE
    lines += list(re.finditer(rb"^(\S+) (\d+) (\d+) (\w+)\s*\n", origin.data, re.M))
    choice = rng.random()
    if choice < 0.1:
        version = rng.choice([b"1.0", b"2.0", b"3.0", b"4.2", b"5.1", b"5.2", b"9.9", b"-1.0", b"2147483648.0"])
        data = re.sub(rb"Version [\d.]+", b"Version " + version, origin.data, count=1)
        return "version set to %s" % version.decode(), data
    if not lines:
        return None
    line = rng.choice(lines)
    tokens = line.group(0).rstrip(b"\n").split(b" ")
    numeric = [i for i, t in enumerate(tokens) if re.fullmatch(rb"-?\d+(\.\d+)?", t)]
    words = [i for i, t in enumerate(tokens[1:], 1) if t in LEGACY_TYPES or t.startswith(b"vtktype")]
    if words and (not numeric or choice < 0.3):
        i = rng.choice(words)
        tokens[i] = rng.choice(LEGACY_TYPES)
    elif numeric:
        i = rng.choice(numeric)
        tokens[i] = b"%d" % rng.choice(EVIL_NUMBERS)
    else:
        return None
    new = b" ".join(tokens) + b"\n"
    data = origin.data[:line.start()] + new + origin.data[line.end():]
    return "header line '%s' became '%s'" % (line.group(0).strip().decode(errors="replace")[:60],
                                             new.strip().decode(errors="replace")[:60]), data


def binary_field(rng, origin, fields):
    """Sets one little- or big-endian integer field of a binary header to an evil value."""
    offset, size, endian, name = rng.choice(fields)
    if offset + size > len(origin.data):
        return None
    value = rng.choice([0, 1, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFF, 0x80000000, 65536, 3]) & ((1 << (8 * size)) - 1)
    packed = value.to_bytes(size, endian)
    data = origin.data[:offset] + packed + origin.data[offset + size:]
    return (name, value, offset, data)


def image_header(rng, origin):
    d = origin.data
    if d.startswith(b"BM"):
        fields = [(2, 4, "little", "file size"), (10, 4, "little", "pixel offset"), (14, 4, "little", "info size"),
                  (18, 4, "little", "width"), (22, 4, "little", "height"), (26, 2, "little", "planes"),
                  (28, 2, "little", "bits per pixel"), (30, 4, "little", "compression"),
                  (46, 4, "little", "palette size")]
        result = binary_field(rng, origin, fields)
    elif d.startswith(b"\x89PNG"):
        result = binary_field(rng, origin, [(16, 4, "big", "width"), (20, 4, "big", "height"),
                                          (24, 1, "big", "bit depth"), (25, 1, "big", "colour type"),
                                          (33, 4, "big", "first chunk length")])
        if result and result[2] < 29:  # keep the IHDR checksum right so that libpng reads on
            data = bytearray(result[3])
            data[29:33] = struct.pack(">I", zlib.crc32(bytes(data[12:29])) & 0xFFFFFFFF)
            result = result[:3] + (bytes(data),)
    elif d.startswith(b"II*\0") or d.startswith(b"MM\0*"):
        endian = "little" if d.startswith(b"II") else "big"
        ifd = int.from_bytes(d[4:8], endian)
        count = int.from_bytes(d[ifd:ifd + 2], endian) if ifd + 2 <= len(d) else 0
        fields = [(4, 4, endian, "IFD offset")]
        for i in range(min(count, 20)):
            entry = ifd + 2 + 12 * i
            tag = int.from_bytes(d[entry:entry + 2], endian)
            fields += [(entry + 4, 4, endian, "count of tag %d" % tag), (entry + 8, 4, endian, "value of tag %d" % tag)]
        result = binary_field(rng, origin, fields)
    elif d.startswith(b"\xff\xd8"):
        sof = re.search(rb"\xff[\xc0-\xc2]", d)
        if not sof:
            return None
        s = sof.start()
        result = binary_field(rng, origin, [(s + 5, 2, "big", "height"), (s + 7, 2, "big", "width"),
                                          (s + 9, 1, "big", "components"), (s + 2, 2, "big", "frame header length")])
    elif suffix_of(origin.name) == "stl" and not d.lstrip().startswith(b"solid"):
        result = binary_field(rng, origin, [(80, 4, "little", "triangle count")])
    else:
        return None
    if result is None:
        return None
    name, value, offset, data = result
    return "%s (byte %d) set to %d" % (name, offset, value), data


def hdf5_header(rng, origin):
    """Damages the bytes after an attribute or dataset name: datatype and dataspace messages sit there."""
    names = list(re.finditer(rb"[A-Za-z_][A-Za-z0-9_ ]{3,40}\0", origin.data))
    if not names:
        return None
    name = rng.choice(names)
    data = bytearray(origin.data)
    at = name.end() + rng.randrange(0, 40)
    if at + 4 > len(data):
        return None
    choice = rng.random()
    if choice < 0.4:
        data[at:at + 4] = struct.pack("<I", rng.choice([0xFFFFFFFF, 0x7FFFFFFF, 0, 2, 1 << 20]))
        what = "4 bytes set"
    elif choice < 0.7:
        data[at] = rng.choice([0, 1, 2, 3, 5, 6, 7, 9, 0xFF])  # datatype class or rank
        what = "one byte set"
    else:
        data[at] ^= 1 << rng.randrange(8)
        what = "one bit flipped"
    return "%s at %d after the name '%s'" % (what, at, name.group(0)[:-1].decode(errors="replace")), bytes(data)


def hdf5_attribute(rng, origin):
    """Gives one HDF5 attribute a wrong type, shape or value (needs h5py; skipped without it)."""
    try:
        import h5py
        import numpy
    except ImportError:
        return None
    with tempfile.NamedTemporaryFile(suffix=".kestrix", delete=False) as f:
        f.write(origin.data)
        path = f.name
    try:
        with h5py.File(path, "r+") as h5:
            owners = []
            h5.visititems(lambda name, obj: owners.append(name) if len(obj.attrs) else None)
            owners.append("/")
            owner = h5[rng.choice(owners)]
            if not len(owner.attrs):
                return None
            key = rng.choice(sorted(owner.attrs.keys()))
            old = owner.attrs[key]
            choice = rng.randrange(6)
            if choice == 0:
                new, what = b"not a number", "a string"
            elif choice == 1:
                new, what = numpy.array([1.5, -2.5], dtype=numpy.float64), "two doubles"
            elif choice == 2:
                new, what = numpy.array([], dtype=numpy.uint64), "an empty array"
            elif choice == 3:
                new, what = numpy.array([[1 << 40, 3], [2, 1]], dtype=numpy.uint64), "a 2 x 2 array"
            elif choice == 4:
                new, what = numpy.array([-1], dtype=numpy.int64), "-1"
            else:
                new, what = numpy.array([(1 << 63) - 1, 1 << 32, 7], dtype=numpy.uint64), "huge values"
            del owner.attrs[key]
            owner.attrs[key] = new
            description = "attribute %s of %s (was %r) set to %s" % (key, owner.name, old, what)
        return description[:200], read(path)
    except Exception:
        return None
    finally:
        os.unlink(path)


def mutators_for(origin):
    generic = [truncate, bit_flip, overwrite]
    suffix = suffix_of(origin.name)
    if origin.data.startswith(b"<?xml") or suffix in XML_SUFFIXES:
        return generic + [xml_numeric_attribute, xml_numeric_attribute, xml_added_attribute, xml_type,
                          xml_block_header, xml_block_header]
    if suffix == "vtk":
        return generic + [legacy_header, legacy_header, legacy_header]
    if suffix == "kestrix":
        return generic + [hdf5_header, hdf5_header, hdf5_attribute, hdf5_attribute, hdf5_attribute]
    return generic + [image_header, image_header]


# ---------------------------------------------------------------------------------------------
# Running the viewer


Outcome = collections.namedtuple("Outcome", "status detail")


def limit_memory(megabytes):
    def apply():
        limit = megabytes * 1024 * 1024
        resource.setrlimit(resource.RLIMIT_AS, (limit, limit))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        os.setsid()
    return apply


def classify(returncode, stderr, timed_out):
    text = stderr.decode(errors="replace")
    memory = re.search(r"bad_alloc|Unable to allocate|Cannot allocate memory|out of memory|Could not allocate",
                       text, re.I)
    if timed_out:
        return Outcome("hang", "no result within the time limit")
    if returncode < 0:
        sig = -returncode
        name = signal.Signals(sig).name if sig in signal.Signals._value2member_map_ else str(sig)
        if memory:
            return Outcome("memory", "%s after: %s" % (name, memory.group(0)))
        return Outcome("crash", name)
    if memory:
        return Outcome("memory", memory.group(0))
    return Outcome("ok" if returncode == 0 else "rejected", "exit %d" % returncode)


def run_viewer(args, command, cwd):
    env = dict(os.environ)
    if not env.get("DISPLAY"):
        env.pop("DISPLAY", None)
        env["QT_QPA_PLATFORM"] = "offscreen"
    try:
        proc = subprocess.Popen(command, cwd=cwd, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                env=env, preexec_fn=limit_memory(args.memory))
    except OSError as error:
        return Outcome("crash", "cannot start: %s" % error), b""
    try:
        _, stderr = proc.communicate(timeout=args.timeout)
        return classify(proc.returncode, stderr, False), stderr
    except subprocess.TimeoutExpired:
        os.killpg(proc.pid, signal.SIGKILL)
        _, stderr = proc.communicate()
        return classify(proc.returncode, stderr, True), stderr


def backtrace_place(args, command, cwd):
    """The first frame of ours or of VTK in a backtrace under gdb: tells crashes apart."""
    if not shutil.which("gdb"):
        return ""
    gdb = ["gdb", "-batch", "-nx", "-ex", "run", "-ex", "bt 25", "--args"] + command
    try:
        out = subprocess.run(gdb, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                             timeout=max(60, 4 * args.timeout), preexec_fn=limit_memory(args.memory)).stdout
    except subprocess.TimeoutExpired:
        return "gdb timed out"
    for line in out.decode(errors="replace").splitlines():
        match = re.match(r"#\d+\s+(?:0x[0-9a-f]+ in )?(\S+)", line)
        if match and re.search(r"vtk|ZR|VX|CV::|zr::|H5|png|jpeg|TIFF|Viewer", match.group(1)) \
                and not re.search(r"vtkOutputWindow|vtkObject::|abort|raise", match.group(1)):
            return match.group(1)
    return ""


# ---------------------------------------------------------------------------------------------


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--viewer", default=os.path.join(ROOT, "build", "bin", "kestrix-viewer"))
    parser.add_argument("--kestrix", help="a .kestrix origin; by default one is written with kestrix-sample --size 6")
    parser.add_argument("--count", type=int, default=2000, help="number of variants (default 2000)")
    parser.add_argument("--random-state", type=int, default=None, help="random state (default: from the clock)")
    parser.add_argument("--timeout", type=float, default=20, help="seconds per run (default 20)")
    parser.add_argument("--memory", type=int, default=2048, help="address-space limit per run in MB (default 2048)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    parser.add_argument("--formats", help="comma-separated suffixes to fuzz (vti,vtk,png,kestrix,...)")
    parser.add_argument("--screenshot", action="store_true", help="also run FILE --screenshot OUT.png")
    parser.add_argument("--out", help="directory for failing variants (default: a temporary one)")
    parser.add_argument("--places", action="store_true", help="name the crashing function of each crash under gdb")
    parser.add_argument("--quick", action="store_true",
                        help="the test suite's run: origin 1, 200 variants, --list only, 10 s, 1536 MB")
    args = parser.parse_args()
    if args.quick:
        args.random_state = 1 if args.random_state is None else args.random_state
        args.count = 200 if args.count == 2000 else args.count
        args.timeout = min(args.timeout, 10)
        args.memory = 1536
    if args.random_state is None:
        args.random_state = int(time.time())
    if not os.access(args.viewer, os.X_OK):
        print("no viewer at %s (build the kestrix-viewer target)" % args.viewer, file=sys.stderr)
        return 2

    work = tempfile.mkdtemp(prefix="zr-fuzz-")
    out_dir = args.out or os.path.join(work, "failures")
    os.makedirs(out_dir, exist_ok=True)
    started = time.time()
    try:
        origins = collect_origins(args, work)
        if not origins:
            print("no origin files", file=sys.stderr)
            return 2
        rng = random.Random(args.random_state)
        variants = []
        for number in range(args.count):
            origin = origins[number % len(origins)]
            for _ in range(20):
                mutated = rng.choice(mutators_for(origin))(rng, origin)
                if mutated is not None and mutated[1] != origin.data:
                    break
            else:
                continue
            variants.append((number, origin, mutated[0], mutated[1]))
        results = run_all(args, work, variants)
    finally:
        pass

    counts = collections.Counter()
    by_kind = collections.defaultdict(collections.Counter)
    failures = []
    for (number, origin, description, data), outcomes in results:
        for mode, (outcome, stderr, command, cwd) in outcomes.items():
            counts[outcome.status] += 1
            by_kind[origin.kind][outcome.status] += 1
            if outcome.status in ("crash", "hang", "memory"):
                kept = os.path.join(out_dir, "%05d-%s" % (number, origin.name))
                shutil.copytree(cwd, kept, dirs_exist_ok=True)
                place = backtrace_place(args, command, cwd) if args.places and outcome.status == "crash" else ""
                failures.append((outcome, mode, origin, description, kept, place, stderr))

    elapsed = time.time() - started
    print("fuzzed %d variants of %d origin files in %.1f s (random state %d, %d s and %d MB per run)"
          % (len(results), len(origins), elapsed, args.random_state, args.timeout, args.memory))
    statuses = ["ok", "rejected", "crash", "hang", "memory"]
    print("%-10s" % "format" + "".join("%10s" % s for s in statuses))
    for kind in sorted(by_kind):
        print("%-10s" % kind + "".join("%10d" % by_kind[kind][s] for s in statuses))
    print("%-10s" % "all" + "".join("%10d" % counts[s] for s in statuses))
    places = collections.Counter()
    for outcome, mode, origin, description, kept, place, stderr in failures:
        last = [l for l in stderr.decode(errors="replace").splitlines() if l.strip()][-1:] or [""]
        print("%s (%s) %s [%s]: %s%s\n    kept in %s\n    last message: %s"
              % (outcome.status.upper(), outcome.detail, origin.name, mode, description,
                 " at " + place if place else "", kept, last[0][:200]))
        if place:
            places[place] += 1
    if places:
        print("distinct crash places: %d" % len(places))
        for place, n in places.most_common():
            print("  %4d  %s" % (n, place))
    if not failures:
        shutil.rmtree(work, ignore_errors=True)
    return 1 if failures else 0


def run_all(args, work, variants):
    """Runs the viewer on every variant, a few at once."""
    from concurrent.futures import ThreadPoolExecutor

    def one(variant):
        number, origin, description, data = variant
        cwd = os.path.join(work, "v%05d" % number)
        os.makedirs(cwd, exist_ok=True)
        for name, companion in origin.companions.items():
            with open(os.path.join(cwd, name), "wb") as f:
                f.write(companion)
        with open(os.path.join(cwd, origin.name), "wb") as f:
            f.write(data)
        target = origin.name
        outcomes = {}
        command = [args.viewer, "--list", target]
        outcome, stderr = run_viewer(args, command, cwd)
        outcomes["list"] = (outcome, stderr, command, cwd)
        if args.screenshot:
            command = [args.viewer, target, "--screenshot", os.path.join(cwd, "shot.png")]
            outcome, stderr = run_viewer(args, command, cwd)
            outcomes["screenshot"] = (outcome, stderr, command, cwd)
        if all(o[0].status in ("ok", "rejected") for o in outcomes.values()):
            shutil.rmtree(cwd, ignore_errors=True)
        return variant, outcomes

    with ThreadPoolExecutor(max_workers=max(1, args.jobs)) as pool:
        return list(pool.map(one, variants))


if __name__ == "__main__":
    sys.exit(main())
