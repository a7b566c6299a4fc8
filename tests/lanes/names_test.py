"""Every function and operator that src/lanes declares is named in tests/lanes: no operation goes without a test."""
import pathlib
import re
import unittest

root = pathlib.Path(__file__).resolve().parents[2]

# Details stand in namespaces of their own and are tested through what uses them.
detail = re.compile(r"^namespace (gathering|seeds|okt::\w+) \{.*?^\}  // namespace \1$", re.M | re.S)
template = re.compile(r"^template <.*>\n|^requires.*\n", re.M)
function = re.compile(r"^(?:(?:inline|constexpr|OKT_INLINE) )+[A-Za-z_][\w:]*(?:<.*?>)?[&*]? (\w+)\(", re.M)
operator = re.compile(r"\boperator([-+*/&|^~<>=!]+)\(")


def declared(text):
    text = template.sub("", re.sub(r"//.*", "", detail.sub("", text)))
    return set(function.findall(text)), set(operator.findall(text))


class NamesOfLanes(unittest.TestCase):
    def test_each_is_met_in_a_test(self):
        tests = "\n".join(path.read_text() for path in sorted((root / "tests/lanes").glob("*.[ch]*")))
        found = set()
        for header in sorted((root / "src/lanes").glob("*.h")):
            names, operators = declared(header.read_text())
            found |= names | operators
            # A splat of 128, 256 or 512 bits is what makes a vector of one element.
            missing = {name for name in names if not re.search(rf"\b{name}\b", tests) and "splat" not in name}
            missing |= {sign for sign in operators if f"a {sign} " not in tests and f"{sign}a" not in tests}
            self.assertEqual(missing, set(), f"declared in {header.name}")
        # The patterns above still find what is there.
        self.assertLessEqual({"widen", "gatherPairsAt", "sqrt", "dekkerSplit", "select", "isNaN", "+", "<<"}, found)
        self.assertGreater(len(found), 100)


if __name__ == "__main__":
    unittest.main()
