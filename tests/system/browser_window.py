"""The image browser on a desktop: where its cells and rows are, what they show, and the shortcuts of its boxes."""

import os

from waiting import until

TITLE, QUESTION, FILM, MAIN = "Kesh Camera", "Del ", "Film", "Velmora"
WIDTH, HEIGHT = 240, 180  # of a cell, at the window's initial size
CELLS = [(column * WIDTH, row * HEIGHT) for row in range(3) for column in range(3)] + [(2 * WIDTH, 3 * HEIGHT)]
LIST_TOP, LIST_STEP = 554, 14  # middle of the first row, and distance between rows
GROUP_X, CAMERA_X, FILE_X = 25, 69, 190
NEXT_CAPTURE = (100, 732)  # the seconds to the next capture; a click makes them five
MAIN_WIDTH = 900  # at least; the splash box of the same title is smaller
FILM_KEY, GROUP_VIEW_KEY, AUTO_KEY, SETUP_KEY, QUIT_KEY = "alt+f", "alt+g", "alt+a", "alt+s", "ctrl+q"


class BrowserWindow:
    """The window of a program just started on the desktop; it has the keyboard focus."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.number = desktop.window(TITLE)
        desktop.focus(self.number)

    def press(self, *keys):
        """Keys for this window."""
        self.desktop.focus(self.number)
        self.desktop.press(*keys)

    def _point(self, x, y):
        place = self.desktop.place(self.number)
        return place.x + x, place.y + y

    def colour(self, cell):
        """(red, green, blue) of a cell's picture, away from where a click leaves the pointer."""
        x, y = CELLS[cell]
        return self.desktop.screen.colour(*self._point(x + WIDTH // 4, y + HEIGHT // 4))

    def colours(self):
        return [self.colour(cell) for cell in range(10)]

    def framed(self):
        """The cells with a frame, which is blue."""
        corners = [self.desktop.screen.colour(*self._point(x + 1, y + 1)) for x, y in CELLS]
        return [cell for cell, (red, _, blue) in enumerate(corners) if blue > red + 60]

    def wait_for(self, what, value, seconds=20):
        """what: one of the functions above."""
        until(lambda: what() == value, seconds, lambda: f"{value} (there is {what()})")

    def click_cell(self, cell, button=1, times=1):
        x, y = CELLS[cell]
        self.desktop.click(self.number, (x + WIDTH // 2, y + HEIGHT // 2), button, times)

    def click_row(self, x, row, times=1):
        """x: of one of the lists."""
        self.desktop.click(self.number, (x, LIST_TOP + row * LIST_STEP), times=times)

    def capture_soon(self):
        """Makes the program fetch every camera that is not in automatic mode, within about six seconds."""
        self.desktop.click(self.number, NEXT_CAPTURE)


class Opener:
    """What the program hands to the desktop: recorded by a program named xdg-open that writes down its
    arguments."""

    def __init__(self, house):
        self._file = house.root / "opened"
        folder = house.root / "bin"
        folder.mkdir()
        script = folder / "xdg-open"
        script.write_text(f'#!/bin/sh\nprintf "%s\\n" "$@" >>"{self._file}"\n')
        script.chmod(0o755)
        self._path = f"{folder}:{os.environ.get('PATH', '/usr/bin:/bin')}"

    def environment(self):
        return {"PATH": self._path}

    def opened(self):
        return self._file.read_text(encoding="utf-8").splitlines() if self._file.exists() else []
