"""Prints a line of JSON with the new name of each object of a program whose name changes, as a screen reader would
hear of it; starts with a line "listening". Run by the system's own Python, which has the bindings:

    screen_reader_events.py PROGRAM"""

import json
import sys

import pyatspi


def tell(event):
    if event.host_application and event.host_application.name == sys.argv[1]:
        print(json.dumps(event.source.name), flush=True)


pyatspi.Registry.registerEventListener(tell, "object:property-change:accessible-name")
print("listening", flush=True)
pyatspi.Registry.start()
