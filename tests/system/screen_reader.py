"""Walks over what a program exposes to screen readers, and prints a line of JSON for each object: role, name and
description. Run by the system's own Python, which has the bindings:

    screen_reader.py PROGRAM"""

import json
import sys

import pyatspi


def walk(thing, depth=0):
    if thing is None or depth > 12:
        return
    print(json.dumps({"role": thing.getRoleName(), "name": thing.name, "description": thing.description}))
    for child in thing:
        walk(child, depth + 1)


for application in pyatspi.Registry.getDesktop(0):
    if application and application.name == sys.argv[1]:
        walk(application)
