#!/bin/sh
# The form of the sources and of the reference: fails where .clang-format would change a file, and where Doxygen warns.
set -eu
cd "$(dirname "$0")/.."
find include src tests tools bench examples -name '*.h' -o -name '*.cpp' -o -name '*.c' -o -name '*.inc' |
    xargs clang-format-14 --dry-run -Werror
mkdir -p build
doxygen Doxyfile
