"""Pictures of one colour, written here so that a test knows every pixel, and pictures that are broken or made to
exhaust their reader."""

import random
import struct
import zlib

PNG_SIGNATURE = b"\x89PNG\r\n\x1a\n"
RGB, DEEP_RGB = (8, 2), (16, 2)  # bits a colour, colour type
FILLER_BYTES = 3000  # a camera's picture has at least 1000


def png_chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, pixels, form=RGB):
    """pixels: the unpacked lines, or their compressed form as an iterable of parts."""
    packed = zlib.compress(pixels) if isinstance(pixels, bytes) else b"".join(pixels)
    filler = random.Random(width).randbytes(FILLER_BYTES)
    return (
        PNG_SIGNATURE
        + png_chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, *form, 0, 0, 0))
        + png_chunk(b"fiLl", filler)
        + png_chunk(b"IDAT", packed)
        + png_chunk(b"IEND", b"")
    )


def plain(colour, width=64, height=48):
    """A picture of one colour, (red, green, blue)."""
    return png(width, height, (b"\0" + bytes(colour) * width) * height)


def colour_of(number):
    """A colour for a picture's number, 0 to 255, different from those of other numbers and from the windows' own
    colours."""
    return 255 - number, 40 + number * 37 % 160, 20
