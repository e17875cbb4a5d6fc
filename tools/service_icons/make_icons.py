#!/usr/bin/env python3
"""Draws the icons of the service, running and paused: make_icons.py FOLDER"""
import pathlib
import struct
import sys

SIZES = (16, 20, 24, 32, 48)
SAMPLES = 4  # in each direction, for smooth edges

BODY, EDGE, WHEEL, LINE = (245, 247, 250), (60, 66, 77), (0, 150, 70), (60, 66, 77)
PAUSED_BODY, PAUSED_EDGE, PAUSE_BAR = (225, 225, 225), (130, 130, 130), (200, 60, 30)


def in_capsule(x, y, left, top, right, bottom):
    """Whether the point lies in an upright capsule; all in a square from 0 to 1."""
    radius = (right - left) / 2
    centre = (left + right) / 2
    nearest = min(max(y, top + radius), bottom - radius)
    return (x - centre) ** 2 + (y - nearest) ** 2 <= radius**2


def colour_at(x, y, paused):
    """The colour of a point; None where the icon is transparent."""
    edge, body = (PAUSED_EDGE, PAUSED_BODY) if paused else (EDGE, BODY)
    if paused and y > 0.5 and (0.56 < x < 0.72 or 0.80 < x < 0.96):
        return PAUSE_BAR
    if not in_capsule(x, y, 0.20, 0.04, 0.80, 0.96):
        return None
    if not in_capsule(x, y, 0.27, 0.11, 0.73, 0.89):
        return edge
    if in_capsule(x, y, 0.43, 0.20, 0.57, 0.46):
        return edge if paused else WHEEL
    return LINE if not paused and (0.52 < y < 0.57 or (y < 0.20 and 0.47 < x < 0.53)) else body


def pixel(column, row, size, paused):
    """One pixel, as blue, green, red and opacity."""
    points = [((column + (i + 0.5) / SAMPLES) / size, (row + (j + 0.5) / SAMPLES) / size)
              for i in range(SAMPLES) for j in range(SAMPLES)]
    colours = [colour for colour in (colour_at(x, y, paused) for x, y in points) if colour]
    if not colours:
        return bytes(4)
    red, green, blue = (round(sum(part) / len(colours)) for part in zip(*colours))
    return bytes((blue, green, red, round(255 * len(colours) / len(points))))


def image(size, paused):
    """A bitmap as icon files hold it: rows from the bottom, then a mask of one bit a pixel, which opacity replaces."""
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    rows = b"".join(pixel(column, row, size, paused) for row in reversed(range(size)) for column in range(size))
    return header + rows + bytes((size + 31) // 32 * 4 * size)


def icon(paused):
    images = [image(size, paused) for size in SIZES]
    place = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, data in zip(SIZES, images):
        directory += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(data), place)
        place += len(data)
    return directory + b"".join(images)


folder = pathlib.Path(sys.argv[1])
folder.mkdir(parents=True, exist_ok=True)
(folder / "KvnMouseApl.ico").write_bytes(icon(paused=False))
(folder / "KvnMouseAplPaused.ico").write_bytes(icon(paused=True))
