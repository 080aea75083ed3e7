#!/usr/bin/env python3
"""Checks the bundle's data: python3 data_test.py BUNDLE_FOLDER ENTRY_FILE."""

import plistlib
import re
import struct
import sys
import unittest
from pathlib import Path

BUNDLE = Path(sys.argv[1])
ENTRY = Path(sys.argv[2])

SUB_PAGES = {
    "SepSettingsCell": "SepSettingsLS",
    "BackgroundSettingsCell": "BackgroundSettings",
    "ContextMenuLabels": "ContextMenuSettings",
    "Expanded3DAdjustments": "ExpandedAdjusments",
    "SepSettingsHSCell": "SepSettingsHS",
}
LISTS = ["Root", *SUB_PAGES.values()]
LANGUAGES = ["en", "de"]
DOMAIN = "com.m0rrow5.vitrelle3dtouch"
NO_INFO = "No information provided for this cell."
CELLS = {
    "WispHeader": "PSStaticTextCell",
    "XXXLabeledSliderCell": "PSSliderCell",
    "XXXSwitchWithInfoCell": "PSSwitchCell",
    "XXXSegmentTableImageCell": "PSSegmentCell",
    "WispButton": "PSButtonCell",
    "WispSlider": "PSSliderCell",
    "WispToggle": "PSSwitchCell",
    "OndrelTintCell": "PSLinkCell",
}
STORING = {"PSSwitchCell", "PSSliderCell", "PSSegmentCell", "PSLinkListCell", "PSEditTextCell"}


def page(name):
    return plistlib.loads((BUNDLE / f"{name}.plist").read_bytes())


def rows(name):
    return page(name)["items"]


def every_row():
    for name in LISTS:
        for row in rows(name):
            yield name, row


def strings(language, name):
    text = (BUNDLE / f"{language}.lproj" / f"{name}.strings").read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    pattern = r'\s*"((?:[^"\\]|\\.)*)"\s*=\s*"((?:[^"\\]|\\.)*)"\s*;'
    left_over = re.sub(pattern, "", text).strip()
    assert not left_over, f"{language} {name}: {left_over[:60]}"
    unescape = lambda s: re.sub(r"\\(.)", lambda m: {"n": "\n"}.get(m[1], m[1]), s)
    pairs = [(unescape(key), unescape(value)) for key, value in re.findall(pattern, text)]
    assert len(dict(pairs)) == len(pairs), f"{language} {name}: a key stands twice"
    return dict(pairs)


def has_image(name, scales=(1, 2, 3)):
    stem = name.removesuffix(".png")
    return all((BUNDLE / f"{stem}{'' if s == 1 else f'@{s}x'}.png").is_file() for s in scales)


def png_size(path):
    return struct.unpack(">II", path.read_bytes()[16:24])


class Data(unittest.TestCase):
    def test_names_its_principal_class_and_executable(self):
        info = plistlib.loads((BUNDLE / "Info.plist").read_bytes())
        self.assertEqual(info["NSPrincipalClass"], "WispRootListController")
        self.assertEqual(info["CFBundleExecutable"], "3dvitrelleprefs")
        self.assertEqual(info["CFBundlePackageType"], "BNDL")
        self.assertEqual(info["CFBundleDevelopmentRegion"], "en")
        self.assertEqual(sorted(info["CFBundleLocalizations"]), sorted(LANGUAGES))

    def test_entry_leads_to_the_bundle(self):
        entry = plistlib.loads(ENTRY.read_bytes())["entry"]
        self.assertEqual(entry["bundle"], "3dvitrelleprefs")
        self.assertEqual(entry["detail"], "WispRootListController")
        self.assertTrue(entry["isController"])
        self.assertTrue(has_image(entry["icon"]))

    def test_root_has_twelve_sections_and_a_first_row_that_always_shows(self):
        items = rows("Root")
        self.assertEqual(sum(row["cell"] == "PSGroupCell" for row in items), 12)
        self.assertEqual(items[0]["cell"], "PSGroupCell")
        for row in items[:2]:
            self.assertFalse({"depends", "dependsNot", "labelDependant", "key"} & row.keys())

    def test_root_links_to_every_page_and_offers_every_action(self):
        items = rows("Root")
        details = [row["detail"] for row in items if row["cell"] == "PSLinkCell"]
        self.assertEqual(sorted(details), sorted(SUB_PAGES))
        actions = {row["action"] for row in items if "action" in row}
        self.assertEqual(actions, {"showWtfChangedInThisVersion", "showWtfChangedInThisVersion2", "respring"})
        self.assertIn("disabled", [row.get("style") for row in items if row.get("cellClass") == "WispButton"])

    def test_uses_every_cell_class_on_its_kind_of_row(self):
        used = set()
        for name, row in every_row():
            if "cellClass" in row:
                used.add(row["cellClass"])
                self.assertEqual(row["cell"], CELLS[row["cellClass"]], f"{name}: {row}")
        self.assertEqual(used, set(CELLS))

    def test_uses_every_key_and_property_that_decides_about_visibility(self):
        keys = {row.get("key") for _, row in every_row()}
        for key in ("hideLabels", "dockHideLabels", "regularMode", "regularAutoColor", "regularColor",
                    "notificationMode", "notificationAutoColor", "notificationColor"):
            self.assertIn(key, keys)
        properties = {name for _, row in every_row() for name in row}
        self.assertLessEqual({"depends", "dependsNot", "labelDependant", "infoTitle", "infoMessage"}, properties)

    def test_every_row_that_stores_has_a_key_a_default_and_the_notification(self):
        for name, row in every_row():
            if row["cell"] in STORING:
                self.assertEqual(row.get("PostNotification"), f"{DOMAIN}/prefschanged", f"{name}: {row}")
                self.assertEqual(row.get("defaults"), DOMAIN, f"{name}: {row}")
                self.assertTrue(row.get("key"), f"{name}: {row}")
                self.assertIn("default", row, f"{name}: {row}")
            else:
                self.assertNotIn("key", row, f"{name}: {row}")

    def test_defaults_have_the_type_and_the_range_of_their_row(self):
        for name, row in every_row():
            default, where = row.get("default"), f"{name}: {row.get('key')}"
            if row["cell"] == "PSSwitchCell":
                self.assertIsInstance(default, bool, where)
            elif row["cell"] == "PSSliderCell":
                self.assertIsInstance(default, float, where)
                self.assertTrue(row["min"] <= default <= row["max"] and row["min"] < row["max"], where)
            elif row["cell"] in ("PSSegmentCell", "PSLinkListCell"):
                self.assertEqual(len(row["validValues"]), len(row["validTitles"]), where)
                self.assertIn(default, row["validValues"], where)

    def test_a_key_means_the_same_on_every_page(self):
        seen = {}
        for name, row in every_row():
            if "key" in row:
                meaning = (row["cell"], row["default"], row.get("validValues"))
                self.assertEqual(seen.setdefault(row["key"], meaning), meaning, f"{name}: {row['key']}")

    def test_no_page_has_the_same_id_twice(self):
        for name in LISTS:
            ids = [row.get("id") or row.get("key") for row in rows(name)]
            ids = [one for one in ids if one]
            self.assertEqual(len(ids), len(set(ids)), name)

    def test_every_image_is_there_at_every_scale(self):
        for name, row in every_row():
            if "icon" in row:
                self.assertTrue(has_image(row["icon"]), f"{name}: {row['icon']}")
            if row.get("cellClass") == "XXXSegmentTableImageCell":
                for title in row["validTitles"]:
                    self.assertTrue(has_image(title), f"{name}: {title}")
        self.assertEqual(png_size(BUNDLE / "icon.png"), (29, 29))
        self.assertEqual(png_size(BUNDLE / "icon@3x.png"), (87, 87))
        width, height = png_size(BUNDLE / "Assets/1.png")
        self.assertEqual(png_size(BUNDLE / "Assets/1@2x.png"), (2 * width, 2 * height))

    def test_every_text_is_in_every_language_and_nothing_else(self):
        for name in LISTS:
            texts = {page(name)["title"]}
            for row in rows(name):
                texts |= {row[key] for key in ("label", "footerText", "infoMessage") if key in row}
                if row.get("cellClass") != "XXXSegmentTableImageCell":
                    texts |= set(row.get("validTitles", []))
                if row.get("cellClass") in ("XXXSwitchWithInfoCell", "XXXLabeledSliderCell"):
                    texts.add(NO_INFO)
                if row.get("placeholder", "#").startswith("#") is False:
                    texts.add(row["placeholder"])
            for language in LANGUAGES:
                self.assertEqual(set(strings(language, name)), texts, f"{language} {name}")

    def test_english_says_what_the_lists_say_and_german_says_it_in_german(self):
        same_in_german = {"Wispen", "Radius", "Text", "Widgets"}
        for name in LISTS:
            self.assertTrue(all(key == value for key, value in strings("en", name).items()), name)
            for key, value in strings("de", name).items():
                self.assertTrue(value and (value != key or key in same_in_german), f"{name}: {key}")
                self.assertEqual(key.count("\\n"), value.count("\\n"), f"{name}: {key}")

    def test_line_breaks_of_messages_are_two_characters(self):
        messages = [row["infoMessage"] for _, row in every_row() if "infoMessage" in row]
        self.assertTrue(any("\\n" in message for message in messages))
        self.assertFalse(any("\n" in message for message in messages))

    def test_no_list_has_a_document_type_with_declarations(self):
        for name in [*LISTS, "Info"]:
            head = (BUNDLE / f"{name}.plist").read_text(encoding="utf-8")[:400]
            self.assertNotIn("[", head.split("<plist")[0])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
