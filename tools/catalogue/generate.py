#!/usr/bin/env python3
"""Derives every list of exported names from catalogue/catalogue.toml.

    generate.py header  OUT   include/oktvm.h
    generate.py docs    OUT   docs/catalogue.md
    generate.py build   DIR   exports/<Family>.h, oktvm.map, oktvmmx.def, export_list.inc, and the stamp `derived`

A file is only rewritten when its contents change, so that nothing is rebuilt for no reason.
"""
import pathlib
import sys
import textwrap
import tomllib

ROOT = pathlib.Path(__file__).resolve().parents[2]
CATALOGUE = ROOT / "catalogue" / "catalogue.toml"
TEMPLATE = pathlib.Path(__file__).resolve().parent / "oktvm.h.in"

ELEMENT = {"32f": "Real32", "64f": "Real64", "32fc": "Complex32", "64fc": "Complex64"}
PART = {"Complex32": "Real32", "Complex64": "Real64"}
# Catalogue name of a frame: enumerator of the registry, class of src/frame/frame.h.
FRAME = {
    "plain": ("plain", "Plain"),
    "mxcsr": ("mxcsr", "Mxcsr"),
    "x87-53": ("x87_53", "X87<53>"),
    "x87-64": ("x87_64", "X87<64>"),
    "double-guard": ("doubleGuard", "DoubleGuard"),
}
VERSION_QUERY = "oktvmGetLibVersion"
COLUMNS = 120


class Routine:
    """One routine and the names it is exported under."""

    def __init__(self, family, row):
        self.family = family["name"]
        self.form = family["form"]
        self.type = row["type"]
        self.grades = row["grades"].split()
        self.frame = row["frame"]
        self.warnings = row["warnings"].split()
        self.seed = row.get("seed", False)
        self.in_place = row.get("in_place", True)
        element = ELEMENT[self.type]
        self.source = self.array("source", family, element)
        self.destination = self.array("destination", family, element)

    @staticmethod
    def array(which, family, element):
        """The type of the source or destination: the main array's, or its parts' where the family says "real"."""
        return PART.get(element, element) if family.get(which) == "real" else element

    @property
    def names(self):
        stem = f"okts{self.family}_{self.type}"
        return [f"{stem}_{grade}" for grade in self.grades] or [stem]

    def parameters(self):
        src, dst = self.source, self.destination
        return {
            "U": [f"const {src}* src", f"{dst}* dst"],
            "B": [f"const {src}* src1", f"const {src}* src2", f"{dst}* dst"],
            "S": [f"const {src}* src", f"{src} scalar", f"{dst}* dst"],
            "D": [f"const {src}* src", f"{dst}* dst1", f"{dst}* dst2"],
        }[self.form] + ["int32_t len"]


def load():
    families = tomllib.loads(CATALOGUE.read_text())["family"]
    for family in families:
        family["rows"] = [Routine(family, row) for row in family["routines"]]
    return families


def exported_names(families):
    names = [n for f in families for r in f["rows"] for n in r.names]
    return sorted(names + [VERSION_QUERY], key=lambda name: name.encode())


ARGUMENT_TEXT = {
    "src": "source array of len elements",
    "src1": "first source array of len elements",
    "src2": "second source array of len elements",
    "scalar": "the same for every element",
    "dst": "destination array of len elements",
    "dst1": "first destination array of len elements",
    "dst2": "second destination array of len elements",
    "len": "number of elements, 1 or more",
}


def comment(text):
    """Lines of a Doxygen comment: paragraphs filled up to the columns of .clang-format, list items as they are."""
    lines = []
    for paragraph in text.strip().split("\n\n"):
        items = paragraph.lstrip().startswith(("-", "|", "@", "  "))
        filled = paragraph.splitlines() if items else textwrap.wrap(
            paragraph, COLUMNS - len(" * "), break_on_hyphens=False, break_long_words=False)
        lines += [" *", *((" * " + line).rstrip() for line in filled)]
    return lines


def statuses(family):
    """What the functions of a family return; a warning that not all types know is told with those that do."""
    everywhere = ["oktStatusOk", "oktStatusBadLength", "oktStatusNullPointer"]
    some = []
    for warning in dict.fromkeys(w for r in family["rows"] for w in r.warnings):
        types = list(dict.fromkeys(r.type for r in family["rows"] if warning in r.warnings))
        if len(types) == len({r.type for r in family["rows"]}):
            everywhere.append("oktStatus" + warning)
        else:
            some.append(f"on {' and '.join(types)} oktStatus{warning}")
    return "; ".join([", ".join(everywhere), *some])


def doxygen(family):
    """The comment of a family, which stands at its first name; all others refer to it."""
    summary = family["summary"]
    if not summary.startswith("src"):  # an argument's name keeps its case
        summary = summary[0].upper() + summary[1:]
    lines = ["/**", f" * @brief {summary}, for each element."]
    if "doc" in family:
        lines += comment(family["doc"])
    lines.append(" *")
    for parameter in family["rows"][0].parameters():
        name = parameter.split()[-1]
        direction = "out" if name.startswith("dst") else "in"
        lines.append(f" * @param[{direction}] {name} {ARGUMENT_TEXT[name]}")
    returned = textwrap.wrap("@return " + statuses(family), COLUMNS - len(" * "))
    lines += [" * " + line for line in returned]
    lines.append(" */")
    return lines


def routines_in(families, frame):
    """The routines of a frame, a line each family: "Ln on 32fc (A11), 32fc (A24), 64fc"."""
    lines = []
    for family in families:
        types = []
        for routine in (r for r in family["rows"] if r.frame == frame):
            alone = sum(r.type == routine.type for r in family["rows"]) == 1
            types.append(routine.type if alone else f"{routine.type} ({' '.join(routine.grades)})")
        if types:
            lines.append(f" *   - {family['name']} on {', '.join(types)}")
    return lines


def header(families):
    body = []
    for group in dict.fromkeys(f["group"] for f in families):
        slug = "".join(word.capitalize() for word in group.split())
        body += [f"/** @defgroup {slug} {group}", " *  @{ */", ""]
        for family in (f for f in families if f["group"] == group):
            described = family["rows"][0].names[0]
            body += doxygen(family)
            for routine in family["rows"]:
                arguments = ", ".join(routine.parameters())
                for name in routine.names:
                    if name != described:
                        body.append(f"/** @copydoc {described} */")
                    body.append(f"OKT_API OktStatus {name}({arguments});")
            body.append("")
        body += ["/** @} */", ""]
    text = TEMPLATE.read_text()
    for frame, place in (("mxcsr", "@MXCSR@"), ("double-guard", "@DOUBLE_GUARD@")):
        text = text.replace(place, "\n".join(routines_in(families, frame)))
    return text.replace("@FUNCTIONS@", "\n".join(body).rstrip())


def docs(families):
    names = exported_names(families)
    out = [
        "# Catalogue",
        "",
        "<!-- Generated from catalogue/catalogue.toml; do not edit. -->",
        "",
        f"{len(families)} families with {len(names) - 1} functions, and the version query. A cell names the grades of a routine.",
        "",
        "| Family | What it computes | Form | `32f` | `64f` | `32fc` | `64fc` | Warnings |",
        "| --- | --- | --- | --- | --- | --- | --- | --- |",
    ]
    for family in families:
        cells = []
        for element in ELEMENT:
            cell = ", ".join(" ".join(r.grades) or "no grade" for r in family["rows"] if r.type == element)
            cells.append(cell or "-")
        warnings = dict.fromkeys(w for r in family["rows"] for w in r.warnings)
        out.append(
            f"| {family['name']} | {family['summary']} | {family['form']} | "
            + " | ".join(cells)
            + f" | {', '.join(warnings) or '-'} |"
        )
    return "\n".join(out) + "\n"


def export_macros(family):
    """OKT_EXPORT(Family, type, routine) defines every name of a routine: one body in the routine's frame for all."""
    out = ["// Generated from catalogue/catalogue.toml; do not edit.", "#pragma once", "", '#include "frame/frame.h"', ""]
    for routine in family["rows"]:
        key = f"{routine.family}_{routine.type}"
        alone = sum(r.type == routine.type for r in family["rows"]) == 1
        if not alone:
            key += f"_{routine.grades[0]}"
        first, *others = routine.names
        parameters = ", ".join(routine.parameters())
        *arrays, _ = (p.split()[-1] for p in routine.parameters())
        arguments = ", ".join(arrays)
        body = [
            f'extern "C" OKT_API OktStatus {first}({parameters}) {{',
            f"    return okt::frame::call<okt::frame::{FRAME[routine.frame][1]}>(",
            f"        [](auto&&... all) OKT_INLINE {{ routine(all...); }}, len, {arguments});",
            "}",
        ]
        body += [f'extern "C" OKT_API OktStatus {n}({parameters}) OKT_ALIAS({first});' for n in others]
        out.append(f"#define OKT_EXPORT_{key}(routine) \\")
        out.append(" \\\n".join("    " + line for line in body))
    return "\n".join(out) + "\n"


def version_script(families):
    names = "".join(f"        {name};\n" for name in exported_names(families))
    return f"{{\n    global:\n{names}    local:\n        *;\n}};\n"


def module_definition(families):
    names = exported_names(families)
    return "EXPORTS\n" + "".join(f"    {name} @{i}\n" for i, name in enumerate(names, 1))


def export_list(families):
    """One OKT_EXPORT_ROW a name, with the members of Export in tools/registry/registry.h."""
    out = ["// Generated from catalogue/catalogue.toml; do not edit."]
    routine_number = 0
    for family in families:
        summary = family["summary"].replace('"', '\\"')
        for routine in family["rows"]:
            for index, name in enumerate(routine.names):
                grade = routine.grades[index] if routine.grades else ""
                warnings = " | ".join("warns" + w for w in routine.warnings) or "warnsNothing"
                flags = [str(flag).lower() for flag in (routine.seed, routine.in_place)]
                out.append(
                    f'OKT_EXPORT_ROW({name}, "{routine.family}", "{routine.type}", "{grade}", {routine.form}, '
                    f"{FRAME[routine.frame][0]}, {routine.source}, {routine.destination}, {warnings}, {routine_number}, "
                    f"{', '.join(flags)}, \"{family['group']}\", \"{summary}\")"
                )
            routine_number += 1
    return "\n".join(out) + "\n"


def write(path, text):
    path = pathlib.Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def main(arguments):
    if len(arguments) != 2:
        sys.exit(__doc__)
    kind, target = arguments
    families = load()
    if kind == "header":
        write(target, header(families))
    elif kind == "docs":
        write(target, docs(families))
    elif kind == "build":
        directory = pathlib.Path(target)
        for family in families:
            write(directory / "exports" / f"{family['name']}.h", export_macros(family))
        write(directory / "oktvm.map", version_script(families))
        write(directory / "oktvmmx.def", module_definition(families))
        write(directory / "export_list.inc", export_list(families))
        (directory / "derived").touch()
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
