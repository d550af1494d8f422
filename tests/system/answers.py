"""What a test camera can answer: pictures that prove themselves complete, and the ways in which real cameras
fail."""

import hashlib
import random
from email.utils import formatdate

FIRST_MODIFIED = 1_000_000_000
NOISE = random.Random(7).randbytes(1 << 20)
MARK = b"\xff\xd8\xffVELMORA %8d %s\n"
MARK_BYTES = len(MARK % (0, b"0" * 64))


def checked_body(size, offset=0):
    """A body of that many bytes that starts with its own length and checksum."""
    payload = NOISE[offset : offset + size - MARK_BYTES]
    return MARK % (len(payload), hashlib.sha256(payload).hexdigest().encode()) + payload


def is_whole(data):
    payload = data[MARK_BYTES:]
    return data[:MARK_BYTES] == MARK % (len(payload), hashlib.sha256(payload).hexdigest().encode())


def next_body(server, size):
    """A body that no earlier request got, and its Last-Modified line."""
    serial = next(server.serial)
    return checked_body(size, serial % 1024), "Last-Modified: " + formatdate(FIRST_MODIFIED + serial, usegmt=True)


def fresh(size):
    """Always a new picture."""

    def answer(connection):
        body, modified = next_body(connection.server, size)
        connection.head("200 OK", "Content-Type: image/jpeg", modified, f"Content-Length: {len(body)}")
        connection.send(body)

    return answer


def slow(size, pieces, pause):
    """Always a new picture, in pieces with a pause (in seconds) before each."""

    def answer(connection):
        body, modified = next_body(connection.server, size)
        connection.head("200 OK", "Content-Type: image/jpeg", modified, f"Content-Length: {len(body)}")
        step = -(-len(body) // pieces)
        for at in range(0, len(body), step):
            if connection.pause(pause):
                return
            connection.send(body[at : at + step])

    return answer


def dated(*lines, size=20_000):
    """A picture with these header lines about its date, or none."""

    def answer(connection):
        body = checked_body(size)
        connection.head("200 OK", "Content-Type: image/jpeg", *lines, f"Content-Length: {len(body)}")
        connection.send(body)

    return answer


def hang(connection):
    connection.wait_for_hang_up()


def hang_behind_head(connection):
    connection.head("200 OK", "Content-Length: 20000")
    connection.wait_for_hang_up()


def drip(connection):
    """A byte a second; every byte comes in time, but the whole does not."""
    body = checked_body(20_000)
    connection.head("200 OK", f"Content-Length: {len(body)}")
    for at in range(len(body)):
        connection.send(body[at : at + 1])
        if connection.pause(1):
            return


def cut(connection):
    """Half of what was declared, then the connection ends."""
    body = checked_body(20_000)
    connection.head("200 OK", f"Content-Length: {len(body)}")
    connection.send(body[:10_000])


def broken_off(connection):
    cut(connection)
    connection.reset()


def wrong_length(connection):
    """One byte fewer than declared."""
    body = checked_body(20_000)
    connection.head("200 OK", f"Content-Length: {len(body) + 1}")
    connection.send(body)


def redirect_loop(connection):
    connection.head("302 Found", f"Location: {connection.path}", "Content-Length: 0")


def endless_header(connection):
    connection.send(b"HTTP/1.1 200 OK\r\n")
    while not connection.server.closing.is_set():
        connection.send(b"X-Filler: " + b"x" * 4096 + b"\r\n")


def endless_header_line(connection):
    connection.send(b"HTTP/1.1 200 OK\r\nX-Filler: ")
    while not connection.server.closing.is_set():
        connection.send(b"x" * 65536)


def endless_body(connection):
    connection.head("200 OK", "Content-Type: image/jpeg")
    while not connection.server.closing.is_set():
        connection.send(NOISE)


def long_missing_page(connection):
    page = b"<html>" + b"not here " * 5000
    connection.head("404 Not Found", "Content-Type: text/html", f"Content-Length: {len(page)}")
    connection.send(page)


def garbage(connection):
    connection.send(NOISE[:30_000])


def too_short(connection):
    connection.head("200 OK", "Content-Type: image/jpeg", "Content-Length: 999")
    connection.send(NOISE[:999])


def nothing(connection):
    """The connection ends without a word."""
