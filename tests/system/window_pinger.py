"""Asks a window's program whether it is there, as a window manager does, and waits for the answer: by then, the program
has seen all that the X server told it before. It is asked twice, since it may answer before it has done what it does
about the rest. A program that does not say that it answers is not asked. Called with the window's number; fails without
an answer."""

import select
import sys
import time

from Xlib import X
from Xlib.display import Display
from Xlib.protocol.event import ClientMessage

ANSWER_SECONDS = 20
KIND = 0x7F  # of an event; the other bit says that a program sent it


def main():
    display = Display()
    root = display.screen().root
    # the answer goes to the window manager; the toolkit also sends it to those who ask for this
    root.change_attributes(event_mask=X.StructureNotifyMask | X.SubstructureNotifyMask)
    window = display.create_resource_object("window", int(sys.argv[1]))
    protocols, ping = (display.intern_atom(name) for name in ("WM_PROTOCOLS", "_NET_WM_PING"))
    if ping not in window.get_wm_protocols():
        return 0
    data = [ping, X.CurrentTime, window.id, 0, 0]
    request = ClientMessage(window=window, client_type=protocols, data=(32, data))
    end = time.monotonic() + ANSWER_SECONDS
    for _ in range(2):
        window.send_event(request, event_mask=X.NoEventMask)
        display.flush()
        if not hears(display, data[:3], end):
            return 1
    return 0


def hears(display, answer, end):
    while time.monotonic() < end:
        while display.pending_events():
            event = display.next_event()
            if event.type & KIND == X.ClientMessage and list(event.data[1][:3]) == answer:
                return True
        select.select([display], [], [], max(0, end - time.monotonic()))
    return False


sys.exit(main())
