"""Prints the number of each window for which its program asks for the keyboard focus, as the window manager hears it;
starts with a line "listening"."""

from Xlib import X
from Xlib.display import Display

KIND = 0x7F  # of an event; the other bit says that a program sent it


def main():
    display = Display()
    # the toolkit sends its requests to the window manager and to those who ask for this
    display.screen().root.change_attributes(event_mask=X.StructureNotifyMask | X.SubstructureNotifyMask)
    display.sync()
    asked = display.intern_atom("_NET_ACTIVE_WINDOW")
    print("listening", flush=True)
    while True:
        event = display.next_event()
        if event.type & KIND == X.ClientMessage and event.client_type == asked:
            print(event.window.id, flush=True)


main()
