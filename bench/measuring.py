"""The measuring functions of the scripts in this folder."""

import dataclasses
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

from manifest_sets import ROOT, ManifestSet

NAME = pathlib.Path(sys.argv[0]).name
PROGRAM = ROOT / "build" / "release" / "bin" / "velmora-finder-action"
BENCHMARKS = ROOT / "build" / "bench" / "bench"
EMPTY_PROGRAM = BENCHMARKS / "empty_program"
# These candidates look for no entries, and return the number of bytes.
COUNTING_BYTES = {"nothing", "read-only"}
WARM_UPS = 3


class MeasuringError(Exception):
    """The reason why there is no figure."""


def refuse_arguments(documentation):
    if sys.argv[1:] in (["-h"], ["--help"]):
        print(documentation.strip())
        sys.exit()
    if sys.argv[1:]:
        sys.exit(f"{NAME}: takes no arguments")


def build(*presets):
    for preset in presets:
        process = subprocess.run([ROOT / "scripts" / "build", preset], stdout=sys.stderr)
        if process.returncode != 0:
            sys.exit(f"{NAME}: the build failed")


def machine():
    """The processor, the compiler and simdjson."""
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    libraries = output_of(decoding_command(0)).splitlines()[0]
    return f"{model.group(1) if model else 'unknown processor'}, {libraries}"


def print_table(*rows):
    """The first row has the names of the columns, and the first column those of the rows."""
    widths = [max(len(cell) for cell in column) for column in zip(*rows)]
    print()
    for name, *cells in rows:
        print("  ".join([name.ljust(widths[0]), *map(str.rjust, cells, widths[1:])]).rstrip())


@dataclasses.dataclass(frozen=True)
class Side:
    """A candidate, and the manifests that it decodes in one turn."""

    candidate: str
    manifests: ManifestSet
    repetitions: int = 1

    @property
    def arguments(self):
        return [self.candidate, str(self.manifests.directory), str(self.repetitions)]

    @property
    def entry_count(self):
        return self.manifests.entry_count * self.repetitions

    def check(self, counted):
        counts_bytes = self.candidate in COUNTING_BYTES
        wanted = self.manifests.byte_count if counts_bytes else self.manifests.entry_count
        if counted != wanted:
            raise MeasuringError(
                f"{self.candidate} found {counted} instead of {wanted} in {self.manifests.name}")


def output_of(command):
    process = subprocess.run(command, stdout=subprocess.PIPE, text=True)
    if process.returncode != 0:
        raise MeasuringError(f"{pathlib.Path(command[0]).name} failed")
    return process.stdout


def decoding_command(rounds, *sides):
    return [str(BENCHMARKS / "decoding_times"), str(rounds),
            *(argument for side in sides for argument in side.arguments)]


def checked_rounds(output, sides):
    """Each round's nanoseconds, from the output of decoding_times."""
    _, *lines = output.splitlines()
    counts, *rounds = [[int(number) for number in line.split()] for line in lines]
    for side, counted in zip(sides, counts, strict=True):
        side.check(counted)
    return rounds


def decoding_times(rounds, *sides):
    """The nanoseconds per entry of each side, by round."""
    rows = checked_rounds(output_of(decoding_command(rounds, *sides)), sides)
    return [[time / side.entry_count for time in times]
            for side, times in zip(sides, zip(*rows), strict=True)]


def peak_memory(candidate, manifests):
    """The peak memory in bytes, for a set of one file."""
    (file,) = manifests.files
    peak, counted = output_of([BENCHMARKS / "decoding_memory", candidate, file]).split()
    Side(candidate, manifests).check(int(counted))
    return int(peak)


def exit_status(command, environment):
    """The exit status of a process that reads and prints nothing."""
    # posix_spawn only, because the measured time would include further work of Python.
    process = os.posix_spawn(command[0], command, environment, file_actions=[
        (os.POSIX_SPAWN_OPEN, 0, "/dev/null", os.O_RDONLY, 0),
        (os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)])
    _, status, _ = os.wait4(process, 0)
    return os.waitstatus_to_exitcode(status)


def peak_memory_of_process(command, environment):
    """The peak of resident memory in bytes, and the exit status."""
    process = os.posix_spawn(command[0], command, environment, file_actions=[
        (os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)])
    _, status, usage = os.wait4(process, 0)
    return usage.ru_maxrss * 1024, os.waitstatus_to_exitcode(status)


def milliseconds(command, environment):
    """The time from the start of the process to its end."""
    start = time.perf_counter_ns()
    status = exit_status(command, environment)
    end = time.perf_counter_ns()
    if status != 0:
        raise MeasuringError(f"{pathlib.Path(command[0]).name} ended with exit status {status}")
    return (end - start) / 1e6


def instructions(command, environment):
    """The instructions, which callgrind counts repeatably, and the output of the process."""
    with tempfile.TemporaryDirectory() as scratch:
        # One log per process, because a forked child counts its own instructions.
        process = subprocess.Popen(
            ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
             f"--log-file={scratch}/%p", *command],
            env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        output, _ = process.communicate()
        if process.returncode != 0:
            raise MeasuringError(f"{pathlib.Path(command[0]).name} failed under valgrind")
        log = pathlib.Path(scratch, str(process.pid)).read_text()
    return int(re.search(r"Collected *: (\d+)", log).group(1)), output


def decoding_instructions(candidate, manifests):
    """The instructions per entry of decoding alone: the difference between three rounds and one,
    less the same difference for the candidate that only copies."""
    return _of_two_rounds(candidate, manifests) - _of_two_rounds("nothing", manifests)


def _of_two_rounds(candidate, manifests):
    side = Side(candidate, manifests)
    counts = []
    for rounds in (3, 1):
        count, output = instructions(decoding_command(rounds, side), os.environ)
        checked_rounds(output, [side])
        counts.append(count)
    return (counts[0] - counts[1]) / 2 / side.entry_count
