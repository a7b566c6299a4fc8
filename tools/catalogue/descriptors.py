#!/usr/bin/env python3
"""Derives from the families' descriptors, src/<subsystem>/<family>.toml, what tools and tests compile of them.

    descriptors.py DIR    references.inc, quick_references.inc, benchmark_ranges.inc, peers_libm.inc, peers_plain.inc,
                          peers_sleef_rows.inc, family_models.inc, and the stamp `descriptors`

docs/descriptors.md tells the format. The bounds are not compiled: tools/accuracy/bounds.cpp reads them when it runs. A
mistake in a formula is reported by the compiler at its line of the descriptor.
"""
import pathlib
import re
import sys
import tomllib

import generate

SOURCES = generate.ROOT / "src"
MODELS = generate.ROOT / "tests" / "models"
KEYS = {"reference", "quick", "domain", "ordinary", "benchmark", "peers"}
PEERS = {"sleef", "libm", "scalar_loop", "plain_loop", "copy"}
HEADER = "// Generated from src/*/*.toml; do not edit."
SHAPE = {"U": "unary", "B": "binary", "S": "withScalar", "D": "twoResults"}
CPP = {"Real32": "float", "Real64": "double", "Complex32": "std::complex<float>", "Complex64": "std::complex<double>"}


class Mistake(Exception):
    """What is wrong with a descriptor, with its file and line."""


class Side:
    """The table [real] or [complex] of a family: what holds for its routines on real or on complex elements."""

    def __init__(self, path, text, name, family, table, routines):
        self.path, self.text, self.name, self.family, self.table = path, text, name, family, table
        self.routines = routines
        self.form, self.source = routines[0].form, routines[0].source
        self.complex = "true" if name == "complex" else "false"
        self.complex_source = self.source.startswith("Complex")
        self.complex_destination = routines[0].destination.startswith("Complex")
        self.arguments = 2 if self.form in "BS" else 1
        self.parts = 2 if self.form == "D" or self.complex_destination else 1
        self.peers = table.get("peers", {})
        for key, known in [*((key, KEYS) for key in table), *((key, PEERS) for key in self.peers)]:
            if key not in known:
                self.fail(key, "this key is not known")
        if "reference" not in table:
            self.fail("", "there is no reference")

    def line(self, key):
        """The line of a key, or that of the table."""
        lines = self.text.splitlines()
        number = lines.index(f"[{self.name}]")
        for at in range(number + 1, len(lines)):
            if lines[at].startswith("["):
                break
            if key and re.search(rf"(^|[{{,] ?){key} =", lines[at]):
                return at + 1
        return number + 1

    def place(self, key):
        return f'#line {self.line(key)} "{self.path}"'

    def fail(self, key, why):
        raise Mistake(f"{self.path}:{self.line(key)}: {key or self.family}: {why}")

    def types(self):
        """One routine a type, whatever the grades."""
        return list({routine.type: routine for routine in self.routines}.values())

    def texts(self, key):
        """A range, or one for each argument."""
        value = self.table[key]
        texts = [value] if isinstance(value, str) else value
        if len(texts) not in (1, self.arguments):
            self.fail(key, f"needs a range, or {self.arguments} of them")
        return texts


def load():
    """All sides of all families, in the order of the catalogue."""
    found = {}
    for file in sorted(SOURCES.glob("*/*.toml")):
        path, text = file.relative_to(generate.ROOT).as_posix(), file.read_text()
        try:
            table = tomllib.loads(text)
        except tomllib.TOMLDecodeError as error:
            raise Mistake(f"{path}: {error}") from None
        name = table.get("family")
        if name in found:
            raise Mistake(f"{path}: {name} has a descriptor already, {found[name][0]}")
        found[name] = path, text, table
    sides = []
    for family in generate.load():
        if family["name"] not in found:
            raise Mistake(f"src: there is no descriptor of {family['name']}")
        path, text, table = found.pop(family["name"])
        for name in ("real", "complex"):
            routines = [r for r in family["rows"] if r.type.endswith("c") == (name == "complex")]
            if bool(routines) != (name in table):
                raise Mistake(f"{path}: [{name}] is there without such routines, or they without it")
            if routines:
                sides.append(Side(path, text, name, family["name"], table[name], routines))
    for name, (path, *_) in found.items():
        raise Mistake(f"{path}: the catalogue has no family {name}")
    return sides


def literal(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def literals(texts):
    return "(" + ", ".join(map(literal, texts)) + ")"


def references(sides):
    """One OKT_REFERENCE a family and side: the exact result, and where it is tried."""
    out = [HEADER]
    for side in sides:
        binding = ("Z" if side.complex_source else "X") + ("W" if side.complex_source else "Y") * (side.arguments - 1)
        inputs = side.arguments * (2 if side.complex_source else 1)
        domain = [t if isinstance(t, str) else " ; ".join(t) for t in side.table.get("domain", [])]
        ordinary = side.texts("ordinary") if "ordinary" in side.table else []
        out += [
            side.place("reference"),
            f"OKT_REFERENCE({literal(side.family)}, {side.complex}, {inputs}, {side.parts}, {literals(domain)}, "
            f"{literals(ordinary)}, {binding}, {side.table['reference']})",
        ]
    return out


def quick_references(sides):
    """One OKT_QUICK_REFERENCE for a family of real arguments whose formula the C library's functions make."""
    out = [HEADER]
    for side in sides:
        plain = side.peers.get("plain_loop")
        key = "quick" if "quick" in side.table else "libm" if "libm" in side.peers else "plain_loop"
        formula = {"quick": side.table.get("quick"), "libm": side.peers.get("libm"), "plain_loop": plain}[key]
        if formula and not side.complex_source:
            out += [side.place(key), f"OKT_QUICK_REFERENCE({literal(side.family)}, {side.complex}, {formula})"]
    return out


def benchmark_ranges(sides):
    """One OKT_BENCHMARK_RANGES a family and side; the texts are a small part of those of tools/accuracy/points.h."""
    out = [HEADER]
    for side in sides:
        ranges = ["Range()", "Range()"]
        scalar = "usualScalar"
        for at, text in enumerate(side.texts("benchmark") if "benchmark" in side.table else []):
            words = text.split()
            if at == 1 and side.form == "S":
                if len(words) != 2 or words[0] != "list":
                    side.fail("benchmark", 'a scalar is written as "list 2.5"')
                scalar = words[1]
                continue
            kind = {("uniform", 3): "even", ("log", 3): "logarithmic", ("log", 4): "bothSigns"}.get(
                (words[0], len(words)))
            if kind is None or words[3:] not in ([], ["both"]):
                side.fail("benchmark", 'needs "uniform LO HI", "log LO HI" or "log LO HI both"')
            ranges[at] = f"{kind}({words[1]}, {words[2]})"
        out += [
            side.place("benchmark"),
            f"OKT_BENCHMARK_RANGES({literal(side.family)}, {side.complex}, {ranges[0]}, {ranges[1]}, {scalar})",
        ]
    return out


def peers_libm(sides):
    """The C library's function on each type, and scalar loops by their names in bench/peers_libm.cpp."""
    out = [HEADER]
    for side in sides:
        for routine in side.types():
            source, part = CPP[routine.source], CPP[generate.PART.get(routine.source, routine.source)]
            result = f"Pair<{part}>" if side.form == "D" else CPP[routine.destination]
            names = ("z", "w") if side.complex_source else ("x", "y")
            arguments = ", ".join(f"[[maybe_unused]] {source} {name}" for name in names[: side.arguments])
            row = f"{literal(side.family)}, {literal(routine.type)}"
            if "libm" in side.peers:
                out += [
                    side.place("libm"),
                    f"OKT_LIBM({row}, {SHAPE[side.form]}, {part}, {source}, {result}, ({arguments}), "
                    f"{side.peers['libm']})",
                ]
            if "scalar_loop" in side.peers:
                name = side.peers["scalar_loop"]
                out += [side.place("scalar_loop"), f"OKT_SCALAR_LOOP({row}, {literal(name)}, {name}<{part}>)"]
    return out


def peers_plain(sides):
    """Plain loops: a formula on real elements, on complex ones a name in bench/peers_plain.cpp. Copies by the form."""
    out = [HEADER]
    for side in sides:
        for routine in side.types():
            part = CPP[generate.PART.get(routine.source, routine.source)]
            row = f"{literal(side.family)}, {literal(routine.type)}"
            plain = side.peers.get("plain_loop")
            if plain and side.complex_source:
                out += [side.place("plain_loop"), f"OKT_PLAIN_LOOP({row}, {literal(plain)}, {plain}<{part}>)"]
            elif plain:
                if side.form not in "UB":
                    side.fail("plain_loop", "is for functions of one or two sources and one destination")
                out += [side.place("plain_loop"), f"OKT_PLAIN_FORMULA({row}, {SHAPE[side.form]}, {part}, {plain})"]
            if side.peers.get("copy"):
                if side.form not in "UB" or routine.source != routine.destination:
                    side.fail("copy", "is for functions of one or two sources and a destination of their type")
                word = {"float": "std::uint32_t", "double": "std::uint64_t"}[part]
                reals = 2 if side.complex_source else 1
                call = f"copyBoth<{word}, {reals}>" if side.form == "B" else f"copyOne<{part}, {reals}>"
                label = "two arrays read, one written" if side.form == "B" else "memcpy"
                out += [side.place("copy"), f"OKT_COPY({row}, {literal(label)}, ({call}))"]
    return out


def peers_sleef(sides):
    """One OKT_SLEEF_ROW a type: "exp u10" names the function and its form, what follows a comma is for the reader."""
    out = [HEADER]
    for side in sides:
        if "sleef" not in side.peers:
            continue
        if side.name == "complex":
            side.fail("sleef", "is for real elements")
        label = side.peers["sleef"]
        name, *ulp = label.split(",")[0].split()
        for routine in side.types():
            letter = {"32f": "S", "64f": "D"}[routine.type]
            out += [
                side.place("sleef"),
                f"OKT_SLEEF_ROW({literal(side.family)}, {literal(routine.type)}, {literal(label)}, "
                f"{SHAPE[side.form]}, P{letter.lower()}, OKT_SLEEF_{letter}({name}, {''.join(ulp)}))",
            ]
    return out


def family_models(sides):
    """Every model of tests/models that bears the name of a routine, for the fuzz target: the headers, then one
    OKT_MODEL_ROW an export. A model serves the routine of the grade in its name, or all of its type."""
    headers = {}
    for file in sorted(MODELS.glob("*_model.h")):
        for name in re.findall(r"^[^ \n].*\bOktStatus (\w+_(?:32|64)fc?(?:_A\d\d)?)\(", file.read_text(), re.MULTILINE):
            headers[name] = f"models/{file.name}"
    rows, used = [], set()
    for side in sides:
        for routine in side.routines:
            stem = f"{routine.family}_{routine.type}"
            for model in [f"{stem}_{grade}" for grade in routine.grades] + [stem]:
                if model in headers:
                    used.add(headers[model])
                    rows += [f"OKT_MODEL_ROW({name}, {model})" for name in routine.names]
                    break
    return [HEADER, "#ifdef OKT_MODEL_ROW", *rows, "#else", *(f'#include "{h}"' for h in sorted(used)), "#endif"]


FILES = {
    "references.inc": references,
    "quick_references.inc": quick_references,
    "benchmark_ranges.inc": benchmark_ranges,
    "peers_libm.inc": peers_libm,
    "peers_plain.inc": peers_plain,
    "peers_sleef_rows.inc": peers_sleef,
    "family_models.inc": family_models,
}


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    try:
        sides = load()
        for name, derive in FILES.items():
            generate.write(pathlib.Path(arguments[0]) / name, "\n".join(derive(sides)) + "\n")
        (pathlib.Path(arguments[0]) / "descriptors").touch()
    except Mistake as mistake:
        sys.exit(str(mistake))


if __name__ == "__main__":
    main(sys.argv[1:])
