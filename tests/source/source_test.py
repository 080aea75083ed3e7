#!/usr/bin/env python3
"""Checks the sources themselves: python3 source_test.py PROJECT_FOLDER. What they check no compiler does."""

import re
import sys
import unittest
from collections import defaultdict
from pathlib import Path

PROJECT = Path(sys.argv[1])
SUFFIXES = {".hpp", ".cpp", ".h"}
# Whoever speaks the handles, and all there is.
SPEAKERS = ["host", "home_screen", "wispen", "cells", "colour", "controllers", "bundle"]
PARTS = ["platform", "rootpath", "device", "tests", "bench", "fuzz", *SPEAKERS]

SEND = re.compile(r'send(?:_super)?<\s*"([^"]+)"')
RAW_SEND = re.compile(r'objc::send<\s*"([^"]+)"')
ASKED = re.compile(r'selector<"([^"]+)">')

# Wrapped messages that are sent all the same: to an object whose class the sender does not know, so that no
# handle fits it.
UNTYPED = {
    "cells/XXXLabeledSliderCell.cpp": {"bundle", "floatValue"},  # the row's page; a number or a text
    "cells/XXXSegmentTableImageCell.cpp": {"bundle", "objectForKeyedSubscript:"},
    "host/foundation/file_dictionaries.cpp": {"copy", "getCString:maxLength:encoding:"},  # any key; no std::string
    "host/uikit/containers/tables/index_path.cpp": {"length"},  # an index path is not a string
}
# Where C++ meets the runtime's or the platform's C functions, which take raw pointers.
RAW_POINTERS = {
    "host/app/c_interface.cpp",
    "host/foundation/foundation_start.cpp",
    "host/foundation/notification_center.cpp",
    "host/foundation/weak_references.cpp",
    "wispen/session.cpp",
    "host/uikit/values/image.cpp",
    "platform/CoreFoundation.hpp",
    "platform/Foundation.hpp",
    "platform/UIKit/UIImage.hpp",
}


def sources(*parts):
    for part in parts:
        for path in sorted((PROJECT / part).rglob("*")):
            if path.suffix in SUFFIXES:
                yield path.relative_to(PROJECT).as_posix(), path.read_text()


def above_the_bridge(*parts):
    return ((name, text) for name, text in sources(*parts) if not name.startswith("platform/objc/"))


class HandlesTest(unittest.TestCase):
    """Everybody speaks the handles of platform/."""

    def test_no_wrapped_message_is_spelt_out(self):
        wrapped = {selector for _, text in above_the_bridge("platform") for selector in SEND.findall(text)}
        self.assertGreater(len(wrapped), 400)
        spelt, known = [], defaultdict(set)
        for name, text in sources(*SPEAKERS):
            # Who asks first whether the object answers does not know its class.
            asked = set(ASKED.findall(text))
            for selector in RAW_SEND.findall(text):
                if selector not in wrapped or selector in asked:
                    continue
                known[name].add(selector)
                if selector not in UNTYPED.get(name, ()):
                    spelt.append(f"{name}: {selector}")
        self.assertEqual(spelt, [])
        self.assertEqual(dict(known), UNTYPED, "an exception that nobody needs any more")

    def test_supers_are_found_by_the_class_itself(self):
        typed = [name for name, text in above_the_bridge("platform", *SPEAKERS) if "send_super<" in text]
        self.assertEqual(typed, [])

    def test_raw_pointers_stay_with_the_bridge(self):
        raw = {name for name, text in above_the_bridge("platform", "device", *SPEAKERS) if "abi::" in text}
        self.assertEqual(raw, RAW_POINTERS)

    def test_alloc_makes_the_class_that_it_names(self):
        # A handle inherits its base's alloc, which makes an object of the base.
        handles = {}
        for name, text in sources("platform", *SPEAKERS):
            for cls, base, body in re.findall(r"class (\w+) : public ([\w:]+) \{(.*?)\n\};", text, re.S):
                handles[cls] = "alloc()" in body or base.startswith("objc::")
        self.assertGreater(len(handles), 60)
        wrong = [f"{name}: {cls}::alloc()" for name, text in sources(*SPEAKERS, "tests")
                 for cls in re.findall(r"\b(\w+)::alloc\(\)", text) if not handles.get(cls, True)]
        self.assertEqual(wrong, [])

    def test_the_platforms_enumerations_stand_once(self):
        # What draws and what lays out knows no platform, and has words of its own.
        values = defaultdict(list)
        for name, text in sources("platform/UIKit", "host/uikit", "host/preferences", "host/app"):
            for enum, body in re.findall(r"enum (?:class )?(\w+)[^{;]*\{([^}]*)\}", text):
                body = re.sub(r"//[^\n]*", "", body)
                names = frozenset(re.sub(r"\s*=.*", "", word.strip(), flags=re.S) for word in body.split(",")) - {""}
                values[names].append(f"{enum} of {name}")
        self.assertGreater(len(values), 30)
        self.assertEqual([where for where in values.values() if len(where) > 1], [])


class FloorsTest(unittest.TestCase):
    """What may include what: cmake/layers.txt."""

    @classmethod
    def setUpClass(cls):
        cls.allowed = {}
        for line in (PROJECT / "cmake/layers.txt").read_text().splitlines():
            line = line.partition("#")[0].strip()
            if line:
                floor, _, below = line.partition(":")
                cls.allowed[floor.strip()] = set(below.split())
        cls.seen = defaultdict(set)
        for name, text in sources(*PARTS):
            for included in re.findall(r'#include "([^"]+/[^"]+)"', text):
                lower, upper = cls.floor_of(included), cls.floor_of(name)
                if lower != upper:
                    cls.seen[upper].add(lower)

    @classmethod
    def floor_of(cls, name):
        """The longest folder of the file that the list names."""
        folders = Path(name).parents
        return next((f.as_posix() for f in folders if f.as_posix() in cls.allowed), name.split("/")[0])

    def test_every_include_goes_down_an_allowed_arrow(self):
        for floor, below in sorted(self.seen.items()):
            if floor in ("tests", "bench", "fuzz"):
                continue  # these see everything
            with self.subTest(floor):
                self.assertEqual(below - self.allowed.get(floor, set()), set(), "not allowed by cmake/layers.txt")

    def test_no_arrow_is_left_over(self):
        for floor, below in self.allowed.items():
            with self.subTest(floor):
                self.assertEqual(below - self.seen[floor], set(), "nobody uses it")

    def test_no_floor_stands_on_itself(self):
        done = set()

        def walk(floor, above):
            self.assertNotIn(floor, above, "a ring of floors: " + " ".join([*above, floor]))
            if floor not in done:
                for lower in sorted(self.allowed.get(floor, ())):
                    walk(lower, [*above, floor])
                done.add(floor)

        for floor in self.allowed:
            walk(floor, [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
