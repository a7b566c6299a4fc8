#!/usr/bin/env python3
"""Adds a family, Exp2, to a copy of the sources by the six files that CONTRIBUTING names, builds the library with and
without it, and asks everything that goes over all families whether it knows the new one.

The compilers and the generator come from the environment: CC, CXX, CMAKE, CMAKE_GENERATOR.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOY = pathlib.Path(__file__).resolve().parent
CC, CXX, CMAKE = (os.environ.get(*pair) for pair in (("CC", "gcc"), ("CXX", "g++"), ("CMAKE", "cmake")))
GENERATOR = os.environ.get("CMAKE_GENERATOR", "Ninja")

COPIED = ("CMakeLists.txt", "bench", "catalogue", "cmake", "docs/catalogue.md", "include", "src", "tests", "tools")
TARGETS = ("oktvm", "okt_digest", "oktvm_tests", "accuracy_test", "accuracy_harness_test", "okt_benchmark")
# In the order of CONTRIBUTING. The row and the digests go into files that are there.
ROW, DIGESTS = "catalogue/catalogue.toml", "tests/digest/digests.txt"
NEW = {
    "src/explog/exp2.cpp": "exp2.cpp",
    "tests/families/exp2_test.cpp": "exp2_test.cpp",
    "tests/models/exp2_model.h": "exp2_model.h",
    "src/explog/exp2.toml": "exp2.toml",
}
DERIVED = {"include/oktvm.h", "docs/catalogue.md"}
NAMES = [f"oktsExp2_{name}" for name in ("32f_A11", "32f_A21", "32f_A24", "64f_A26", "64f_A50", "64f_A53")]


def output(*command, **options):
    result = subprocess.run(list(map(str, command)), capture_output=True, text=True, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command} failed:\n{result.stdout[-20000:]}\n{result.stderr[-20000:]}")
    return result.stdout


def insert_before(path, mark, text):
    """Puts a text before the mark."""
    before, found, after = path.read_text().partition(mark)
    assert found, f"{path} has no {mark!r}"
    path.write_text(before + text + found + after)


def contents(root):
    files = [path for name in COPIED for path in ([root / name] if (root / name).is_file() else (root / name).rglob("*"))]
    return {path.relative_to(root).as_posix(): path.read_bytes() for path in files
            if path.is_file() and "__pycache__" not in path.parts}


class Toy(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.directory = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.directory.cleanup)
        cls.root = pathlib.Path(cls.directory.name) / "oktvm"
        cls.build = cls.root / "build"
        for name in COPIED:
            (cls.root / name).parent.mkdir(parents=True, exist_ok=True)
            copy = shutil.copytree if (ROOT / name).is_dir() else shutil.copy2
            copy(ROOT / name, cls.root / name)
        # Nothing is timed here: what counts is the time to compile.
        output(CMAKE, "-S", cls.root, "-B", cls.build, "-G", GENERATOR, "-DCMAKE_BUILD_TYPE=Release",
               "-DCMAKE_CXX_FLAGS_RELEASE=-O0", f"-DCMAKE_C_COMPILER={CC}", f"-DCMAKE_CXX_COMPILER={CXX}",
               "-DOKT_TESTS=ON", "-DOKT_TOOLS=ON", "-DOKT_BENCHMARK=ON", "-DOKT_TEST_FAMILIES=exp2")
        cls.before = contents(cls.root)
        cls.built_before = cls.make(*TARGETS)
        cls.digests_before = cls.run_built("tests/okt_digest", "--stored")

        insert_before(cls.root / ROW, '[[family]]\nname = "Expm1"', (TOY / "catalogue_row.toml").read_text() + "\n")
        for path, source in NEW.items():
            shutil.copy(TOY / source, cls.root / path)
        cls.make("derived-files")
        cls.built = cls.make(*TARGETS)
        cls.digests = cls.run_built("tests/okt_digest", "--stored")
        (cls.root / DIGESTS).write_text(cls.digests)
        cls.after = contents(cls.root)

    @classmethod
    def make(cls, *targets):
        """Builds, and gives the object files that were compiled."""
        start = time.monotonic()
        text = output(CMAKE, "--build", cls.build, "--parallel", os.cpu_count(), "--target", *targets)
        objects = re.findall(r"Building CXX object (\S+)", text)
        print(f"{', '.join(targets)}: {len(objects)} objects in {time.monotonic() - start:.0f} s", flush=True)
        return objects

    @classmethod
    def run_built(cls, program, *arguments):
        return output(cls.build / program, *arguments)

    def test_six_files_are_touched_and_two_derived(self):
        touched = {path for path in self.after if self.after[path] != self.before.get(path)}
        self.assertEqual(touched, {ROW, *NEW, DIGESTS} | DERIVED)
        self.assertEqual(len(touched - DERIVED), 6)
        self.assertEqual(set(self.before) - set(self.after), set())

    def test_contributing_names_these_files_in_this_order(self):
        steps = re.findall(r"^\d\. \*\*[^*]+\*\*, `([^`]+)`", (ROOT / "CONTRIBUTING.md").read_text(), re.MULTILINE)
        named = [step.replace("<subsystem>", "explog").replace("<family>", "exp2") for step in steps]
        self.assertEqual(named, [ROW, *NEW, DIGESTS])

    def test_committed_files_only_gain_lines(self):
        for path in (ROW, DIGESTS, *DERIVED):
            with self.subTest(path=path):
                # But for the line in which docs/catalogue.md counts families and functions.
                rest = iter(self.after[path].decode().splitlines())
                lost = [line for line in self.before[path].decode().splitlines()
                        if not re.match(r"\d+ families", line) and line not in rest]
                self.assertEqual(lost, [])

    def test_no_other_kernel_is_compiled_again(self):
        kernels = [path for path in self.built if "okt_objects" in path]
        self.assertEqual([pathlib.Path(path).name for path in kernels], ["exp2.cpp.o"])

    def test_library_exports_it(self):
        lines = output("nm", "-D", "--defined-only", self.build / "liboktvmmx.so").splitlines()
        self.assertLessEqual(set(NAMES), {line.split()[-1] for line in lines})

    def test_header_and_catalogue_page_have_it(self):
        header = self.after["include/oktvm.h"].decode()
        for name in NAMES:
            self.assertIn(f"OktStatus {name}(", header)
        self.assertRegex(self.after["docs/catalogue.md"].decode(), r"\n\| Exp2 \|.*A11 A21 A24.*A26 A50 A53")

    def test_registry_and_digest_have_it(self):
        self.assertEqual(self.digests_before, (ROOT / DIGESTS).read_text())
        stored = (TOY / "digests.txt").read_text()
        self.assertEqual([line.split()[0] for line in stored.splitlines()], NAMES)
        self.assertIn(stored, self.digests)
        self.assertEqual(self.digests.replace(stored, ""), self.digests_before)

    def test_tests_over_all_exports_and_its_own_pass(self):
        text = self.run_built("tests/oktvm_tests", "--gtest_filter=*Exp2*")
        for name in NAMES:
            self.assertRegex(text, rf"OK \] Catalogue/EveryExport\.\w+/{name} ")
            self.assertRegex(text, rf"OK \] Control/ControlStateOf\.\w+/{name} ")
        for test in re.findall(r"TEST\(Exp2, (\w+)\)", (TOY / "exp2_test.cpp").read_text()):
            self.assertIn(f"OK ] Exp2.{test} ", text)

    def test_bounds_are_measured_and_asked_for(self):
        text = self.run_built("tests/accuracy/accuracy_test", "--gtest_filter=*Exp2*:AccuracyBounds.*")
        for name in ("Exp2_32f_A24_all", "Exp2_64f_A53_main"):
            self.assertIn(f"OK ] Declared/Accuracy.IsWithinItsBound/{name}", text)
        descriptor = self.root / "src/explog/exp2.toml"
        bounds = descriptor.read_text()
        try:
            descriptor.write_text(bounds.replace("bound = 1.2", "bound = 0.5"))
            with self.assertRaisesRegex(AssertionError, r"error  [\d.]+ ulp, bound 0.5"):
                self.run_built("tests/accuracy/accuracy_test", "--gtest_filter=*Exp2*")
            descriptor.write_text(bounds[: bounds.index("[[range]]\ntype = \"64f\"")])
            with self.assertRaisesRegex(AssertionError, "oktsExp2_64f_A53: no bound for the block path"):
                self.run_built("tests/accuracy/accuracy_test", "--gtest_filter=AccuracyBounds.*")
        finally:
            descriptor.write_text(bounds)

    def test_reference_is_tried_beside_the_others(self):
        text = self.run_built("tests/accuracy/accuracy_harness_test", "--gtest_filter=Reference.*")
        self.assertIn("OK ] Reference.RealFunctionsAgreeWithTheCLibrary", text)
        for row in ("references.inc", "quick_references.inc"):
            self.assertIn('"Exp2", false', (self.build / "generated" / row).read_text())

    def test_benchmark_has_it_with_its_peers_and_arguments(self):
        text = self.run_built("bench/okt_benchmark", "--benchmark_filter=oktsExp2_.*/64/", "--benchmark_min_time=0.001")
        for name in (NAMES[2], NAMES[5]):
            for library in ("oktvm", "libm"):
                self.assertIn(f"{name}/64/{library}", text)
        rows = (self.build / "generated/benchmark_ranges.inc").read_text()
        self.assertIn('OKT_BENCHMARK_RANGES("Exp2", false, even(-30, 30)', rows)

    def test_fuzz_target_has_its_models(self):
        text = (self.build / "generated/family_models.inc").read_text()
        self.assertIn('#include "models/exp2_model.h"', text)
        for name in NAMES:
            self.assertIn(f"OKT_MODEL_ROW({name}, {name[4:-4]})", text)

    def test_descriptor_mistakes_are_told_with_their_place(self):
        descriptor = self.root / "src/explog/exp2.toml"
        good = descriptor.read_text()
        deriver = self.root / "tools/catalogue/descriptors.py"
        mistakes = {
            good.replace("benchmark =", "benchmarks ="): r"src/explog/exp2\.toml:8: benchmarks: this key is not known",
            good.replace('reference = "exp2(x)"\n', ""): r"src/explog/exp2\.toml:4: Exp2: there is no reference",
            good.replace('"uniform -30 30"', '"bits -30 30"'): r"src/explog/exp2\.toml:8: benchmark: needs",
            good.replace("[real]", "[complex]"): r"src/explog/exp2\.toml: \[real\]",
            good.replace('"Exp2"', '"Exp"'): r"Exp has a descriptor already",
            good.replace('"Exp2"', '"Exp3"'): r"there is no descriptor of Exp2",
        }
        try:
            for text, message in mistakes.items():
                descriptor.write_text(text)
                with self.subTest(message=message), self.assertRaisesRegex(AssertionError, message):
                    output(sys.executable, deriver, pathlib.Path(self.directory.name) / "derived")
        finally:
            descriptor.write_text(good)


if __name__ == "__main__":
    unittest.main()
