"""Large files of odd form in a mirror, written one at a time."""

import contextlib
import json
import pathlib
import tempfile

import manifest_sets

LENGTH = 512 << 20


def _entry(path, **more):
    return json.dumps({
        "absolutePath": str(path), "displayName": "name", "kind": "directory", "size": 0,
        "modificationTimeNanoseconds": 0, "ownerUserID": 0, "ownerGroupID": 0,
        "posixPermissions": 0, "bsdFlags": 0, "hasModificationTimeMetadata": True,
        "hasOwnershipMetadata": True, "hasPOSIXPermissionsMetadata": True,
        "hasBSDFlagsMetadata": True, "hasExtendedAttributesMetadata": True, "hasACLMetadata": True,
        "extendedAttributes": [], "payloadParts": [], "payloadEncoding": "raw", "storedSize": 0,
        "sparseExtents": [], **more})


def _head(folder):
    return json.dumps({
        "warpID": "W-1", "version": 4, "deviceID": "D", "manifestKey": "k",
        "originalFolderPath": str(folder), "displayName": "name",
        "createdAt": "2025-01-01T00:00:00Z", "status": "verified",
        "verificationSampleAbsolutePaths": []})[:-1] + f', "rootMetadata": {_entry(folder)}, '


END = '"entries": []}'


def forms(folder):
    """For each name: the beginning, the text that is repeated, the end, and whether the file is a
    valid manifest."""
    head = _head(folder)
    parts = head + '"entries": [' + _entry(folder / "a").replace('"payloadParts": [], ', "")[:-1]
    return {
        "zeros": ("", "\0", "", False),
        "[": ("", "[", "", False),
        '{"a":': ("", '{"a":', "", False),
        "blanks": (head, " ", END, True),
        "one string": (head + '"x": "', "text with words, ", '", ' + END, True),
        "numbers": (head + '"x": [', "1,", "1], " + END, True),
        "dense arrays": (head + '"x": [', "[],", "[]], " + END, True),
        "deep values": (head + '"x": [', "[[[[[[[[{}]]]]]]]],", "0], " + END, True),
        "payload parts": (parts + ', "payloadParts": [', '{"key":"a","offset":0,"size":1},', "",
                          False),
    }


@contextlib.contextmanager
def home_with(name):
    """A home whose mirror has one file of this form, for a folder with a marker. Yields the home, the
    folder, and whether the file is a valid manifest."""
    with tempfile.TemporaryDirectory(dir=manifest_sets.MANIFESTS) as scratch:
        home = pathlib.Path(scratch)
        folder = home / "folder"
        folder.mkdir()
        (folder / ".velmora-warped.json").write_text('{"warpID":"W-1"}', encoding="utf-8")
        (home / manifest_sets.MIRROR).mkdir(parents=True)
        beginning, repeated, end, is_valid = forms(folder)[name]
        block = repeated * max(1, (1 << 20) // len(repeated))
        with (home / manifest_sets.MIRROR / "odd.json").open("w", encoding="utf-8") as file:
            file.write(beginning)
            for _ in range(LENGTH // len(block)):
                file.write(block)
            file.write(end)
        yield home, folder, is_valid
