#!/usr/bin/env python3
"""The user's hands on an X display: presses real buttons and keys, which programs under Wine cannot do.

Listens on a port of this machine, and writes its number into a file. A client sends lines, and gets one line back for each
when the display has handled it:

    press N, release N, click N   a button: 1 left, 2 wheel, 3 right, 4 and 5 wheel turned up and down, 6 and 7 tilted left and
                                  right, 8 back, 9 forward
    flick N TIMES                 the wheel (4 or 5) turned by six notches, this many times, 150 ms apart
    move X Y                      the pointer, in pixels of the screen
    keydown NAME, keyup NAME      a key, by its X name (Shift_L, F12, a)
    focus ID                      the keyboard goes to the window with this number
    under                         answers with the number of the window under the pointer
    pixels X Y WIDTH HEIGHT       answers with the colours there, as RRGGBB, one after the other
    letgo                         releases everything that this program still holds
    when LINE                     obeys a line; answers with the time just before, as a reading of Wine's performance counter

When a client disconnects, everything that it holds is released.

Usage: x_input.py PORT-FILE
"""
import ctypes
import pathlib
import socket
import sys
import time

Z_PIXMAP = 2
REVERT_TO_PARENT = 2
CURRENT_TIME = 0
IS_VIEWABLE = 2
NOTCHES_OF_FLICK = 6
PAUSE_BETWEEN_FLICKS = 150  # milliseconds
NANOSECONDS_OF_COUNT = 100  # Wine counts these of the raw monotonic clock
ALL_PLANES = ctypes.c_ulong(-1)


class Image(ctypes.Structure):
    """The beginning of Xlib's XImage."""

    _fields_ = [(name, ctypes.c_int) for name in ("width", "height", "xoffset", "format")]
    _fields_ += [("data", ctypes.POINTER(ctypes.c_ubyte))]
    _fields_ += [
        (name, ctypes.c_int)
        for name in ("byte_order", "bitmap_unit", "bitmap_bit_order", "bitmap_pad", "depth", "bytes_per_line")
    ]


class WindowAttributes(ctypes.Structure):
    """Xlib's XWindowAttributes."""

    _fields_ = [(name, ctypes.c_int) for name in ("x", "y", "width", "height", "border_width", "depth")]
    _fields_ += [("visual", ctypes.c_void_p), ("root", ctypes.c_ulong)]
    _fields_ += [(name, ctypes.c_int) for name in ("window_class", "bit_gravity", "win_gravity", "backing_store")]
    _fields_ += [(name, ctypes.c_ulong) for name in ("backing_planes", "backing_pixel")]
    _fields_ += [("save_under", ctypes.c_int), ("colormap", ctypes.c_ulong)]
    _fields_ += [("map_installed", ctypes.c_int), ("map_state", ctypes.c_int)]
    _fields_ += [("rest", ctypes.c_long * 8)]


class Display:
    def __init__(self) -> None:
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.xtst = ctypes.CDLL("libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XStringToKeysym.restype = ctypes.c_ulong
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XGetImage.restype = ctypes.POINTER(Image)
        display = self.x11.XOpenDisplay(None)
        if not display:
            sys.exit("x_input: there is no display")
        self.display = ctypes.c_void_p(display)
        self.x11.XAutoRepeatOff(self.display)
        # An error must not end this program, since a window may have closed.
        self.on_error = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda display, event: 0)
        self.x11.XSetErrorHandler(self.on_error)
        self.held: set[tuple[str, str]] = set()

    def button(self, number: str, is_press: bool, delay: int = 0) -> None:
        self.xtst.XTestFakeButtonEvent(self.display, int(number), is_press, ctypes.c_ulong(delay))
        self.note("release", number, is_press)

    def key(self, name: str, is_press: bool) -> None:
        symbol = self.x11.XStringToKeysym(name.encode())
        code = self.x11.XKeysymToKeycode(self.display, ctypes.c_ulong(symbol)) & 0xFF
        if code == 0:
            raise ValueError(f"no key is named {name}")
        self.xtst.XTestFakeKeyEvent(self.display, code, is_press, ctypes.c_ulong(0))
        self.note("keyup", name, is_press)

    def note(self, undoing: str, what: str, is_press: bool) -> None:
        (self.held.add if is_press else self.held.discard)((undoing, what))

    def move(self, x: str, y: str) -> None:
        self.xtst.XTestFakeMotionEvent(self.display, -1, int(x), int(y), ctypes.c_ulong(0))

    def click(self, number: str) -> None:
        self.button(number, True)
        self.button(number, False)

    # The display itself makes the pauses, so that a busy machine does not stretch them.
    def flick(self, number: str, times: str) -> None:
        for flick in range(int(times)):
            for notch in range(NOTCHES_OF_FLICK):
                self.button(number, True, PAUSE_BETWEEN_FLICKS if flick > 0 and notch == 0 else 0)
                self.button(number, False)

    def let_go(self) -> None:
        for command, what in list(self.held):
            self.obey([command, what])

    def focus(self, window: str) -> str:
        number = ctypes.c_ulong(int(window))
        if not self.is_viewable(number):
            return "error not shown"
        self.x11.XSetInputFocus(self.display, number, REVERT_TO_PARENT, ctypes.c_ulong(CURRENT_TIME))
        return "ok"

    def under(self) -> str:
        root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))
        windows = [ctypes.c_ulong() for _ in range(2)]
        numbers = [ctypes.c_int() for _ in range(5)]
        self.x11.XQueryPointer(self.display, root, *map(ctypes.byref, windows), *map(ctypes.byref, numbers))
        return str(windows[1].value)

    def is_viewable(self, window: ctypes.c_ulong) -> bool:
        attributes = WindowAttributes()
        self.x11.XGetWindowAttributes(self.display, window, ctypes.byref(attributes))
        return attributes.map_state == IS_VIEWABLE

    def pixels(self, *place: str) -> str:
        left, top, width, height = map(int, place)
        root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))
        image = self.x11.XGetImage(self.display, root, left, top, width, height, ALL_PLANES, Z_PIXMAP)
        line = image.contents.bytes_per_line
        data = bytes(image.contents.data[: line * height])
        self.x11.XFree(image.contents.data)
        self.x11.XFree(image)
        return "".join(data[row * line + 4 * x : row * line + 4 * x + 3][::-1].hex()
                       for row in range(height) for x in range(width))

    def when(self, *words: str) -> str:
        moment = time.clock_gettime_ns(time.CLOCK_MONOTONIC_RAW) // NANOSECONDS_OF_COUNT
        self.obey(list(words))
        return str(moment)

    def obey(self, words: list[str]) -> str:
        commands = {
            "press": lambda number: self.button(number, True),
            "release": lambda number: self.button(number, False),
            "click": self.click,
            "flick": self.flick,
            "move": self.move,
            "keydown": lambda name: self.key(name, True),
            "keyup": lambda name: self.key(name, False),
            "focus": self.focus,
            "under": self.under,
            "letgo": self.let_go,
            "when": self.when,
            "pixels": self.pixels,
        }
        answer = commands[words[0]](*words[1:])
        self.x11.XSync(self.display, False)
        return answer or "ok"


def serve(display: Display, client: socket.socket) -> None:
    with client, client.makefile("rw", newline="\n") as lines:
        for line in lines:
            try:
                answer = display.obey(line.split())
            except (KeyError, TypeError, ValueError, IndexError) as fault:
                answer = f"error {fault}"
            lines.write(answer + "\n")
            lines.flush()


def main() -> None:
    display = Display()
    with socket.create_server(("127.0.0.1", 0)) as server:
        port_file = pathlib.Path(sys.argv[1])
        port_file.with_suffix(".new").write_text(str(server.getsockname()[1]))
        port_file.with_suffix(".new").rename(port_file)
        while True:
            client, _ = server.accept()
            client.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            try:
                serve(display, client)
            except OSError:
                pass  # the client was killed
            display.obey(["letgo"])


main()
