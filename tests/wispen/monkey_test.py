"""Random use of the shipped pages: nothing that fingers and keys can do may end the program.

WISPEN_MONKEY_EVENTS says how many events (600), WISPEN_MONKEY_SEED which (1). A run that dies is shrunk to a short
script for `wispen drive`, which is printed.
"""

import os
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv.pop(1)
EVENTS = int(os.environ.get("WISPEN_MONKEY_EVENTS", "600"))
SEED = int(os.environ.get("WISPEN_MONKEY_SEED", "1"))
PAGES = ["settings", "root", "SepSettingsCell", "SepSettingsHSCell", "BackgroundSettingsCell", "ContextMenuLabels",
         "Expanded3DAdjustments"]
KEYS = ["tab", "shift+tab", "return", "escape", "left", "right", "up", "down", "space", "backspace", "home", "end",
        "page-down", "page-up", "command+a"]
LOOKS = [("appearance", ["light", "dark"]), ("language", ["en", "de", "ar", "en,de"]),
         ("device", ["phone", "phone-small", "phone-large", "pad", "pad-13"]), ("orientation", ["portrait", "landscape"]),
         ("text-size", ["XS", "L", "XXXL", "AccessibilityXXXL"]), ("direction", ["ltr", "rtl", "natural"])]
WORDS = ["0.5", "-99999", "abc", "äöü 🙂", "1e309", ";", "שלום", "#FFF", "", "nan"]


def event(chance):
    """One line of a script; places lie on a phone's screen, and sometimes beside it."""
    def place():
        return f"{chance.randint(-5, 400)} {chance.randint(-5, 860)}"

    kind = chance.random()
    if kind < 0.42:
        return "tap " + place()
    if kind < 0.56:
        return f"drag {place()} to {place()}"
    if kind < 0.68:
        return f'type "{chance.choice(WORDS)}"'
    if kind < 0.82:
        return "key " + chance.choice(KEYS)
    if kind < 0.88:
        return f"scroll {chance.choice(['up', 'down'])} {chance.randint(0, 1500)}"
    if kind < 0.92:
        return f"wait {chance.choice(['0', '0.05', '0.4', '2'])}"
    if kind < 0.94:
        return "reload"
    if kind < 0.97:
        name, values = chance.choice(LOOKS)
        return f"look {name} {chance.choice(values)}"
    return "show " + chance.choice(PAGES)


class MonkeyTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="wispen-test-")
        self.addCleanup(self.folder.cleanup)
        self.runs = 0

    def failure_of(self, script):
        """How the program ended, where it did not do every step; nothing where it did."""
        self.runs += 1
        path = pathlib.Path(self.folder.name)
        done = subprocess.run([PROGRAM, "drive", "-", "--root", str(path / f"root{self.runs}")],
                              input="\n".join(["show root", *script]), capture_output=True, text=True, cwd=path, timeout=3000,
                              env=dict(os.environ, HOME=str(path)))
        if done.returncode == 0:
            return None
        return f"status {done.returncode}\n{done.stdout[-400:]}\n{done.stderr[-3000:]}"

    def shrink(self, script):
        """Leaves out what the failure does not need, in ever smaller parts."""
        part = len(script) // 2
        while part >= 1 and self.runs < 120:
            at = 0
            while at < len(script) and self.runs < 120:
                shorter = script[:at] + script[at + part:]
                if self.failure_of(shorter):
                    script = shorter
                else:
                    at += part
            part //= 2
        return script

    def test_nothing_that_is_done_ends_the_program(self):
        chance = random.Random(SEED)
        script = [event(chance) for _ in range(EVENTS)]
        failure = self.failure_of(script)
        if failure:
            self.fail(failure + "\nThe same with:\nshow root\n" + "\n".join(self.shrink(script)))


if __name__ == "__main__":
    unittest.main()
