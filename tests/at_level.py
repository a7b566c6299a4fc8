#!/usr/bin/env python3
"""Runs a command with the library of one level: at_level.py (base|v3|v4) COMMAND...

The system's loader takes the library of the highest level that the processor has; a setting of the loader hides the
levels above. The command finds the library's tag in OKT_LEVEL_TAG, so that a test can tell that it got what it wanted.
Where the processor lacks the level, the command is not run, and the exit code 77 says so.
"""
import os
import pathlib
import sys

NEEDS = {
    "base": set(),
    "v3": {"avx", "avx2", "bmi1", "bmi2", "f16c", "fma", "abm", "movbe"},
    "v4": {"avx512f", "avx512bw", "avx512cd", "avx512dq", "avx512vl"},
}
TAG = {"base": "mx", "v3": "mx3", "v4": "mx4"}
HIDDEN = {"base": "-AVX512F,-AVX2", "v3": "-AVX512F", "v4": ""}
SKIPPED = 77


def features():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("flags"):
            return set(line.split(":", 1)[1].split())
    return set()


def missing(level):
    """What this processor lacks for a level."""
    needed = NEEDS["v3"] | NEEDS["v4"] if level == "v4" else NEEDS[level]
    return needed - features()


def environment(level):
    settings = {**os.environ, "OKT_LEVEL_TAG": TAG[level]}
    if HIDDEN[level]:
        settings["GLIBC_TUNABLES"] = f"glibc.cpu.hwcaps={HIDDEN[level]}"
    return settings


def main():
    if len(sys.argv) < 3 or sys.argv[1] not in NEEDS:
        sys.exit(__doc__)
    level, command = sys.argv[1], sys.argv[2:]
    if lacking := missing(level):
        print(f"skipped: this processor has no {', '.join(sorted(lacking))}")
        sys.exit(SKIPPED)
    os.execvpe(command[0], command, environment(level))


if __name__ == "__main__":
    main()
