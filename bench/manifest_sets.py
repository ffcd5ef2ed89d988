"""The sets of manifests for the measurements. Their files are generated once and kept."""

import concurrent.futures
import dataclasses
import functools
import hashlib
import os
import pathlib
import shutil
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
GENERATOR = ROOT / "bench" / "generate-manifests"
MANIFESTS = ROOT / "build" / "bench" / "manifests"
MIRROR = pathlib.Path(".local/share/group.io.tolvane.Velmora/Warp/ManifestMirror")


@functools.cache
def directory_of_sets():
    """Depends on the generator, because another generator writes other files."""
    return MANIFESTS / hashlib.sha256(GENERATOR.read_bytes()).hexdigest()[:12]


@dataclasses.dataclass(frozen=True)
class ManifestSet:
    """A set of manifests. With `in_home`, its files are the mirror of a home directory, which holds
    their folders, each with its marker."""

    name: str
    file_count: int
    entries_of_file: int
    style: str
    in_home: bool = False

    @property
    def entry_count(self):
        return self.file_count * self.entries_of_file

    @property
    def home(self):
        return directory_of_sets() / self.name

    @property
    def directory(self):
        return self.home / MIRROR if self.in_home else directory_of_sets() / self.name

    @property
    def files(self):
        return sorted(self.directory.iterdir())

    @functools.cached_property
    def byte_count(self):
        return sum(file.stat().st_size for file in self.files)

    def generate(self):
        if self.directory.exists():
            return
        unfinished = self.directory.with_suffix(".unfinished")
        shutil.rmtree(unfinished, ignore_errors=True)
        folders = ["--root-base", self.home, "--make-folders"] if self.in_home else []
        subprocess.run([GENERATOR, "--out", unfinished, "--count", str(self.file_count),
                        "--entries", str(self.entries_of_file), "--style", self.style, *folders],
                       check=True)
        unfinished.rename(self.directory)


def sets_of(shape, file_count, entries, *styles):
    return [ManifestSet(f"{shape}-{style}", file_count, entries, style) for style in styles]


SETS = {manifests.name: manifests for manifests in [
    *sets_of("10k", 1, 10_000, "compact", "pretty-sorted", "compact-shuffled", "compact-unknown"),
    *sets_of("100k", 1, 100_000, "compact", "pretty-sorted", "compact-unknown"),
    *sets_of("1000x100", 1000, 100, "compact", "pretty-sorted"),
    *sets_of("1M", 1, 1_000_000, "compact"),
    ManifestSet("home-1000x100", 1000, 100, "compact", in_home=True),
    ManifestSet("home-100k", 1, 100_000, "compact", in_home=True),
    ManifestSet("home-20x100k", 20, 100_000, "compact", in_home=True),
]}


def generate_sets():
    directory_of_sets().mkdir(parents=True, exist_ok=True)
    for other in MANIFESTS.iterdir():
        if other != directory_of_sets():
            shutil.rmtree(other)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        # The longest comes first. list() raises the exceptions of the generators.
        list(pool.map(ManifestSet.generate,
                      sorted(SETS.values(), key=lambda manifests: -manifests.entry_count)))
