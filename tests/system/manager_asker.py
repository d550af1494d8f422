"""Waits for the window manager to answer: one that is just starting has its name on the screen before it listens, and
may never show a window that a program opens in between. Fails without an answer."""

import select
import sys
import time

from Xlib import X
from Xlib.display import Display
from Xlib.protocol.event import ClientMessage

ANSWER_SECONDS = 20
ASK_EVERY_SECONDS = 0.05  # it does not hear what was asked before it listens


def main():
    display = Display()
    root = display.screen().root
    window = root.create_window(0, 0, 1, 1, 0, X.CopyFromParent, event_mask=X.PropertyChangeMask)
    asked, answer = (display.intern_atom(f"_NET_{name}") for name in ("REQUEST_FRAME_EXTENTS", "FRAME_EXTENTS"))
    request = ClientMessage(window=window, client_type=asked, data=(32, [0] * 5))
    end = time.monotonic() + ANSWER_SECONDS
    while time.monotonic() < end:
        root.send_event(request, event_mask=X.SubstructureNotifyMask | X.SubstructureRedirectMask)
        display.flush()
        select.select([display], [], [], ASK_EVERY_SECONDS)
        while display.pending_events():
            event = display.next_event()
            if event.type == X.PropertyNotify and event.atom == answer:
                return 0
    return 1


sys.exit(main())
