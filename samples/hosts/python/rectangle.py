"""A parameter view of a rectangle in a Python host, by ctypes alone: width and height are edited in the picture, the area
follows. Negative values are refused. After every change the drawing is stored in a buffer and read back without a window.

rectangle.py [FOLDER_OF_THE_DLLS], on Windows with a 64-bit Python.
"""
import ctypes
import os
import sys
from ctypes import POINTER, byref, c_double, c_int32, c_uint32, c_uint64, c_void_p, c_wchar_p

NRV_PARM_VIEW_CLASS = "NRVectorParmView"
NRV_STRING_TEXT, NRV_INT_PARM_BOX = 1, 12
NRV_N_EDIT_ACCEPT, NRV_N_EDIT_STORED = 0x4E0B, 0x4E0D


class NrvPoint(ctypes.Structure):
    _fields_ = [("x", c_double), ("y", c_double)]


class NrvEventHeader(ctypes.Structure):
    _fields_ = [("window", c_void_p), ("identity", c_uint64), ("code", c_uint32)]


class NrvEvent(ctypes.Structure):
    _fields_ = [("header", NrvEventHeader), ("size", c_uint32), ("answer", c_int32), ("source", c_void_p), ("id", c_uint64),
                ("ids", POINTER(c_uint64)), ("text", c_wchar_p), ("old_text", c_wchar_p), ("x", c_double), ("y", c_double),
                ("px", c_int32), ("py", c_int32), ("count", c_uint32), ("kind", c_int32), ("segment", c_int32),
                ("reason", c_int32), ("hdc", c_void_p)]


NrvCallback = ctypes.CFUNCTYPE(None, POINTER(NrvEvent), c_void_p)

# The arguments of each function; the result is an int32, 0 for success.
FUNCTIONS = {
    "NrvInitialize": [],
    "NrvErrorText": [c_int32, c_wchar_p, c_uint32, POINTER(c_uint32)],
    "NrvAddPolyline": [c_void_p, POINTER(NrvPoint), POINTER(c_double), c_uint32, c_int32, c_uint32, POINTER(c_uint64)],
    "NrvAddParm": [c_void_p, c_double, c_double, c_wchar_p, c_wchar_p, c_double, c_uint32, POINTER(c_uint64)],
    "NrvSetPoints": [c_void_p, c_uint64, POINTER(NrvPoint), c_uint32],
    "NrvSetInt": [c_void_p, c_uint64, c_int32, c_int32],
    "NrvSetString": [c_void_p, c_uint64, c_int32, c_wchar_p],
    "NrvGetParmValue": [c_void_p, c_wchar_p, c_wchar_p, c_uint32, POINTER(c_uint32)],
    "NrvSetStrictRefusal": [c_void_p, c_int32],
    "NrvZoomExtents": [c_void_p],
    "NrvBeginEdit": [c_void_p, c_uint64],
    "NrvSetCallback": [c_void_p, NrvCallback, c_void_p],
    "NrvSaveBuffer": [c_void_p, c_void_p, c_uint32, POINTER(c_uint32)],
    "NrvCreateDrawing": [POINTER(c_void_p)],
    "NrvLoadBuffer": [c_void_p, c_void_p, c_uint32, c_void_p],
    "NrvFreeDrawing": [c_void_p],
}


class View:
    def __init__(self, folder, window):
        library = ctypes.CDLL(os.path.join(folder, "NRVectorView.dll"))
        for name, arguments in FUNCTIONS.items():
            function = getattr(library, name)
            function.argtypes, function.restype, function.errcheck = arguments, c_int32, self.checked
            setattr(self, name, function)
        self.NrvInitialize()
        self.handle = window(NRV_PARM_VIEW_CLASS)
        self.callback = NrvCallback(self.on_event)  # kept, or it would be freed
        self.fill()

    def checked(self, result, function, arguments):
        if result != 0 and function is not self.NrvErrorText:
            text = ctypes.create_unicode_buffer(200)
            self.NrvErrorText(result, text, 200, byref(c_uint32()))
            raise OSError(f"{function.__name__}: {text.value}")
        return result

    def value(self, name, handle=None):
        text = ctypes.create_unicode_buffer(64)
        self.NrvGetParmValue(handle or self.handle, name, text, 64, byref(c_uint32()))
        return float(text.value)

    def fill(self):
        self.outline, self.ids = c_uint64(), {}
        self.NrvAddPolyline(self.handle, (NrvPoint * 4)(), None, 4, 1, 0xFFFFFF, byref(self.outline))
        for name, value, color in (("width", "300", 0xFFFF00), ("height", "200", 0xFFFF00), ("area", "", 0x00C800)):
            self.ids[name] = c_uint64()
            self.NrvAddParm(self.handle, 0, 0, value, name, 20, color, byref(self.ids[name]))
        self.NrvSetInt(self.handle, self.ids["area"], NRV_INT_PARM_BOX, 0)  # a result: no edit box
        self.follow()
        self.NrvSetStrictRefusal(self.handle, 1)
        self.NrvSetCallback(self.handle, self.callback, None)
        self.NrvZoomExtents(self.handle)

    def follow(self):
        w, h = self.value("width"), self.value("height")
        self.NrvSetPoints(self.handle, self.outline, (NrvPoint * 4)((0, 0), (w, 0), (w, h), (0, h)), 4)
        for name, x, y in (("width", w / 2, -10), ("height", w + 10, h / 2), ("area", w / 2, h / 2)):
            self.NrvSetPoints(self.handle, self.ids[name], (NrvPoint * 1)((x, y)), 1)
        self.NrvSetString(self.handle, self.ids["area"], NRV_STRING_TEXT, f"{w * h:g}")

    def on_event(self, pointer, _):
        event = pointer.contents
        if event.header.code == NRV_N_EDIT_ACCEPT:
            try:
                good = float(event.text) > 0
            except ValueError:
                good = False
            if not good:
                print(f"refused: {event.text} of", next(n for n, i in self.ids.items() if i.value == event.id), flush=True)
            event.answer = good
        elif event.header.code == NRV_N_EDIT_STORED and event.text != event.old_text:
            self.follow()
            self.NrvZoomExtents(self.handle)
            self.store_and_read()

    def store_and_read(self):
        size, copy = c_uint32(), c_void_p()
        self.NrvSaveBuffer(self.handle, None, 0, byref(size))
        data = ctypes.create_string_buffer(size.value)
        self.NrvSaveBuffer(self.handle, data, size, byref(size))
        self.NrvCreateDrawing(byref(copy))
        self.NrvLoadBuffer(copy, data, size, None)
        print(f"width {self.value('width'):g}, height {self.value('height'):g}, area {self.value('area'):.15g}; "
              f"read back from {size.value} bytes: area {self.value('area', copy):.15g}", flush=True)
        self.NrvFreeDrawing(copy)


def main(folder):
    import tkinter
    root = tkinter.Tk()
    root.title("Rectangle")
    frame = tkinter.Frame(root, width=640, height=480)
    frame.pack(fill="both", expand=True)
    root.update()
    user32 = ctypes.WinDLL("user32")
    user32.CreateWindowExW.restype = c_void_p
    user32.CreateWindowExW.argtypes = [c_uint32, c_wchar_p, c_wchar_p, c_uint32] + [c_int32] * 4 + [c_void_p] * 4
    child = 0x50000000  # WS_CHILD | WS_VISIBLE
    view = View(folder, lambda name: user32.CreateWindowExW(0, name, "", child, 0, 0, 640, 480, frame.winfo_id(), None, None, None))
    root.update()
    view.NrvBeginEdit(view.handle, view.ids["width"])
    root.mainloop()


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__)))
