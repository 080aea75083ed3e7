"""A display of a test's own, and a hand on its mouse and keyboard: what is sent are the display's real events."""

import ctypes
import os
import subprocess
import time

VIEWABLE = 2
INT, LONG, POINTER = ctypes.c_int, ctypes.c_ulong, ctypes.c_void_p


class Attributes(ctypes.Structure):
    """XWindowAttributes, in the order of Xlib's header."""

    _fields_ = [("x", INT), ("y", INT), ("width", INT), ("height", INT), ("border_width", INT), ("depth", INT),
                ("visual", POINTER), ("root", LONG), ("kind", INT), ("bit_gravity", INT), ("win_gravity", INT),
                ("backing_store", INT), ("backing_planes", LONG), ("backing_pixel", LONG), ("save_under", INT),
                ("colormap", LONG), ("map_installed", INT), ("map_state", INT), ("all_event_masks", LONG),
                ("your_event_mask", LONG), ("do_not_propagate_mask", LONG), ("override_redirect", INT),
                ("screen", POINTER)]


class Window:
    """One window that is shown; places are its pixels."""

    def __init__(self, display, identifier, attributes):
        self.display, self.identifier = display, identifier
        self.x, self.y, self.width, self.height = attributes.x, attributes.y, attributes.width, attributes.height

    def focus(self):
        """Without a window manager nobody else gives it the keyboard."""
        self.display.x.XSetInputFocus(self.display.handle, LONG(self.identifier), 2, LONG(0))
        self.display.flush()

    def move(self, x, y):
        self.display.test.XTestFakeMotionEvent(self.display.handle, -1, int(self.x + x), int(self.y + y), LONG(0))
        self.display.flush()

    def button(self, number, down):
        self.display.test.XTestFakeButtonEvent(self.display.handle, number, int(down), LONG(0))
        self.display.flush()

    def click(self, x, y):
        self.move(x, y)
        self.button(1, True)
        self.button(1, False)

    def drag(self, start, end, steps=8):
        self.move(*start)
        self.button(1, True)
        for i in range(1, steps + 1):
            self.move(start[0] + (end[0] - start[0]) * i / steps, start[1] + (end[1] - start[1]) * i / steps)
        self.button(1, False)

    def press(self, name, *held):
        """A key by its name in X ("a", "Return", "period"), with others held down."""
        codes = [self.display.code_of(each) for each in (*held, name)]
        for code in codes:
            self.display.test.XTestFakeKeyEvent(self.display.handle, code, 1, LONG(0))
        for code in reversed(codes):
            self.display.test.XTestFakeKeyEvent(self.display.handle, code, 0, LONG(0))
        self.display.flush()
        time.sleep(0.01)  # a key pressed again within two milliseconds is taken for one that is held


class XDisplay:
    """Xvfb, until it is closed. `name` is what DISPLAY is to be."""

    def __init__(self, size="1300x1100x24"):
        reading, writing = os.pipe()
        words = ["Xvfb", "-displayfd", str(writing), "-screen", "0", size, "-nolisten", "tcp"]
        self.server = subprocess.Popen(words, stderr=subprocess.DEVNULL, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as channel:
            self.name = ":" + channel.readline().strip()
        self.x, self.test = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
        self.x.XOpenDisplay.restype = POINTER
        self.x.XDefaultRootWindow.restype = LONG
        self.x.XStringToKeysym.restype = LONG
        self.handle = POINTER(self.x.XOpenDisplay(self.name.encode()))
        if not self.handle:
            self.stop_server()
            raise OSError("Xvfb cannot be used: it is one of the packages of tools/setup")

    def close(self):
        self.x.XCloseDisplay(self.handle)
        self.stop_server()

    def stop_server(self):
        self.server.terminate()
        self.server.wait()

    def flush(self):
        self.x.XSync(self.handle, 0)

    def code_of(self, name):
        return self.x.XKeysymToKeycode(self.handle, LONG(self.x.XStringToKeysym(name.encode())))

    def windows(self):
        """Every window that is shown, the topmost last."""
        root, parent, count, children = LONG(), LONG(), ctypes.c_uint(), ctypes.POINTER(LONG)()
        desktop = LONG(self.x.XDefaultRootWindow(self.handle))
        self.x.XQueryTree(self.handle, desktop, ctypes.byref(root), ctypes.byref(parent), ctypes.byref(children),
                          ctypes.byref(count))
        found = []
        for identifier in children[:count.value]:
            known = Attributes()
            self.x.XGetWindowAttributes(self.handle, LONG(identifier), ctypes.byref(known))
            if known.map_state == VIEWABLE and known.width > 100:
                found.append(Window(self, identifier, known))
        if children:
            self.x.XFree(children)
        return found
