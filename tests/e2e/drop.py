#!/usr/bin/env python3
"""A file that another program drags onto the window opens, by the drag protocol of the display: in place of an unchanged
drawing at once, of a changed one after the question; what is no drawing is refused, and the present one stays."""
import ctypes
import os
import select
import time
import urllib.parse

import drawing
import host
from part import Hand

COPY = "XdndActionCopy"
SELECTION_REQUEST, SELECTION_NOTIFY, CLIENT_MESSAGE = 30, 31, 33


class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5)]


class SelectionRequest(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("owner", ctypes.c_ulong), ("requestor", ctypes.c_ulong),
                ("selection", ctypes.c_ulong), ("target", ctypes.c_ulong), ("property", ctypes.c_ulong),
                ("time", ctypes.c_ulong)]


class SelectionNotify(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("requestor", ctypes.c_ulong), ("selection", ctypes.c_ulong),
                ("target", ctypes.c_ulong), ("property", ctypes.c_ulong), ("time", ctypes.c_ulong)]


class Event(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("message", ClientMessage), ("request", SelectionRequest),
                ("notify", SelectionNotify), ("room", ctypes.c_long * 24)]


class Dragger:
    """The other program: a window that offers files."""

    def __init__(self):
        self.xlib = ctypes.CDLL("libX11.so.6")
        for name, result in (("XOpenDisplay", ctypes.c_void_p), ("XDefaultRootWindow", ctypes.c_ulong),
                             ("XCreateSimpleWindow", ctypes.c_ulong), ("XInternAtom", ctypes.c_ulong)):
            getattr(self.xlib, name).restype = result
        self.display = ctypes.c_void_p(self.xlib.XOpenDisplay(None))
        host.expect(self.display, "no display")
        root = ctypes.c_ulong(self.xlib.XDefaultRootWindow(self.display))
        self.window = self.xlib.XCreateSimpleWindow(self.display, root, 0, 0, 1, 1, 0, 0, 0)

    def atom(self, name):
        return self.xlib.XInternAtom(self.display, name.encode(), 0)

    def send(self, window, event):
        self.xlib.XSendEvent(self.display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(event))
        self.xlib.XFlush(self.display)

    def tell(self, window, name, *data):
        event = Event()
        event.message.type, event.message.window, event.message.message = CLIENT_MESSAGE, window, self.atom(name)
        event.message.format = 32
        for i, value in enumerate((self.window, *data)):
            event.message.data[i] = value
        self.send(window, event)

    def answer(self, request, uris):
        """Gives the names of the files to the program that asks for them."""
        reply = Event()
        reply.notify.type, reply.notify.requestor = SELECTION_NOTIFY, request.requestor
        reply.notify.selection, reply.notify.target, reply.notify.time = request.selection, request.target, request.time
        if request.target == self.atom("text/uri-list"):
            reply.notify.property = request.property
            self.xlib.XChangeProperty(self.display, ctypes.c_ulong(request.requestor), ctypes.c_ulong(request.property),
                                      ctypes.c_ulong(request.target), 8, 0, uris, len(uris))
        self.send(request.requestor, reply)

    def wait(self, name, uris):
        """Until the window under the drag says so; hands back the data of its message."""
        end = time.monotonic() + host.LIMIT
        event = Event()
        while time.monotonic() < end:
            while self.xlib.XPending(self.display):
                self.xlib.XNextEvent(self.display, ctypes.byref(event))
                if event.type == SELECTION_REQUEST:
                    self.answer(event.request, uris)
                elif event.type == CLIENT_MESSAGE and event.message.message == self.atom(name):
                    return list(event.message.data)
            select.select([self.xlib.XConnectionNumber(self.display)], [], [], 0.05)
        raise host.Failed(f"the window does not send {name}")

    def drop(self, window, x, y, *paths):
        """Drags files to a place of the screen, which is in the window, and drops them there."""
        uris = "".join(f"file://{urllib.parse.quote(os.path.abspath(path))}\r\n" for path in paths).encode()
        window = int(window)
        self.xlib.XSetSelectionOwner(self.display, ctypes.c_ulong(self.atom("XdndSelection")),
                                     ctypes.c_ulong(self.window), ctypes.c_ulong(0))
        self.tell(window, "XdndEnter", 5 << 24, self.atom("text/uri-list"))
        self.tell(window, "XdndPosition", 0, x << 16 | y, 0, self.atom(COPY))
        taken = self.wait("XdndStatus", uris)[1] & 1
        if taken:
            self.tell(window, "XdndDrop", 0, 0)
            self.wait("XdndFinished", uris)
        else:
            self.tell(window, "XdndLeave", 0)
        return taken


def main(out):
    paths = [os.path.join(out, name) for name in ("first.nrv", "第二 张.nrv", "none.nrv", "other.nrv")]
    for path in paths:
        with open(path, "wb") as file:
            file.write(b"" if path == paths[2] else drawing.empty_drawing(600))
    with host.Demo(out, host.windows_path(paths[0])) as demo:
        hand = Hand(demo, demo.find_view(demo.settled()))
        dragger = Dragger()
        place = demo.x + hand.left + 200, demo.y + hand.top + 150

        def drop(*files):
            host.expect(dragger.drop(demo.window, *place, *files), "the window takes no files")

        drop(paths[1], paths[3])
        host.wait_for("the first of the files that were dropped", lambda: demo.title().startswith("第二 张.nrv -"))

        hand.command("d", "l")
        hand.click(100, 300)
        hand.click(300, 400)
        host.wait_for("the mark of a change", lambda: "*" in demo.title())
        for key, name in (("Escape", "第二 张.nrv *"), ("n", "first.nrv -")):
            before = demo.windows()
            drop(paths[0])
            hand.answer(key, before)
            host.wait_for(f"the title {name}", lambda: demo.title().startswith(name))

        before = demo.windows()
        drop(paths[2])
        hand.answer("Return", before)
        host.expect(demo.title().startswith("first.nrv -"), f"the title {demo.title()} after a file that is no drawing")


if __name__ == "__main__":
    host.run(main)
