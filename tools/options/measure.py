#!/usr/bin/env python3
"""Measures what each choice of compile options at the head of a kernel is worth.

    measure.py BUILD [--write] [--source src/explog/exp.cpp ...] [--rounds N]

A kernel says "// GCC: -fno-tree-ter (0.93)": compiled so, its functions take 0.93 of the time that they take without the
option. For every such line the kernel is compiled once more with the line left out, the library linked with that object
in the kernel's place, and both libraries run against each other by okt_race; the number is the geometric mean over the
kernel's functions, routine by routine. --write renews the numbers at the heads.
"""
import argparse
import json
import math
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests"))
import at_level  # noqa: E402

LEVEL = {None: "base", "256": "v3", "512": "v4"}
CHOICE = re.compile(r"^// GCC(?: at (?P<bits>\d+) bits)?: (?P<options>.*) \((?P<gain>[^)]*)\)$", re.MULTILINE)
EXPORT = re.compile(r"^OKT_EXPORT(?:_GRADES)?\((\w+),", re.MULTILINE)


def output(command, directory):
    return subprocess.run(command, cwd=directory, check=True, capture_output=True, text=True).stdout


def without(command, options):
    """The compiler's command with the first run of these options left out."""
    for at in range(len(command) - len(options) + 1):
        if command[at:at + len(options)] == options:
            return command[:at] + command[at + len(options):]
    raise ValueError(f"{shlex.join(options)} is not in the command; is the build up to date?")


class Build:
    """The library of one level in a build directory."""

    def __init__(self, directory, level):
        self.directory = pathlib.Path(directory).resolve()
        objects = "okt_objects" if level == "base" else f"okt_objects_{level}"
        folder = "" if level == "base" else f"glibc-hwcaps/x86-64-{level}/"
        commands = json.loads((self.directory / "compile_commands.json").read_text())
        self.compile = {pathlib.Path(c["file"]): shlex.split(c["command"]) for c in commands
                        if f"/{objects}.dir/" in c["command"]}
        self.library = self.directory / folder / "liboktvmmx.so"
        link = output(["ninja", "-t", "commands", "-s", f"{folder}liboktvmmx.so.6.1"], self.directory).strip()
        link = link.removeprefix(": && ").removesuffix(" && :")
        self.link = shlex.split(link)

    def relinked(self, source, options, scratch):
        """The library with the source compiled without the options."""
        command = without(self.compile[source], options)
        at = command.index("-o") + 1
        usual, other = command[at], str(scratch / "kernel.o")
        command[at] = other
        output(command, self.directory)
        library = scratch / "liboktvmmx.so"
        link = [other if word == usual else word for word in self.link]
        link[link.index("-o") + 1] = str(library)
        output(link, self.directory)
        return library

    def gain(self, families, other, rounds):
        """Time of the library as it is over that of the other one."""
        command = [str(self.directory / "bench/okt_race"), str(other), str(self.library), "--plain", f"--rounds={rounds}"]
        command += [f"--family={family}" for family in families]
        rows = [line.split() for line in output(command, self.directory).splitlines()]
        ratios = [math.log(float(second) / float(first)) for _, _, first, second in rows]
        return math.exp(sum(ratios) / len(ratios))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", help="build directory of the preset dev, up to date")
    parser.add_argument("--source", action="append", type=pathlib.Path, help="these kernels alone")
    parser.add_argument("--rounds", type=int, default=500)
    parser.add_argument("--write", action="store_true", help="renew the numbers at the heads")
    arguments = parser.parse_args()
    builds = {}
    for source in sorted(Build(arguments.build, "base").compile):
        if arguments.source and source not in [path.resolve() for path in arguments.source]:
            continue
        text = source.read_text()
        families = sorted(set(EXPORT.findall(text)))
        for choice in CHOICE.finditer(text):
            level = LEVEL[choice["bits"]]
            if lacking := at_level.missing(level):
                print(f"skipped {source.relative_to(ROOT)}: this processor has no {', '.join(sorted(lacking))}")
                continue
            build = builds.setdefault(level, Build(arguments.build, level))
            with tempfile.TemporaryDirectory() as scratch:
                other = build.relinked(source, shlex.split(choice["options"]), pathlib.Path(scratch))
                gain = build.gain(families, other, arguments.rounds)
            print(f"{gain:.2f}  {source.relative_to(ROOT)}  {choice['options']}", flush=True)
            text = text.replace(choice[0], choice[0].replace(f"({choice['gain']})", f"({gain:.2f})"))
        if arguments.write:
            source.write_text(text)


if __name__ == "__main__":
    main()
