"""The wispen program, as a person and as another program would use it."""

import json
import os
import pathlib
import plistlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
BUNDLE = pathlib.Path(PROGRAM).parent / "3dvitrelleprefs.bundle"
NOTIFICATION = "com.m0rrow5.vitrelle3dtouch/prefschanged"


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="wispen-test-")
        self.addCleanup(self.folder.cleanup)
        self.root = os.path.join(self.folder.name, "root")
        self.environment = dict(os.environ, HOME=os.path.join(self.folder.name, "home"))
        self.environment.pop("XDG_DATA_HOME", None)

    def run_program(self, *words, root=True):
        words = list(words) + (["--root", self.root] if root else [])
        return subprocess.run([PROGRAM, *words], capture_output=True, text=True, timeout=120, env=self.environment,
                              cwd=self.folder.name)

    def succeed(self, *words, **more):
        done = self.run_program(*words, **more)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout

    def domain(self):
        path = pathlib.Path(self.root, "var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist")
        return plistlib.loads(path.read_bytes())

    def test_every_command_has_help(self):
        for words in ([], ["run"], ["pages"], ["defaults"], ["defaults", "read"], ["defaults", "write"], ["notify"],
                      ["notify", "watch"], ["notify", "post"], ["lint"], ["colour"], ["colour", "hex"], ["colour", "dark"],
                      ["colour", "dominant"], ["colour", "second"]):
            self.assertIn("Usage", self.succeed(*words, "--help", root=False), words)

    def test_wrong_use_is_status_2(self):
        for words in ([], ["frobnicate"], ["defaults"], ["defaults", "write", "key"], ["pages", "--no-such-option"],
                      ["run", "--layout", "sideways"], ["notify", "watch", "--count", "many"]):
            done = self.run_program(*words, root=False)
            self.assertEqual(done.returncode, 2, words)
            self.assertNotEqual(done.stderr, "", words)

    def test_lost_output_is_a_failure(self):
        for words in (["pages"], ["defaults", "read"], ["lint"], ["inspect"], ["package", "status"], ["--help"]):
            root = [] if words == ["--help"] else ["--root", self.root]
            with open("/dev/full", "wb") as full:
                done = subprocess.run([PROGRAM, *words, *root], stdout=full, stderr=subprocess.PIPE, text=True,
                                      timeout=120, env=self.environment)
            self.assertEqual(done.returncode, 1, words)
            self.assertIn("the output was not written: No space left on device", done.stderr)

    def test_a_closed_pipe_ends_it_quietly(self):
        reading, writing = os.pipe()
        os.close(reading)
        done = subprocess.run([PROGRAM, "pages", "--root", self.root], stdout=writing, stderr=subprocess.PIPE,
                              text=True, timeout=120, env=self.environment)
        os.close(writing)
        self.assertNotEqual(done.returncode, 0)
        self.assertNotIn("not written", done.stderr)

    def test_empty_folders_and_arguments_that_are_not_text_are_wrong_use(self):
        for words in (["pages", "--root", ""], ["pages", "--bundle", ""]):
            done = self.run_program(*words, root=False)
            self.assertEqual(done.returncode, 2, words)
            self.assertIn("empty", done.stderr)
        done = subprocess.run([PROGRAM.encode(), b"defaults", b"write", b"enabled", b"a\xff"], capture_output=True,
                              timeout=120, env=self.environment)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b'the argument "a\\xff" is not UTF-8', done.stderr)

    def test_a_terminal_gets_no_control_characters_from_stored_values(self):
        self.succeed("pages")
        path = pathlib.Path(self.root, "var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist")
        path.write_bytes(plistlib.dumps({"colorSource": "a\0b\x1b[31m\x7f\x9b\u202ec"}, fmt=plistlib.FMT_BINARY))
        for words in (["defaults", "read", "colorSource"], ["defaults", "read"], ["pages"]):
            out = self.succeed(*words)
            for character in "\0\x1b\x7f\x9b\u202e":
                self.assertNotIn(character, out, words)
        self.assertEqual(self.succeed("defaults", "read", "colorSource"), "a\\x00b\\x1b[31m\\x7f\\u009b\\u202ec\n")
        self.assertEqual(json.loads(self.succeed("defaults", "read", "colorSource", "--json"))["value"],
                         "a\0b\x1b[31m\x7f\x9b\u202ec")

    def test_a_terminal_gets_no_control_characters_from_a_package(self):
        tree = pathlib.Path(self.folder.name, "tree")
        (tree / "DEBIAN").mkdir(parents=True)
        (tree / "DEBIAN" / "control").write_text("Package: p\x1b[31m\nVersion: 1\nArchitecture: all\nMaintainer: x\n"
                                                 "Description: x\n")
        (tree / "a\x1b[31m").write_text("x")
        package = os.path.join(self.folder.name, "p.deb")
        subprocess.run(["dpkg-deb", "--nocheck", "--build", str(tree), package], check=True, capture_output=True)
        done = self.run_program("package", "verify", package, root=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("\\x1b", done.stdout)
        self.assertNotIn("\x1b", done.stdout + done.stderr)

    def test_too_small_limits_are_named(self):
        for limit, value, word in ((resource.RLIMIT_STACK, 128 * 1024, "stack"), (resource.RLIMIT_NOFILE, 12, "open 12")):
            done = subprocess.run([PROGRAM, "pages", "--root", self.root], capture_output=True, text=True, timeout=120,
                                  env=self.environment,
                                  preexec_fn=lambda limit=limit, value=value: resource.setrlimit(limit, (value, value)))
            self.assertEqual(done.returncode, 1)
            self.assertIn(word, done.stderr)

    def test_a_file_that_may_not_grow_is_told_and_left_as_it_was(self):
        self.succeed("defaults", "write", "enabled", "true")
        before = self.domain()
        for words in (["defaults", "write", "enabled", "false"], ["snapshot", "-o", "page.png"]):
            done = subprocess.run([PROGRAM, *words, "--root", self.root], capture_output=True, text=True, timeout=120,
                                  env=self.environment, cwd=self.folder.name,
                                  preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100)))
            self.assertEqual(done.returncode, 1, words)
            self.assertIn("File too large", done.stderr)
        self.assertEqual(self.domain(), before)

    def test_a_domain_file_that_is_too_large_is_told_before_it_is_written_over(self):
        self.succeed("pages")
        path = pathlib.Path(self.root, "var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist")
        path.write_bytes(b"")
        os.truncate(path, (64 << 20) + 1)
        self.assertIn("larger than 67108864 bytes", self.run_program("defaults", "write", "enabled", "true").stderr)

    def test_the_tour_shows_a_binary_file_by_its_values(self):
        self.succeed("pages")
        path = pathlib.Path(self.root, "var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist")
        path.write_bytes(plistlib.dumps({"enabled": True, "odd": "a\0b"}, fmt=plistlib.FMT_BINARY))
        out = self.succeed("run", "--no-window", "--no-home-screen", "--pictures", "pictures")
        changed = out[out.index("What changed"):out.index("What the other process")]
        self.assertIn("<false/>", changed)
        self.assertNotIn("bplist", changed)

    def test_lint_performs_nothing_that_a_list_names(self):
        bundle = os.path.join(self.folder.name, "named.bundle")
        shutil.copytree(BUNDLE, bundle)
        path = pathlib.Path(bundle, "Root.plist")
        root = plistlib.loads(path.read_bytes())
        for name in ("hash", "release", "dealloc", "respring", "specifiers"):
            root["items"].append({"cell": "PSLinkListCell", "id": name, "key": name, "get": name,
                                  "valuesDataSource": name, "titlesDataSource": name})
        path.write_bytes(plistlib.dumps(root))
        done = self.run_program("lint", "--bundle", bundle)
        self.assertEqual(done.returncode, 1)
        for name in ("hash", "release", "dealloc", "respring", "specifiers"):
            self.assertIn(f"({name}): error: the method {name} ", done.stdout)
        self.assertEqual(self.run_program("pages", "--bundle", bundle).returncode, 0)

    def test_the_first_page_is_called_root_by_every_command(self):
        first = self.succeed("pages", "root")
        self.assertEqual(first, self.succeed("pages", "WispRootListController"))
        self.assertEqual(first, self.succeed("pages", "Root"))

    def test_colour_reads_texts(self):
        self.assertEqual(self.succeed("colour", "hex", "0x00FF00", "#FFF:0.5"),
                         "#00FF00  light  0x00FF00\n#000FFF  dark   alpha 0.5  #FFF:0.5\n")
        self.assertEqual(self.succeed("colour", "dark", "#0000FF"), "dark   #0000FF  #0000FF\n")

    def test_colour_finds_the_colours_of_a_folder_and_names_what_is_broken(self):
        icons = pathlib.Path(self.folder.name, "icons")
        (icons / "below").mkdir(parents=True)
        for number in range(40):
            shutil.copy(BUNDLE / "icon.png", icons / "below" / f"icon{number:02}.png")
        (icons / "a-broken.png").write_bytes(b"no image")
        (icons / "notes.txt").write_text("no image, and not looked at")
        sheet = pathlib.Path(self.folder.name, "sheet.png")
        done = self.run_program("colour", "dominant", str(icons), "--json", "--sheet", str(sheet))
        self.assertEqual(done.returncode, 1)
        self.assertIn("a-broken.png", done.stderr)
        self.assertEqual(len(done.stderr.splitlines()), 1, done.stderr)
        colours = json.loads(done.stdout)
        self.assertEqual(len(colours), 41)
        self.assertIn("error", colours[0])
        self.assertEqual(len({colour["hex"] for colour in colours[1:]}), 1)
        self.assertEqual([colour["input"] for colour in colours], sorted(colour["input"] for colour in colours))
        self.assertEqual(sheet.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
        one = json.loads(self.succeed("colour", "dominant", str(BUNDLE / "icon.png"), "--json"))
        self.assertEqual(one[0]["hex"], colours[1]["hex"])

    def test_colour_takes_no_text_for_an_image(self):
        done = self.run_program("colour", "second", "#FF0000")
        self.assertEqual(done.returncode, 1)
        self.assertIn("#FF0000", done.stderr)

    def test_pages_lists_every_page_with_its_rows(self):
        pages = json.loads(self.succeed("pages", "--json"))
        self.assertEqual({page["page"] for page in pages},
                         {"WispRootListController", "SepSettingsCell", "BackgroundSettingsCell", "ContextMenuLabels",
                          "Expanded3DAdjustments", "SepSettingsHSCell"})
        for page in pages:
            items = plistlib.loads((BUNDLE / (page["list"] + ".plist")).read_bytes())["items"]
            self.assertEqual([row["cell"] for row in page["rows"]], [item["cell"] for item in items], page["page"])
        root = next(page for page in pages if page["page"] == "WispRootListController")
        hidden = [row["key"] for row in root["rows"] if not row["shown"]]
        self.assertIn("regularColor", hidden)
        self.assertIn("SepSettingsLS.plist", self.succeed("pages", "SepSettingsCell"))
        self.assertIn("there is no page", self.run_program("pages", "Nothing").stderr)

    def test_the_home_screen_takes_every_trait_and_stands_as_english_is_read(self):
        def picture(*options):
            self.succeed("snapshot", "--home", "--scale", "0.5", "-o", "home.png", *options)
            return pathlib.Path(self.folder.name, "home.png").read_bytes()

        first = picture()
        self.assertEqual(picture("--direction", "rtl", "--text-size", "XXXL"), first)
        self.assertNotEqual(picture("--appearance", "dark"), first)
        self.assertNotEqual(picture("--device", "pad", "--orientation", "landscape"), first)

    def test_pages_say_why_a_row_is_hidden_and_what_would_show_it(self):
        pages = json.loads(self.succeed("pages", "--why", "--json"))
        rows = [row for page in pages for row in page["rows"]]
        hidden = [row for row in rows if not row["shown"]]
        self.assertTrue(hidden)
        for row in rows:
            self.assertEqual("hiddenBy" in row, not row["shown"], row)
        for row in hidden:
            self.assertTrue(row["hiddenBy"], row)
            for rule in row["hiddenBy"]:
                self.assertEqual(set(rule), {"rule", "remedy"})
        colour = next(row for row in hidden if row.get("key") == "regularColor")
        self.assertIn('"regularMode" is missing or "none"', colour["hiddenBy"][0]["rule"])
        self.assertIn('another "regularMode" than "none"', colour["hiddenBy"][0]["remedy"])
        lines = self.succeed("pages", "WispRootListController", "--why").splitlines()
        at = next(i for i, line in enumerate(lines) if "regularColor" in line)
        self.assertIn("hidden: ", lines[at + 1])
        self.assertIn("shown by: ", lines[at + 2])
        self.assertNotIn("hidden: ", self.succeed("pages"))

    def test_pages_follow_the_language(self):
        self.assertIn("Farbquelle", self.succeed("pages", "--language", "de"))
        self.assertIn("Color Source", self.succeed("pages"))

    def test_a_written_value_is_read_back_and_is_in_the_file(self):
        self.assertEqual(self.succeed("defaults", "read", "enabled").strip(), "yes")
        self.succeed("defaults", "write", "enabled", "no")
        self.assertEqual(self.succeed("defaults", "read", "enabled").strip(), "no")
        self.assertIs(self.domain()["enabled"], False)
        answer = json.loads(self.succeed("defaults", "write", "--json", "colorIntensity", "0.5"))
        self.assertEqual(answer, {"page": "WispRootListController", "key": "colorIntensity", "value": 0.5,
                                  "posted": [NOTIFICATION]})
        self.assertEqual(self.domain(), {"enabled": False, "colorIntensity": 0.5})

    def test_types_come_from_the_row_or_are_given(self):
        self.succeed("defaults", "write", "colorSource", "second")
        self.succeed("defaults", "write", "--page", "SepSettingsLS", "lsSeparatorThickness", "2.5")
        self.succeed("defaults", "write", "--type", "int", "enabled", "7")
        self.succeed("defaults", "write", "--type", "string", "keepSystemApps", "\u00e4 \U0001f34e")
        self.assertEqual(self.domain(), {"colorSource": "second", "lsSeparatorThickness": 2.5, "enabled": 7,
                                         "keepSystemApps": "\u00e4 \U0001f34e"})

    def test_values_that_the_row_does_not_take_change_nothing(self):
        for words in (["enabled", "perhaps"], ["colorSource", "third"], ["colorIntensity", "1000"],
                      ["colorIntensity", "much"], ["nosuchkey", "1"], ["--page", "Nothing", "enabled", "no"],
                      ["--type", "int", "enabled", "1.5"]):
            done = self.run_program("defaults", "write", *words)
            self.assertEqual(done.returncode, 1, words)
            self.assertEqual(len(done.stderr.strip().splitlines()), 1, done.stderr)
        self.assertFalse(os.path.exists(os.path.join(self.root, "var/jb/var/mobile/Library/Preferences/"
                                                                "com.m0rrow5.vitrelle3dtouch.plist")))

    def test_a_value_that_cannot_be_stored_is_told(self):
        self.succeed("defaults", "read", "enabled")
        os.makedirs(os.path.join(self.root, "var/jb/var/mobile/Library/Preferences/com.m0rrow5.vitrelle3dtouch.plist"))
        done = self.run_program("defaults", "write", "enabled", "no")
        self.assertEqual(done.returncode, 1)
        self.assertIn("was not stored", done.stderr)

    def test_a_watcher_prints_what_a_writer_causes(self):
        watcher = subprocess.Popen([PROGRAM, "notify", "watch", "--root", self.root, "--count", "2", "--timeout", "60"],
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=self.environment)
        self.addCleanup(watcher.kill)
        self.assertIn("watching", watcher.stderr.readline())
        self.succeed("defaults", "write", "enabled", "no")
        self.assertEqual(watcher.stdout.readline().strip(), NOTIFICATION)
        self.succeed("notify", "post", "some/other name")
        self.assertEqual(watcher.stdout.readline().strip(), "some/other name")
        self.assertEqual(watcher.wait(60), 0)
        watcher.stdout.close()
        watcher.stderr.close()

    def test_a_watcher_that_waits_in_vain_fails_in_time(self):
        done = self.run_program("notify", "watch", "never/posted", "--count", "1", "--timeout", "0.2")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(self.run_program("notify", "watch", "--timeout", "0.1").returncode, 0)

    def test_run_shows_the_difference_and_what_another_process_heard(self):
        for expected in ("<false/>", "<true/>"):  # the second tour turns the switch back
            output = self.succeed("run")
            self.assertIn("+ \t" + expected, output)
            self.assertIn(NOTIFICATION, output)
        self.assertEqual(len(self.domain()), 6)

    def test_run_leaves_the_home_screen_before_and_after_and_no_process(self):
        output = self.succeed("run")
        pictures = pathlib.Path(self.folder.name, "wispen-pictures")
        before, after = ((pictures / name).read_bytes() for name in ("home-screen-before.png", "home-screen.png"))
        self.assertNotEqual(before, after)
        for picture in before, after:
            self.assertEqual(picture[:8], b"\x89PNG\r\n\x1a\n")
        process = re.search(r"The home screen \(process (\d+)\)", output).group(1)
        self.assertFalse(os.path.exists(f"/proc/{process}"))
        self.assertEqual(os.listdir(os.path.join(self.root, "var/run/wispen-processes")), [])
        # What came of the settings is what a picture of its own shows.
        self.succeed("snapshot", "--home", "-o", "again.png")
        self.assertEqual(pathlib.Path(self.folder.name, "again.png").read_bytes(), after)

    def test_run_does_without_the_home_screen_where_it_is_told_to(self):
        output = self.succeed("run", "--no-home-screen")
        self.assertNotIn("The home screen", output)
        self.assertFalse(os.path.exists(os.path.join(self.root, "System")))

    def test_run_leaves_the_program_of_somebody_else_alone_and_says_so(self):
        self.succeed("pages")
        killall = pathlib.Path(self.root, "var/jb/usr/bin/killall")
        killall.write_text("somebody's own")
        done = self.run_program("run")
        self.assertEqual(done.returncode, 0)  # the pages are of use without it
        self.assertIn("'/var/jb/usr/bin/killall' cannot be put into the device root: somebody else's is there", done.stderr)
        self.assertEqual(killall.read_text(), "somebody's own")

    def test_snapshot_paints_the_home_screen_in_a_look(self):
        sizes = {}
        for device in ("phone", "pad"):
            answer = json.loads(self.succeed("snapshot", "--home", "--device", device, "--scale", "1", "--appearance", "dark",
                                             "-o", f"{device}.png", "--json"))
            self.assertEqual(answer, {"page": "home-screen", "file": f"{device}.png"})
            header = pathlib.Path(self.folder.name, f"{device}.png").read_bytes()
            sizes[device] = (int.from_bytes(header[16:20], "big"), int.from_bytes(header[20:24], "big"))
        self.assertEqual(sizes["phone"], (390, 844))
        self.assertGreater(sizes["pad"][0], 700)
        done = self.run_program("snapshot", "--home", "--device", "toaster")
        self.assertEqual(done.returncode, 1)
        self.assertIn("toaster", done.stderr)

    def test_run_works_on_both_layouts_and_a_root_keeps_its_layout(self):
        self.succeed("run", "--layout", "rootful")
        self.assertTrue(os.path.exists(os.path.join(self.root, "var/mobile/Library/Preferences/"
                                                               "com.m0rrow5.vitrelle3dtouch.plist")))
        self.succeed("run")
        done = self.run_program("run", "--layout", "rootless")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(len(done.stderr.strip().splitlines()), 1)

    def test_without_a_root_the_users_own_is_used(self):
        self.succeed("defaults", "write", "enabled", "no", root=False)
        self.assertTrue(os.path.isdir(os.path.join(self.environment["HOME"], ".local/share/wispen/root/var/jb")))
        self.assertEqual(os.listdir(self.environment["HOME"]), [".local"])

    def test_bad_roots_and_bundles_are_one_sentence(self):
        file = os.path.join(self.folder.name, "file")
        pathlib.Path(file).write_text("x")
        for words in (["run", "--root", file], ["run", "--root", "/proc/nothing/here"],
                      ["run", "--root", self.root, "--bundle", "/nonexistent"],
                      ["pages", "--root", os.path.join(self.folder.name, "x" * 1000)]):
            done = self.run_program(*words, root=False)
            self.assertEqual(done.returncode, 1, words)
            self.assertEqual(len(done.stderr.strip().splitlines()), 1, done.stderr)
            self.assertTrue(done.stderr.startswith("wispen: "), done.stderr)

    def test_lint_names_the_row_and_fails_for_errors_only(self):
        bundle = os.path.join(self.folder.name, "copy.bundle")
        shutil.copytree(BUNDLE, bundle)
        before = json.loads(self.run_program("lint", "--json").stdout)
        path = pathlib.Path(bundle, "SepSettingsLS.plist")
        path.write_bytes(path.read_bytes().replace(b"PSSliderCell", b"PSSlidreCell", 1))
        done = self.run_program("lint", "--json", "--bundle", bundle)
        self.assertEqual(done.returncode, 1)
        fresh = [finding for finding in json.loads(done.stdout) if finding not in before]
        self.assertEqual([(f["severity"], f["file"], f["row"]) for f in fresh],
                         [("error", "SepSettingsLS.plist", "lsSeparatorThickness")])

    def test_the_shipped_lists_have_no_fault(self):
        self.assertEqual(self.succeed("lint"), "0 errors, 0 warnings\n")

    def test_damaged_lists_and_tables_harm_nothing(self):
        bundle = os.path.join(self.folder.name, "copy.bundle")
        shutil.copytree(BUNDLE, bundle)
        pathlib.Path(bundle, "Root.plist").write_text("<plist><dict>")
        pathlib.Path(bundle, "de.lproj/SepSettingsLS.strings").write_text('"a" = ')
        done = self.run_program("pages", "--bundle", bundle, "--language", "de")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("Root.plist", done.stderr)
        done = self.run_program("lint", "--bundle", bundle)
        self.assertEqual(done.returncode, 1)
        self.assertIn("Root.plist", done.stdout)


if __name__ == "__main__":
    unittest.main()
