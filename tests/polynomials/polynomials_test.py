#!/usr/bin/env python3
"""The coefficients of the kernels against tools/polynomials/polynomials.toml, and that the comparison finds faults."""
import pathlib
import re
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools" / "polynomials"))
import check  # noqa: E402
import sources  # noqa: E402

check.mp.prec = check.PRECISION
BLOCKS = {block.name: block for block in check.blocks()}


def faults(name, **changed):
    return list(check.Block({**BLOCKS[name].entry, **changed}).faults())


class Coefficients(unittest.TestCase):
    def test_are_what_the_data_file_says(self):
        for name in BLOCKS:
            with self.subTest(block=name):
                self.assertEqual(faults(name), [])

    def test_blocks_have_names_of_their_own(self):
        self.assertEqual(len(BLOCKS), len(check.blocks()))

    def test_another_bound_is_found_and_missed_in_the_comment(self):
        self.assertEqual(len(faults("Exp, Real64", bound="2^-59.1")), 2)
        self.assertEqual(len(faults("Exp, Real64", bound="2^-59.3")), 2)

    def test_another_term_of_a_series_is_found(self):
        terms = BLOCKS["Pow2o3"].entry["taylor"]
        self.assertEqual(len(faults("Pow2o3", taylor=["1/3", *terms[1:]])), 1)
        self.assertEqual(len(faults("Pow2o3", taylor=terms[1:])), 1)

    def test_another_rounding_is_found(self):
        self.assertTrue(faults("Pow, Real64, exponential", rounding="to nearest"))

    def test_an_error_that_does_not_alternate_as_often_is_found(self):
        self.assertEqual(len(faults("Cbrt, Real32", free=9)), 1)
        self.assertEqual(len(faults("Exp, Real64", fitted=["-0.0052", "0.0052"])), 1)

    def test_another_best_approximation_is_found(self):
        self.assertTrue(faults("Complex Ln, A11", fitted=["sqrt(0.5) - 1.011", "sqrt(2) - 0.989"], made="fitted"))


class Sources(unittest.TestCase):
    FILE = "src/explog/exp.cpp"

    def test_give_exact_values(self):
        c2 = sources.constant(self.FILE, "Constants64", "c2")
        self.assertEqual(c2.values, [sources.hexadecimal("0x1.fffffffffd97cp-2")])
        self.assertEqual(sources.constant(self.FILE, "Constants32", "half").precision, 24)

    def test_have_the_constants_asked_for(self):
        for scope, name in (("Constants64", "c9"), ("Constants99", "c2")):
            with self.assertRaises(ValueError):
                sources.constant(self.FILE, scope, name)

    def test_give_numbers_as_values(self):
        exponents = {"32": 0x7F800000, "64": 0x7FF0000000000000}
        for path in (ROOT / "src").rglob("*.*"):
            for bits, pattern in re.findall(r"\bbits(32|64)\(0x([0-9A-F]+)\)", path.read_text()):
                with self.subTest(file=path.name, pattern=pattern):
                    self.assertEqual(int(pattern, 16) & exponents[bits], exponents[bits], "an infinity or a NaN")


if __name__ == "__main__":
    unittest.main()
