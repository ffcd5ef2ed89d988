"""Tests the installed package: its headers, the search for it, and the program of docs/library.md."""

import concurrent.futures
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLE = PROJECT / "examples/list-manifest"
CMAKE = os.environ["VELMORA_CMAKE"]
COMPILE = (os.environ["CXX"], "-std=c++20", "-Wall", "-Wextra", "-Werror", "-fsyntax-only")

# What a program can do with one header alone.
USES = {
    "json/DecodingError.h": """
        const DecodingError error(DecodingErrorKind::dataCorrupted, "", {});
        for (const CodingKey& key : error.codingPath()) std::visit([](const auto&) {}, key);""",
    "json/EncodingError.h": """
        const EncodingError error("");
        for (const CodingKey& key : error.codingPath()) std::visit([](const auto&) {}, key);""",
    "handoff/HandoffRequest.h": """
        try { encodeHandoffRequest({}).size(); } catch (const PlatformError&) {}""",
    "platform/Platform.h": "static_cast<void>(sizeof(Platform));",
    "text/Text.h": """
        static_cast<void>(std::hash<Text>()("a") == std::hash<TextView>()("a"));
        static_cast<void>(Text("a") == TextView("b") || Text("a") < Text("b"));""",
    "warpshared/records/Date.h": """
        try { internetDateTime(Date()).size(); } catch (const EncodingError&) {}""",
    "warpshared/records/VelmoraWarpSharedEntry.h": """
        VelmoraWarpSharedEntry* declaredBefore = nullptr;
        VelmoraWarpSharedEntry entry; entry.aclText = "a"; declaredBefore = &entry;
        static_cast<void>(*declaredBefore == entry);""",
    "warpshared/records/VelmoraWarpSharedManifest.h": """
        VelmoraWarpSharedManifest manifest; manifest.createdAt = Date();
        manifest.status = VelmoraWarpSharedStatus::failed;
        manifest.entries.append(VelmoraWarpSharedEntry());
        for (const auto& entry : manifest.entries) static_cast<void>(ownedEntry(entry));
        static_cast<void>(manifest == VelmoraWarpSharedManifest(manifest));""",
    "warpshared/writing/ManifestEncoding.h": """
        try {
          static_cast<void>(encodeManifest(VelmoraWarpSharedManifest()));
          static_cast<void>(encodeDestroyedManifestIndex({}));
        } catch (const EncodingError&) {}""",
    "resolution/ManifestMirror.h": """
        for (const auto& [path, manifest] : WholeManifestMirror().manifests)
          static_cast<void>(manifest.entries.size());""",
}


def run(*command, status=0, **environment):
    result = subprocess.run(
        [str(part) for part in command],
        capture_output=True,
        text=True,
        env={**os.environ, **environment},
        check=False,
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

    def test_each_header_needs_no_other(self):
        self.assertGreater(len(self.headers), 30)
        self.assertLessEqual(set(USES), {str(name) for name in self.headers})

        def compile_alone(name):
            source = self.write(
                str(name).replace("/", " ") + ".cpp",
                "namespace velmora { struct VelmoraWarpSharedEntry; }\n"
                f'#include "{name}"\n'
                f"namespace velmora {{ void use() {{ {USES.get(str(name), '')} }} }}\n",
            )
            run(*COMPILE, "-I", self.includes, source)

        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as threads:
            list(threads.map(compile_alone, self.headers))

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

    def configure(self, commands, *, status=0, **environment):
        """The lines that CMake prints for commands between two marks, and its errors."""
        project = self.scratch / "project"
        project.mkdir(exist_ok=True)
        lists = ("cmake_minimum_required(VERSION 3.25)", "project(user CXX)",
                 'message(STATUS "BEGIN")', *commands, 'message(STATUS "END")')  # fmt: skip
        (project / "CMakeLists.txt").write_text("\n".join(lists), encoding="utf-8")
        with tempfile.TemporaryDirectory() as build:
            result = run(CMAKE, "-S", project, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
                         "-G", os.environ["VELMORA_GENERATOR"], status=status,
                         **environment)  # fmt: skip
        printed = result.stdout.splitlines()
        end = printed.index("-- END") if status == 0 else None
        return printed[printed.index("-- BEGIN") + 1 : end], result.stderr

    def test_search_prints_nothing_and_checks_the_components(self):
        found = "velmora-finder-actions_FOUND"
        printed, errors = self.configure([
            "find_package(velmora-finder-actions QUIET COMPONENTS text platform_linux)",
            f'message(STATUS "${{{found}}} ${{velmora-finder-actions_text_FOUND}}")',
            "find_package(velmora-finder-actions QUIET COMPONENTS text OPTIONAL_COMPONENTS none)",
            f'message(STATUS "${{{found}}} ${{velmora-finder-actions_text_FOUND}}"'
            ' " ${velmora-finder-actions_none_FOUND}")',
            "find_package(velmora-finder-actions)",
            f'message(STATUS "${{{found}}}")',
            "if(TARGET PkgConfig::UTF8PROC OR NOT TARGET velmora::text)",
            '  message(STATUS "wrong targets")',
            "endif()",
        ])  # fmt: skip
        self.assertEqual(printed, ["-- 0 TRUE", "-- 1 TRUE FALSE", "-- 1"])
        self.assertEqual(errors, "")

    def test_search_gives_the_reason_of_its_failure(self):
        search = "find_package(velmora-finder-actions REQUIRED COMPONENTS text none)"
        _, errors = self.configure([search], status=1)
        self.assertIn("There is no component none", errors)
        self.assertIn("The components are: platform,", errors)
        search = "find_package(velmora-finder-actions REQUIRED)"
        _, errors = self.configure([search], status=1, PKG_CONFIG_LIBDIR=str(self.scratch / "none"))
        for package in ("libutf8proc-dev", "libxxhash-dev", "libsimdjson-dev"):
            self.assertIn(f"install the package {package}", errors)

    def test_search_needs_no_other_module_than_the_three_libraries(self):
        modules = self.scratch / "modules"
        modules.mkdir()
        for name in ("libutf8proc", "libxxhash", "simdjson"):
            folder = run("pkg-config", "--variable=pcfiledir", name).stdout.strip()
            shutil.copy(f"{folder}/{name}.pc", modules)
        printed, _ = self.configure(
            ["find_package(velmora-finder-actions REQUIRED)"], PKG_CONFIG_LIBDIR=str(modules)
        )
        self.assertEqual(printed, [])

    def test_project_refuses_a_header_and_a_library_of_different_versions(self):
        (self.scratch / "other").mkdir()
        self.write(
            "other/utf8proc.h",
            "#include_next <utf8proc.h>\n"
            "#undef UTF8PROC_VERSION_MINOR\n"
            "#define UTF8PROC_VERSION_MINOR 999\n",
        )
        errors = run(
            CMAKE, "-S", PROJECT, "-B", self.scratch / "refused",
            "-G", os.environ["VELMORA_GENERATOR"], status=1, CPATH=str(self.scratch / "other"),
        ).stderr  # fmt: skip
        self.assertIn("utf8proc is installed twice", " ".join(errors.split()))
        self.assertIn(".999.", errors)

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
