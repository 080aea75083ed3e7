"""Settings pages on the screen, used by touches and keys as a person would, through `wispen drive`."""

import json
import os
import pathlib
import plistlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv.pop(1)
SHIPPED = pathlib.Path(PROGRAM).parent / "3dvitrelleprefs.bundle"
DOMAIN = "var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist"
PAGE = "SepSettingsCell"  # a plain page of the framework, which reads this list:
LIST = "SepSettingsLS"


def row(cell, label, **properties):
    return {"cell": cell, "label": label, "PostNotification": "test/changed", **properties}


def group(label="", **properties):
    return {"cell": "PSGroupCell", "label": label, **properties}


class ScreenTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="wispen-test-")
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name)
        self.root = self.path / "root"
        self.bundle = self.path / "test.bundle"
        self.bundle.mkdir()
        # Only once: a loaded file must not be written over.
        shutil.copy(SHIPPED / "3dvitrelleprefs", self.bundle)
        self.write_list("Root", [row("PSLinkCell", "Sub Page", detail=PAGE)], title="Test")
        (self.bundle / "Info.plist").write_bytes(plistlib.dumps({
            "CFBundleExecutable": "3dvitrelleprefs", "CFBundleIdentifier": "test.bundle", "CFBundleName": "Test Bundle",
            "NSPrincipalClass": "WispRootListController"}))
        self.environment = dict(os.environ, HOME=str(self.path / "home"))
        self.environment.pop("XDG_DATA_HOME", None)

    def write_list(self, name, items, **more):
        (self.bundle / f"{name}.plist").write_bytes(plistlib.dumps({"items": items, **more}))

    def page(self, *items):
        self.write_list(LIST, list(items))

    def run_program(self, *words, text=None):
        return subprocess.run([PROGRAM, *map(str, words), "--root", self.root, "--bundle", self.bundle], input=text,
                              capture_output=True, text=True, timeout=120, env=self.environment, cwd=self.path)

    def drive(self, script, *options, fails=False):
        """The answers, one dictionary a step; the script begins on the page under test."""
        done = self.run_program("drive", "-", *options, text=f"show {PAGE}\n{script}")
        self.assertEqual(done.returncode, 1 if fails else 0, done.stdout[-600:] + done.stderr)
        return [json.loads(line) for line in done.stdout.splitlines()]

    def views(self, answers):
        """Every view of the last answer that holds a tree."""
        found = []

        def walk(view):
            found.append(view)
            for subview in view.get("subviews", []):
                walk(subview)

        for window in [answer for answer in answers if "windows" in answer][-1]["windows"]:
            walk(window)
        return found

    def cell(self, answers, identifier):
        return next(view for view in self.views(answers) if view.get("row", {}).get("id") == identifier)

    def stored(self):
        path = self.root / DOMAIN
        return plistlib.loads(path.read_bytes()) if path.exists() else {}

    # Rows and their values.

    def test_a_switch_stores_what_it_shows(self):
        self.page(group("Switches"), row("PSSwitchCell", "Plain", key="plain", default=True),
                  row("PSSwitchCell", "Inverted", key="inverted", negate=True, default=True))
        self.drive('expect value plain on\nexpect value inverted off\ntap Plain\nexpect value plain off\n'
                   'expect posted test/changed\ntap inverted\nexpect value inverted on')
        self.assertEqual(self.stored(), {"plain": False, "inverted": False})

    def test_a_switch_asks_before_it_stores_where_it_is_to(self):
        self.page(row("PSSwitchCell", "Danger", key="danger", confirmation={
            "prompt": "Really?", "okTitle": "Do It", "cancelTitle": "Leave It"}))
        self.drive('tap danger\nexpect text "Really?"\nexpect text "Leave It"\ntap "Leave It"\nexpect no text "Leave It"\nexpect value danger off')
        self.assertEqual(self.stored(), {})
        self.drive('tap danger\ntap "Do It"\nexpect value danger on\nexpect no text "Really?"')
        self.assertEqual(self.stored(), {"danger": True})

    def test_a_slider_keeps_to_its_range_and_its_steps(self):
        self.page(row("PSSliderCell", "Plain", key="plain", min=-5, max=5, default=0, showValue=True),
                  row("PSSliderCell", "Stepped", key="stepped", min=0, max=10, isSegmented=True, segmentCount=5))
        self.drive('drag plain to 2.5\nexpect value plain 2.5\nexpect posted test/changed\ndrag stepped to 5.5\n'
                   'expect value stepped 6\nexpect text 2.5')
        self.assertAlmostEqual(self.stored()["plain"], 2.5, delta=0.03)
        self.assertEqual(self.stored()["stepped"], 6)

    def test_a_slider_is_dragged_by_its_thumb_between_end_images(self):
        for variant in ("", "@2x", "@3x"):
            shutil.copy(SHIPPED / f"icon{variant}.png", self.bundle)
        self.page(row("PSSliderCell", "Left", key="left", leftImage="icon.png", default=0.3),
                  row("PSSliderCell", "Both", key="both", leftImage="icon.png", rightImage="icon.png", min=-5, max=5, default=0))
        for direction in ("ltr", "rtl"):
            self.drive(f"look direction {direction}\ndrag left to 0.8\ndrag both to -4\ndrag both to 3\ndrag left to 0.1\n"
                       "drag left to 0.75")
            self.assertAlmostEqual(self.stored()["left"], 0.75, delta=0.01)
            self.assertAlmostEqual(self.stored()["both"], 3, delta=0.1)

    def test_a_slider_stores_while_it_is_dragged_only_where_it_is_to(self):
        for continuous in (False, True):
            self.page(row("PSSliderCell", "Slider", key="slider", isContinuous=continuous))
            answers = self.drive("drag slider to 1\nexpect posted test/changed\ndrag slider to 0")
            times = answers[2]["times"]
            self.assertTrue(times > 5 if continuous else times == 1, times)

    def test_segments_store_the_value_behind_the_title(self):
        self.page(row("PSSegmentCell", "Size", key="size", default=20, validValues=[10, 20, 30],
                      validTitles=["Small", "Middle", "Large"]))
        self.drive("expect value size Middle\nchoose size Large\nexpect stored size 30\nexpect posted test/changed")
        self.assertEqual(self.stored(), {"size": 30})

    def test_a_choice_is_made_on_a_page_of_its_own_and_seen_on_return(self):
        self.page(row("PSLinkListCell", "Colour", key="colour", detail="PSListItemsController", default="r",
                      validValues=["r", "g", "b"], validTitles=["Red", "Green", "Blue"],
                      shortTitles=["R", "G", "B"], staticTextMessage="One of three."))
        answers = self.drive('expect value colour R\ntap Colour\nexpect page PSListItemsController\n'
                             'expect text "One of three."\ntap Green\nexpect posted test/changed\ninspect\nback\n'
                             'expect value colour G')
        ticked = [view["row"]["label"] for view in self.views(answers) if view.get("row", {}).get("checked")]
        self.assertEqual(ticked, ["Green"])
        self.assertEqual(self.stored(), {"colour": "g"})

    def test_text_is_stored_when_writing_ends(self):
        self.page(row("PSEditTextCell", "Name", key="name", placeholder="Nobody"),
                  row("PSSecureEditTextCell", "Secret", key="secret"))
        answers = self.drive('inspect\ntap name\ntype "Zoë 🙂"\nkey backspace\nkey left\ntype x\nkey return\n'
                             'expect posted test/changed\ntap secret\ntype swordfish\nkey return\ninspect')
        self.assertEqual(self.stored(), {"name": "Zoëx ", "secret": "swordfish"})
        fields = [view for view in self.views(answers) if view["class"] == "UITextField"]
        self.assertEqual({field.get("placeholder") for field in fields}, {"Nobody", None})
        self.assertNotIn("swordfish", json.dumps(answers[-1]))

    def test_writing_that_changes_nothing_stores_nothing(self):
        self.page(row("PSEditTextCell", "Name", key="name", default="as it was"))
        self.drive("tap name\nkey return\nexpect value name \"as it was\"")
        self.assertEqual(self.stored(), {})

    def test_a_value_is_told_by_its_title(self):
        self.page(row("PSTitleValueCell", "Mode", key="mode", default=2, validValues=[1, 2], validTitles=["One", "Two"]),
                  row("PSTitleValueCell", "Plain", key="plain", default="words"))
        self.drive("expect value mode Two\nexpect value plain words")

    def test_a_radio_group_holds_one_choice(self):
        self.page(group("Choice", isRadioGroup=True, key="choice", default="b", PostNotification="test/changed"),
                  *({"cell": "PSListItemCell", "label": name.upper(), "value": name} for name in "abc"))
        answers = self.drive("inspect\ntap C\nexpect posted test/changed\ninspect")
        self.assertEqual([view["row"]["label"] for view in self.views(answers) if view.get("row", {}).get("checked")],
                         ["C"])
        self.assertEqual(self.stored(), {"choice": "c"})

    def test_a_button_asks_and_then_acts(self):
        self.page(row("PSButtonCell", "Reload", action="reloadSpecifiers", confirmation={"prompt": "Sure?"}),
                  row("PSSwitchCell", "Switch", key="switch"))
        self.drive('tap Reload\nexpect text "Sure?"\nkey escape\nexpect no text "Sure?"\ntap Reload\ntap OK\n'
                   'expect no text "Sure?"\nexpect row switch')

    def test_disabled_rows_take_nothing(self):
        self.page(row("PSSwitchCell", "Off", key="off", enabled=False), row("PSEditTextCell", "No", key="no", enabled=False),
                  row("PSLinkCell", "Nowhere", detail=PAGE, enabled=False, id="nowhere"))
        answers = self.drive('tap off\nexpect value off off\ntap no\ntype x\ntap nowhere\nexpect page ' + PAGE +
                             "\nback\nexpect page WispRootListController\nshow " + PAGE + "\ninspect")
        self.assertEqual(self.stored(), {})
        self.assertFalse(self.cell(answers, "off")["row"]["enabled"])

    def test_a_page_without_groups_has_one_section(self):
        self.page(row("PSSwitchCell", "First", key="first"), group("Second Section"), row("PSSwitchCell", "Second", key="second"))
        answers = self.drive('inspect\nexpect text "SECOND SECTION"')
        first, second = (self.cell(answers, name)["frame"] for name in ("first", "second"))
        self.assertGreater(second[1], first[1] + first[3] + 30)

    def test_headers_and_footers_stand_around_their_rows(self):
        self.page(group("Above", footerText="Below, in more words than fit one line of a small phone, so that it wraps."),
                  row("PSSwitchCell", "Between", key="between"))
        answers = self.drive("inspect", "--device", "phone-small")
        texts = {view.get("text"): view["frame"] for view in self.views(answers) if view["class"] == "UILabel"}
        cell = self.cell(answers, "between")["frame"]
        above, below = texts["ABOVE"], next(frame for text, frame in texts.items() if (text or "").startswith("Below"))
        self.assertLess(above[1] + above[3], cell[1] + 1)
        self.assertGreater(below[1], cell[1] + cell[3])
        self.assertGreater(below[3], 30)
        self.assertEqual(above[0], below[0])

    def test_heights_are_the_lists(self):
        self.page(row("PSSwitchCell", "Tall", key="tall", height=80), row("PSSwitchCell", "Usual", key="usual"))
        answers = self.drive("inspect")
        self.assertEqual(self.cell(answers, "tall")["frame"][3], 80)
        self.assertEqual(self.cell(answers, "usual")["frame"][3], 44)

    def test_icons_move_the_title_and_the_separator(self):
        for variant in ("", "@2x", "@3x"):
            shutil.copy(SHIPPED / f"icon{variant}.png", self.bundle)
        self.page(row("PSSwitchCell", "With", key="with", icon="icon.png"), row("PSSwitchCell", "Without", key="without"))
        answers = self.drive("inspect")

        def title_of(identifier):
            cell = self.cell(answers, identifier)
            return next(view["frame"][0] for view in cell["subviews"][0]["subviews"] if view["class"] == "UILabel")

        self.assertEqual(title_of("with") - title_of("without"), 44)

    # The way about.

    def test_the_front_page_leads_to_the_bundle_and_back(self):
        self.page(row("PSSwitchCell", "Switch", key="switch"))
        self.drive('show settings\nexpect page SettingsFrontPage\ntap "Test Bundle"\nexpect page WispRootListController\n'
                   f'tap "Sub Page"\nexpect page {PAGE}\nexpect text "Sub Page"\nback\nback\nexpect page SettingsFrontPage')

    def test_the_edge_goes_back_under_a_finger(self):
        self.page(row("PSSwitchCell", "Switch", key="switch"))
        self.drive(f"drag 3 400 to 60 400\nexpect page {PAGE}\ndrag 3 400 to 380 400\nexpect page WispRootListController")

    def test_every_control_works_by_keyboard(self):
        self.page(row("PSSwitchCell", "Switch", key="switch"),
                  row("PSSliderCell", "Slider", key="slider", default=0.5),
                  row("PSSegmentCell", "Segments", key="segments", default=1, validValues=[1, 2, 3], validTitles=["1", "2", "3"]),
                  row("PSEditTextCell", "Text", key="text"))

        # From wherever the focus begins, tab comes by every control once.
        script = []
        for step in range(8):
            script += ["key tab", "inspect"]
        answers = self.drive("\n".join(script))
        seen = []
        for answer in (answer for answer in answers if "windows" in answer):
            focused = [view for view in self.views([answer]) if view.get("focused")]
            seen.append(focused[0]["class"] if focused else None)
        for cls in ("UISwitch", "UISlider", "UISegmentedControl", "UITextField"):
            self.assertIn(cls, seen)
        to = {cls: "\n".join(["key tab"] * (seen.index(cls) + 1)) + "\n" for cls in seen if cls}
        self.drive(to["UISwitch"] + "key space\nexpect value switch on")
        self.drive(to["UISlider"] + "key right\nexpect posted test/changed")
        self.drive(to["UISegmentedControl"] + "key right\nexpect stored segments 2")
        self.drive(to["UITextField"] + "key return\ntype words\nkey return\nexpect value text words")
        stored = self.stored()
        self.assertTrue(stored["switch"])
        self.assertGreater(stored["slider"], 0.5)
        self.assertEqual((stored["segments"], stored["text"]), (2, "words"))

    def test_ten_thousand_rows_make_only_what_is_seen(self):
        self.page(*(row("PSSwitchCell", f"Row {i}", key=f"row{i}") for i in range(10_000)))
        answers = self.drive("inspect\nscroll down 200000\ninspect\nexpect row row9999\nscroll to row9999\n"
                             "tap row9999\nexpect value row9999 on")
        for answer in (answer for answer in answers if "windows" in answer):
            cells = [view for view in self.views([answer]) if "row" in view]
            self.assertLess(len(cells), 40)
        self.assertEqual(self.stored(), {"row9999": True})

    # Looks.

    def test_the_look_changes_in_place(self):
        (self.bundle / "de.lproj").mkdir()
        (self.bundle / "de.lproj" / f"{LIST}.strings").write_text('"Switch" = "Schalter";\n"Top" = "Oben";\n')
        (self.bundle / "de.lproj" / "Root.strings").write_text('"Sub Page" = "Unterseite";\n')
        self.page(group("Top"), row("PSSwitchCell", "Switch", key="switch"), row("PSEditTextCell", "Text", key="text"))
        answers = self.drive("tap switch\nlook language de\nexpect text Schalter\nexpect text OBEN\nexpect text Unterseite\n"
                             "look appearance dark\nexpect colour 5 500 #000000\nlook appearance light\n"
                             "expect colour 5 500 #F2F2F7\nlook device pad\nlook orientation landscape\ninspect\n"
                             f"look direction rtl\ninspect\nexpect value switch on\nexpect page {PAGE}")
        ways = [self.cell([answer], "switch") for answer in answers if "windows" in answer]

        def switch_side(cell):
            switch = next(view for view in cell["subviews"] if view["class"] == "UISwitch")
            return switch["frame"][0] > cell["frame"][0] + cell["frame"][2] / 2

        self.assertEqual([switch_side(cell) for cell in ways], [True, False])

    def test_no_text_is_cut_at_the_largest_size(self):
        self.page(group("A Longer Header Than Usual"), row("PSSwitchCell", "A title of several words", key="a"),
                  row("PSTitleValueCell", "Another title", key="b", default="and its value"))
        answers = self.drive("inspect", "--text-size", "AccessibilityXXXL", "--device", "phone-small")
        for identifier in ("a", "b"):
            cell = self.cell(answers, identifier)
            labels = [view for view in cell["subviews"][0]["subviews"] if view["class"] == "UILabel"]
            self.assertGreater(cell["frame"][3], 100)
            for label in labels:
                self.assertLessEqual(label["frame"][1] + label["frame"][3], cell["frame"][1] + cell["frame"][3] + 0.5)

    # Files.

    def test_pages_follow_their_files_and_survive_broken_ones(self):
        self.page(row("PSSwitchCell", "Old", key="old"))
        file = self.bundle / f"{LIST}.plist"
        with subprocess.Popen([PROGRAM, "drive", "-", "--follow", "--root", self.root, "--bundle", self.bundle],
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, env=self.environment,
                              cwd=self.path) as driving:
            def step(words):
                driving.stdin.write(words + "\n")
                driving.stdin.flush()
                return json.loads(driving.stdout.readline())

            self.assertTrue(step(f"show {PAGE}")["ok"])
            self.assertTrue(step("expect row Old")["ok"])
            self.page(row("PSSwitchCell", "New", key="new"))
            self.assertTrue(step("wait 0.2")["ok"])
            self.assertTrue(step("expect row New")["ok"])
            good = file.read_bytes()
            file.write_bytes(good[:-20])
            self.assertTrue(step("wait 0.2")["ok"])
            self.assertTrue(step(f"expect text {LIST}.plist")["ok"])
            self.assertTrue(step("expect row New")["ok"])
            file.write_bytes(good)
            self.assertTrue(step("wait 0.2")["ok"])
            self.assertTrue(step(f"expect no text {LIST}.plist")["ok"])
            driving.stdin.close()
            self.assertEqual(driving.wait(30), 0)

    def test_pages_are_built_again_from_changed_lists(self):
        self.page(row("PSSwitchCell", "Old", key="old"))
        self.drive("expect row Old\nreload\nexpect row Old")
        self.page(row("PSSwitchCell", "New", key="new"))
        self.drive("expect row New\nexpect no row Old")

    def picture_size(self, name):
        return struct.unpack(">II", (self.path / name).read_bytes()[16:24])

    def test_a_snapshot_has_the_devices_pixels_or_the_pages_length(self):
        self.page(*(row("PSSwitchCell", f"Row {i}", key=f"row{i}") for i in range(60)))
        self.assertEqual(self.run_program("snapshot", PAGE, "-o", "a.png", "--device", "phone-small").returncode, 0)
        self.assertEqual(self.picture_size("a.png"), (750, 1334))
        self.assertEqual(self.run_program("snapshot", PAGE, "-o", "b.png", "--scale", "1", "--full-length").returncode, 0)
        width, height = self.picture_size("b.png")
        self.assertEqual(width, 390)
        self.assertGreater(height, 60 * 44)
        self.assertEqual(self.run_program("snapshot", "--all", "-o", "shots").returncode, 0)
        self.assertEqual(sorted(path.name for path in (self.path / "shots").iterdir()),
                         ["Root.png", f"{LIST}.png", "Settings.png"])

    def test_wrong_wishes_get_one_sentence(self):
        self.page(row("PSSwitchCell", "Switch", key="switch"))
        for words, status, reason in (
                (["snapshot", "NoSuchPage"], 1, "there is no page"), (["snapshot", "--scale", "9"], 1, "scale"),
                (["snapshot", "-o", "/nowhere/at/all.png"], 1, "/nowhere"), (["snapshot", "--device", "toaster"], 1, "toaster"),
                (["snapshot", "--appearance", "blue"], 1, "blue"), (["snapshot", "--text-size", "huge"], 1, "huge"),
                (["drive", "no-such-script"], 1, "no-such-script")):
            done = self.run_program(*words)
            self.assertEqual(done.returncode, status, words)
            self.assertIn(reason, done.stderr, words)
        self.assertFalse(list(self.path.glob("*.png")))

    def test_a_script_with_an_error_does_nothing(self):
        self.page(row("PSSwitchCell", "Switch", key="switch"))
        for script, reason in (("tap switch\ntpa switch", 'line 2: there is no step "tpa"'), ('tap "switch', "quote"),
                               ("drag switch", "usage: drag ROW to VALUE | drag X Y to X Y"), ("wait long", "wait SECONDS")):
            done = self.run_program("drive", "-", text=script)
            self.assertEqual(done.returncode, 2, script)
            self.assertIn(reason, done.stderr)
        self.assertEqual(self.stored(), {})

    def test_the_first_failure_ends_a_script_and_leaves_its_picture(self):
        self.page(row("PSSwitchCell", "Switch", key="switch"))
        answers = self.drive("expect value switch on\ntap switch", "--failure-picture", "moment.png", fails=True)
        self.assertEqual([answer["ok"] for answer in answers], [True, False])
        self.assertIn("off", answers[-1]["error"])
        self.assertEqual(self.picture_size("moment.png"), (1170, 2532))
        self.assertEqual(self.stored(), {})

    def last_error(self, script):
        answer = self.drive(script, fails=True)[-1]
        self.assertFalse(answer["ok"])
        return answer["error"]

    def test_a_step_that_ends_elsewhere_has_failed(self):
        self.page(row("PSSliderCell", "Slider", key="slider", enabled=False, default=0.5),
                  row("PSSegmentCell", "Size", key="size", enabled=False, default=1, validValues=[1, 2], validTitles=["S", "L"]),
                  row("PSLinkCell", "Nowhere", detail="NSObject"))
        self.assertEqual(self.last_error("drag slider to 0.9"), 'the slider of the row "slider" ended at 0.5')
        self.assertEqual(self.last_error("choose size L"), 'the row "size" shows "S" after the choice')
        self.assertEqual(self.last_error("tap Nowhere"), f'the row "Nowhere" leads to NSObject, and the page is {PAGE}')
        self.assertEqual(self.stored(), {})

    def test_what_lies_under_an_alert_cannot_be_touched(self):
        self.page(row("PSButtonCell", "Ask", action="reloadSpecifiers", confirmation={"prompt": "Sure?"}),
                  row("PSSwitchCell", "Switch", key="switch"), row("PSSliderCell", "Slider", key="slider"),
                  row("PSSegmentCell", "Size", key="size", validValues=[1, 2], validTitles=["S", "L"]))
        for step in ("tap switch", "hold switch 1", "drag slider to 1", "choose size L"):
            self.assertIn(" cannot be touched: ", self.last_error("tap Ask\n" + step))
        self.assertEqual(self.stored(), {})


if __name__ == "__main__":
    unittest.main()
