"""The installation of the bundles into an application."""

import pathlib
import plistlib
import tempfile
import unittest

from darwin_project import CMAKE, DarwinTestCase, EXTENSIONS, LANGUAGES, run


def files_of_bundle(extension):
    return {
        "Contents/Info.plist",
        f"Contents/MacOS/{extension}",
        *(
            f"Contents/Resources/{language}.lproj/{name}.strings"
            for language in LANGUAGES
            for name in ("InfoPlist", "Localizable")
        ),
    }


def files_below(directory):
    return {
        str(path.relative_to(directory)) for path in directory.rglob("*") if not path.is_dir()
    }


class InstallTestCase(DarwinTestCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        for extension in EXTENSIONS:
            cls.project.build(*cls.project.resource_outputs(extension))
            # A placeholder for the program, which cannot be linked here.
            program = cls.project.bundle(extension) / "Contents/MacOS" / extension
            program.parent.mkdir(exist_ok=True)
            program.write_text(extension, encoding="utf-8")

    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="velmora install ")
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)

    def install(self, *arguments, **environment):
        command = (CMAKE, "--install", self.project.directory, "--component", "program")
        run(*command, *arguments, **environment)


class InstallTest(InstallTestCase):
    def test_a_bundle_is_what_the_system_expects(self):
        for extension in EXTENSIONS:
            with self.subTest(extension):
                self.assertEqual(
                    files_below(self.project.bundle(extension)), files_of_bundle(extension)
                )

    def test_both_are_installed_into_the_application_below_the_prefix(self):
        self.install("--prefix", self.scratch)
        self.assertEqual(
            files_below(self.scratch),
            {
                f"Velmora.app/Contents/PlugIns/{extension}.appex/{file}"
                for extension in EXTENSIONS
                for file in files_of_bundle(extension)
            },
        )

    def test_the_info_plist_is_the_one_of_the_build(self):
        self.install("--prefix", self.scratch)
        for extension in EXTENSIONS:
            with self.subTest(extension):
                path = self.scratch / f"Velmora.app/Contents/PlugIns/{extension}.appex"
                with open(path / "Contents/Info.plist", "rb") as file:
                    self.assertEqual(plistlib.load(file), self.project.info_plist(extension))

    def test_other_files_of_the_application_stay(self):
        other = self.scratch / "Velmora.app/Contents/PlugIns/Other.appex/Contents/Info.plist"
        other.parent.mkdir(parents=True)
        other.write_text("theirs", encoding="utf-8")
        self.install("--prefix", self.scratch)
        self.assertEqual(other.read_text(encoding="utf-8"), "theirs")


class ChosenApplicationTest(InstallTestCase):
    # An absolute path, which is below the directory that DESTDIR names.
    options = {"VELMORA_APPLICATION_BUNDLE": "/Applications/My Velmora.app"}

    def test_both_are_installed_into_the_chosen_application(self):
        self.install(DESTDIR=str(self.scratch))
        self.assertEqual(
            files_below(self.scratch),
            {
                f"Applications/My Velmora.app/Contents/PlugIns/{extension}.appex/{file}"
                for extension in EXTENSIONS
                for file in files_of_bundle(extension)
            },
        )


if __name__ == "__main__":
    unittest.main()
