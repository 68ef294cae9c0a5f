"""Drives the demo from outside for the end-to-end tests: one process, its window, real keys, a real pointer, pixels.

Nothing here waits for a time alone: each wait looks for a change and is bounded.
"""
import array
import contextlib
import ctypes
import os
import re
import subprocess
import sys
import time

LIMIT = 20.0  # seconds that any single wait may take
STILL = 0.3   # seconds without a change, after which nothing more is expected
CARET = 50    # pixels of a caret, at most


class Failed(Exception):
    pass


def run(main):
    """Runs a test's main function in its own working folder; prints what failed and sets the exit code."""
    try:
        main(os.environ["NR_OUT"])
    except Failed as error:
        print(f"failed: {error}", file=sys.stderr)
        sys.exit(1)


def expect(condition, text):
    if not condition:
        raise Failed(text)


def wait_for(what, test, limit=LIMIT):
    """Until test() gives something true, which it returns."""
    end = time.monotonic() + limit
    while True:
        result = test()
        if result:
            return result
        if time.monotonic() > end:
            raise Failed(f"after {limit:.0f} s there is not yet {what}")
        time.sleep(0.03)


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


@contextlib.contextmanager
def keys_for(text):
    """Puts the characters of a text that the keyboard lacks onto keys that it does not use, and takes them off again.
    xdotool would do that for the moment of each key press, and programs look up the key when that is over."""
    display = os.environ["DISPLAY"]
    old = subprocess.run(["xkbcomp", "-xkb", display, "-"], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                         stderr=subprocess.DEVNULL, timeout=LIMIT, text=True, check=True).stdout
    codes, symbols = old.split("xkb_symbols", 1)
    unused = [name for name in re.findall(r"^\s*(<I\d+>)\s*=", codes, re.M) if f"key {name}" not in symbols]
    missing = sorted({letter for letter in text if ord(letter) > 126})
    expect(len(unused) >= len(missing), "too few unused keys")
    lines = "".join(f"    key {name} {{ [ U{ord(letter):04X} ] }};\n" for name, letter in zip(unused, missing))
    begin = symbols.index("{") + 1
    changed = codes + "xkb_symbols" + symbols[:begin] + "\n" + lines + symbols[begin:]

    def load(keymap):
        subprocess.run(["xkbcomp", "-w0", "-", display], input=keymap, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=LIMIT, text=True, check=True)
    load(changed)
    try:
        yield
    finally:
        load(old)


def xdo(*arguments):
    result = subprocess.run(["xdotool", *map(str, arguments)], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, timeout=LIMIT, text=True)
    return result.returncode, result.stdout


def pixel(red, green, blue):
    """A colour as pictures hold it."""
    return red << 16 | green << 8 | blue


BLACK = pixel(0, 0, 0)
WHITE = pixel(255, 255, 255)


class Picture:
    """A grab of a rectangle of the screen, a number for each pixel."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, array.array("I", bytes(data))

    def at(self, x, y):
        return self.data[y * self.width + x]

    def row(self, y, left=0, right=None):
        return self.data[y * self.width + left:y * self.width + (self.width if right is None else right)]

    def part(self, left, top, width, height):
        """The pixels of a rectangle, row after row."""
        rows = array.array("I")
        for y in range(top, top + height):
            rows.extend(self.row(y, left, left + width))
        return rows

    def changed(self, other):
        """How many pixels differ from another picture of the same size."""
        if self.data == other.data:
            return 0
        return sum(differing(self.row(y), other.row(y)) for y in range(self.height))

    def save(self, path):
        subprocess.run(["convert", "-size", f"{self.width}x{self.height}", "-depth", "8", "bgra:-", "-alpha", "off",
                        path], input=self.data.tobytes(), timeout=LIMIT, check=False)


def differing(one, other):
    """How many pixels of two parts of one size differ."""
    return sum(a != b for a, b in zip(one, other)) if one != other else 0


class XImage(ctypes.Structure):
    """The head of Xlib's record, up to the function that frees it."""
    _fields_ = [(name, ctypes.c_int) for name in ("width", "height", "xoffset", "format")] + \
        [("data", ctypes.POINTER(ctypes.c_char))] + \
        [(name, ctypes.c_int) for name in ("byte_order", "unit", "bit_order", "pad", "depth", "bytes_per_line",
                                           "bits_per_pixel")] + \
        [(name, ctypes.c_ulong) for name in ("red", "green", "blue")] + \
        [("obdata", ctypes.c_void_p), ("create", ctypes.c_void_p),
         ("destroy", ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p))]


class Screen:
    """A connection to the display, mostly to look: a program for each picture would cost more than the demo."""

    def __init__(self):
        self.xlib = ctypes.CDLL("libX11.so.6")
        self.xlib.XOpenDisplay.restype = ctypes.c_void_p
        self.xlib.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
        self.xlib.XDefaultRootWindow.restype = ctypes.c_ulong
        self.xlib.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int, ctypes.c_uint,
                                        ctypes.c_uint, ctypes.c_ulong, ctypes.c_int]
        self.xlib.XGetImage.restype = ctypes.POINTER(XImage)
        self.display = self.xlib.XOpenDisplay(None)
        if not self.display:
            raise Failed("no display")
        self.root = self.xlib.XDefaultRootWindow(self.display)

    def grab(self, x, y, width, height):
        image = self.xlib.XGetImage(self.display, self.root, x, y, width, height, 0xFFFFFFFF, 2)
        if not image:
            raise Failed(f"no picture of {width} by {height}")
        head = image.contents
        if head.bits_per_pixel != 32 or head.bytes_per_line != 4 * width or head.red != 0xFF0000:
            raise Failed("a display of another form than 24 bits in 32")
        data = bytearray(ctypes.string_at(head.data, 4 * width * height))
        head.destroy(ctypes.cast(image, ctypes.c_void_p))
        data[3::4] = bytes(width * height)  # the byte that no colour uses
        return Picture(width, height, data)


    def repeat_keys(self, on):
        """On a busy machine a key may seem to be held, and would repeat."""
        call = self.xlib.XAutoRepeatOn if on else self.xlib.XAutoRepeatOff
        call.argtypes = [ctypes.c_void_p]
        call(self.display)
        self.xlib.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
        self.xlib.XSync(self.display, 0)


SCREEN = None


def screen():
    global SCREEN
    SCREEN = SCREEN or Screen()
    return SCREEN


def grab(x, y, width, height):
    return screen().grab(x, y, width, height)


class Demo:
    """with Demo(out, FILE) as demo: the program with its window up and painted."""
    PROGRAM = "nrvv_demo.exe"
    TITLE = "NRVectorView"
    LANGUAGE = ("--lang", "zh")

    def __init__(self, out, *arguments):
        self.out = out
        self.log = open(os.path.join(out, "demo.log"), "ab")
        said = os.path.getsize(self.log.name)
        self.start(arguments)
        try:
            screen().repeat_keys(False)
            # On a busy machine Wine now and then ends a program before its first instruction: once more then.
            begun = time.monotonic()
            try:
                self.window = wait_for("the demo's window", self.find_window)
            except Failed:
                if self.process.poll() is None or time.monotonic() - begun > 2 or os.path.getsize(self.log.name) != said:
                    raise
                print("the demo did not begin; once more")
                self.start(arguments)
                self.window = wait_for("the demo's window", self.find_window)
            self.place()
        except BaseException:
            self.stop()
            raise

    def start(self, arguments):
        program = os.path.join(os.environ["NR_BUILD"], "bin", self.PROGRAM)
        self.process = subprocess.Popen([os.environ["NR_WITH_WINE"], program, *self.LANGUAGE, *arguments],
                                        stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log,
                                        env={**os.environ, "NRVV_DEMO_DATA": windows_path(self.out)})

    def __enter__(self):
        return self

    def __exit__(self, kind, error, trace):
        if kind is not None:
            try:
                grab(0, 0, 1280, 1024).save(os.path.join(self.out, "failed.png"))
            except (Failed, subprocess.SubprocessError):
                pass
        self.stop()

    def stop(self):
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(LIMIT)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        screen().repeat_keys(True)
        self.log.close()

    def find_window(self):
        expect(self.process.poll() is None, f"the demo ended with {self.process.returncode}")
        found = xdo("search", "--onlyvisible", "--name", self.TITLE)[1].split()
        return found[-1] if found else None

    def place(self):
        geometry = dict(line.split("=") for line in xdo("getwindowgeometry", "--shell", self.window)[1].split())
        self.x, self.y = int(geometry["X"]), int(geometry["Y"])
        self.width, self.height = int(geometry["WIDTH"]), int(geometry["HEIGHT"])

    def title(self):
        return xdo("getwindowname", self.window)[1].strip()

    def windows(self):
        """All visible windows of the screen: a dialog shows as one more."""
        return set(xdo("search", "--onlyvisible", "--maxdepth", "1", "--name", ".*")[1].split())

    # --- looking

    def grab(self):
        return grab(self.x, self.y, self.width, self.height)

    def settled(self, limit=LIMIT):
        """The window's picture once it has not changed for a while, but for a caret that blinks."""
        kept = self.grab()
        since = time.monotonic()

        def still():
            nonlocal kept, since
            now = self.grab()
            if now.changed(kept) > CARET:
                since = time.monotonic()
            kept = now
            return time.monotonic() - since > STILL
        wait_for("the picture to change no more", still, limit)
        return kept

    def find_view(self, picture):
        """The rectangle (left, top, width, height) of the black drawing view, in pixels of the window."""
        column = [picture.at(self.width * 3 // 4, y) == BLACK for y in range(self.height)]
        begin, end = longest(column)
        left, right = longest([value == BLACK for value in picture.row((begin + end) // 2)])
        return left, begin, right - left, end - begin

    # --- acting

    def key(self, *keys):
        for key in keys:
            expect(xdo("key", "--clearmodifiers", key)[0] == 0, f"the key {key}")

    def type(self, text):
        expect(xdo("type", "--clearmodifiers", "--delay", "5", "--", text)[0] == 0, f"typing {text}")

    def move(self, x, y):
        """The pointer to a pixel of the window, in two steps, so that it moves in any case."""
        xdo("mousemove", "--sync", self.x + x - 2, self.y + y - 1)
        xdo("mousemove", "--sync", self.x + x, self.y + y)

    def step(self, x, y):
        """One move, seen to by the program before anything else happens."""
        xdo("mousemove", "--sync", self.x + x, self.y + y)
        self.settled()

    def press(self, button=1):
        xdo("click", button)

    def click(self, x, y, button=1):
        self.move(x, y)
        self.press(button)

    def dialog(self, before):
        """Waits for a window that was not among `before`, and gives it."""
        def new():
            return self.windows() - before
        return wait_for("a dialog", new).pop()

    def gone(self, window):
        wait_for("the dialog to close", lambda: window not in self.windows())


def longest(flags):
    """(begin, end) of the longest run of true entries."""
    best = (0, 0)
    begin = None
    for i, flag in enumerate([*flags, False]):
        if flag and begin is None:
            begin = i
        elif not flag and begin is not None:
            if i - begin > best[1] - best[0]:
                best = (begin, i)
            begin = None
    return best

