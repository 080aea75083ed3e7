"""The pages in a real window, used by the display's own events; what comes of it is seen from other processes."""

import json
import os
import pathlib
import plistlib
import shutil
import subprocess
import sys
import tempfile
import threading
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "support"))
from x_display import XDisplay  # noqa: E402

PROGRAM = sys.argv.pop(1)
SHIPPED = pathlib.Path(PROGRAM).parent / "3dvitrelleprefs.bundle"
DOMAIN = "var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist"
CHANGED = "com.m0rrow5.vitrelle3dtouch/prefschanged"
SUB_PAGES = ["SepSettingsCell", "SepSettingsHSCell", "BackgroundSettingsCell", "ContextMenuLabels", "Expanded3DAdjustments"]
DEVICE = "pad-13"  # tall enough for every row of a sub-page
SCREEN = (1024, 1366)
STRIP = 30
PATIENCE = float(os.environ.get("WISPEN_TEST_PATIENCE", "30"))
CONTROLS = ("UISwitch", "UISlider", "UISegmentedControl")
STOPS = (*CONTROLS, "UITextField", "UIButton", "PSTableCell")  # of the tabulator; the last is a row that leads on


class WindowUseTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="wispen-test-")
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name)
        self.root = self.path / "root"
        self.bundle = SHIPPED
        self.display = XDisplay()
        self.addCleanup(self.display.close)
        self.environment = dict(os.environ, HOME=str(self.path / "home"), DISPLAY=self.display.name)
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.heard = 0

    def wait_for(self, what, holds):
        """What holds() gives once it is true; a failure where that does not come about."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if result := holds():
                return result
            time.sleep(0.02)  # between two looks at another process, which tells nobody
        self.fail(f"{what}: it did not come about in {PATIENCE} s; on the page was {self.stored()}")

    def words(self, *words, bundle=True):
        return [PROGRAM, *words, "--root", str(self.root), *(["--bundle", str(self.bundle)] if bundle else [])]

    def start(self, *words, **more):
        process = subprocess.Popen(self.words(*words, **more), stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                   env=self.environment, cwd=self.path)

        def end():
            process.terminate()
            process.communicate()

        self.addCleanup(end)
        return process

    def open(self, page):
        self.inspect(page)  # makes the root, so that the watcher finds it
        watcher = self.start("notify", "watch", CHANGED, bundle=False)
        threading.Thread(target=self.listen, args=[watcher.stdout], daemon=True).start()
        self.application = self.start("run", page, "--device", DEVICE, "--no-home-screen")
        self.window = self.wait_for("the window", lambda: next(iter(self.display.windows()), None))
        for line in self.application.stdout:
            if line.startswith("The pages follow"):
                break
        self.window.focus()

    def listen(self, lines):
        for line in lines:
            self.heard += CHANGED in line

    def inspect(self, page):
        """The views as another process sees them that reads the same file."""
        done = subprocess.run(self.words("inspect", page, "--json", "--device", DEVICE), capture_output=True, text=True,
                              env=self.environment, cwd=self.path, timeout=120)
        self.assertEqual(done.returncode, 0, done.stderr)
        found = []

        def walk(view, row):
            row = view.get("row", {}).get("id", row)
            found.append(dict(view, inside=row))
            for subview in view.get("subviews", []):
                walk(subview, row)

        for window in json.loads(done.stdout):
            walk(window, None)
        return found

    def controls(self, page):
        """The control of each row that has one, by the row's id."""
        return {view["inside"]: view for view in self.inspect(page) if view["inside"] and view["class"] in CONTROLS}

    def place(self, view, across=0.5):
        """Where a view's middle is in the window, or another part of its width."""
        scale = min(self.window.width / SCREEN[0], (self.window.height - STRIP) / SCREEN[1])
        left = max(0, (self.window.width - SCREEN[0] * scale) // 2)
        top = STRIP + max(0, (self.window.height - STRIP - SCREEN[1] * scale) // 2)
        x, y, width, height = view["frame"]
        return left + (x + width * across) * scale, top + (y + height / 2) * scale

    def stored(self):
        path = self.root / DOMAIN
        return plistlib.loads(path.read_bytes()) if path.exists() else {}

    def use(self, page, row, do):
        """Does it, and waits for the row's new value in the file and for the other process to hear of it."""
        before, heard = self.stored().get(row), self.heard
        do()
        self.wait_for(f"{page} {row} in the file", lambda: self.stored().get(row) not in (None, before))
        self.wait_for(f"{page} {row} heard", lambda: self.heard > heard)
        return self.stored()[row]

    def work(self, page, row, control):
        """Uses the control of a row with the mouse, the way of its kind."""
        if control["class"] == "UISwitch":
            self.assertIs(self.use(page, row, lambda: self.window.click(*self.place(control))), not control["value"])
        elif control["class"] == "UISegmentedControl":
            other = 0 if control["value"] else len(control["segments"]) - 1
            across = (other + 0.5) / len(control["segments"])
            self.use(page, row, lambda: self.window.click(*self.place(control, across)))
        else:
            low, high = control["minimum"], control["maximum"]
            thumb = (control["value"] - low) / (high - low)
            value = self.use(page, row, lambda: self.window.drag(self.place(control, 0.015 + 0.97 * thumb),
                                                                 self.place(control, 0.7)))
            self.assertAlmostEqual((value - low) / (high - low), 0.7, delta=0.05)

    def walk_by_mouse(self, page):
        self.open(page)
        used = set()
        # Rows come and go with values: whatever is there in the end was used once.
        while left := [found for found in self.controls(page).items() if found[0] not in used]:
            self.work(page, *left[0])
            used.add(left[0][0])
        self.assertGreaterEqual(len(used), 5)

    def press_what_changes(self, control):
        kind = control["class"]
        if kind == "UITextField":
            self.window.press("Return")  # begins
            self.window.press("a", "Control_L")
            self.window.press("7")
            self.window.press("Return")
        else:
            at_its_end = control["value"] == control.get("maximum")
            self.window.press("space" if kind == "UISwitch" else "Left" if at_its_end else "Right")

    def walk_by_keyboard(self, page):
        self.open(page)
        stops = [view for view in self.inspect(page) if view["inside"] and view["class"] in STOPS]
        stops.sort(key=lambda view: (round(view["frame"][1] + view["frame"][3] / 2), view["frame"][0]))
        used = 0
        for stop in stops:
            self.window.press("Tab")
            if stop["class"] in ("UIButton", "PSTableCell"):
                continue
            self.use(page, stop["inside"], lambda: self.press_what_changes(stop))
            used += 1
        self.assertGreaterEqual(used, 5)

    def test_a_number_is_typed_into_the_dialog_of_its_slider(self):
        page, row = "SepSettingsCell", "lsSeparatorTrim"
        self.open(page)
        number = next(view for view in self.inspect(page) if view["inside"] == row and view.get("text") == "0.0")
        self.window.click(*self.place(number))

        def typed():
            # Until the dialog has come up, keys go to the page, which has no use for them.
            self.window.press("a", "Control_L")
            for key in ("4", "2"):
                self.window.press(key)
            self.window.press("Return")
            return self.stored().get(row) == 42

        self.wait_for("the number", typed)
        self.wait_for("the other process", lambda: self.heard > 0)


def add_walks():
    for page in SUB_PAGES:
        setattr(WindowUseTest, f"test_{page}_works_with_the_mouse_alone", lambda self, page=page: self.walk_by_mouse(page))
        setattr(WindowUseTest, f"test_{page}_works_with_the_keyboard_alone",
                lambda self, page=page: self.walk_by_keyboard(page))


add_walks()

if __name__ == "__main__":
    unittest.main()
