#!/usr/bin/env python3
"""Tests of the built library as a file: what it exports and needs, how it installs, and that derived files are fresh.

The build directory, its levels, where its approximations come from, and the compilers are told by the environment:
OKT_BUILD_DIR, OKT_LEVELS, OKT_SEEDS, CC, CXX, CMAKE.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("OKT_BUILD_DIR", ROOT / "build"))
CC, CXX, CMAKE = (os.environ.get(*pair) for pair in (("CC", "gcc"), ("CXX", "g++"), ("CMAKE", "cmake")))
SEEDS = os.environ.get("OKT_SEEDS", "processor")  # as the option of the build has it
LEVELS = [level for level in os.environ.get("OKT_LEVELS", "").split(";") if level]
LIBRARY = BUILD / "liboktvmmx.so"
FOLDER = {level: f"glibc-hwcaps/x86-64-{level}" for level in LEVELS}
LIBRARIES = [LIBRARY] + [BUILD / FOLDER[level] / "liboktvmmx.so" for level in LEVELS]

sys.path[:0] = [str(ROOT / "tools" / "catalogue"), str(ROOT / "tests")]
import at_level  # noqa: E402
import generate  # noqa: E402


def output(*command, **options):
    result = subprocess.run(list(map(str, command)), capture_output=True, text=True, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command} failed:\n{result.stdout}\n{result.stderr}")
    return result.stdout


class SharedObject(unittest.TestCase):
    """Each level's library by itself."""

    def each(self):
        for library in LIBRARIES:
            with self.subTest(library=str(library.relative_to(BUILD))):
                yield library

    def test_link_names_and_soname(self):
        for library in self.each():
            self.assertEqual(library.resolve().name, "liboktvmmx.so.6.1")
            self.assertEqual((library.parent / "liboktvmmx.so.6").resolve(), library.resolve())
            self.assertIn("[liboktvmmx.so.6]", output("readelf", "-d", library))

    def test_exports_are_the_names_of_the_catalogue(self):
        for library in self.each():
            lines = output("nm", "-D", "--defined-only", library).splitlines()
            names = sorted(line.split()[-1] for line in lines)
            self.assertEqual(names, generate.exported_names(generate.load()))

    def test_depends_on_nothing(self):
        for library in self.each():
            self.assertEqual(output("nm", "-D", "--undefined-only", library), "")
            self.assertNotIn("NEEDED", output("readelf", "-d", library))

    def test_has_no_start_up_code_and_no_writable_data(self):
        for library in self.each():
            sections = re.findall(r"\] (\.\S+)", output("readelf", "-SW", library))
            for unwanted in (".init_array", ".fini_array", ".ctors", ".init", ".fini", ".data", ".bss", ".tbss", ".tdata"):
                self.assertNotIn(unwanted, sections)

    def test_tables_need_no_relocation(self):
        # The version record holds the only three pointers of the library.
        for library in self.each():
            relocations = re.findall(r"R_X86_64_\w+", output("readelf", "-rW", library))
            self.assertEqual(relocations, ["R_X86_64_RELATIVE"] * 3)

    def test_code_keeps_to_the_registers_of_its_level(self):
        registers = {"": "", "v3": "y", "v4": "yz"}
        for level in ["", *LEVELS]:
            library = BUILD / FOLDER.get(level, "") / "liboktvmmx.so"
            text = output("objdump", "-d", "--no-show-raw-insn", library)
            self.assertEqual("".join(r for r in "yz" if f"%{r}mm" in text), registers[level], library)
            self.assertEqual(re.search(r"\bv(add|mul|mov)[sp][sd]\b", text) is None, level == "", library)


    def test_approximate_instructions_stand_in_the_kernels_that_take_seeds(self):
        objects = BUILD / "src/CMakeFiles/okt_objects.dir"
        with_instructions, with_header = set(), set()
        for object_file in objects.rglob("*.o"):
            source = object_file.relative_to(objects).with_suffix("")
            if not (ROOT / "src" / source).exists():
                continue  # left behind by a source that is gone
            if re.search(r"\bv?r(cp|sqrt)\d*[ps]s\b", output("objdump", "-d", "--no-show-raw-insn", object_file)):
                with_instructions.add(str(source))
            if '#include "lanes/seeds.h"' in (ROOT / "src" / source).read_text():
                with_header.add(str(source))
        self.assertTrue(with_header)
        self.assertEqual(with_instructions, with_header if SEEDS == "processor" else set())


class Derived(unittest.TestCase):
    def test_header_and_catalogue_page_are_fresh(self):
        families = generate.load()
        self.assertEqual((ROOT / "include/oktvm.h").read_text(), generate.header(families))
        self.assertEqual((ROOT / "docs/catalogue.md").read_text(), generate.docs(families))

    def test_all_names_have_ordinals_in_byte_order(self):
        lines = generate.module_definition(generate.load()).splitlines()[1:]
        names = [line.split()[0] for line in lines]
        self.assertEqual(names, sorted(names, key=str.encode))
        self.assertEqual([line.split()[1] for line in lines], [f"@{i}" for i in range(1, len(lines) + 1)])
        self.assertEqual(names[-1], "oktvmGetLibVersion")

    def test_tables_are_what_their_generators_give(self):
        generators = sorted((ROOT / "tools/tables").glob("*_tables.py"))
        self.assertTrue(generators)
        for generator in generators:
            with self.subTest(generator=generator.name):
                output("/usr/bin/python3", generator, "--check")

    def test_digests_are_those_stored(self):
        stored = (ROOT / "tests/digest/digests.txt").read_text()
        self.assertEqual(output(BUILD / "tests/okt_digest", "--stored"), stored)

    def test_digests_with_approximations_of_the_table_are_those_stored(self):
        stored = (ROOT / "tests/digest/table_digests.txt").read_text()
        program = "okt_digest" if SEEDS == "table" else "okt_digest_table"
        self.assertEqual(output(BUILD / "tests" / program, "--seeded"), stored)


EXPECTED = "0 5 13 6.1 build 137.36\n"
TAG = {"base": b"mx", "v3": b"mx3", "v4": b"mx4"}


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.directory = tempfile.TemporaryDirectory()
        cls.prefix = pathlib.Path(cls.directory.name) / "installed"
        output(CMAKE, "--install", BUILD, "--prefix", cls.prefix)
        cls.libraries = next(cls.prefix.rglob("liboktvmmx.so")).parent
        cls.environment = {**os.environ, "LD_LIBRARY_PATH": str(cls.libraries)}

    @classmethod
    def tearDownClass(cls):
        cls.directory.cleanup()

    def test_the_loader_takes_the_highest_level_that_it_may(self):
        import ctypes

        class Version(ctypes.Structure):
            _fields_ = [("numbers", ctypes.c_int32 * 4), ("tag", ctypes.c_char * 4)]

        program = ("import ctypes; l = ctypes.CDLL('liboktvmmx.so.6'); l.oktvmGetLibVersion.restype = ctypes.c_void_p; "
                   f"print(ctypes.string_at(l.oktvmGetLibVersion() + {Version.tag.offset}).decode())")
        for level in ["base", *LEVELS]:
            if lacking := at_level.missing(level):
                print(f"level {level} skipped: this processor has no {', '.join(sorted(lacking))}")
                continue
            environment = {**at_level.environment(level), **{"LD_LIBRARY_PATH": str(self.libraries)}}
            self.assertEqual(output("/usr/bin/python3", "-c", program, env=environment).strip(), TAG[level].decode())

    def test_consumer_through_the_cmake_package(self):
        build = pathlib.Path(self.directory.name) / "consumer"
        consumer = ROOT / "tests/library/consumer"
        output(CMAKE, "-S", consumer, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
               f"-DCMAKE_C_COMPILER={CC}", f"-DCMAKE_CXX_COMPILER={CXX}")
        output(CMAKE, "--build", build)
        for program in ("consumer_c", "consumer_cpp"):
            self.assertEqual(output(build / program, env=self.environment), EXPECTED)

    def test_consumer_through_pkg_config(self):
        environment = {**self.environment, "PKG_CONFIG_PATH": str(self.libraries / "pkgconfig")}
        flags = output("pkg-config", "--cflags", "--libs", "oktvm", env=environment).split()
        for compiler, source in ((CC, "consumer.c"), (CXX, "consumer.cpp")):
            program = pathlib.Path(self.directory.name) / f"{source}.out"
            output(compiler, ROOT / "tests/library/consumer" / source, "-o", program, *flags)
            self.assertEqual(output(program, env=environment), EXPECTED)


if __name__ == "__main__":
    unittest.main()
