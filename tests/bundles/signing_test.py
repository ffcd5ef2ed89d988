"""Tests scripts/sign-macos with a codesign that only records its arguments."""

import json
import os
import pathlib
import plistlib
import shutil
import subprocess
import tempfile
import unittest

from darwin_project import EXTENSIONS, HERE, SOURCE

SCRIPT = SOURCE / "scripts/sign-macos"
DEVELOPER = "Developer ID Application: Mika Muster (ABCDE12345)"
HARDENED = ["--options", "runtime", "--timestamp"]


class SigningTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="velmora signing ")
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)
        self.application = self.make_bundle("My Velmora.app")
        for name in EXTENSIONS:
            self.make_bundle(f"My Velmora.app/Contents/PlugIns/{name}.appex")
        self.entitlements = self.make_files("the entitlements", "entitlements")
        self.profiles = self.make_files("the profiles", "provisionprofile")

    def make_bundle(self, name):
        bundle = self.scratch / name
        (bundle / "Contents").mkdir(parents=True)
        with open(bundle / "Contents/Info.plist", "wb") as file:
            plistlib.dump({}, file)
        return bundle

    def make_files(self, directory, suffix):
        path = self.scratch / directory
        path.mkdir()
        for name in EXTENSIONS:
            (path / f"{name}.{suffix}").write_text(f"{suffix} of {name}", encoding="utf-8")
        return path

    def sign(self, *arguments, fails_at=0, path=None):
        self.record = self.scratch / "calls"
        self.record.write_text("", encoding="utf-8")
        environment = {
            **os.environ,
            "PATH": path or f"{HERE / 'fake-commands'}:{os.environ['PATH']}",
            "CODESIGN_RECORD": str(self.record),
            "CODESIGN_FAILS_AT": str(fails_at),
        }
        self.result = subprocess.run(
            ["bash", str(SCRIPT), *map(str, arguments)],
            cwd=self.scratch,
            env=environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            check=False,
        )
        return self.result.returncode

    def calls(self):
        lines = self.record.read_text(encoding="utf-8").splitlines()
        return [json.loads(line) for line in lines]

    def arguments(self):
        return [call["arguments"] for call in self.calls()]

    def expected(self, identity, how, application_how, application=None):
        application = str(application or self.application)
        begin = ["--force", "--sign", identity, *how]
        return [
            *(
                [
                    *begin,
                    "--entitlements",
                    f"{self.entitlements}/{name}.entitlements",
                    f"{application}/Contents/PlugIns/{name}.appex",
                ]
                for name in EXTENSIONS
            ),
            [*begin, *application_how, application],
            ["--verify", "--deep", "--strict", "--verbose=2", application],
        ]

    def test_each_extension_is_signed_before_the_application(self):
        status = self.sign(
            "--identity", DEVELOPER, "--entitlements", self.entitlements, self.application
        )
        self.assertEqual(status, 0, self.result.stdout)
        self.assertEqual(
            self.arguments(),
            self.expected(DEVELOPER, HARDENED, ["--preserve-metadata=entitlements"]),
        )
        self.assertEqual([call["profile"] for call in self.calls()], [None] * 4)

    def test_an_ad_hoc_signature_is_neither_hardened_nor_stamped(self):
        self.assertEqual(
            self.sign("--identity", "-", "--entitlements", self.entitlements, self.application), 0
        )
        self.assertEqual(
            self.arguments(),
            self.expected("-", ["--timestamp=none"], ["--preserve-metadata=entitlements"]),
        )

    def test_nothing_is_signed_deep(self):
        self.assertEqual(
            self.sign(
                "--identity", DEVELOPER, "--entitlements", self.entitlements, self.application
            ),
            0,
        )
        for arguments in self.arguments():
            self.assertFalse("--sign" in arguments and "--deep" in arguments, arguments)

    def test_the_application_can_be_given_entitlements(self):
        own = self.scratch / "my application.entitlements"
        own.write_text("", encoding="utf-8")
        self.assertEqual(
            self.sign(
                "--application-entitlements", own, "--entitlements", self.entitlements,
                self.application, "--identity", DEVELOPER,
            ),
            0,
        )
        self.assertEqual(
            self.arguments(), self.expected(DEVELOPER, HARDENED, ["--entitlements", str(own)])
        )

    def test_profiles_are_copied_before_the_extensions_are_signed(self):
        self.assertEqual(
            self.sign(
                "--identity", DEVELOPER, "--entitlements", self.entitlements,
                "--profiles", self.profiles, self.application,
            ),
            0,
        )
        self.assertEqual(
            [call["profile"] for call in self.calls()],
            [*(f"provisionprofile of {name}" for name in EXTENSIONS), None, None],
        )

    def test_no_earlier_profile_is_left(self):
        for name in EXTENSIONS:
            earlier = self.application / f"Contents/PlugIns/{name}.appex/Contents"
            (earlier / "embedded.provisionprofile").write_text("earlier", encoding="utf-8")
        self.assertEqual(
            self.sign("--identity", "-", "--entitlements", self.entitlements, self.application), 0
        )
        self.assertEqual([call["profile"] for call in self.calls()], [None] * 4)

    def test_paths_are_relative_to_the_callers_directory(self):
        self.assertEqual(
            self.sign("--identity", "-", "--entitlements", "the entitlements", "My Velmora.app/"), 0
        )
        self.assertEqual(
            self.arguments(),
            self.expected("-", ["--timestamp=none"], ["--preserve-metadata=entitlements"]),
        )

    def test_a_failure_stops_at_once(self):
        for count in range(1, 5):
            with self.subTest(call=count):
                status = self.sign(
                    "--identity", "-", "--entitlements", self.entitlements, self.application,
                    fails_at=count,
                )
                self.assertNotEqual(status, 0)
                self.assertEqual(len(self.calls()), count)

    def test_nothing_is_changed_when_something_is_missing(self):
        needed = [
            self.application / "Contents/Info.plist",
            *(self.application / f"Contents/PlugIns/{name}.appex/Contents/Info.plist"
              for name in EXTENSIONS),
            *(self.entitlements / f"{name}.entitlements" for name in EXTENSIONS),
            *(self.profiles / f"{name}.provisionprofile" for name in EXTENSIONS),
            self.scratch / "application.entitlements",
        ]
        needed[-1].write_text("", encoding="utf-8")
        command = (
            "--identity", "-", "--entitlements", self.entitlements, "--profiles", self.profiles,
            "--application-entitlements", needed[-1], self.application,
        )
        for path in needed:
            with self.subTest(path.name):
                aside = path.rename(self.scratch / "aside")
                status = self.sign(*command)
                aside.rename(path)
                self.assertEqual(status, 1)
                self.assertIn(f"there is no {path}", self.result.stdout)
                self.assertEqual(self.calls(), [])
                self.assertEqual(list(self.application.rglob("embedded.provisionprofile")), [])
        self.assertEqual(self.sign(*command), 0, self.result.stdout)

    def test_wrong_command_lines_are_refused(self):
        wrong = {
            "nothing": (),
            "no identity": (self.application,),
            "no application": ("--identity", "-"),
            "empty identity": ("--identity", "", self.application),
            "option without a value": (self.application, "--identity"),
            "two applications": ("--identity", "-", self.application, self.application),
            "unknown option": ("--identity", "-", "--deep", self.application),
        }
        for name, arguments in wrong.items():
            with self.subTest(name):
                self.assertEqual(self.sign(*arguments), 64)
                self.assertIn("see scripts/sign-macos --help", self.result.stdout)
                self.assertEqual(self.calls(), [])

    def test_it_says_that_it_needs_a_mac(self):
        commands = self.scratch / "commands"
        commands.mkdir()
        for name in ("bash", "dirname", "basename"):
            (commands / name).symlink_to(shutil.which(name))
        status = self.sign(
            "--identity", "-", "--entitlements", self.entitlements, self.application,
            path=str(commands),
        )
        self.assertEqual(status, 1)
        self.assertIn("codesign is missing", self.result.stdout)

    def test_help_is_the_comment_at_its_head(self):
        self.assertEqual(self.sign("--help"), 0)
        self.assertTrue(self.result.stdout.startswith("scripts/sign-macos --identity IDENTITY"))
        self.assertNotIn("shellcheck", self.result.stdout)


if __name__ == "__main__":
    unittest.main()
