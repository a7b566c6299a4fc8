"""Reads floating-point constants out of the C++ sources, with their exact values."""
import functools
import pathlib
import re
from fractions import Fraction

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Significant bits of the types that a constant may be declared with.
PRECISIONS = {"Real32": 24, "Constant32": 24, "Real64": 53, "Constant64": 53, "Real80": 64}
_TYPES = "|".join(PRECISIONS)
_LITERAL = r"[-+]?(?:0x[0-9a-fA-F.]+p[-+]?\d+|\d+(?:\.\d*)?(?:e[-+]?\d+)?)[FfL]?"


@functools.cache
def _code(file):
    """A source, its comments blanked."""
    return re.sub(r"//[^\n]*", lambda comment: " " * len(comment.group()), (ROOT / file).read_text())


def _end_of_braces(text, start):
    """The place behind the brace that closes the one at `start`."""
    depth = 0
    for i in range(start, len(text)):
        depth += {"{": 1, "}": -1}.get(text[i], 0)
        if depth == 0:
            return i + 1
    raise ValueError("a brace is not closed")


def _scope(file, name):
    """First and last place of the body of a struct or a function; without a name those of the file."""
    code = _code(file)
    if name is None:
        return 0, len(code)
    found = re.search(rf"\b{name}\b[^;{{}}]*\{{", code)
    if not found:
        raise ValueError(f"{file} has no {name}")
    return found.end() - 1, _end_of_braces(code, found.end() - 1)


def hexadecimal(literal):
    sign, whole, fraction, exponent = re.fullmatch(
        r"([-+]?)0x([0-9a-fA-F]+)(?:\.([0-9a-fA-F]*))?p([-+]?\d+)", literal).groups()
    fraction = fraction or ""
    value = Fraction(int(whole + fraction, 16)) * Fraction(2) ** (int(exponent) - 4 * len(fraction))
    return -value if sign == "-" else value


def _value(literal):
    """The value of a literal. A decimal one is the nearest Real64, which must not be asked for more."""
    if "x" in literal:
        return hexadecimal(literal.rstrip("FfL"))
    return Fraction(float(literal.rstrip("FfL")))


class Constant:
    """A named constant or array: exact values in the order of the source, inner braces flattened."""

    def __init__(self, file, values, precision, is_array, start, end):
        self.file, self.values, self.precision, self.is_array = file, values, precision, is_array
        self.start, self.end = start, end  # of the text from the name on

    def first_line(self):
        return _code(self.file).count("\n", 0, self.start)

    def last_line(self):
        return _code(self.file).count("\n", 0, self.end)


def constant(file, scope, name):
    """The constant of this name, with the type in front of it if that is needed to find the right one."""
    code = _code(file)
    start, end = _scope(file, scope)
    found = re.compile(rf"\b{re.escape(name)}\b\s*(?:\[\d*\])?\s*=\s*").search(code, start, end)
    if not found:
        raise ValueError(f"{file}: no constant {name}")
    types = re.findall(rf"\b({_TYPES})\b", code[start : found.start()])
    precision = PRECISIONS[types[-1]] if types else 53
    first = found.end()
    is_array = code[first] == "{"
    last = _end_of_braces(code, first) if is_array else first + len(re.match(r"[^,;}]*", code[first:]).group())
    text = code[first:last]
    if re.search(r"[^\s,{}]", re.sub(_LITERAL, "", text)):
        raise ValueError(f"{file}: {name} is made of more than numbers: {text}")
    values = [_value(v) for v in re.findall(_LITERAL, text)]
    return Constant(file, values, precision, is_array, found.start(), last)


def comments(file, first, last):
    """The comments of some lines."""
    lines = (ROOT / file).read_text().split("\n")[max(first, 0) : last + 1]
    return " ".join(line.split("//", 1)[1].strip() for line in lines if "//" in line)
