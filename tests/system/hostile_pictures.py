"""Files in a camera's folder under an image's name: pictures of rare kinds, broken ones, ones made to exhaust
their reader, and things that are not files. All are written here byte by byte; none is decoded."""

import os
import struct
import zlib

from pictures import DEEP_RGB, plain, png

BASELINE, PROGRESSIVE = 0xC0, 0xC2
ADOBE_CMYK = b"Adobe\0\x64\0\0\0\0\0"
ORIENTATION_RIGHT = 6
HUGE = 30_000
LARGE_FILE_BYTES = 60_000_000  # a little less than what a camera may send


def segment(marker, data):
    return struct.pack(">BBH", 0xFF, marker, len(data) + 2) + data


def coding_tables():
    """One symbol of one bit in each table: no difference for a block's mean, no detail for the rest."""
    one_code = bytes([1] + 15 * [0]) + b"\0"
    return segment(0xDB, b"\0" + bytes([8] * 64)) + segment(0xC4, b"\0" + one_code + b"\x10" + one_code)


def jpeg(width, height, components=3, frame=BASELINE, extra=b"", scans=1):
    """A grey picture. Its data are all zero bits; a tiny one can have any number of scans."""
    parts = b"".join(bytes([number + 1, 0x11, 0]) for number in range(components))
    head = struct.pack(">BHHB", 8, height, width, components) + parts
    chosen = bytes([components]) + b"".join(bytes([number + 1, 0]) for number in range(components))
    last = 0 if frame == PROGRESSIVE else 63
    bits = 1 if frame == PROGRESSIVE else 2
    blocks = -(-width // 8) * -(-height // 8) * components
    scan = segment(0xDA, chosen + bytes([0, last, 0])) + bytes(-(-blocks * bits // 8))
    return b"\xff\xd8" + extra + coding_tables() + segment(frame, head) + scan * scans + b"\xff\xd9"


def turned_by_camera():
    """The Exif note of a camera that was held on its side."""
    entry = struct.pack(">HHIHH", 0x0112, 3, 1, ORIENTATION_RIGHT, 0)
    return segment(0xE1, b"Exif\0\0MM\0*\0\0\0\x08\0\x01" + entry + bytes(4))


def animated_gif():
    frame = b"\x21\xf9\x04\0\x0a\0\0\0\x2c\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0"
    return b"GIF89a\x01\0\x01\0\x80\0\0\0\xff\0\xff\0\0" + frame * 40 + b"\x3b"


def png_of_zeros(width, height):
    """A real picture: little to store, much to unpack."""
    packer = zlib.compressobj(9)
    line = bytes(1 + 3 * width)
    parts = [packer.compress(line) for _ in range(height)]
    return png(width, height, [*parts, packer.flush()])


def contents():
    """(what it is, bytes) of every file."""
    half = plain((10, 20, 30), 400, 300)
    return [
        ("no picture", b"<html>" + b"not here " * 500),
        ("nothing", b""),
        ("one byte", b"\xff"),
        ("cut JPEG", jpeg(800, 600)[:900]),
        ("cut PNG", half[: len(half) * 2 // 3]),
        ("JPEG head", jpeg(800, 600)[:160]),
        ("CMYK", jpeg(64, 48, components=4, extra=segment(0xEE, ADOBE_CMYK))),
        ("progressive", jpeg(64, 48, frame=PROGRESSIVE)),
        ("many scans", jpeg(1600, 1200, frame=PROGRESSIVE, scans=500)),
        ("turned", jpeg(640, 48, extra=turned_by_camera())),
        ("deep", png(40, 30, (b"\0" + bytes(6 * 40)) * 30, DEEP_RGB)),
        ("animated", animated_gif()),
        ("huge JPEG", jpeg(HUGE, HUGE)),
        ("huge JPEG head", jpeg(HUGE, HUGE)[:300]),
        ("widest JPEG", jpeg(65_500, 8)),
        ("huge PNG head", png(HUGE, HUGE, b"\0" * 100)),
        ("PNG bomb", png_of_zeros(HUGE, HUGE // 10)),
        ("endless PNG", png(2**31 - 1, 2**31 - 1, b"\0")),
        ("no width", png(0, 10, b"")),
        ("JPEG under a PNG's name", jpeg(64, 48)),
    ]


def make_large(path, head):
    """A file with far more bytes than it takes up."""
    with open(path, "wb") as file:
        file.write(head)
        file.truncate(LARGE_FILE_BYTES)


def fill(folder):
    """Writes all of it into a folder; returns how many names it has."""
    for number, (_, content) in enumerate(contents()):
        ending = "jpg" if content.startswith(b"\xff\xd8") else "png"
        (folder / f"20240102_{number:04}000203.{ending}").write_bytes(content)
    make_large(folder / "20240102_1000000203.jpg", jpeg(64, 48)[:-2])
    make_large(folder / "20240102_1001000203.png", plain((1, 2, 3)))
    for name in ("20240103_10\n10.jpg", "20240103_日本語.png", "20240103_%s%n&lt;b&gt;.png", "20240103.png.exe", "20240105"):
        (folder / name).write_bytes(plain((1, 2, 3)))
    (folder / os.fsdecode(b"20240103_\xff\xfe\x01.png")).write_bytes(plain((1, 2, 3)))
    os.mkfifo(folder / "20240104_1000000203.png")
    (folder / "20240104_1001000203.png").mkdir()
    (folder / "20240104_1002000203.png").symlink_to("gone")
    (folder / "20240104_1003000203.png").symlink_to("20240104_1003000203.png")
    (folder / "20240104_1004000203.png").symlink_to("/dev/zero")
    return len(list(folder.iterdir()))
