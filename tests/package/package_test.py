"""Tests the installed package: its headers, and the program of docs/library.md built with it."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLE = PROJECT / "examples/list-manifest"
CMAKE = os.environ["VELMORA_CMAKE"]


def run(*command, status=0):
    result = subprocess.run(
        [str(part) for part in command], capture_output=True, text=True, check=False
    )
    if result.returncode != status:
        raise AssertionError(f"{command} ended with {result.returncode}:\n{result.stdout}{result.stderr}")
    return result


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory(prefix="velmora package ")
        cls.addClassCleanup(scratch.cleanup)
        cls.scratch = pathlib.Path(scratch.name)
        cls.prefix = cls.scratch / "prefix"
        run(
            CMAKE, "--install", os.environ["VELMORA_BUILD"],
            "--prefix", cls.prefix, "--component", "development",
        )  # fmt: skip
        cls.includes = cls.prefix / "include/velmora"
        cls.headers = sorted(path.relative_to(cls.includes) for path in cls.includes.rglob("*.h"))

    def write(self, name, text):
        path = self.scratch / name
        path.write_text(text, encoding="utf-8")
        return path

    def test_headers_need_no_header_that_is_not_installed(self):
        self.assertGreater(len(self.headers), 30)
        source = self.write("all.cpp", "".join(f'#include "{name}"\n' for name in self.headers))
        run(os.environ["CXX"], "-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only",
            "-I", self.includes, source)  # fmt: skip

    def test_headers_declare_no_helper(self):
        for name in self.headers:
            with self.subTest(str(name)):
                self.assertNotIn("internal", (self.includes / name).read_text(encoding="utf-8"))

    def test_headers_have_fewer_than_130_lines(self):
        for name in self.headers:
            with self.subTest(str(name)):
                text = (self.includes / name).read_text(encoding="utf-8")
                self.assertLess(len(text.splitlines()), 130)

    def test_the_program_of_the_documentation_is_the_example(self):
        text = (PROJECT / "docs/library.md").read_text(encoding="utf-8")
        for name in ("CMakeLists.txt", "main.cpp"):
            with self.subTest(name):
                self.assertIn((EXAMPLE / name).read_text(encoding="utf-8"), text)

    def test_the_example_builds_and_reads_manifests(self):
        build = self.scratch / "build"
        run(
            CMAKE, "-S", EXAMPLE, "-B", build, "-G", os.environ["VELMORA_GENERATOR"],
            f"-DCMAKE_PREFIX_PATH={self.prefix}", "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror",
        )  # fmt: skip
        run(CMAKE, "--build", build)
        program = build / "list-manifest"
        self.assertEqual(run(program, self.manifest()).stdout, "/a\nfile 5 /a/b\nsymlink 0 /a/c\n")
        self.assertEqual(
            run(program, self.manifest(size=-1), status=1).stderr,
            "/entries/0/size: dataCorrupted: Shared Warp entry sizes cannot be negative.\n",
        )
        self.assertEqual(
            run(program, self.scratch / "none", status=1).stderr,
            f"{self.scratch}/none: No such file or directory\n",
        )
        self.assertEqual(run(program, status=2).stderr, "usage: list-manifest FILE\n")

    def manifest(self, size=5):
        def entry(path, kind, length):
            flags = ("ModificationTime", "Ownership", "POSIXPermissions", "BSDFlags",
                     "ExtendedAttributes", "ACL")  # fmt: skip
            return {
                "absolutePath": path, "displayName": "x", "kind": kind, "size": length,
                "modificationTimeNanoseconds": 0, "ownerUserID": 501, "ownerGroupID": 20,
                "posixPermissions": 420, "bsdFlags": 0, "extendedAttributes": [],
                "payloadParts": [], "payloadEncoding": "raw", "storedSize": 0,
                "sparseExtents": [],
                **{f"has{flag}Metadata": True for flag in flags},
            }  # fmt: skip

        manifest = {
            "version": 4, "warpID": "W", "deviceID": "D", "manifestKey": "k",
            "originalFolderPath": "/a", "displayName": "a", "createdAt": "2025-03-01T12:00:00Z",
            "status": "verified", "verificationSampleAbsolutePaths": [],
            "rootMetadata": entry("/a", "directory", 0),
            "entries": [entry("/a/b", "file", size), entry("/a/c", "symlink", 0)],
        }  # fmt: skip
        return self.write("manifest.json", json.dumps(manifest))


if __name__ == "__main__":
    unittest.main()
