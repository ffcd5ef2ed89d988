"""Makes small faults in a copy of the tree, for scripts/mutants. They are found by the form of the
text alone, so each is tried on the compiler."""

import concurrent.futures
import json
import math
import os
import pathlib
import random
import re
import shlex
import subprocess
from collections import Counter, defaultdict, namedtuple

# `code` replaces the text between `start` and `end`; NUMBER in it is replaced by the fault's
# number. `line` is the line in the tree without faults.
Fault = namedtuple("Fault", "file start end line kind before after code")
# No source contains this.
NUMBER = "$NUMBER$"

TOKEN = re.compile(r"""
    (?P<blank>\s+|//[^\n]*|/\*.*?\*/|\#(?:\\\n|[^\n])*)
  | (?P<text>R"(?P<end>[^(]*)\(.*?\)(?P=end)"|"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])+')
  | (?P<number>\.?\d(?:[eE][+-]|[\w.]|'\w)*)
  | (?P<name>\w+)
  | (?P<sign><=>|<<=|>>=|\.\.\.|->|::|\+\+|--|&&|\|\||[=!<>+\-*/%&|^]=|<<|>>|.)""", re.X | re.S)
COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
# The tokens that end an expression on either side, besides brackets. Each has a lower precedence
# than a comparison.
EDGES = {";", ",", "?", ":", "=", "+=", "-=", "*=", "/=", "|=", "&=", "return", "throw", "case"}
BODY_STARTS = {")", "]", "^", "else", "do", "try", "const", "noexcept", "override", "mutable",
               "autoreleasepool"}
# A statement that begins with one of these cannot be left out, or is a declaration.
KEPT = set("""return const constexpr auto using if else for while do switch case default break
continue throw try catch static typedef struct class enum union template namespace public private
protected friend goto co_return static_assert delete operator explicit virtual inline
extern""".split())


def tokens_of(source):
    return [match for match in TOKEN.finditer(source) if match.group("blank") is None]


def function_bodies(words):
    """For each token, whether it is in a function's body and whether directly in a block of one."""
    stack, places = [], []
    for index, word in enumerate(words):
        if word == "}" and stack:
            stack.pop()
        places.append((True in stack, stack[-1:] == [True]))
        if word == "{":
            before = words[index - 1] if index else ""
            returned = re.search(r"\) -> [\w:<>*& ]+$", " ".join(words[max(index - 12, 0):index]))
            block = before in BODY_STARTS or returned is not None
            stack.append(block or (before in ";{}:" and stack[-1:] == [True]))
    return places


def extent(words, index, step, edges):
    """The last token of the operand beside an operator, that way."""
    openers, closers = ("([{", ")]}") if step > 0 else (")]}", "([{")
    depth = 0
    while 0 <= index + step < len(words):
        word = words[index + step]
        if depth == 0 and (word in edges or word in closers):
            break
        depth += (word in openers) - (word in closers)
        index += step
    return index


def faults_of(file, source, enumerations, chance):
    """Every place of a file where a fault could be made, in the order of the file."""
    tokens = tokens_of(source)
    words = [token.group() for token in tokens]
    places = function_bodies(words)

    def text(first, last):
        return source[tokens[first].start():tokens[last].end()] if first <= last else ""

    def fault(kind, first, last, after, code=None):
        before = text(first, last)
        code = code or f"(velmoraMutant({NUMBER}) ? {after} : {before})"
        start = tokens[first].start()
        return Fault(file, start, tokens[last].end(), source.count("\n", 0, start) + 1, kind,
                     " ".join(before.split()), " ".join(after.split()), code)

    for i, word in enumerate(words[:-1]):
        # The signs of templates and of references have no blanks around them.
        around = source[tokens[i].start() - 1] + source[tokens[i].end()]
        is_spaced = around.isspace() and words[i - 1] != "operator"
        in_function, in_block = places[i]
        if word in COMPARISONS and is_spaced:
            first, last = (extent(words, i, step, EDGES | {"&&", "||"}) for step in (-1, 1))
            yield fault("comparison", first, last, text(first, i - 1) + " " + COMPARISONS[word] +
                        " " + text(i + 1, last))
        elif word in ("&&", "||") and is_spaced:
            first, last = (extent(words, i, step, EDGES | {word, "||"}) for step in (-1, 1))
            kept = chance.choice([text(first, i - 1), text(i + 1, last)])
            yield fault("condition", first, last, f"static_cast<bool>({kept})")
        elif word == "if" and words[i + 1] == "(":
            last = extent(words, i + 1, 1, {})
            first = max([i + 2] + [k + 1 for k in range(i + 2, last) if words[k] == ";"])
            condition = text(first, last)
            yield fault("condition", first, last, f"!({condition})",
                        f"velmoraMutant({NUMBER}) != static_cast<bool>({condition})")
        elif in_function and re.fullmatch(r"(0[xX][\da-fA-F']+|[\d']+)[uUlLzZ]*", word):
            # Never below zero: the largest unsigned number is a fault that every test notices.
            sign = "+" if re.match("0(?![xX])", word) else chance.choice("+-")
            yield fault("number", i, i, f"{word} {sign} 1")
        elif word in ("true", "false") and in_function:
            yield fault("constant", i, i, "false" if word == "true" else "true")
        elif word in enumerations and words[i + 1] == "::":
            others = [other for names in enumerations[word] if words[i + 2] in names
                      for other in names if other != words[i + 2]]
            if others:
                yield fault("constant", i, i + 2, f"{word}::{chance.choice(others)}")
        if in_block and words[i - 1] in (";", "{", "}") and word not in KEPT and \
                re.match(r"\w|\+\+|--|[*:(\[]", word):
            last = extent(words, i, 1, {";"})
            if last + 1 < len(words) and words[last + 1] == ";" and \
                    not re.match(r"[\w:]+(<.*>)?[&*]* [&*]*\w+( =|$|\(|\{)", text(i, last), re.S):
                statement = text(i, last + 1)
                yield fault("statement", i, last + 1, "",
                            f"if (!velmoraMutant({NUMBER})) {{ {statement} }}")


def with_faults(source, faults):
    for number, fault in sorted(faults, key=lambda numbered: -numbered[1].start):
        source = (source[:fault.start] + fault.code.replace(NUMBER, str(number)) +
                  source[fault.end:])
    return source


class Tree:
    """The copy, and how its sources are compiled."""

    def __init__(self, directory):
        self.directory = directory
        self.files = sorted(str(path.relative_to(directory)) for top in ("src", "apps")
                            for path in (directory / top).rglob("*")
                            if path.suffix in (".cpp", ".h", ".mm"))
        self.sources = {file: (directory / file).read_text() for file in self.files}
        self.commands = {}
        for entry in json.loads((directory / "build/dev/compile_commands.json").read_text()):
            file = os.path.relpath(entry["file"], directory)
            command = shlex.split(entry["command"])
            # The tests have the only command for a source of a macOS extension. It has the other
            # form of velmoraMutant, so the definition is added.
            self.commands.setdefault(file, command[:command.index("-o")] + [
                "-DVELMORA_MUTANTS_AT_RUN_TIME_ONLY", "-fsyntax-only", str(directory / file)])

    def compiled_with(self, file):
        """What is compiled to see whether a file still does: of a header all that name it."""
        if not file.endswith(".h"):
            return [file] if file in self.commands else []
        name = re.compile('#(include|import) "(.*/)?' + re.escape(pathlib.Path(file).name) + '"')
        return [other for other in self.files if not other.endswith(".h")
                and other in self.commands and name.search(self.sources[other])]

    def write(self, file, faults):
        source = with_faults(self.sources[file], faults)
        if faults:
            header = os.path.relpath("mutants.h", os.path.dirname(file))
            source = f'#include "{header}"\n{source}'
        (self.directory / file).write_text(source)

    def compiles(self, file, faults):
        self.write(file, faults)
        commands = [self.commands[source] for source in self.compiled_with(file)]
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            return commands != [] and all(pool.map(lambda command: subprocess.run(
                command, stderr=subprocess.DEVNULL, check=False).returncode == 0, commands))


def possible_faults(tree, chance):
    """By folder and kind, each list in an order of chance."""
    enumerations = defaultdict(list)
    for source in tree.sources.values():
        plain = re.sub(r"//[^\n]*", "", source)
        for name, names in re.findall(r"enum class (\w+)[^{;]*\{([^}]*)\}", plain):
            enumerations[name].append(re.findall(r"(\w+)\s*(?:=[^,]*)?(?:,|$)", names.strip()))
    possible = defaultdict(lambda: defaultdict(list))
    for file in tree.files:
        for fault in faults_of(file, tree.sources[file], enumerations, chance):
            possible[os.path.dirname(file)][fault.kind].append(fault)
    for kinds in possible.values():
        for faults in kinds.values():
            chance.shuffle(faults)
    return possible


def chosen(tree, count, seed):
    """Large folders get more of them, but less than their share; each kind about the same."""
    possible = possible_faults(tree, random.Random(seed))
    weights = {folder: math.sqrt(sum(map(len, kinds.values())))
               for folder, kinds in possible.items()}
    taken, folders, kinds_taken = [], Counter(), Counter()
    while len(taken) < count and possible:
        folder = min(possible, key=lambda name: (folders[name] + 1) / weights[name])
        kinds = {kind: faults for kind, faults in possible[folder].items() if faults}
        if not kinds:
            del possible[folder]
            continue
        fault = kinds[min(kinds, key=lambda name: (kinds_taken[name], name))].pop()
        beside = [other for other in taken if other.file == fault.file]
        if any(other.start <= fault.end and fault.start <= other.end or other.line == fault.line
               for other in beside):
            continue
        if tree.compiles(fault.file, list(enumerate(beside + [fault], 1))):
            taken.append(fault)
            folders[folder] += 1
            kinds_taken[fault.kind] += 1
        else:
            tree.write(fault.file, list(enumerate(beside, 1)))
    return sorted(taken)


def make(directory, count, seed):
    """Makes them in the files of the copy, and returns them with their numbers."""
    tree = Tree(directory)
    numbered = list(enumerate(chosen(tree, count, seed), 1))
    for file in {fault.file for _, fault in numbered}:
        tree.write(file, [pair for pair in numbered if pair[1].file == file])
    return numbered
