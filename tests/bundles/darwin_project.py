"""The project as CMake configures it for a Mac, inspected on another system.

Nothing is compiled. The tests inspect the files that configuring writes, and the commands that a
build would run.
"""

import json
import os
import pathlib
import plistlib
import re
import shlex
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
# CTest passes the programs of its build.
CMAKE = os.environ.get("VELMORA_CMAKE", "cmake")
NINJA = os.environ.get("VELMORA_NINJA", "ninja")

ACTIONS = ("Warp", "Restore")
EXTENSIONS = tuple(f"Finder{action}Action" for action in ACTIONS)
LANGUAGES = ("en", "ja", "zh-Hans", "es", "pt-BR")


def run(*arguments, **environment):
    """The output of a program. A failure fails the test and is its reason."""
    result = subprocess.run(
        [str(argument) for argument in arguments],
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        env={**os.environ, **environment},
        check=False,
    )
    if result.returncode != 0:
        raise AssertionError(f"{shlex.join(result.args)}\n{result.stdout}")
    return result.stdout


def presets():
    """The configure presets by their names, each with its inherited values."""
    with open(SOURCE / "CMakePresets.json", encoding="utf-8") as file:
        written = {preset["name"]: preset for preset in json.load(file)["configurePresets"]}

    def resolved(name):
        own = written[name]
        parents = own.get("inherits", [])
        result = {}
        # Of several parents, the first with a value counts.
        for parent in reversed([parents] if isinstance(parents, str) else parents):
            result = merged(result, resolved(parent))
        return merged(result, own)

    def merged(inherited, own):
        variables = {**inherited.get("cacheVariables", {}), **own.get("cacheVariables", {})}
        return {**inherited, **own, "cacheVariables": variables}

    return {name: resolved(name) for name in written}


class DarwinProject:
    """A build directory, configured with the variables of a preset and others."""

    def __init__(self, directory, preset, options):
        self.directory = pathlib.Path(directory)
        variables = {
            name: value.replace("${sourceDir}", str(SOURCE))
            for name, value in presets()[preset]["cacheVariables"].items()
        }
        variables |= options
        variables |= {
            "CMAKE_TOOLCHAIN_FILE": HERE / "Darwin.cmake",
            "CMAKE_MAKE_PROGRAM": shutil.which(NINJA),
            "CMAKE_PROJECT_velmora-finder-actions_INCLUDE": HERE / "DescribeTargets.cmake",
        }
        self.variables = variables
        # The variables of vcpkg are for vcpkg's toolchain file, which is not used here.
        run(CMAKE, "-S", SOURCE, "-B", directory, "-G", "Ninja", "--no-warn-unused-cli",
            *(f"-D{name}={value}" for name, value in variables.items()))

    def cached(self, name):
        """The value of a variable in CMake's cache."""
        cache = (self.directory / "CMakeCache.txt").read_text(encoding="utf-8")
        return re.search(rf"^{name}:\w+=(.*)$", cache, re.MULTILINE)[1]

    def bundle(self, extension):
        return self.directory / "bin" / f"{extension}.appex"

    def info_plist(self, extension):
        return self.info_plist_below(f"bin/{extension}.appex")

    def info_plist_below(self, bundle):
        with open(self.directory / bundle / "Contents/Info.plist", "rb") as file:
            return plistlib.load(file)

    def build(self, *outputs):
        run(NINJA, "-C", self.directory, *outputs)

    def command(self, output):
        """The words of the command that makes a file, relative to the build directory."""
        return shlex.split(run(NINJA, "-C", self.directory, "-t", "commands", "-s", output))

    def link_command(self, extension):
        return self.command(f"bin/{extension}.appex/Contents/MacOS/{extension}")

    def resource_outputs(self, extension):
        """The files in the bundle's Resources after a build, relative to the build directory."""
        outputs = run(NINJA, "-C", self.directory, "-t", "targets", "all").splitlines()
        prefix = f"bin/{extension}.appex/Contents/Resources/"
        return sorted(line.rpartition(": ")[0] for line in outputs if line.startswith(prefix))

    def compilations(self):
        """For each source of each target: its path, its object file, and the command's words."""
        with open(self.directory / "compile_commands.json", encoding="utf-8") as file:
            entries = json.load(file)
        for entry in entries:
            command = shlex.split(entry["command"])
            yield pathlib.Path(entry["file"]), words_after(command, "-o")[0], command

    def targets(self):
        """The properties of each target that DescribeTargets.cmake writes."""
        targets = {}
        for line in (self.directory / "targets.txt").read_text(encoding="utf-8").splitlines():
            name, key, value = line.split("|", 2)
            targets.setdefault(name, {})[key] = value
        return targets


class DarwinTestCase(unittest.TestCase):
    """Tests that share one configuration and do not change it."""

    preset = "mac-release"
    options = {}
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory(prefix="velmora-darwin-")
        cls.addClassCleanup(scratch.cleanup)
        cls.project = DarwinProject(scratch.name, cls.preset, cls.options)


def words_after(command, word):
    """The word after each occurrence of an option, such as the frameworks of a link command."""
    return [after for before, after in zip(command, command[1:]) if before == word]
