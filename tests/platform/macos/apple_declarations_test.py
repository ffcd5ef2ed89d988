"""Checks the products' Objective-C++ against Apple's declarations, without a Mac.

The tests of the products run with GNUstep's headers. The headers in apple/ have those of Apple's
declarations that the products use. This test compiles every source with them, requires that each
declaration is used, and requires that GNUstep declares the same.

The comparison ignores nullability, __kindof and generic arguments, because GNUstep lacks most of
them and they do not change a call.
"""

import concurrent.futures
import functools
import json
import os
import pathlib
import re
import shlex
import subprocess
import tempfile
import unittest
from typing import NamedTuple

SOURCE = pathlib.Path(__file__).resolve().parents[3]
HERE = pathlib.Path(__file__).resolve().parent
# The build that runs this test passes its own directory.
BUILD = pathlib.Path(os.environ.get("VELMORA_BUILD", SOURCE / "build/dev"))

FOLDERS = (SOURCE / "src/platform/macos", SOURCE / "apps/macos")
PRODUCTS = sorted(path for folder in FOLDERS for path in folder.glob("*.mm"))
IMPORTS = """#import <Foundation/Foundation.h>
#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
"""

# Apple's processors, with what BOOL is: 1 for bool, 0 for signed char.
APPLES_BOOL = {"arm64": 1, "x86_64": 0}
WARNINGS = (
    "-Wall",
    "-Wextra",
    "-Wpedantic",
    "-Werror",
    "-Woverriding-method-mismatch",
    "-Wstrict-selector-match",
    "-Wsuper-class-method-mismatch",
    "-Wundeclared-selector",
)
# The filter of a product's dump: its namespace, and its classes, whose names contain this.
OWN_NAMES = "elmora"

# In methods of these names, the compiler treats id as instancetype.
RELATED_RESULT = re.compile(r"alloc|new|(init|alloc|new)([A-Z].*)?|autorelease|retain|self")
# Types that only need equal names.
COMPARED_BY_NAME = {
    # Apple has two definitions, and a test compiles with both.
    "BOOL",
    # GNUstep's structure has another name.
    "NSRect",
    "const NSRect",
    # GNUstep's enumerations have another width. A test compares the values in use.
    "NSSearchPathDirectory",
    "NSSearchPathDomainMask",
    "NSStringEncoding",
}
# Return types of GNUstep that differ from Apple's, and why each is harmless. Compiling with Apple's
# declarations checks how the sources use Apple's type.
DIFFERENCES = {
    # The result can then get any object's messages; the compiler warns when a message has several
    # possible methods.
    ("NSError", "+", "errorWithDomain:code:userInfo:"): "id",
    ("NSDistributedNotificationCenter", "+", "defaultCenter"): "id",
    # For NSURL itself the type is the same, and the products have no subclass of it.
    ("NSURL", "+", "fileURLWithPath:"): "instancetype",
}

# Syntax that sends implicit messages.
IMPLICIT_MESSAGES = {
    "ObjCArrayLiteral": ("NSArray", "+", "arrayWithObjects:count:"),
    "ObjCDictionaryLiteral": ("NSDictionary", "+", "dictionaryWithObjects:forKeys:count:"),
    "ObjCForCollectionStmt": (
        "<NSFastEnumeration>",
        "-",
        "countByEnumeratingWithState:objects:count:",
    ),
}

# Constructs that the runtimes treat differently, or that only one runtime knows.
UNPORTABLE = {
    "exceptions": r"@(try|catch|finally|throw|synchronized)\b|\bcatch\s*\(|\bNS_(DURING|HANDLER)\b",
    "conditional compilation": r"^\s*#\s*(if|ifdef|ifndef|el\w+)\b",
    "ownership by the compiler": r"\b__(weak|strong|autoreleasing|unsafe_unretained|bridge\w*)\b",
}
COMMENT_OR_TEXT = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', re.DOTALL)


# Compiling


class Entry(NamedTuple):
    directory: str
    command: list


@functools.cache
def entries():
    """The command that compiles each product, without the options for output files."""
    path = BUILD / "compile_commands.json"
    if not path.exists():
        raise AssertionError(f"{path} is missing: configure with CMAKE_EXPORT_COMPILE_COMMANDS")
    result = {}
    for entry in json.loads(path.read_text(encoding="utf-8")):
        source = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if source in PRODUCTS:
            words = iter(shlex.split(entry["command"]))
            command = []
            for word in words:
                if word in ("-o", "-MF", "-MT", "-MQ"):
                    next(words)
                elif word not in ("-c", "-MD", "-MMD", entry["file"]):
                    command.append(word)
            result[source] = Entry(entry["directory"], command)
    return result


def with_apples_headers(command, processor="arm64"):
    """The same command without the options for GNUstep."""
    result = []
    words = iter(command)
    for word in words:
        if word in ("-isystem", "-idirafter"):
            directory = next(words)
            if word == "-isystem" and "gnustep" not in directory.lower():
                result += [word, directory]
        elif not re.match(r"-fobjc-runtime=|-fconstant-string-class=|-D_?(GNU|NATIVE_OBJC)", word):
            result.append(word)
    return result + [
        f"-DVELMORA_BOOL_IS_BOOL={APPLES_BOOL[processor]}",
        "-fobjc-runtime=macosx-11.0",
        "-fno-objc-arc",
        "-isystem",
        str(HERE / "apple"),
    ]


def check_syntax(entry, command, source, *options):
    return subprocess.run(
        [*command, *options, "-fsyntax-only", str(source)],
        cwd=entry.directory,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        encoding="utf-8",
        errors="replace",
        check=False,
    )


def in_parallel(function, *arguments):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return list(pool.map(function, *arguments))


# Reading the compiler's dumps


class Node:
    """A line of a dump, with the lines indented below it."""

    __slots__ = ("kind", "text", "parent", "children")

    def __init__(self, text, parent):
        self.kind = text.partition(" ")[0]
        self.text = text
        self.parent = parent
        self.children = []

    def ancestors(self):
        node = self.parent
        while node is not None:
            yield node
            node = node.parent

    def descendants(self):
        for child in self.children:
            yield child
            yield from child.descendants()

    def last_word(self):
        return self.text.rpartition(" ")[2]

    def type(self):
        """The first type in the line, which is that of an expression or a parameter."""
        return Type.found(QUOTED_TYPE.search(self.text))


class Type(NamedTuple):
    written: str
    meant: str

    @staticmethod
    def found(match):
        written = reduced(match["written"])
        # The dumps translate instancetype to id.
        if match["meant"] is None or written == "instancetype":
            return Type(written, written)
        return Type(written, reduced(match["meant"]))

    def with_arguments(self, arguments):
        """The type in a generic class without arguments: each parameter becomes its bound."""
        for name, bound in arguments.items():
            self = Type(*(re.sub(rf"\b{name}\b", bound, text) for text in self))
        return self

    def same_as(self, other):
        by_name = self.written == other.written and self.written in COMPARED_BY_NAME
        return by_name or self.meant == other.meant


INSTANCETYPE = Type("instancetype", "instancetype")


class Method(NamedTuple):
    sign: str
    selector: str
    result: Type
    parameters: tuple

    @staticmethod
    def declared_in(node, bounds=None):
        match = METHOD.search(node.text)
        parts = [Type.found(match)]
        parts += [child.type() for child in node.children if child.kind == "ParmVarDecl"]
        result, *parameters = (part.with_arguments(bounds or {}) for part in parts)
        return Method(*match.group("sign", "selector"), result, tuple(parameters))

    def same_as(self, other):
        return (
            self.result.same_as(other.result)
            and len(self.parameters) == len(other.parameters)
            and all(map(Type.same_as, self.parameters, other.parameters))
        )

    def with_related_result(self):
        return self._replace(result=INSTANCETYPE) if self.result.written == "id" else self

    def __str__(self):
        parameters = ", ".join(parameter.written for parameter in self.parameters)
        return f"({self.result.written}) of ({parameters})"


QUOTED_TYPE = re.compile(r"'(?P<written>[^']*)'(?::'(?P<meant>[^']*)')?")
METHOD = re.compile(r" (?P<sign>[-+]) (?P<selector>\S+) " + QUOTED_TYPE.pattern)
MESSAGE = re.compile(
    QUOTED_TYPE.pattern
    + r".* selector=(?P<selector>\S+)"
    + r"(?: class='(?P<class>[^']*)'| super \((?P<super>\w+)\))?"
)
REFERENCE = re.compile(r"(?:Function|Var|EnumConstant) 0x[0-9a-f]+ '(\w+)'")
TYPE_PARAMETER = re.compile(r"(\w+) (?:(?:covariant|contravariant|bounded) )*'")
PLAIN_DECLARATION = re.compile(r"\b(\w+) '")


def reduced(text):
    """A type without the parts that do not change a call."""
    text = re.sub(r"\b(_Nonnull|_Nullable|_Null_unspecified|__\w*(kindof|retained))\b", "", text)
    text = re.sub(r"\b(?!id\b|Class\b)(\w+)<[^<>]*>", r"\1", text)
    text = re.sub(r"\s+", " ", text)
    text = re.sub(r"(?<=[*(^]) | (?=[,)])", "", text).strip()
    return re.sub(r"(id\S*) const \*", r"const \1 *", text)


def nodes_of(dump):
    nodes = []
    above = []
    for line in dump.splitlines():
        text = line.lstrip(" |`-")
        depth = (len(line) - len(text)) // 2
        del above[depth:]
        node = Node(text, above[-1] if above else None)
        if above:
            above[-1].children.append(node)
        above.append(node)
        nodes.append(node)
    return nodes


class Declarations:
    """Methods by their declarer: a class by its name, a protocol by its name in <>."""

    def __init__(self, nodes):
        self.methods = {}
        self.parents = {}
        self.superclasses = {}
        for node in nodes:
            if node.kind in ("ObjCInterfaceDecl", "ObjCProtocolDecl", "ObjCCategoryDecl"):
                self._add(node)

    def _add(self, node):
        owner = node.last_word()
        if node.kind == "ObjCProtocolDecl":
            owner = f"<{owner}>"
        elif node.kind == "ObjCCategoryDecl":
            owner = next(QUOTED_TYPE.search(child.text).group("written")
                         for child in node.children if child.kind == "ObjCInterface")
        parents = self.parents.setdefault(owner, [])
        bounds = {}
        for child in node.children:
            if child.kind == "super":
                self.superclasses[owner] = QUOTED_TYPE.search(child.text).group("written")
            elif child.kind == "ObjCProtocol":
                parents.append(f"<{QUOTED_TYPE.search(child.text).group('written')}>")
            elif child.kind == "ObjCTypeParamDecl":
                bounds[TYPE_PARAMETER.search(child.text)[1]] = child.type().written
            elif child.kind == "ObjCMethodDecl":
                method = Method.declared_in(child, bounds)
                self.methods.setdefault((owner, method.sign, method.selector), []).append(method)

    def declarer(self, owner, sign, selector):
        """The declarer of the method: the class, a protocol, an ancestor, or None."""
        if (owner, sign, selector) in self.methods:
            return (owner, sign, selector)
        above = self.parents.get(owner, []) + [self.superclasses.get(owner)]
        for parent in above:
            found = parent and self.declarer(parent, sign, selector)
            if found:
                return found
        return None


def plain_declarations(nodes, kind):
    """The functions, constants or enumerators of C: the name and the line of each."""
    result = {}
    for node in nodes:
        match = PLAIN_DECLARATION.search(node.text) if node.kind == kind else None
        if match and node.parent.kind in ("TranslationUnitDecl", "LinkageSpecDecl", "EnumDecl"):
            result[match[1]] = node
    return result


class Message(NamedTuple):
    """A message. Its receiver is a class or <protocol>, or empty for any object."""

    receiver: str
    sign: str
    selector: str
    node: Node


def messages(nodes, declarations):
    """All messages that the code sends, in templates those of their instances."""
    result = []
    for node in nodes:
        if node.kind in IMPLICIT_MESSAGES:
            result.append(Message(*IMPLICIT_MESSAGES[node.kind], node))
        elif node.kind == "ObjCMessageExpr":
            match = MESSAGE.search(node.text)
            if match["written"] != "<dependent type>":
                to, sign = receiver(node, match, declarations)
                result.append(Message(to, sign, match["selector"], node))
    return result


def receiver(node, match, declarations):
    if match["class"]:
        return match["class"], "+"
    if match["super"]:
        sign = "+" if match["super"] == "class" else "-"
        [own] = [above for above in node.ancestors() if above.kind == "ObjCImplementationDecl"]
        return declarations.superclasses[own.last_word()], sign
    text = node.children[0].type().meant
    if text == "Class":
        return "", "+"
    protocols = re.fullmatch(r"id(?:<(\w+)>)?", text)
    if protocols:
        return f"<{protocols[1]}>" if protocols[1] else "", "-"
    return re.fullmatch(r"(?:const )?(\w+) \*", text)[1], "-"


def blocks_given(message):
    """The block arguments as written at the call, each with its position."""
    arguments = message.node.children
    if not (" class='" in message.node.text or " super (" in message.node.text):
        arguments = arguments[1:]
    for place, argument in enumerate(arguments):
        while argument.kind in ("ExprWithCleanups", "ImplicitCastExpr", "CXXBindTemporaryExpr"):
            argument = [child for child in argument.children if child.kind != "cleanup"][0]
        if argument.kind == "BlockExpr":
            yield place, argument.type()


class AppleDeclarationsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.entries = entries()
        missing = [str(source) for source in PRODUCTS if source not in cls.entries]
        if missing or not PRODUCTS:
            raise AssertionError(f"the build compiles no {missing}")
        cls.entry = cls.entries[PRODUCTS[0]]

        cls.apple_nodes = cls.dump_of_headers(with_apples_headers(cls.entry.command))
        cls.gnustep_nodes = cls.dump_of_headers(cls.entry.command)
        cls.apple = Declarations(cls.apple_nodes)
        cls.gnustep = Declarations(cls.gnustep_nodes)

        cls.nodes = dict(zip(PRODUCTS, in_parallel(cls.dump_of_product, PRODUCTS)))
        everything = [node for nodes in cls.nodes.values() for node in nodes]
        cls.own = Declarations(everything)
        cls.all = Declarations(cls.apple_nodes + everything)
        cls.messages = [
            (source, message)
            for source, nodes in cls.nodes.items()
            for message in messages(nodes, cls.all)
        ]

    @classmethod
    def dump_of_headers(cls, command):
        return cls.checked(cls.compile_text(IMPORTS, command, "-Xclang", "-ast-dump"))

    @classmethod
    def dump_of_product(cls, source):
        entry = cls.entries[source]
        command = with_apples_headers(entry.command)
        options = ("-Xclang", "-ast-dump", "-Xclang", f"-ast-dump-filter={OWN_NAMES}")
        return cls.checked(check_syntax(entry, command, source, *WARNINGS, *options))

    @classmethod
    def compile_text(cls, text, command, *options):
        with tempfile.TemporaryDirectory() as scratch:
            path = pathlib.Path(scratch, "headers.mm")
            path.write_text(text, encoding="utf-8")
            return check_syntax(cls.entry, command, path, *options)

    @staticmethod
    def checked(result):
        if result.returncode != 0:
            raise AssertionError(result.stderr)
        return nodes_of(result.stdout)

    def declarer(self, source, message):
        """Apple's declarer of the called method. Any object counts as an NSObject."""
        found = self.all.declarer(message.receiver or "NSObject", message.sign, message.selector)
        self.assertIsNotNone(found, f"{source.name}: {message[:3]}")
        return found

    def implementations(self):
        """The products' own methods, each with its class."""
        for nodes in self.nodes.values():
            for node in nodes:
                if node.kind == "ObjCImplementationDecl":
                    for child in node.children:
                        if child.kind == "ObjCMethodDecl":
                            yield node.last_word(), Method.declared_in(child)

    def overridden(self, owner, method):
        """Apple's declarer of a method that the class overrides."""
        superclass = self.all.superclasses[owner]
        return self.apple.declarer(superclass, method.sign, method.selector)

    def test_sources_compile_with_the_bool_of_either_processor(self):
        # The sources compile with the BOOL of arm64, because the dumps were made with it.
        def compile_product(source):
            entry = self.entries[source]
            command = with_apples_headers(entry.command, "x86_64")
            return check_syntax(entry, command, source, *WARNINGS)

        for source, result in zip(PRODUCTS, in_parallel(compile_product, PRODUCTS)):
            with self.subTest(source.name):
                self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_sources_compile_for_a_modern_runtime(self):
        def compile_product(source):
            entry = self.entries[source]
            options = ("-fobjc-runtime=gnustep-2.0", *WARNINGS)
            return check_syntax(entry, entry.command, source, *options)

        for source, result in zip(PRODUCTS, in_parallel(compile_product, PRODUCTS)):
            with self.subTest(source.name):
                self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_sources_have_no_unportable_constructs(self):
        for folder in FOLDERS:
            for source in sorted([*folder.glob("*.h"), *folder.glob("*.mm")]):
                text = COMMENT_OR_TEXT.sub('""', source.read_text(encoding="utf-8"))
                for what, pattern in UNPORTABLE.items():
                    with self.subTest(source=source.name, what=what):
                        self.assertIsNone(re.search(pattern, text, re.MULTILINE))

    def test_dumps_hold_every_class_of_the_sources(self):
        for source, nodes in self.nodes.items():
            with self.subTest(source.name):
                text = COMMENT_OR_TEXT.sub('""', source.read_text(encoding="utf-8"))
                dumped = {n.last_word() for n in nodes if n.kind == "ObjCImplementationDecl"}
                self.assertEqual(dumped, set(re.findall(r"@implementation\s+(\w+)", text)))

    def test_every_declaration_is_used(self):
        used = {self.declarer(source, message) for source, message in self.messages}
        used |= {self.overridden(owner, method) for owner, method in self.implementations()}
        self.assertEqual(set(self.apple.methods) - used, set())

        references = {
            name
            for nodes in self.nodes.values()
            for node in nodes
            if node.kind == "DeclRefExpr"
            for name in REFERENCE.findall(node.text)
        }
        for kind in ("FunctionDecl", "VarDecl", "EnumConstantDecl"):
            declared = plain_declarations(self.apple_nodes, kind)
            self.assertTrue(declared)
            self.assertEqual(set(declared) - references, set())

    def test_gnustep_declares_the_same_methods(self):
        self.assertLessEqual(set(DIFFERENCES), set(self.apple.methods))
        for declaration, [apples] in self.apple.methods.items():
            owner, sign, selector = declaration
            expected = apples
            if declaration in DIFFERENCES:
                result = DIFFERENCES[declaration]
                expected = apples._replace(result=Type(result, result))
            with self.subTest(f"{sign}[{owner} {selector}]"):
                found = self.gnustep.declarer(*declaration)
                self.assertIsNotNone(found)
                for gnusteps in self.gnustep.methods[found]:
                    if apples.result.written == "instancetype" and RELATED_RESULT.fullmatch(
                        selector.partition(":")[0]
                    ):
                        gnusteps = gnusteps.with_related_result()
                    self.assertTrue(gnusteps.same_as(expected), f"{gnusteps} != {expected}")

    def test_gnustep_declares_the_same_functions_and_constants(self):
        for kind in ("FunctionDecl", "VarDecl"):
            gnusteps = plain_declarations(self.gnustep_nodes, kind)
            for name, node in plain_declarations(self.apple_nodes, kind).items():
                with self.subTest(name):
                    self.assertIn(name, gnusteps)
                    apples, others = node.type(), gnusteps[name].type()
                    self.assertTrue(apples.same_as(others), f"{apples} != {others}")

    def test_gnustep_has_apples_enumerator_values(self):
        text = IMPORTS
        for name, node in plain_declarations(self.apple_nodes, "EnumConstantDecl").items():
            [value] = [below for below in node.descendants() if below.kind == "value:"]
            text += f'static_assert({name} == {value.last_word()}, "{name}");\n'
        self.assertIn("static_assert", text)
        for name, size in {"NSInteger": 8, "NSUInteger": 8, "NSRect": 32}.items():
            text += f'static_assert(sizeof({name}) == {size}, "{name}");\n'
        result = self.compile_text(text, self.entry.command)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_messages_to_any_object_are_unambiguous(self):
        to_any = {
            (source, message.sign, message.selector, self.declarer(source, message))
            for source, message in self.messages
            if not message.receiver
        }
        self.assertTrue(to_any)
        for source, sign, selector, declarer in to_any:
            [apples] = self.all.methods[declarer]
            for name, declarations in (("Apple's", self.all), ("GNUstep's", self.gnustep)):
                for declaration, methods in declarations.methods.items():
                    if declaration[1:] == (sign, selector):
                        with self.subTest(source=source.name, declared=name, by=declaration):
                            for method in methods:
                                self.assertTrue(method.same_as(apples), f"{method} != {apples}")

    def test_own_methods_override_apples_methods(self):
        implementations = list(self.implementations())
        self.assertTrue(implementations)
        for owner, method in implementations:
            with self.subTest(owner=owner, method=method.selector):
                declarer = self.overridden(owner, method)
                self.assertIsNotNone(declarer)
                [apples] = self.apple.methods[declarer]
                self.assertTrue(method.same_as(apples), f"{method} != {apples}")

    def test_blocks_have_exactly_the_declared_parameters(self):
# A block may name a subclass for a "kind of" parameter, and the sender
        # then converts the argument.
        seen = 0
        for source, message in self.messages:
            for place, block in blocks_given(message):
                seen += 1
                with self.subTest(source=source.name, message=message.selector):
                    [apples] = self.all.methods[self.declarer(source, message)]
                    self.assertEqual(block.meant, apples.parameters[place].meant)
        self.assertGreater(seen, 0)


if __name__ == "__main__":
    unittest.main()
