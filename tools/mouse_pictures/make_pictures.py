#!/usr/bin/env python3
"""Draws the pictures of the sample mouse as SVG files: the plain mouse, and one picture for each of its seven controls
with that control marked.

    make_pictures.py FOLDER NAME

writes FOLDER/NAME.svg and FOLDER/NAME_1.svg to FOLDER/NAME_7.svg. The page shows a picture at half this size, on the
colour of a button's face; the ground is transparent.
"""

import pathlib
import sys

WIDTH, HEIGHT = 354, 416

# The mouse is seen from above and slightly from its left, with its front at the top. Outlines share their edges: the
# two buttons and the palm rest make up the shell, the flank with the thumb buttons stands out to the left of it.
SHELL = ("M208 26 C252 26 285 42 290 96 C294 142 286 182 292 232 C300 306 282 394 204 394 "
         "C124 394 104 310 117 232 C125 184 122 146 126 96 C130 42 166 26 208 26 Z")
FLANK = ("M127 84 C110 96 92 132 87 176 C83 214 62 250 64 296 C67 346 112 388 176 391 "
         "L200 340 L150 232 L140 90 Z")
GRIP = ("M84 214 C78 244 70 264 72 298 C75 336 104 368 136 378 C114 346 104 312 108 284 C98 276 88 250 84 214 Z")
LEFT_BUTTON = ("M190 28.2 C154 31 131.4 49 127.6 97 C124 146 125.4 168 122.4 196 C142 196 168 204 182 222 "
               "C187 227 190 224 190 216 Z")
RIGHT_BUTTON = ("M226 28.2 C261 31 284.4 49 288.4 97 C291.6 138 287.2 164 288.4 194 C270 195 247 204 234 222 "
                "C229 227 226 224 226 216 Z")
SPINE = "M188.5 27 C202 25.6 214 25.6 227.5 27 L226 222 C222 236 214 244 208 244 C202 244 194 236 190 222 Z"
# Button 4 lies towards the rear, Button 5 towards the front.
BUTTON_4 = ("M90.5 200 C93 196 96 195 100 195.5 L113 197.5 C117 198.5 118.5 201 118 205 L112.5 246 "
            "C111 260 108.5 266 102 263 C90 257 84.5 226 90.5 200 Z")
BUTTON_5 = ("M117.5 121 C122 117 124.5 119 124.5 125 C124.5 146 123.5 163 121 182 C120.4 187 118 189.5 113 189 "
            "L98 187 C93.6 186.4 92 184 92.5 179.5 C95 154 103 133 117.5 121 Z")
WHEEL_CENTER = 208, 104

ACCENT, ACCENT_LIGHT, ACCENT_DARK = "#ff8a1c", "#ffc46b", "#e0590a"
RIB_ON_ACCENT = "#8a3500"

DEFS = f"""
<linearGradient id="shell" x1="0" y1="0" x2="1" y2="1">
  <stop offset="0" stop-color="#6b737d"/><stop offset=".45" stop-color="#3d434b"/>
  <stop offset="1" stop-color="#1d2126"/>
</linearGradient>
<linearGradient id="button" x1="0" y1="0" x2=".35" y2="1">
  <stop offset="0" stop-color="#868f9a"/><stop offset=".55" stop-color="#555d67"/>
  <stop offset="1" stop-color="#3f464e"/>
</linearGradient>
<linearGradient id="flank" x1="0" y1="0" x2="1" y2=".2">
  <stop offset="0" stop-color="#15181c"/><stop offset=".7" stop-color="#30353c"/><stop offset="1" stop-color="#24282d"/>
</linearGradient>
<linearGradient id="grip" x1="0" y1="0" x2="1" y2="0">
  <stop offset="0" stop-color="#0e1013"/><stop offset="1" stop-color="#262a30"/>
</linearGradient>
<linearGradient id="thumb" x1="0" y1="0" x2="1" y2=".3">
  <stop offset="0" stop-color="#5d6670"/><stop offset=".6" stop-color="#9aa4af"/><stop offset="1" stop-color="#6d7680"/>
</linearGradient>
<linearGradient id="spine" x1="0" y1="0" x2="1" y2="0">
  <stop offset="0" stop-color="#101215"/><stop offset=".5" stop-color="#2c3137"/><stop offset="1" stop-color="#0c0e10"/>
</linearGradient>
<linearGradient id="wheel" x1="0" y1="0" x2="1" y2="0">
  <stop offset="0" stop-color="#23272c"/><stop offset=".4" stop-color="#b4bdc8"/><stop offset="1" stop-color="#1b1e22"/>
</linearGradient>
<linearGradient id="tread" x1="0" y1="0" x2="0" y2="1">
  <stop offset="0" stop-color="#000" stop-opacity=".75"/><stop offset=".5" stop-color="#000" stop-opacity="0"/>
  <stop offset="1" stop-color="#000" stop-opacity=".75"/>
</linearGradient>
<radialGradient id="palm" cx=".4" cy=".68" r=".4">
  <stop offset="0" stop-color="#cfe0f5" stop-opacity=".26"/><stop offset="1" stop-color="#cfe0f5" stop-opacity="0"/>
</radialGradient>
<linearGradient id="mark" x1="0" y1="0" x2=".3" y2="1">
  <stop offset="0" stop-color="{ACCENT_LIGHT}"/><stop offset=".45" stop-color="{ACCENT}"/>
  <stop offset="1" stop-color="{ACCENT_DARK}"/>
</linearGradient>
<clipPath id="inShell"><path d="{SHELL}"/></clipPath>
<clipPath id="inGrip"><path d="{GRIP}"/></clipPath>
<linearGradient id="fade" gradientUnits="userSpaceOnUse" x1="0" y1="70" x2="0" y2="380">
  <stop offset="0" stop-color="#dbe8f7" stop-opacity="0"/><stop offset=".5" stop-color="#dbe8f7" stop-opacity=".5"/>
  <stop offset="1" stop-color="#dbe8f7" stop-opacity="0"/>
</linearGradient>
<filter id="halo" filterUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH}" height="{HEIGHT}">
  <feGaussianBlur stdDeviation="7"/>
</filter>
<filter id="shadow" filterUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH}" height="{HEIGHT}">
  <feGaussianBlur stdDeviation="9"/>
</filter>
<filter id="gloss" filterUnits="userSpaceOnUse" x="0" y="0" width="{WIDTH}" height="{HEIGHT}">
  <feGaussianBlur stdDeviation="3"/>
</filter>
"""


def slot():
    x, y = WHEEL_CENTER
    return f'<rect x="{x - 17}" y="{y - 45}" width="34" height="90" rx="16" fill="#050607"/>'


def wheel(fill="url(#wheel)", ribs="#0b0d0f", shade=0.9):
    """The scroll wheel with its tread; the ribs stand closer together where the wheel curves away."""
    x, y = WHEEL_CENTER
    body = f'<rect x="{x - 13}" y="{y - 38}" width="26" height="76" rx="12"'
    lines = "".join(f'<path d="M{x - 12} {y + dy} q12 4 24 0"/>' for dy in (-32, -26, -18, -9, 1, 11, 20, 27, 32))
    return (f'{body} fill="{fill}"/>'
            f'<g fill="none" stroke="{ribs}" stroke-width="2.6" stroke-opacity=".8">{lines}</g>'
            f'{body} fill="url(#tread)" opacity="{shade}"/>')


def mouse():
    outlines = f'<path d="{SHELL}"/><path d="{FLANK}"/>'
    grooves = "".join(f'<path d="M60 {y} q30 14 70 6"/>' for y in range(216, 392, 9))
    return f"""
<g transform="translate(4 9)" filter="url(#shadow)" opacity=".4">{outlines}</g>
<path d="{FLANK}" fill="url(#flank)"/>
<path d="{GRIP}" fill="url(#grip)"/>
<g clip-path="url(#inGrip)" fill="none" stroke="#3b424a" stroke-width="2.4">{grooves}</g>
<g fill="url(#thumb)" stroke="#0c0e10" stroke-width="2.5"><path d="{BUTTON_4}"/><path d="{BUTTON_5}"/></g>
<path d="{SHELL}" fill="url(#shell)"/>
<path d="{SHELL}" fill="url(#palm)"/>
<g fill="url(#button)"><path d="{LEFT_BUTTON}"/><path d="{RIGHT_BUTTON}"/></g>
<path d="{SPINE}" fill="url(#spine)"/>
<g fill="none" stroke="#0d0f12" stroke-width="2.4"><path d="{LEFT_BUTTON}"/><path d="{RIGHT_BUTTON}"/></g>
{slot()}{wheel()}
<g clip-path="url(#inShell)"><g fill="none" stroke-width="5" stroke-linecap="round" filter="url(#gloss)">
  <path d="M131 74 C127 130 131 178 125 228 C114 296 126 342 152 368" stroke="url(#fade)"/>
  <path d="M287 210 C293 290 284 346 250 374" stroke="url(#fade)" stroke-opacity=".7"/>
  <path d="M142 62 C152 46 166 40 182 38" stroke="#fff" stroke-opacity=".6"/>
  <path d="M236 38.5 C256 42 268 50 275 64" stroke="#fff" stroke-opacity=".5"/>
</g></g>
<path d="{SHELL}" fill="none" stroke="#0d0f12" stroke-width="2"/>"""


def glowing(shape):
    """The shape in the accent colour, ringed in white, with a soft halo behind it."""
    return (f'<g filter="url(#halo)" fill="{ACCENT}" stroke="{ACCENT}" stroke-width="14" opacity=".75">{shape}</g>'
            f'<g fill="url(#mark)" stroke="#fff" stroke-width="3" stroke-linejoin="round">{shape}</g>')


def marked_wheel(lean=0):
    x, y = WHEEL_CENTER
    ring = f'<rect x="{x - 13}" y="{y - 38}" width="26" height="76" rx="12"/>'
    return (f'<g transform="rotate({lean} {x} {y})">{glowing(ring)}{wheel("none", RIB_ON_ACCENT, 0.3)}'
            f'<g fill="none" stroke="#fff" stroke-width="3">{ring}</g></g>')


def marked_tilt(to_left):
    """The wheel leans to one side, and an arrow beside it points there."""
    x, y = WHEEL_CENTER
    arrow = (f'<path d="M{x - 73} {y} L{x - 45} {y - 25} L{x - 45} {y - 10} L{x - 27} {y - 10} '
             f'L{x - 27} {y + 10} L{x - 45} {y + 10} L{x - 45} {y + 25} Z"/>')
    mirror = "" if to_left else f' transform="translate({2 * x} 0) scale(-1 1)"'
    return f"{slot()}<g{mirror}>{marked_wheel(lean=-9)}{glowing(arrow)}</g>"


# The mark that is drawn over the plain mouse, by the number in the picture's name.
MARKS = {
    1: lambda: glowing(f'<path d="{LEFT_BUTTON}"/>'),
    2: lambda: glowing(f'<path d="{RIGHT_BUTTON}"/>'),
    3: marked_wheel,
    4: lambda: glowing(f'<path d="{BUTTON_4}"/>'),
    5: lambda: glowing(f'<path d="{BUTTON_5}"/>'),
    6: lambda: marked_tilt(True),
    7: lambda: marked_tilt(False),
}


def picture(mark=""):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" viewBox="0 0 {WIDTH} {HEIGHT}">'
            f"<defs>{DEFS}</defs><g>{mouse()}{mark}</g></svg>\n")


def main():
    folder, name = pathlib.Path(sys.argv[1]), sys.argv[2]
    folder.mkdir(parents=True, exist_ok=True)
    (folder / f"{name}.svg").write_text(picture(), encoding="utf-8")
    for number, mark in MARKS.items():
        (folder / f"{name}_{number}.svg").write_text(picture(mark()), encoding="utf-8")


if __name__ == "__main__":
    main()
