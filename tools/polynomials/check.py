#!/usr/bin/python3
"""Checks polynomials.toml, where its terms are explained, against the coefficients in the sources.

    check.py            everything; exit status 1 where something is wrong
    check.py NAME       the extrema of the errors of the blocks whose name contains NAME
    check.py --bounds   the bound of every block, as the data file is to have it
"""
import pathlib
import re
import sys
import tomllib

import mpmath
from mpmath import mp, mpf

import sources

sys.path.insert(0, str(sources.ROOT / "tools" / "tables"))
import minimax  # noqa: E402
import tablegen  # noqa: E402

PRECISION = 240
POINTS = 240  # of the grid, between which every extremum is looked for
EVENNESS = 1.15  # heights of the alternating extrema of a minimax approximation
COMMENT_LINES = 12  # a block's comment begins no further above it


def _erfcinv(u):
    """y with erfc(y) = u, for small u."""
    y = mpmath.sqrt(-mpmath.log(u))
    for _ in range(60):
        step = mpmath.log(mpmath.erfc(y) / u) * mpmath.erfc(y) * mpmath.sqrt(mpmath.pi) / 2 * mpmath.exp(y * y)
        y += step
        if abs(step) < mpf(2) ** -PRECISION * 16:
            break
    return y


def _polynomial(coefficients, x):
    total = mpf(0)
    for c in reversed(coefficients):
        total = total * x + c
    return total


FUNCTIONS = {name: getattr(mpmath, name) for name in
             "exp expm1 log log1p log10 sin cos tan asin atan sinh cosh tanh asinh acosh atanh sqrt cbrt erf erfc erfinv".split()}
FUNCTIONS |= {
    "pi": mpmath.pi,
    "log2": lambda x: mpmath.log(x) / mpmath.log(2),
    "erfcinv": _erfcinv,
    "polynomial": _polynomial,
    "horner": lambda c, x: _polynomial(c[::-1], x),
    "pairs": lambda c: [head + rest for head, rest in zip(c[0::2], c[1::2])],
    "real64": tablegen.real64,
    "real80": tablegen.real80,
    "_number": mpf,
}


def compiled(expression):
    """An expression with numbers of full precision and ^ for powers. Numbers in brackets stay what they are."""
    python = re.sub(r"(?<![\w.])(\d+(?:\.\d+)?)(?![\w.:\]])", r"_number('\1')", expression.replace("^", "**"))
    return compile(python.strip(), expression, "eval")


def evaluated(code, names):
    return eval(code, {**FUNCTIONS, **names})  # the data file is part of the project


def exact(fraction):
    with mp.workprec(1200):
        return mpf(fraction.numerator) / fraction.denominator


class Block:
    def __init__(self, entry):
        self.entry = entry
        self.name, self.file = entry["name"], entry["file"]
        self.constants, self.names = [], {}
        for given in entry["coefficients"]:
            name, at, scope = given.partition("@")
            file, scope = (scope, None) if "/" in scope else (self.file, scope or None if at else entry.get("in"))
            constant = sources.constant(file, scope, name)
            values = [exact(v) for v in constant.values]
            self.constants.append(constant)
            self.names[name.split()[-1]] = values if constant.is_array else values[0]
        self.variable = entry.get("variable", "x")
        self.where = [(name.strip(), compiled(value)) for name, value in
                      (line.split("=", 1) for line in entry.get("where", []))]
        self.function, self.approximation = compiled(entry["function"]), compiled(entry["approximation"])

    def error_at(self, x):
        names = {**self.names, self.variable: x}
        for name, code in self.where:
            names[name] = evaluated(code, names)
        wanted, given = evaluated(self.function, names), evaluated(self.approximation, names)
        return given - wanted if self.entry["error"] == "absolute" else given / wanted - 1

    def extrema(self, interval):
        """The ends and the local extrema between them: points and errors. Ends that are poles are drawn in a little."""
        low, high = (evaluated(compiled(end), {}) for end in interval)
        middle, half = (low + high) / 2, (high - low) / 2
        drawn_in = 1 - mpf(2) ** -60
        # The grid does not hold the middle, which is a zero of many functions.
        inner = [-mpmath.cos(mpmath.pi * (k + mpf(1) / 7) / (POINTS + mpf(1) / 3)) for k in range(POINTS + 1)]
        points = [middle + half * t for t in [-drawn_in, *inner, drawn_in]]
        errors = [self.error_at(x) for x in points]
        found = [(points[0], errors[0])]
        for i in range(1, len(points) - 1):
            if (errors[i] - errors[i - 1]) * (errors[i + 1] - errors[i]) <= 0:
                found.append(self._refined(points[i - 1 : i + 2], errors[i - 1 : i + 2]))
        return [*found, (points[-1], errors[-1])]

    def _refined(self, x, e):
        """The vertex of the parabola through three points, and once more closer to it."""
        best = (x[1], e[1])
        for _ in range(2):
            slope, next_slope = (e[1] - e[0]) / (x[1] - x[0]), (e[2] - e[1]) / (x[2] - x[1])
            if slope == next_slope:
                break
            vertex = (x[0] + x[1]) / 2 - slope * (x[2] - x[0]) / (2 * (next_slope - slope))
            if not x[0] < vertex < x[2]:
                break
            width = (x[2] - x[0]) / 16
            x = [vertex - width, vertex, vertex + width]
            e = [self.error_at(t) for t in x]
            best = max(best, (vertex, e[1]), key=lambda point: abs(point[1]))
        return best

    def bound(self):
        largest = max(abs(e) for _, e in self.extrema(self.entry["interval"]))
        return f"2^-{mpmath.floor(-mpmath.log(largest, 2) * 10) / 10}"

    def faults(self):
        bound = self.bound()
        if bound != self.entry["bound"]:
            yield f"the bound is {bound}, stated is {self.entry['bound']}"
        if self.entry["bound"] not in self._comment():
            yield f"the comment at the coefficients does not say {self.entry['bound']}"
        made = self.entry["made"]
        if made not in ("taylor", "minimax", "fitted", "table"):
            yield f"made is {made}"
        if made == "taylor" and not self.entry.get("taylor"):
            yield "the terms of the Taylor series are not given"
        if made == "minimax":
            yield from self._alternation_faults()
        if "taylor" in self.entry:
            yield from self._taylor_faults()
        if "again" in self.entry:
            yield from self._again_faults()

    def _comment(self):
        first = min(c.first_line() for c in self.constants)
        last = max(c.last_line() for c in self.constants)
        return sources.comments(self.file, first - COMMENT_LINES, last)

    def _alternation_faults(self):
        runs = []  # of equal sign: the largest error of each
        for _, e in self.extrema(self.entry.get("fitted", self.entry["interval"])):
            if runs and (e < 0) == (runs[-1] < 0):
                runs[-1] = max(runs[-1], e, key=abs)
            else:
                runs.append(e)
        heights = [abs(e) for e in runs]
        wanted = self.entry["free"] + 1
        windows = [heights[i : i + wanted] for i in range(len(heights) - wanted + 1)]
        if not windows or max(heights) > EVENNESS * max(min(w) for w in windows):
            yield f"the error does not alternate evenly between {wanted} extrema: " + " ".join(
                mpmath.nstr(h / max(heights), 3) for h in heights)

    def _coefficients(self):
        return [(v, c.precision) for c in self.constants for v in c.values]

    def _taylor_faults(self):
        coefficients, terms = self._coefficients(), self.entry["taylor"]
        if len(coefficients) != len(terms):
            yield f"{len(coefficients)} coefficients, {len(terms)} terms"
            return
        rounded = {"to nearest": tablegen.nearest, "towards zero": tablegen.truncated}[
            self.entry.get("rounding", "to nearest")]
        for i, ((value, precision), term) in enumerate(zip(coefficients, terms)):
            if term and rounded(evaluated(compiled(term), self.names), precision) != exact(value):
                yield f"coefficient {i} is not {term}"

    def _again_faults(self):
        """The best approximation of a target by powers of x from the highest on, rounded."""
        code = compiled(self.entry["again"])
        low, high = (minimax.to_mpfr(evaluated(compiled(end), {})) for end in self.entry["fitted"])
        target = minimax.interpolant(
            lambda x: minimax.to_mpfr(evaluated(code, {self.variable: minimax.to_mpf(x)})), low, high, minimax.mpfr(0))
        coefficients = self._coefficients()
        fitted, _ = minimax.fit(target, list(range(len(coefficients)))[::-1], low, high)
        for i, ((value, precision), best) in enumerate(zip(coefficients, fitted)):
            if tablegen.nearest(minimax.to_mpf(best), precision) != exact(value):
                yield f"coefficient {i} is not that of the best approximation"


def blocks():
    path = pathlib.Path(__file__).parent / "polynomials.toml"
    return [Block(entry) for entry in tomllib.loads(path.read_text())["block"]]


def main(arguments):
    mp.prec = PRECISION
    if arguments == ["--bounds"]:
        for block in blocks():
            print(block.bound(), block.name)
        return 0
    if arguments:
        for block in blocks():
            if arguments[0] in block.name:
                print(block.name)
                for x, e in block.extrema(block.entry.get("fitted", block.entry["interval"])):
                    print(f"  {mpmath.nstr(x, 12):>20}  {mpmath.nstr(e, 6)}")
        return 0
    faults = [f"{block.name}: {fault}" for block in blocks() for fault in block.faults()]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
