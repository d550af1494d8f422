"""Tells a program that a window of its own asked for the keyboard focus, as the X server does when it asks: the program's
request comes back to it, whether the window manager obeys or not. Called with the window's number."""

import sys

from Xlib import X
from Xlib.display import Display
from Xlib.protocol.event import ClientMessage

FROM_A_PROGRAM = 1


def main():
    display = Display()
    window = display.create_resource_object("window", int(sys.argv[1]))
    asked = display.intern_atom("_NET_ACTIVE_WINDOW")
    event = ClientMessage(window=window, client_type=asked, data=(32, [FROM_A_PROGRAM, X.CurrentTime, 0, 0, 0]))
    window.send_event(event, event_mask=X.NoEventMask)
    display.sync()


main()
